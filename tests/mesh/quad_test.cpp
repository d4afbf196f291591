#include <gtest/gtest.h>

#include "mesh/mesh_builders.h"

namespace {

using namespace zel::test;

TEST(Quad, modifyLeavesTheNormalAndClearsItsType) {
  QuadCL quad;
  const float up[3] = {0, 0, 1};
  quad.SetNormM(up);
  const int corners[4] = {1, 2, 3, 4};
  EXPECT_EQ(quad.ModifyM(corners), 1);
  char type = 9;
  quad.GetNormTypeM(&type);
  EXPECT_EQ(type, 0);
  float normal[3];
  quad.GetNormM(normal);
  EXPECT_EQ(normal[2], 1.0F);
  EXPECT_EQ(quad.IsAvailableM(), 31);
}

TEST(QuadArr, mergeRefusesNothing) {
  QuadArr quads;
  for (int k = 0; k < 2; ++k) {
    EXPECT_EQ(quads.MergeQuadLstM(quadOf(0, 1, 2, 3)), 1);
    EXPECT_EQ(quads.MergeQuadLstM(quadOf(1, 1, 2, 3)), 1);
  }
  EXPECT_EQ(quads.GetAvailableNumM(), 4);
}

TEST(QuadArr, diagonalsAreNoEdges) {
  QuadArr quads;
  quads.MergeQuadLstM(quadOf(0, 1, 2, 3));
  int at = -1;
  EXPECT_EQ(quads.JudgeBoundM(0, 2, &at), 0);
  EXPECT_EQ(at, -1);
  EXPECT_EQ(quads.JudgeBoundM(0, 3, &at), 1);
  EXPECT_EQ(quads.JudgeBoundM(3, 0, &at), 1);
  EXPECT_EQ(quads.GetOneNeighbourPntM(3), 0);
}

TEST(QuadArr, edgesAreSeenFromTheFirstCornerOnly) {
  QuadArr quads;
  quads.MergeQuadLstM(quadOf(5, 1, 5, 2));
  int at = -1;
  EXPECT_EQ(quads.JudgeBoundM(5, 1, &at), 1);
  EXPECT_EQ(quads.JudgeBoundM(5, 5, &at), 0);
}

TEST(QuadArr, renamingKeepsWhatCollapses) {
  QuadArr quads;
  quads.MergeQuadLstM(quadOf(0, 1, 2, 3));
  quads.ChangeNodeIdxM(1, 2);
  int corners[4];
  const QuadArr& reader = quads;
  reader[0].GetQuadM(corners);
  EXPECT_EQ(corners[1], 2);
  EXPECT_EQ(reader[0].IsAvailableM(), 31);
  EXPECT_EQ(quads.GetBoundM(), 1);
}

TEST(QuadArr, renumberingCollapsesOnOppositeCorners) {
  QuadArr quads;
  quads.MergeQuadLstM(quadOf(0, 1, 2, 3));
  quads.MergeQuadLstM(quadOf(1, 4, 3, 5));
  IntArr map;
  for (const int node : {0, 1, 0, 3, 4, 5}) {
    map.AddItemM(node);
  }
  quads.ResetNodeIdxM(map);
  EXPECT_EQ(quads.GetBoundM(), 1);
  EXPECT_EQ(quads.GetOneNeighbourPntM(1), 4);
}

}  // namespace
