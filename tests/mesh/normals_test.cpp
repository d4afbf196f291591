#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "support/meshes.h"

namespace {

using namespace zel::test;

constexpr float kDown[3] = {0, 0, -1};

TEST(Normals, flatNormalFollowsTheWinding) {
  NodeArr nodes = nodesAt({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 5, 5}});
  nodes.ReGenNormalVectM(triangleOf(0, 1, 2));
  for (const int corner : {0, 1, 2}) {
    EXPECT_EQ(normalOf(nodes, corner), (Point{0, 0, 1}));
  }
  nodes.ReGenNormalVectM(triangleOf(0, 2, 1));
  EXPECT_EQ(normalOf(nodes, 1), (Point{0, 0, -1}));
  nodes.ReGenNormalVectM(quadOf(0, 1, 3, 2));  // the third corner does not count
  EXPECT_EQ(normalOf(nodes, 3), (Point{0, 0, 1}));
  nodes.ReGenNormalVectM(triangleOf(0, 2, 9));  // no such node: nothing changes
  EXPECT_EQ(normalOf(nodes, 2), (Point{0, 0, 1}));
  nodes.ReGenNormalVectM(triangleOf(0, 0, 1));
  EXPECT_EQ(normalOf(nodes, 0), (Point{1, 0, 0}));  // degenerate
  nodes.DelItemM(3);                                // its slot is beyond the bound now
  nodes.ReGenNormalVectM(triangleOf(0, 2, 3));
  EXPECT_NEAR(normalOf(nodes, 3)[0], std::sqrt(0.5F), 1e-6);
}

// 3 x 3 nodes, one unit apart.
NodeArr grid() {
  NodeArr nodes;
  for (int k = 0; k < 9; ++k) {
    nodes.AddItemM(nodeAt({static_cast<float>(k % 3), static_cast<float>(k / 3), 0}));
  }
  return nodes;
}

TEST(Normals, everyGridNodeOfAPlaneLooksUp) {
  NodeArr nodes = grid();
  for (int k = 0; k < 9; ++k) {
    EXPECT_EQ(nodes.ReGenNormalVectM(k / 3, k % 3, 3, 3), 1);
    EXPECT_EQ(normalOf(nodes, k), (Point{0, 0, 1})) << k;
  }
}

TEST(Normals, gridNodeWithACoincidingNeighbourLooksToTheDiagonal) {
  NodeArr nodes = grid();
  nodes.SetItemM(nodeAt({1.0005F, 1, 0}), 5);  // right of the middle node
  nodes.SetItemM(nodeAt({2, 2, 1}), 8);        // its diagonal neighbour
  nodes.ReGenNormalVectM(1, 1, 3, 3);          // u = (1, 1, 1), w = (0, 1, 0)
  const float half = std::sqrt(0.5F);
  EXPECT_NEAR(normalOf(nodes, 4)[0], -half, 1e-6);
  EXPECT_NEAR(normalOf(nodes, 4)[2], half, 1e-6);
}

TEST(Normals, gridNodeAtTheRimCopiesItsNeighboursNormal) {
  NodeArr nodes = grid();
  nodes.SetItemM(nodeAt({1.0005F, 2, 0}), 8);  // last row, right neighbour coincides
  nodes.SetNodeNormM(4, kAlongY);
  nodes.ReGenNormalVectM(2, 1, 3, 3);
  EXPECT_EQ(normalOf(nodes, 7), (Point{0, 1, 0}));
  nodes.ReGenNormalVectM(2, 2, 3, 3);  // last column, left neighbour coincides
  EXPECT_EQ(normalOf(nodes, 8), (Point{0, 1, 0}));
}

TEST(Normals, gridsOutsideTheListAreLeftAlone) {
  NodeArr nodes = grid();
  for (const auto& [row, col, rows, cols] :
       {std::array{-1, 0, 3, 3}, std::array{0, 3, 3, 3}, std::array{0, 0, 1, 9},
        std::array{3, 0, 4, 3}, std::array{0, 0, 2147483647, 2147483647}}) {
    EXPECT_EQ(nodes.ReGenNormalVectM(row, col, rows, cols), 1);
  }
  EXPECT_EQ(normalOf(nodes, 0), (Point{0, 0, 0}));
}

TEST(Normals, gridNodeNeedsOnlyTheNeighboursItLooksAt) {
  NodeArr nodes = nodesAt({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});  // the fourth is still to come
  for (int k = 0; k < 4; ++k) {
    nodes.ReGenNormalVectM(k / 2, k % 2, 2, 2);
  }
  EXPECT_EQ(normalOf(nodes, 0), (Point{0, 0, 1}));
  EXPECT_EQ(normalOf(nodes, 1), (Point{0, 0, 0}));
  EXPECT_EQ(normalOf(nodes, 2), (Point{0, 0, 0}));
}

TEST(Normals, facesOnlyBringNormalsToUnitLength) {
  NodeArr nodes = nodesAt({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {9, 9, 9}});
  const float longX[3] = {3, 0, 0};
  for (const int slot : {0, 1, 2, 3}) {
    nodes.SetNodeNormM(slot, longX);
  }
  nodes.DelItemM(1);
  TriangleArr triangles = trianglesOf({{0, 1, 2}, {2, 7, -4}});
  triangles.DelItemM(0);
  const QuadArr quads = quadsOf({{0, 1, 2, 3}});
  EXPECT_EQ(nodes.CalculateNormByFaceviewLst(triangles, quads), 1);
  for (const int slot : {0, 1, 2}) {
    EXPECT_EQ(normalOf(nodes, slot), (Point{1, 0, 0}));
  }
  EXPECT_EQ(normalOf(nodes, 3), (Point{3, 0, 0}));
}

TEST(Normals, negationSparesDeletedNodesButNotDeletedFaces) {
  NodeArr nodes = nodesAt({{0, 0, 0}, {1, 0, 0}});
  nodes.SetNodeNormM(0, kUp);
  nodes.SetNodeNormM(1, kUp);
  nodes.DelItemM(0);
  nodes.NegativeNormalVectM();
  EXPECT_EQ(normalOf(nodes, 0)[2], 1.0F);
  EXPECT_EQ(normalOf(nodes, 1)[2], -1.0F);
  TriangleArr triangles;
  const int corners[3] = {0, 1, 2};
  triangles.AddTriangleM(corners, kUp);
  triangles.AddTriangleM(corners, kUp);
  triangles.DelItemM(0);
  triangles.NegativeNormalVectM();
  EXPECT_EQ(std::as_const(triangles)[0].record().normal[2], -1.0F);
}

TEST(Normals, majorNormalIsTheLargerGroups) {
  TriangleArr triangles;
  const int corners[3] = {0, 1, 2};
  for (const float* normal : {kUp, kDown, kDown, kUp}) {
    triangles.AddTriangleM(corners, normal);
  }
  float out[3];
  triangles.GetMajorNormM(out);
  EXPECT_EQ(out[2], 1.0F);  // a tie goes to slot 0
  triangles.AddTriangleM(corners, kDown);
  triangles.DelItemM(1);  // deleted faces vote
  triangles.GetMajorNormM(out);
  EXPECT_EQ(out[2], -1.0F);
  triangles.DelItemM(2);
  triangles.DelItemM(3);
  triangles.GetMajorNormM(out);
  EXPECT_EQ(out[2], 1.0F);  // fewer than three live faces
}

}  // namespace
