#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "support/meshes.h"
#include "zel/containers/point2d_arr.h"
#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace {

using zel::test::Mesh;

XYCoordSysD noSystem() {
  XYCoordSysD cs{};
  cs.origin[0] = zel::kFloatMark;
  return cs;
}

std::array<double, 2> at(const Point2DArr& uv, int entry) {
  float value[2];
  uv.GetItemM(value, entry);
  return {value[0], value[1]};
}

double planeDistance(const Point2DArr& uv, int a, int b) {
  return std::hypot(at(uv, a)[0] - at(uv, b)[0], at(uv, a)[1] - at(uv, b)[1]);
}

double spaceDistance(const Mesh& mesh, int a, int b) {
  const auto p = mesh.point(a);
  const auto q = mesh.point(b);
  double square = 0.0;
  for (std::size_t k = 0; k < 3; ++k) {
    square += (static_cast<double>(p[k]) - q[k]) * (static_cast<double>(p[k]) - q[k]);
  }
  return std::sqrt(square);
}

/// The largest difference between a face's edges in the plane and in space.
double worstEdge(const Mesh& mesh, const Point2DArr& uv) {
  double worst = 0.0;
  for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
    const auto corners = mesh.corners(slot);
    for (int k = 0; k < 3; ++k) {
      const int l = (k + 1) % 3;
      const double inSpace = spaceDistance(mesh, corners[static_cast<std::size_t>(k)],
                                           corners[static_cast<std::size_t>(l)]);
      const double inPlane = planeDistance(uv, 3 * slot + k, 3 * slot + l);
      worst = std::max(worst, std::fabs(inSpace - inPlane));
    }
  }
  return worst;
}

int tagOf(const Mesh& mesh, int slot) {
  TriangleCL face;
  mesh.triangles.GetItemM(&face, slot);
  return face.IsAvailableM();
}

TEST(Unfold, singleFaceIsProjectedAndFinished) {
  Mesh mesh;
  mesh.addNode(0, 0);
  mesh.addNode(3, 0);
  mesh.addNode(0, 4);
  mesh.addTriangle(0, 1, 2);
  zel::test::setFaceNormals(mesh);
  Point2DArr uv;
  EXPECT_EQ(mesh.triangles.GetTexCoordM(noSystem(), &uv, mesh.nodes), 1);
  EXPECT_EQ(uv.GetBoundM(), 3);
  EXPECT_EQ(at(uv, 0), (std::array<double, 2>{0.0, 0.0}));
  EXPECT_NEAR(worstEdge(mesh, uv), 0.0, 1e-6);
  EXPECT_EQ(tagOf(mesh, 0), 30);
  EXPECT_EQ(mesh.triangles.GetAvailableNumM(), 0);
}

TEST(Unfold, sharedEdgeKeepsItsCoordinatesAndTheFaceLandsBeyondIt) {
  Mesh mesh;
  mesh.addNode(0, 0);
  mesh.addNode(2, 0);
  mesh.addNode(2, 2);
  mesh.addNode(0, 2, 0.0F);
  mesh.addTriangle(0, 1, 2);
  mesh.addTriangle(0, 2, 3);
  zel::test::setFaceNormals(mesh);
  Point2DArr uv;
  EXPECT_EQ(mesh.triangles.GetTexCoordM(noSystem(), &uv, mesh.nodes), 1);
  EXPECT_EQ(at(uv, 3), at(uv, 0));
  EXPECT_EQ(at(uv, 4), at(uv, 2));
  EXPECT_NEAR(planeDistance(uv, 1, 5), std::sqrt(8.0), 1e-5);  // not folded onto each other
}

TEST(Unfold, foldedStripKeepsLengthsAndAngles) {
  // A strip one cell wide, folded at every row like an accordion: developable without a gap.
  Mesh mesh = zel::test::makeGrid(
      1, 200, [](float, float y) { return static_cast<int>(y) % 2 == 0 ? 0.0F : 0.7F; });
  zel::test::setFaceNormals(mesh);
  Point2DArr uv;
  EXPECT_EQ(mesh.triangles.GetTexCoordM(noSystem(), &uv, mesh.nodes), 1);
  EXPECT_LT(worstEdge(mesh, uv), 2e-3);
  for (int slot = 0; slot < 400; ++slot) {
    EXPECT_EQ(tagOf(mesh, slot) == 31, false);
  }
}

TEST(Unfold, systemPutsTheNearestNodeAtItsOwnCoordinates) {
  Mesh mesh = zel::test::makeFlatGrid(4, 3);
  zel::test::setFaceNormals(mesh);
  const float up[3] = {0, 0, 1};
  for (int node = 0; node < mesh.nodes.GetBoundM(); ++node) {
    mesh.nodes.SetNodeNormM(node, up);
  }
  const XYCoordSysD cs{{1.5F, 1.1F, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  Point2DArr uv;
  EXPECT_EQ(mesh.triangles.GetTexCoordM(cs, &uv, mesh.nodes), 1);
  EXPECT_LT(worstEdge(mesh, uv), 1e-4);
  for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
    const auto corners = mesh.corners(slot);
    for (std::size_t k = 0; k < 3; ++k) {
      const auto p = mesh.point(corners[k]);
      const auto flat = at(uv, 3 * slot + static_cast<int>(k));
      EXPECT_NEAR(flat[0], p[0] - 1.5, 1e-4);
      EXPECT_NEAR(flat[1], p[1] - 1.1, 1e-4);
    }
  }
}

TEST(Unfold, tiltedNormalIsTurnedOntoTheSystemsZ) {
  Mesh mesh;
  // A face in a plane tilted by 0.5 radians about the x axis.
  const float c = std::cos(0.5F);
  const float s = std::sin(0.5F);
  mesh.addNode(0, 0, 0);
  mesh.addNode(2, 0, 0);
  mesh.addNode(0, 2 * c, 2 * s);
  mesh.addTriangle(0, 1, 2);
  zel::test::setFaceNormals(mesh);
  const float normal[3] = {0, -s, c};
  for (int node = 0; node < 3; ++node) {
    mesh.nodes.SetNodeNormM(node, normal);
  }
  const XYCoordSysD cs{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  Point2DArr uv;
  EXPECT_EQ(mesh.triangles.GetTexCoordM(cs, &uv, mesh.nodes), 1);
  EXPECT_NEAR(at(uv, 1)[0], 2.0, 1e-5);
  EXPECT_NEAR(at(uv, 2)[1], 2.0, 1e-5);
  EXPECT_NEAR(at(uv, 2)[0], 0.0, 1e-5);
}

TEST(Unfold, facesOutOfReachKeepTheirEntriesAndTheirTag) {
  Mesh mesh = zel::test::makeFlatGrid(1, 1);
  const int a = mesh.addNode(10, 0);
  const int b = mesh.addNode(11, 0);
  const int c = mesh.addNode(10, 1);
  mesh.addTriangle(a, b, c);
  zel::test::setFaceNormals(mesh);
  Point2DArr uv;
  EXPECT_EQ(mesh.triangles.GetTexCoordM(noSystem(), &uv, mesh.nodes), 0);
  EXPECT_EQ(tagOf(mesh, 2), 31);
  EXPECT_EQ(mesh.triangles.GetAvailableNumM(), 1);
  EXPECT_FLOAT_EQ(static_cast<float>(at(uv, 6)[0]), -1.0e18F);
}

TEST(Unfold, faceWoundAgainstItsNeighbourIsNotReachedAcrossTheEdge) {
  Mesh mesh;
  mesh.addNode(0, 0);
  mesh.addNode(1, 0);
  mesh.addNode(1, 1);
  mesh.addNode(0, 1);
  mesh.addTriangle(0, 1, 2);
  mesh.addTriangle(0, 3, 2);
  zel::test::setFaceNormals(mesh);
  Point2DArr uv;
  EXPECT_EQ(mesh.triangles.GetTexCoordM(noSystem(), &uv, mesh.nodes), 0);
  EXPECT_EQ(tagOf(mesh, 1), 31);
}

TEST(Unfold, restartsFindEveryBranchOfARuggedDisc) {
  Mesh mesh = zel::test::makeGrid(
      40, 40, [](float x, float y) { return std::sin(x * 0.9F) * std::cos(y * 0.7F); });
  zel::test::setFaceNormals(mesh);
  mesh.triangles.DelItemM(77);  // deleted faces take part as places to restart from
  Point2DArr uv;
  EXPECT_EQ(mesh.triangles.GetTexCoordM(noSystem(), &uv, mesh.nodes), 1);
  for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
    EXPECT_NE(tagOf(mesh, slot), 31) << slot;
  }
}

TEST(Unfold, coincidentCornersAndBadIndicesGiveAResult) {
  Mesh mesh;
  mesh.addNode(0, 0);
  mesh.addNode(0, 0);
  mesh.addNode(0, 0);
  mesh.addNode(1, 1);
  mesh.addTriangle(0, 1, 2);
  mesh.addTriangle(0, 2, 3);
  Point2DArr uv;
  EXPECT_EQ(mesh.triangles.GetTexCoordM(noSystem(), &uv, mesh.nodes), 1);
  for (int entry = 0; entry < 6; ++entry) {
    EXPECT_TRUE(std::isfinite(at(uv, entry)[0]));
  }
  Mesh bad = zel::test::makeFlatGrid(1, 1);
  bad.addTriangle(3, 0, 2147483647);
  bad.addTriangle(0, -5, 3);
  Point2DArr badUv;
  EXPECT_EQ(bad.triangles.GetTexCoordM(noSystem(), &badUv, bad.nodes), 0);
  Mesh none;
  Point2DArr noneUv;
  EXPECT_EQ(none.triangles.GetTexCoordM(noSystem(), &noneUv, none.nodes), 1);
  none.addTriangle(0, 1, 2);
  EXPECT_EQ(none.triangles.GetTexCoordM(noSystem(), &noneUv, none.nodes), 0);
  const TriangleCL face = std::as_const(mesh.triangles)[1];
  face.SetTexCoordM(1431655766, 0, 1, nullptr, nullptr, nullptr, mesh.nodes, &noneUv);
  EXPECT_EQ(noneUv.GetBoundM(), 0);
}

}  // namespace
