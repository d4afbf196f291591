#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "support/meshes.h"
#include "zel/zel.h"

namespace {

using namespace zel::test;

TEST(Node, pointAndNormalMoveDifferently) {
  NodeCL node;
  EXPECT_EQ(node.IsAvailableM(), 30);
  const float point[3] = {1, 2, 3};
  const float normal[3] = {0, 0, 1};
  node.SetNodeM(point, normal);
  float move[16];
  slGenerateMoveMatrix(point, 1.0F, move);
  node.TransByMatrixM(move);
  float out[3];
  node.GetPntM(out);
  EXPECT_EQ(out[2], 6.0F);
  node.GetNormalM(out);
  EXPECT_EQ(out[2], 1.0F);
  EXPECT_EQ(node.CompareM(nodeAt({2.00005F, 4.0F, 6.0F}, 32)), 1);
  EXPECT_EQ(node.CompareM(nodeAt({2.0002F, 4.0F, 6.0F})), 0);
}

TEST(NodeArr, badIndicesAreHarmless) {
  NodeArr nodes = nodesAt({{1, 2, 3}});
  for (const int bad : {-1, 1, 4, 2147483647, -2147483647}) {
    EXPECT_EQ(pointOf(nodes, bad), (Point{0, 0, 0}));
    nodes.SetNodeNormM(bad, pointOf(nodes, 0).data());
    nodes.DelItemM(bad);
    EXPECT_EQ(nodes.GetItemPM(bad), nullptr);
    NodeCL out(char{31});
    EXPECT_EQ(nodes.GetItemM(&out, bad), 1);
    EXPECT_EQ(out.IsAvailableM(), 30);
    nodes.AddNodeByIndex(bad, nodes);
  }
  nodes[99].SetDeleteTagM(31);
  nodes[2].SetDeleteTagM(31);  // beyond the bound, yet live
  nodes.AddNodeByIndex(2, nodesAt({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}));
  nodes.SetItemM(nodeAt({0, 0, 0}), -1);
  nodes.InsertItemM(nodeAt({0, 0, 0}), 2);
  EXPECT_EQ(nodes.GetBoundM(), 1);
  EXPECT_EQ(nodes.GetAvailableNumM(), 1);
}

TEST(NodeArr, addPntWritesTheSlotWhileThereIsRoomElseTheScratchNode) {
  NodeArr nodes = nodesAt({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}});
  NodeCL scratch(char{31});
  const float limit[2] = {1, 1};
  nodes.AddPntAndNormM(scratch, limit, 0.5F, 0.5F, -1.0F, 9, 9, 9);
  EXPECT_EQ(pointOf(nodes, 3)[2], -1.0F);
  EXPECT_EQ(tagOf(nodes, 3), 30);  // the fresh slot's tag stays, yet it counts
  EXPECT_EQ(nodes.GetAvailableNumM(), 4);
  nodes.AddPntAndNormM(scratch, limit, 0.5F, 0.5F, -1.0F, 9, 9, 9);
  EXPECT_EQ(pointOf(nodes, 4)[2], 0.0001F);
  EXPECT_EQ(nodes.GetAvailableNumM(), 5);
  nodes.AddPntAndNormM(scratch, limit, 1.0F, 0.5F, 0, 0, 0, 0);
  nodes.AddPntAndNormM(scratch, limit, 0.5F, -1.1e-8F, 0, 0, 0, 0);
  EXPECT_EQ(nodes.GetBoundM(), 5);
}

TEST(NodeArr, nearestCornerRunsOverSeveralFaces) {
  const NodeArr nodes = nodesAt({{5, 0, 0}, {3, 0, 0}, {2, 0, 0}, {1, 0, 0}});
  float distance = 1e18F;
  int index = -1;
  EXPECT_EQ(nodes.GetNearestNodeM(&distance, &index, triangleOf(0, 1, 77), kOrigin), 1);
  EXPECT_EQ(nodes.GetNearestNodeM(&distance, &index, quadOf(0, 2, 1, -5), kOrigin), 2);
  EXPECT_EQ(distance, 2.0F);
  EXPECT_EQ(nodes.GetNearestNodeM(&distance, &index, triangleOf(0, 0, 0), kOrigin), 2);
}

TEST(NodeArr, descentStopsAtTheFirstEntryThatIsNotNearer) {
  const NodeArr nodes = nodesAt({{5, 0, 0}, {3, 0, 0}, {4, 0, 0}, {0, 0, 0}});
  int position = 0;
  nodes.GetNearestNodeIdxM(nodeAt({0, 0, 0}), intsOf({0, 1, 2, 3}), &position);
  EXPECT_EQ(position, 1);
}

TEST(NodeArr, minPointFollowsTheFirstDirectionThenTheSecond) {
  NodeArr nodes = nodesAt({{3, 1, 0}, {2, 0.5F, 0}, {9, 0, 0}, {1, 0.50005F, 0}});
  nodes.DelItemM(1);  // deleted nodes take part
  int index = -1;
  nodes.GetMinPntIdxM(kOrigin, kAlongY, kAlongX, &index);
  EXPECT_EQ(index, 3);  // slot 2 is nearer in y but farther in x; slot 3 ties with 1 in y
}

TEST(NodeArr, pickingGivesTiesToTheLast) {
  NodeArr nodes = nodesAt({{0.1F, 7, 0}, {0.05F, 0, 0}, {0.05F, 0.1F, 0.002F}, {0.05F, 5, 0}});
  float identity[16];
  slSetIdentity(identity);
  float out[3] = {};
  EXPECT_EQ(nodes.GetSelectedIdxM(identity, kOrigin, 0.5F, out), 2);  // slot 3 ties but lies far
  EXPECT_EQ(out[2], 0.002F);
  EXPECT_EQ(nodes.GetSelectedIdxM(identity, kOrigin, 0.01F, out), -1);
}

TEST(NodeArr, oppositeDirectionsAlongYAreDifferentLines) {
  EXPECT_EQ(nodesAt({{0, 0, 0}, {0, 1, 0}, {0, -1, 0}}).IsOneLineM(), 0);
  EXPECT_EQ(nodesAt({{0, 0, 0}, {1, 0, 0}, {-2, 0, 0}}).IsOneLineM(), 1);
  EXPECT_EQ(nodesAt({{0, 0, 0}, {0, 0, 0}, {1, 1, 0}, {3, 3, 0}}).IsOneLineM(), 1);
  EXPECT_EQ(nodesAt({{0, 0, 0}, {0, 0, 0}, {1, 1, 0}, {3, 3.1F, 0}}).IsOneLineM(), 0);
  EXPECT_EQ(nodesAt({{0, 0, 0}, {1, 5, 9}}).IsOneLineM(), 1);
}

TEST(NodeArr, extentsSkipDeletedNodes) {
  NodeArr nodes = nodesAt({{100, -100, 0}, {2, 1, 3}, {-1, 5, 3}});
  nodes.DelItemM(0);
  float x = 0;
  float y = 0;
  nodes.GetMinXY(&x, &y);
  EXPECT_EQ(x, -1.0F);
  EXPECT_EQ(y, 1.0F);
  const float diagonal[3] = {1, 1, 0};
  using Range = std::array<float, 2>;
  Range r[3];
  nodes.GetMaxMinM(kAlongX, kAlongY, diagonal, r[0].data(), r[1].data(), r[2].data());
  EXPECT_EQ(r[0], (Range{-1, 2}));
  EXPECT_EQ(r[2], (Range{3, 4}));
  Point3DArr points;
  nodes.GetPntLstM(&points);
  EXPECT_EQ(points.GetBoundM(), 3);  // deleted nodes keep their place
}

TEST(NodeArr, purgeGathersEveryLiveNodeInSlotZero) {
  NodeArr nodes = nodesAt({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
  nodes.DelItemM(1);
  TriangleArr triangles = trianglesOf({{0, 1, 2}, {2, 5, 6}, {2, 2, 7}});
  IntArr list = intsOf({2, 1, 2});
  nodes.PurgeDeletedNodes(&list, &triangles);
  EXPECT_EQ(pointOf(nodes, 0)[0], 2.0F);
  EXPECT_EQ(nodes.GetBoundM(), 3);
  EXPECT_EQ(nodes.GetAvailableNumM(), 2);
  EXPECT_EQ(tagOf(triangles, 0), 32);  // (0, 1, 0) collapsed
  EXPECT_EQ(cornersOf(triangles, 1), (Corners{0, 5, 6}));
  EXPECT_EQ(cornersOf(triangles, 2), (Corners{0, 2, 7}));
  EXPECT_EQ(list[0], 0);
  EXPECT_EQ(list[2], 2);  // only the first entry of a node follows
}

TEST(NodeArr, mergingARunMovesFacesToTheTarget) {
  NodeArr nodes = nodesAt({{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}});
  TriangleArr triangles = trianglesOf({{1, 2, 3}, {0, 4, 2}});
  IntArr list = intsOf({4, 0, 1, 0});
  nodes.MergeNodesM(&list, 0, 3, &triangles);
  EXPECT_EQ(cornersOf(triangles, 0), (Corners{0, 2, 3}));
  EXPECT_EQ(triangles.GetBoundM(), 1);  // (0, 0, 2) collapsed and was the last
  EXPECT_EQ(nodes.GetBoundM(), 4);      // node 4 was the last
  EXPECT_EQ(nodes.GetAvailableNumM(), 3);
  EXPECT_EQ(tagOf(nodes, 0), 31);  // an entry equal to the target keeps the node
  EXPECT_EQ(tagOf(nodes, 1), 32);
  EXPECT_EQ(list.GetAvailableNumM(), 1);
}

TEST(NodeArr, gridRowsAreReversed) {
  NodeArr nodes = nodesAt({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}, {5, 0, 0}});
  nodes.InverseMeshNodeLstM(3, 2);
  EXPECT_EQ(pointOf(nodes, 0)[0], 4.0F);
  EXPECT_EQ(pointOf(nodes, 2)[0], 2.0F);
  EXPECT_EQ(pointOf(nodes, 5)[0], 1.0F);
  nodes.InverseMeshNodeLstM(4, 2);  // larger than the list
  EXPECT_EQ(pointOf(nodes, 0)[0], 4.0F);
}

TEST(NodeArr, sweepRepeatsTheFirstRingAtTheEnd) {
  NodeArr nodes = nodesAt({{1, 0, 0}, {2, 0, 5}, {3, 0, 0}});
  nodes.DelItemM(2);
  nodes.AddItemM(nodeAt({4, 0, 0}));
  nodes.DelItemM(0);
  EXPECT_EQ(nodes.ExtendByRotateToCircleM(5, kOrigin, kUp), 1);
  EXPECT_EQ(nodes.GetLengthM(), 18);  // (5 + 1) x 3
  EXPECT_EQ(nodes.GetBoundM(), 3 + 4 * 2);
  EXPECT_NEAR(pointOf(nodes, 3)[1], 2.0F, 1e-5);  // a quarter turn
  EXPECT_NEAR(pointOf(nodes, 9)[0], 2.0F, 1e-5);
  EXPECT_NEAR(pointOf(nodes, 10)[0], 4.0F, 1e-5);
  nodes.ExtendByRotateToCircleM(0, kOrigin, kUp);
  nodes.ExtendByRotateToCircleM(-7, kOrigin, kUp);
  nodes.ExtendByRotateToCircleM(2147483647, kOrigin, kUp);
  EXPECT_EQ(nodes.GetBoundM(), 11);
  EXPECT_EQ(NodeArr().ExtendByRotateToCircleM(2147483647, kOrigin, kUp), 1);  // at once
}

TEST(Elements, writeOperationHidesTheBasesWithoutOverriding) {
  using BaseWrite = int (KwBaseCL::*)(FILE*) const;
  const BaseWrite write = &KwBaseCL::FmWriteZelFileM;
  FILE* own = std::tmpfile();
  FILE* base = std::tmpfile();
  const NodeCL node = nodeAt({1, 2, 3});
  const KwBaseCL& asBase = node;
  node.FmWriteZelFileM(own);
  (asBase.*write)(base);
  EXPECT_LE(std::ftell(base), 6);  // the tag alone
  EXPECT_GE(std::ftell(own), std::ftell(base));
  std::fclose(own);
  std::fclose(base);
}

}  // namespace
