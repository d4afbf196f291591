#include <gtest/gtest.h>

#include "mesh/mesh_builders.h"

namespace {

using namespace zel::test;
using Corners = std::array<int, 3>;

constexpr float kUp[3] = {0, 0, 1};

TEST(Triangle, freshFaceHasNoNodes) {
  const TriangleCL face;
  EXPECT_EQ(face.IsAvailableM(), 30);
  EXPECT_EQ(face.record().corners[2], -2147483647);
  EXPECT_EQ(face.GetIdxM(5), -2147483647);
  EXPECT_EQ(face.GetIdxM(-2147483647), 0);
}

TEST(Triangle, settersDifferInTagAndNormalType) {
  TriangleCL face;
  char type = 9;
  face.SetValueM(1, 2, 3, kUp);
  EXPECT_EQ(face.IsAvailableM(), 30);
  face.GetNormTypeM(&type);
  EXPECT_EQ(type, 1);
  const int corners[3] = {4, 5, 6};
  EXPECT_EQ(face.ModifyM(corners, kUp), 1);
  EXPECT_EQ(face.IsAvailableM(), 31);
  face.DelItemM();
  EXPECT_EQ(face.IsAvailableM(), 32);
}

TEST(Triangle, edgeAndCornerQuestions) {
  const TriangleCL face = triangleOf(4, 9, 7);
  EXPECT_EQ(face.FindEdgeM(7, 4), 1);
  EXPECT_EQ(face.FindEdgeM(4, 4), 0);
  EXPECT_EQ(triangleOf(4, 4, 7).FindEdgeM(4, 4), 1);
  const int reflected[3] = {7, 9, 4};
  const int other[3] = {7, 9, 9};
  EXPECT_EQ(face.FindTriangleM(reflected), 1);
  EXPECT_EQ(face.FindTriangleM(other), 0);
  int others[2] = {0, 0};
  face.GetOtherTwoIdxI(1, others);
  EXPECT_EQ(others[0], 4);
  EXPECT_EQ(others[1], 7);
  face.GetOtherTwoIdxI(3, others);
  EXPECT_EQ(others[0], 4);
}

TEST(TriangleArr, mergeRefusesDegenerateAndDuplicateFaces) {
  TriangleArr faces;
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(5, 5, 7)), 0);
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(0, 1, 2)), 1);
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(2, 1, 0)), 0);
  faces.DelItemM(0);
  faces.AddItemM(triangleOf(8, 8, 9));
  faces.AddItemM(triangleOf(0, 1, 2, 32));
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(1, 2, 0)), 0);  // deleted faces match, too
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(7, 8, 9)), 0);  // all of (8, 8, 9) lies within
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(7, 6, 9)), 1);
}

TEST(TriangleArr, oneSearchTakesTheLastFaceTheOtherTheFirst) {
  TriangleArr faces;
  for (int slot = 0; slot < 8; ++slot) {
    faces.AddItemM(slot == 3 || slot == 7 ? triangleOf(0, 1, 2) : triangleOf(50, 60, slot));
  }
  const int corners[3] = {2, 0, 1};
  int at = -1;
  EXPECT_EQ(faces.FindTriangleM(corners), 7);
  EXPECT_EQ(faces.FindTriangleM(corners, &at), 1);
  EXPECT_EQ(at, 3);
  faces.AddItemM(triangleOf(0, 0, 1));
  const int wider[3] = {0, 1, 5};
  EXPECT_EQ(faces.FindTriangleM(wider), 8);
  EXPECT_EQ(faces.FindTriangleM(wider, &at), 0);
  EXPECT_EQ(at, 3);
}

TEST(TriangleArr, edgeCountsOfAClosedFan) {
  const TriangleArr fan = trianglesOf({{0, 1, 2}, {0, 2, 3}, {0, 3, 4}, {0, 4, 1}});
  int at = -1;
  EXPECT_EQ(fan.JudgeBoundM(0, 2, &at), 2);
  EXPECT_EQ(at, 1);
  EXPECT_EQ(fan.JudgeBoundM(2, 1, &at), 1);
  EXPECT_EQ(at, 0);
  EXPECT_EQ(fan.JudgeBoundM(1, 3, &at), 0);
  EXPECT_EQ(at, 0);
}

TEST(TriangleArr, boundaryWalkGoesRoundTheRim) {
  const TriangleArr fan = trianglesOf({{0, 1, 2}, {0, 2, 3}, {0, 3, 4}, {0, 4, 1}});
  int previous = -1;
  int node = 1;
  std::vector<int> rim;
  for (int step = 0; step < 4; ++step) {
    int edge[2] = {node, -1};
    int at = -1;
    ASSERT_EQ(fan.GetOneBoundWithStIdxM(previous, edge, &at), 1);
    previous = node;
    node = edge[1];
    rim.push_back(node);
  }
  EXPECT_EQ(rim, (std::vector<int>{2, 3, 4, 1}));
}

TEST(TriangleArr, boundaryStepTurnsBackOrReportsTheLastCount) {
  // Every other edge at node 0 is inner, so the only way is back to 1.
  const TriangleArr faces = trianglesOf({{0, 1, 2}, {0, 2, 3}, {2, 0, 3}});
  int edge[2] = {0, -1};
  int at = -1;
  EXPECT_EQ(faces.GetOneBoundWithStIdxM(1, edge, &at), 1);
  EXPECT_EQ(edge[1], 1);
  edge[1] = -1;
  const TriangleArr twice = trianglesOf({{0, 1, 2}, {0, 2, 1}});
  EXPECT_EQ(twice.GetOneBoundWithStIdxM(9, edge, &at), 2);
  EXPECT_EQ(edge[1], -1);
  EXPECT_EQ(TriangleArr().GetOneBoundWithStIdxM(9, edge, &at), 0);
}

TEST(TriangleArr, directedNeighbourNeedsTheEdgeInItsOwnOrder) {
  TriangleArr faces = trianglesOf({{0, 1, 2}, {1, 0, 3}});
  const int edge[2] = {0, 1};
  int out = 5;
  EXPECT_EQ(faces.getNextRelTriangleIdxM(0, edge, &out, 1), 0);
  EXPECT_EQ(out, -2147483647);
  EXPECT_EQ(faces.getNextRelTriangleIdxM(0, edge, &out, 0), 1);
  EXPECT_EQ(out, 1);
  EXPECT_EQ(faces.getNextRelTriangleIdxM(1, edge, &out, 1), 1);
  faces.DelItemM(0);
  EXPECT_EQ(faces.getNextRelTriangleIdxM(1, edge, &out, 1), 0);
}

TEST(TriangleArr, firstValidFaceIsAlsoADeletedOne) {
  TriangleArr faces = trianglesOf({{0, 1, 2}, {1, 0, 3}, {4, 5, 6}});
  EXPECT_EQ(faces.getFirstValidIdxM(), -2147483647);
  faces[2].SetDeleteTagM(37);
  EXPECT_EQ(faces.getFirstValidIdxM(), 2);
  faces.DelItemM(1);
  EXPECT_EQ(faces.getFirstValidIdxM(), 1);
}

TEST(TriangleArr, renamingDeletesWhatCollapses) {
  TriangleArr faces = trianglesOf({{3, 4, 9}, {3, 8, 9}, {1, 2, 5}, {4, 3, 9}});
  faces.ChangeNodeIdxM(3, 4);
  const TriangleArr& reader = faces;
  EXPECT_EQ(reader[0].IsAvailableM(), 32);
  EXPECT_EQ(cornersOf(faces, 1), (Corners{4, 8, 9}));
  EXPECT_EQ(faces.GetBoundM(), 3);  // the last one collapsed
  EXPECT_EQ(faces.GetAvailableNumM(), 2);
}

TEST(TriangleArr, renumberingCompactsAndComesHome) {
  TriangleArr faces = trianglesOf({{0, 1, 2}, {1, 2, 3}, {0, 2, 3}, {3, 1, 2}, {1, 3, 0}});
  faces.DelItemM(2);
  IntArr map;
  for (const int node : {0, 0, 2, 3}) {
    map.AddItemM(node);
  }
  EXPECT_EQ(faces.GetLengthM(), 8);
  faces.ResetNodeIdxM(map);
  EXPECT_EQ(faces.GetBoundM(), 2);  // (0, 0, 2), the deleted one and (0, 3, 0) go
  EXPECT_EQ(faces.GetAvailableNumM(), 2);
  EXPECT_EQ(faces.GetLengthM(), 4);
  EXPECT_EQ(cornersOf(faces, 0), (Corners{0, 2, 3}));
  EXPECT_EQ(cornersOf(faces, 1), (Corners{3, 0, 2}));
}

TEST(TriangleArr, renumberingToNoNodeCollapses) {
  TriangleArr faces = trianglesOf({{0, 7, 8}, {0, 1, 9}});
  IntArr map;
  map.AddItemM(0);
  map.AddItemM(1);
  faces.ResetNodeIdxM(map);  // 7 and 8 both lead to "no node"
  EXPECT_EQ(faces.GetBoundM(), 1);
  EXPECT_EQ(cornersOf(faces, 0), (Corners{0, 1, -2147483647}));
}

TEST(TriangleArr, purgeKeepsTheOrderAndForgetsTheIncrement) {
  TriangleArr faces;
  faces.SetIncrementM(33);
  for (int slot = 0; slot < 6; ++slot) {
    faces.AddItemM(triangleOf(slot, 50, 60));
  }
  faces.PurgeDeletedTrianglesM();
  EXPECT_EQ(faces.GetLengthM(), 8);
  faces.DelItemM(1);
  faces.DelItemM(4);
  faces.PurgeDeletedTrianglesM();
  EXPECT_EQ(faces.GetLengthM(), 4);
  ASSERT_EQ(faces.GetBoundM(), 4);
  const int kept[4] = {0, 2, 3, 5};
  for (int slot = 0; slot < 4; ++slot) {
    EXPECT_EQ(cornersOf(faces, slot)[0], kept[slot]);
  }
  const int corners[3] = {7, 8, 9};
  faces.ModifyM(1, corners, kUp);
  EXPECT_EQ(faces.GetLengthM(), 14);  // grown by the increment, 10 again
  EXPECT_EQ(cornersOf(faces, 1), (Corners{7, 8, 9}));
  EXPECT_EQ(cornersOf(faces, 2)[0], 2);
  faces.ModifyM(6, corners, kUp);
  EXPECT_EQ(faces.GetBoundM(), 5);
}

TEST(TriangleArr, deletingAroundANodeSparesDeletedFaces) {
  TriangleArr faces = trianglesOf({{0, 1, 2}, {3, 4, 5}, {1, 6, 7}});
  faces.DelTriangleByVertexM(1);
  EXPECT_EQ(faces.GetAvailableNumM(), 1);
  EXPECT_EQ(faces.GetBoundM(), 2);
  faces.DelTriangleByVertexM(1);
  EXPECT_EQ(faces.GetBoundM(), 2);
}

TEST(TriangleArr, neighbourOfACornerWrapsRound) {
  const TriangleArr faces = trianglesOf({{4, 9, 7}, {7, 1, 2}});
  EXPECT_EQ(faces.GetOneNeighbourPntM(7), 4);
  EXPECT_EQ(faces.GetOneNeighbourPntM(8), -2147483647);
}

TEST(TriangleArr, secondEdgeIsSkippedOnceTheFirstWins) {
  const NodeArr nodes = nodesAt({{0, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0.1F, 1, 0}, {5, 0.2F, 0}});
  const TriangleArr faces = trianglesOf({{0, 1, 2}, {0, 3, 1}, {4, 0, 1}});
  const float x[3] = {1, 0, 0};
  Int2DArr around;
  faces.FindTriangleM(0, &around);
  ASSERT_EQ(around.GetBoundM(), 3);
  int best = -1;
  // Face 0 wins with its first edge (0.707), so its second one, exactly perpendicular, is not
  // seen; face 1 then wins with 0.0995.
  faces.FindTriangleByVectM(x, nodes, around, &best);
  EXPECT_EQ(best, 1);
  Int2DArr bad;
  const int pair[2] = {17, 5};
  bad.AddItemM(pair);
  best = -1;
  faces.FindTriangleByVectM(x, nodes, bad, &best);
  EXPECT_EQ(best, -1);
}

}  // namespace
