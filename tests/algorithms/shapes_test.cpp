// Normals, comparing, fitting, moving, cutting and unfolding.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "support/meshes.h"
#include "zel/algorithms/compare.h"
#include "zel/algorithms/fit.h"
#include "zel/algorithms/measure.h"
#include "zel/algorithms/normals.h"
#include "zel/algorithms/overlap.h"
#include "zel/algorithms/transform.h"
#include "zel/algorithms/triangulate.h"
#include "zel/algorithms/unfold.h"
#include "zel/core/error.h"

namespace {

using namespace zel::test;

Mesh scaled(Mesh mesh, int exponent) {
  for (int node = 0; node < mesh.nodes.GetBoundM(); ++node) {
    Point p = mesh.point(node);
    for (float& x : p) {
      x = std::ldexp(x, exponent);
    }
    mesh.nodes.SetItemM(nodeAt(p), node);
  }
  return mesh;
}

/// A cube's corner of three quads, one of them cut in two; its node 0 is the corner.
Mesh cubeCorner() {
  return Mesh(
      nodesAt({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}}),
      trianglesOf({{0, 2, 1}, {0, 3, 2}}), quadsOf({{0, 1, 5, 4}, {0, 4, 6, 3}}));
}

TEST(Normals, weightsDecideAtACornerAndScaleDoesNot) {
  for (const int exponent : {0, -60, 40}) {
    const auto normalOfCorner = [&](zel::NormalWeight weight) {
      Mesh mesh = scaled(cubeCorner(), exponent);
      zel::giveNormals(mesh, {.weight = weight});
      EXPECT_EQ(mesh.triangles.ElementAtM(1).record().normal[2], -1.0F);
      EXPECT_EQ(mesh.quads.ElementAtM(0).record().normal[1], -1.0F);
      EXPECT_EQ(mesh.quads.ElementAtM(0).record().normalType, 1);
      return normalOf(mesh.nodes, 0);
    };
    const float third = -1 / std::sqrt(3.0F);
    const Point angle = normalOfCorner(zel::NormalWeight::kAngle);
    const Point area = normalOfCorner(zel::NormalWeight::kArea);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      EXPECT_NEAR(angle[axis], third, 1e-6);
      EXPECT_NEAR(area[axis], third, 1e-6);  // the halves of the square have half its area
    }
    EXPECT_EQ(normalOfCorner(zel::NormalWeight::kFlat), (Point{-1, 0, 0}));
  }
  // A fan of small and large faces in two planes tells area and angle apart.
  Mesh ridge(nodesAt({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 8}}),
             trianglesOf({{0, 1, 2}, {0, 2, 3}}));
  zel::giveNormals(ridge);
  EXPECT_NEAR(normalOf(ridge.nodes, 0)[0] / normalOf(ridge.nodes, 0)[2], 8, 1e-5);
  zel::giveNormals(ridge, {.weight = zel::NormalWeight::kAngle});
  EXPECT_NEAR(normalOf(ridge.nodes, 0)[0] / normalOf(ridge.nodes, 0)[2], 1, 1e-5);
}

TEST(Normals, facesWithoutNodesOrAreaDoNoHarm) {
  Mesh mesh = makeTetrahedron();
  mesh.addTriangle(0, 99, 1);
  mesh.addTriangle(-2147483647, 0, 1);
  mesh.addTriangle(0, 0, 0);
  zel::giveNormals(mesh, {.weight = zel::NormalWeight::kAngle});
  EXPECT_EQ(mesh.triangles.ElementAtM(4).record().normalType, 0);
  EXPECT_EQ(mesh.triangles.ElementAtM(6).record().normal[0], 1.0F);
  const Point normal = normalOf(mesh.nodes, 1);
  EXPECT_NEAR(normal[0], 1 / std::sqrt(3.0F), 1e-6);
}

TEST(Compare, tellsEachKindOfDifferenceByItsNumber) {
  Mesh a = cubeCorner();
  zel::giveNormals(a);
  zel::setTextureCoord(a.triangleTexture, 0, {1, 2});
  zel::setTextureCoord(a.quadTexture, 4, {1, 2});
  Mesh b = a;
  EXPECT_FALSE(zel::compare(a, b).any());
  EXPECT_TRUE(zel::compare(a, b).texts().empty());
  // Slots without an element make no difference.
  const Mesh tetrahedron = makeTetrahedron();
  Mesh shifted;
  shifted.addNode(5, 5);
  shifted.addTriangle(0, 1, 2);
  for (int slot = 0; slot < 4; ++slot) {
    const Point p = tetrahedron.point(slot);
    shifted.addNode(p[0], p[1], p[2]);
    const auto [i, j, k] = tetrahedron.corners(slot);
    shifted.addTriangle(i + 1, j + 1, k + 1);
  }
  shifted.nodes.DelItemM(0);
  shifted.triangles.DelItemM(0);
  EXPECT_FALSE(zel::compare(tetrahedron, shifted).any());

  const auto differing = [&](auto change) {
    Mesh other = a;
    change(other);
    return zel::compare(a, other);
  };
  const auto moved = [&](Mesh& mesh) {
    NodeCL node = std::as_const(mesh.nodes)[3];
    node.point()[0] += 0.5F;
    mesh.nodes.SetItemM(node, 3);
  };
  EXPECT_EQ(differing(moved).points.first, 3);
  EXPECT_EQ(differing(moved).largestMove, 0.5);
  Mesh other = a;
  moved(other);
  EXPECT_FALSE(zel::compare(a, other, {.tolerance = 0.5}).any());
  EXPECT_TRUE(zel::compare(a, other, {.tolerance = 0.49}).any());
  EXPECT_THROW((void)zel::compare(a, other, {.tolerance = double{NAN}}), zel::Error);
  EXPECT_EQ(differing([](Mesh& m) {
              zel::setTextureCoord(m.quadTexture, 7, {0, 0});
            }).quadTexture.first,
            1);
  EXPECT_EQ(differing([](Mesh& m) {
              zel::setTextureCoord(m.triangleTexture, 0, {1, 3});
            }).triangleTexture.count,
            1);
  EXPECT_EQ(differing([](Mesh& m) { m.quads.DelItemM(0); }).quads, (std::array<int, 2>{2, 1}));
  const float up[3] = {0, 0, 1};
  EXPECT_EQ(differing([&](Mesh& m) { m.nodes.SetNodeNormM(2, up); }).nodeNormals.first, 2);
  EXPECT_EQ(differing([&](Mesh& m) {
              TriangleCL face = std::as_const(m.triangles)[1];
              face.SetTriangleM(3, 2, 0);
              face.SetNormM(up);
              m.triangles.SetItemM(face, 1);
            })
                .texts()
                .size(),
            2U);
  EXPECT_EQ(zel::compare(scaled(a, 0), Mesh()).texts().front(), "7 nodes against 0");
}

struct Placed {
  int exponent;
  float offset;
};

TEST(Fit, dependsNeitherOnScaleNorOnTheDistanceFromTheOrigin) {
  std::mt19937 random(31);
  std::normal_distribution<double> noise(0.0, 0.001);
  std::vector<zel::Double3> arc;
  for (int i = 0; i < 60; ++i) {
    const double angle = 0.07 * i;
    arc.push_back({3 * std::cos(angle) + noise(random), 3 * 0.8 * std::sin(angle),
                   3 * 0.6 * std::sin(angle) + noise(random)});
  }
  for (const Placed placed : {Placed{0, 0}, Placed{-40, 0}, Placed{-100, 0}, Placed{90, 0},
                              Placed{0, 1000}, Placed{-12, 1}, Placed{0, -30000}}) {
    std::vector<zel::Float3> points;
    for (const zel::Double3& p : arc) {
      zel::Float3 point{};
      for (std::size_t axis = 0; axis < 3; ++axis) {
        point[axis] = static_cast<float>(std::ldexp(p[axis], placed.exponent) + placed.offset);
      }
      points.push_back(point);
    }
    SCOPED_TRACE(testing::Message() << placed.exponent << " " << placed.offset);
    const auto unit = [&](double value) { return std::ldexp(value, -placed.exponent); };
    const auto plane = zel::fitPlane(points);
    const auto line = zel::fitLine(points);
    const auto circle = zel::fitCircle(points);
    ASSERT_TRUE(plane && line && circle);
    EXPECT_NEAR(std::fabs(plane->normal[1]), 0.6, 2e-3);
    EXPECT_NEAR(std::fabs(plane->normal[2]), 0.8, 2e-3);
    EXPECT_NEAR(
        unit(plane->d + placed.offset * (plane->normal[0] + plane->normal[1] + plane->normal[2])),
        0, 5e-3);
    EXPECT_LT(unit(plane->shapeError), 1e-3);
    EXPECT_NEAR(unit(circle->radius), 3, 5e-3);
    for (const double centre : circle->centre) {
      EXPECT_NEAR(unit(centre - placed.offset), 0, 1e-2);
    }
    EXPECT_GT(unit(line->averageDistance), 0.3);
    EXPECT_LT(unit(line->averageDistance), 3);
  }
}

TEST(Fit, threeNeighboursFarFromTheOriginHaveAPlaneAndPointsOnALineNone) {
  const std::vector<zel::Float3> three{
      {0.0942F, 0.0321F, -0.0123F}, {0.0945F, 0.0322F, -0.0124F}, {0.0943F, 0.0325F, -0.0121F}};
  const auto plane = zel::fitPlane(three);
  ASSERT_TRUE(plane);
  for (const zel::Float3& p : three) {
    EXPECT_NEAR(
        plane->normal[0] * p[0] + plane->normal[1] * p[1] + plane->normal[2] * p[2] + plane->d, 0,
        1e-9);
  }
  std::vector<zel::Float3> line;
  for (int i = 0; i < 50; ++i) {
    const auto t = static_cast<float>(i);
    line.push_back({100 + 0.1F * t, -3 + 0.7F * t, 0.3F * t});
  }
  EXPECT_FALSE(zel::fitPlane(line));
  EXPECT_FALSE(zel::fitCircle(line));
  ASSERT_TRUE(zel::fitLine(line));
  EXPECT_LT(zel::fitLine(line)->averageDistance, 1e-5);
  const std::vector<zel::Float3> same(5, {123.456F, -7, 0.1F});
  EXPECT_FALSE(zel::fitLine(same));
  EXPECT_FALSE(zel::fitLine(std::vector<zel::Float3>{}));
  line.push_back({NAN, 0, 0});
  EXPECT_FALSE(zel::fitLine(line));
}

TEST(Transform, movesBitForBitAsTheListsDo) {
  Mesh mesh = cubeCorner();
  zel::giveNormals(mesh);
  const Mesh before = mesh;
  const float matrix[16] = {0, 2, 0, 0, -2, 0, 0, 0, 0, 0, 2, 0, 5, 6, 7, 1};
  zel::transform(mesh, matrix);
  for (int node = 0; node < mesh.nodes.GetBoundM(); ++node) {
    NodeCL single = std::as_const(before.nodes)[node];
    single.TransByMatrixM(matrix);
    EXPECT_EQ(pointOf(mesh.nodes, node),
              (Point{single.point()[0], single.point()[1], single.point()[2]}));
  }
  EXPECT_EQ(mesh.point(0), (Point{5, 6, 7}));
  EXPECT_EQ(mesh.quads.ElementAtM(0).record().normal[0], 2.0F);
}

TEST(Triangulate, quadsAreCutInsideAndTakeTheirTextureAlong) {
  // Concave at its second corner; concave at its first; a rectangle; long across its corners 0, 2.
  Mesh mesh(nodesAt({{0, 0, 0}, {1, 1, 0}, {4, 0, 0}, {1, 4, 0}, {9, 0, 0}, {9, 2, 0}, {0, 2, 0}}),
            trianglesOf({{0, 1, 3}}),
            quadsOf({{0, 1, 2, 3}, {1, 2, 3, 0}, {0, 4, 5, 6}, {0, 1, 5, 3}}));
  mesh.quads.DelItemM(1);
  for (int k = 0; k < 16; ++k) {
    zel::setTextureCoord(mesh.quadTexture, k, {static_cast<float>(k), 0});
  }
  const double area = zel::measure(mesh).area;
  const zel::TriangulateReport report = zel::triangulate(mesh, {.faceMap = true});
  EXPECT_EQ(report.quadsCut, 3);
  EXPECT_EQ(report.firstTriangle, 1);
  EXPECT_EQ(report.quadOf, (std::vector<int>{0, 0, 2, 2, 3, 3}));
  EXPECT_EQ(mesh.quads.GetBoundM(), 0);
  EXPECT_EQ(mesh.corners(1), (Corners{0, 1, 3}));
  EXPECT_EQ(mesh.corners(2), (Corners{1, 2, 3}));
  EXPECT_EQ(mesh.corners(3), (Corners{0, 4, 5}));
  EXPECT_LT(zel::measure(mesh).area, area);  // measured across, the first quad was too large
  EXPECT_EQ(mesh.validate(), "");
  zel::Float2 coord{};
  ASSERT_TRUE(zel::textureCoordOf(mesh.triangleTexture, 3 * 2 + 1, coord));
  EXPECT_EQ(coord[0], 2.0F);
  EXPECT_FALSE(zel::textureCoordOf(mesh.triangleTexture, 0, coord));
}

TEST(Unfold, aFoldedSheetComesOutFlatInEveryUnit) {
  for (const int exponent : {0, -30, -100, 60}) {
    Mesh mesh = makeGrid(9, 3, [](float x, float) { return std::fmod(x, 2.0F); });
    mesh = scaled(mesh, exponent);
    mesh.addTriangle(0, 0, 1);
    const zel::UnfoldReport report = zel::unfold(mesh);
    EXPECT_EQ(report.components, 1);
    EXPECT_EQ(report.unfoldedFaces, 54);
    EXPECT_EQ(report.unreachedFaces, 1);
    EXPECT_EQ(report.flippedFaces + report.overlappingFaces, 0);
    EXPECT_EQ(zel::countOverlapping(mesh), 0);
    EXPECT_LT(report.worstLengthError, 1e-5) << exponent;
    zel::Float2 a{};
    zel::Float2 b{};
    ASSERT_TRUE(zel::textureCoordOf(mesh.triangleTexture, 0, a) &&
                zel::textureCoordOf(mesh.triangleTexture, 1, b));
    EXPECT_NEAR(std::ldexp(std::hypot(double{a[0]} - b[0], double{a[1]} - b[1]), -exponent),
                std::sqrt(2.0), 1e-5);
  }
}

TEST(Unfold, facesOfACrowdedEdgeStayTogether) {
  // Two faces run one way along the edge 0-1 and one the other way; the fourth is apart.
  Mesh mesh(nodesAt({{0, 0, 0},
                     {1, 0, 0},
                     {0, 1, 0},
                     {0, 0, 1},
                     {0, -1, 0},
                     {9, 9, 9},
                     {9, 8, 9},
                     {8, 9, 9}}),
            trianglesOf({{0, 1, 2}, {0, 1, 3}, {1, 0, 4}, {5, 6, 7}}));
  const zel::UnfoldReport report = zel::unfold(mesh);
  EXPECT_EQ(report.components, 2);
  EXPECT_EQ(report.unfoldedFaces, 4);
}

}  // namespace
