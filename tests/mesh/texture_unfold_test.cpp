#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "support/meshes.h"
#include "zel/containers/point2d_arr.h"

namespace {

using namespace zel::test;
using Uv = std::array<double, 2>;

int unfold(Mesh& mesh, Point2DArr& uv, const XYCoordSysD& system = noSystem()) {
  setFaceNormals(mesh);
  return mesh.triangles.GetTexCoordM(system, &uv, mesh.nodes);
}

Uv at(const Point2DArr& uv, int entry) {
  float value[2];
  uv.GetItemM(value, entry);
  return {value[0], value[1]};
}

double planeDistance(const Point2DArr& uv, int a, int b) {
  return std::hypot(at(uv, a)[0] - at(uv, b)[0], at(uv, a)[1] - at(uv, b)[1]);
}

void setNodeNormals(Mesh& mesh, const Point& normal) {
  for (int node = 0; node < mesh.nodes.GetBoundM(); ++node) {
    mesh.nodes.SetNodeNormM(node, normal.data());
  }
}

/// The largest difference between a face's edges in the plane and in space.
double worstEdge(const Mesh& mesh, const Point2DArr& uv) {
  double worst = 0.0;
  for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
    const auto corners = mesh.corners(slot);
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t l = (k + 1) % 3;
      const int entry = 3 * slot;
      const double inPlane =
          planeDistance(uv, entry + static_cast<int>(k), entry + static_cast<int>(l));
      const double inSpace = distance(mesh.point(corners[k]), mesh.point(corners[l]));
      worst = std::max(worst, std::fabs(inSpace - inPlane));
    }
  }
  return worst;
}

TEST(Unfold, singleFaceIsProjectedAndFinished) {
  Mesh mesh{nodesAt({{0, 0, 0}, {3, 0, 0}, {0, 4, 0}}), trianglesOf({{0, 1, 2}})};
  Point2DArr uv;
  EXPECT_EQ(unfold(mesh, uv), 1);
  EXPECT_EQ(uv.GetBoundM(), 3);
  EXPECT_EQ(at(uv, 0), (Uv{0.0, 0.0}));
  EXPECT_NEAR(worstEdge(mesh, uv), 0.0, 1e-6);
  EXPECT_EQ(tagOf(mesh.triangles, 0), 30);
  EXPECT_EQ(mesh.triangles.GetAvailableNumM(), 0);
}

TEST(Unfold, sharedEdgeKeepsItsCoordinatesAndTheFaceLandsBeyondIt) {
  Mesh mesh{nodesAt({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}),
            trianglesOf({{0, 1, 2}, {0, 2, 3}})};
  Point2DArr uv;
  EXPECT_EQ(unfold(mesh, uv), 1);
  EXPECT_EQ(at(uv, 3), at(uv, 0));
  EXPECT_EQ(at(uv, 4), at(uv, 2));
  EXPECT_NEAR(planeDistance(uv, 1, 5), std::sqrt(8.0), 1e-5);  // not folded onto each other
}

TEST(Unfold, foldedStripKeepsLengthsAndAngles) {
  // A strip one cell wide, folded at every row like an accordion: developable without a gap.
  Mesh mesh =
      makeGrid(1, 200, [](float, float y) { return static_cast<int>(y) % 2 == 0 ? 0.0F : 0.7F; });
  Point2DArr uv;
  EXPECT_EQ(unfold(mesh, uv), 1);
  EXPECT_LT(worstEdge(mesh, uv), 2e-3);
}

TEST(Unfold, systemPutsTheNearestNodeAtItsOwnCoordinates) {
  Mesh mesh = makeFlatGrid(4, 3);
  setNodeNormals(mesh, {0, 0, 1});
  const XYCoordSysD cs{{1.5F, 1.1F, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  Point2DArr uv;
  EXPECT_EQ(unfold(mesh, uv, cs), 1);
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
  // A face in a plane tilted by 0.5 radians about the x axis.
  const float c = std::cos(0.5F);
  const float s = std::sin(0.5F);
  Mesh mesh{nodesAt({{0, 0, 0}, {2, 0, 0}, {0, 2 * c, 2 * s}}), trianglesOf({{0, 1, 2}})};
  setNodeNormals(mesh, {0, -s, c});
  const XYCoordSysD cs{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  Point2DArr uv;
  EXPECT_EQ(unfold(mesh, uv, cs), 1);
  EXPECT_NEAR(at(uv, 1)[0], 2.0, 1e-5);
  EXPECT_NEAR(at(uv, 2)[1], 2.0, 1e-5);
  EXPECT_NEAR(at(uv, 2)[0], 0.0, 1e-5);
}

TEST(Unfold, coincidentCornersAndBadIndicesGiveAResult) {
  Mesh mesh{nodesAt({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {1, 1, 0}}),
            trianglesOf({{0, 1, 2}, {0, 2, 3}})};
  Point2DArr uv;
  EXPECT_EQ(unfold(mesh, uv), 1);
  for (int entry = 0; entry < 6; ++entry) {
    EXPECT_TRUE(std::isfinite(at(uv, entry)[0]));
  }
  Mesh bad = makeFlatGrid(1, 1);
  bad.addTriangle(3, 0, 2147483647);
  bad.addTriangle(0, -5, 3);
  Point2DArr badUv;
  EXPECT_EQ(unfold(bad, badUv), 0);
  Mesh none;
  Point2DArr noneUv;
  EXPECT_EQ(unfold(none, noneUv), 1);
  none.addTriangle(0, 1, 2);
  EXPECT_EQ(unfold(none, noneUv), 0);
  const TriangleCL face = std::as_const(mesh.triangles)[1];
  face.SetTexCoordM(1431655766, 0, 1, nullptr, nullptr, nullptr, mesh.nodes, &noneUv);
  EXPECT_EQ(noneUv.GetBoundM(), 0);
}

}  // namespace
