#include "tools/view/pictures/scene_mesh.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "scene_shapes.h"
#include "tools/view/pictures/scene_lines.h"

namespace {

using zel::test::makeCube;
using zel::test::Shape;
using zel::view::SceneMesh;
using zel::view::Vector3;

SceneMesh sceneOf(const Shape& shape) {
  return {shape.nodes, shape.triangles, shape.quads, shape.textureCoords};
}

float length(const Vector3& v) { return std::hypot(v[0], v[1], v[2]); }

TEST(SceneMesh, fillsTheUnitSphereWhereverTheMeshStands) {
  Shape shape;
  shape.addTriangle(shape.addNode(1e30F, 0, 5), shape.addNode(3e30F, 0, 5),
                    shape.addNode(1e30F, 1e30F, 5));
  shape.addNode(-3e38F, 0, 0);  // no face uses it
  const SceneMesh scene = sceneOf(shape);
  ASSERT_EQ(scene.shownNodes.size(), 3U);
  for (const Vector3& point : scene.shownPoints()) {
    EXPECT_NEAR(length(point), 1, 1e-5);
  }
  Vector3 normal{};
  scene.faces.at(0).triangle.GetNormM(normal.data());
  EXPECT_EQ(normal, (Vector3{0, 0, 1}));
}

TEST(SceneMesh, leavesOutWhatCannotBeDrawn) {
  Shape shape = makeCube();
  shape.quads.DelItemM(0);
  shape.nodes.DelItemM(1);  // a corner of three quads, two of them live
  const int odd = shape.addNode(NAN, 0, 0);
  shape.triangles = zel::test::trianglesOf({{2, 3, odd}, {2, 3, 99}, {2, 3, -1}, {2, 3, 6}});
  const SceneMesh scene = sceneOf(shape);
  EXPECT_EQ(scene.faces.size(), 2 * 2 + 1U);
  EXPECT_EQ(scene.nodeCount, 8);
  EXPECT_EQ(scene.triangleCount, 4);
  EXPECT_EQ(scene.quadCount, 5);
}

TEST(SceneMesh, defectsAreMarkedClassByClass) {
  zel::Mesh mesh;
  mesh.nodes =
      zel::test::nodesAt({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {9, 9, 9}, {1, 0.5F, 0.3F}});
  mesh.addTriangle({0, 2, 3});
  mesh.addTriangle({3, 0, 2});  // the same again
  mesh.addQuad({0, 1, 2, 2});   // two equal corners
  mesh.addTriangle({0, 1, 1});
  const SceneMesh scene(mesh);
  std::map<std::string, zel::view::DefectMarks> marks;
  for (const auto& found : defectMarksOf(mesh, scene)) {
    marks[found.name] = found;
  }
  EXPECT_EQ(marks.at("duplicate faces").faces, std::vector<std::uint32_t>{1});
  EXPECT_EQ(marks.at("degenerate faces").count, 2);
  EXPECT_EQ(marks.at("degenerate faces").faces, (std::vector<std::uint32_t>{2, 3, 4}));
  EXPECT_EQ(marks.at("unused nodes").count, 2);
  EXPECT_EQ(marks.at("unused nodes").nodes, std::vector<int>{5});  // the other one is far away
  EXPECT_EQ(marks.count("crowded edges"), 0U);
}

TEST(SceneMesh, emptyMeshAndLonePointsAreScenes) {
  EXPECT_TRUE(sceneOf(Shape()).shownNodes.empty());
  Shape point;
  point.addNode(7, 8, 9);
  const SceneMesh scene = sceneOf(point);
  EXPECT_EQ(scene.shownPoints().at(0), (Vector3{0, 0, 0}));
}

TEST(SceneMesh, textureCoordinatesFollowTheirFaces) {
  Shape shape = makeCube();
  shape.triangles = zel::test::trianglesOf({{0, 99, 1}, {0, 1, 2}});
  for (int entry = 0; entry < 6; ++entry) {
    const float coord[2] = {static_cast<float>(entry), 0.5F};
    shape.textureCoords.AddItemM(coord);
  }
  shape.textureCoords.DelItemM(4);
  const SceneMesh scene = sceneOf(shape);
  ASSERT_EQ(scene.textureCoords.size(), 3 * scene.faces.size());
  EXPECT_EQ(scene.textureCoords[0][0], 3.0F);
  EXPECT_EQ(scene.textureCoords[1][0], 0.0F);
  EXPECT_EQ(scene.textureCoords[2][0], 5.0F);
  EXPECT_EQ(scene.textureCoords[3][1], 0.0F);
}

TEST(SceneLines, cubeHasTwelveEdgesAndAnOpenOneFourAtItsBoundary) {
  const auto closed = zel::view::edgesOf(sceneOf(makeCube()));
  EXPECT_EQ(closed.all.size(), 12U);
  EXPECT_TRUE(closed.boundary.empty());
  const auto open = zel::view::edgesOf(sceneOf(makeCube(true)));
  EXPECT_EQ(open.all.size(), 12U);
  const std::vector<zel::view::Edge> rim{{2, 3}, {2, 6}, {3, 7}, {6, 7}};
  EXPECT_EQ(open.boundary, rim);
}

TEST(SceneLines, sharpEdgesStaySharpAndSoftOnesBecomeSmooth) {
  const SceneMesh cube = sceneOf(makeCube());
  const std::vector<Vector3> sharp = zel::view::cornerNormals(cube);
  for (std::size_t f = 0; f < cube.faces.size(); ++f) {
    Vector3 own{};
    cube.faces[f].triangle.GetNormM(own.data());
    for (std::size_t k = 0; k < 3; ++k) {
      const Vector3& corner = sharp[3 * f + k];
      EXPECT_NEAR(std::hypot(corner[0] - own[0], corner[1] - own[1], corner[2] - own[2]), 0, 1e-6);
    }
  }
  // Two halves of a roof share one normal at the ridge.
  const std::vector<Vector3> soft = zel::view::cornerNormals(sceneOf(zel::test::makeRoof()));
  EXPECT_NEAR(soft[0][2], 1, 1e-6);
  EXPECT_NEAR(soft[3][2], 1, 1e-6);
  EXPECT_NEAR(soft[2][0], -std::sin(0.2618), 1e-4);
}

TEST(SceneLines, normalsAreTheNodesOwnOrElseTheFaces) {
  Shape shape = makeCube();
  EXPECT_EQ(zel::view::normalsOf(sceneOf(shape)).size(), 12U);
  const float up[3] = {0, 4, 0};
  shape.nodes.ElementAtM(2).SetNormM(up);
  const auto normals = zel::view::normalsOf(sceneOf(shape));
  ASSERT_EQ(normals.size(), 1U);
  EXPECT_EQ(normals[0].normal, (Vector3{0, 1, 0}));
}

}  // namespace
