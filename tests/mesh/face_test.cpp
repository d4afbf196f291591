// Triangles and quads alone, and what the random sequences over their lists leave out.

#include <gtest/gtest.h>

#include "support/meshes.h"
#include "zel/containers/int2d_arr.h"

namespace {

using namespace zel::test;

TEST(Faces, settersDifferInTagAndNormalType) {
  TriangleCL triangle;
  EXPECT_EQ(triangle.IsAvailableM(), 30);
  EXPECT_EQ(triangle.GetIdxM(5), -2147483647);
  EXPECT_EQ(triangle.GetIdxM(-2147483647), 0);  // a fresh face has no nodes
  triangle.SetValueM(1, 2, 3, kUp);
  EXPECT_EQ(triangle.IsAvailableM(), 30);
  EXPECT_EQ(triangle.record().normalType, 1);
  const int corners[4] = {1, 2, 3, 4};
  EXPECT_EQ(triangle.ModifyM(corners, kUp), 1);
  EXPECT_EQ(triangle.IsAvailableM(), 31);
  triangle.DelItemM();
  EXPECT_EQ(triangle.IsAvailableM(), 32);
  QuadCL quad;
  quad.SetNormM(kUp);
  EXPECT_EQ(quad.ModifyM(corners), 1);
  EXPECT_EQ(quad.IsAvailableM(), 31);
  char type = 9;
  quad.GetNormTypeM(&type);
  EXPECT_EQ(type, 0);
  EXPECT_EQ(quad.record().normal[2], 1.0F);
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

TEST(TriangleArr, mergeMatchesDeletedFacesAndDegenerateOnesWithin) {
  TriangleArr faces = trianglesOf({{0, 1, 2}, {8, 8, 9}});
  faces.DelItemM(0);
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(5, 5, 7)), 0);
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(2, 1, 0)), 0);
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(7, 8, 9)), 0);  // all of (8, 8, 9) lies within
  EXPECT_EQ(faces.MergeTriangleLstM(triangleOf(7, 6, 9)), 1);
}

TEST(TriangleArr, purgeForgetsTheIncrementWhenItRemoves) {
  TriangleArr faces =
      trianglesOf({{0, 1, 2}, {1, 2, 3}, {2, 3, 4}, {3, 4, 5}, {4, 5, 6}, {5, 6, 7}});
  faces.SetIncrementM(33);
  faces.PurgeDeletedTrianglesM();
  EXPECT_EQ(faces.GetLengthM(), 8);
  faces.DelItemM(1);
  faces.DelItemM(4);
  faces.PurgeDeletedTrianglesM();
  EXPECT_EQ(faces.GetLengthM(), 4);
  const int corners[3] = {7, 8, 9};
  faces.ModifyM(1, corners, kUp);
  EXPECT_EQ(faces.GetLengthM(), 14);  // grown by the increment, 10 again
  faces.ModifyM(6, corners, kUp);
  EXPECT_EQ(faces.GetBoundM(), 5);
}

TEST(TriangleArr, secondEdgeIsSkippedOnceTheFirstWins) {
  const NodeArr nodes = nodesAt({{0, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0.1F, 1, 0}, {5, 0.2F, 0}});
  const TriangleArr faces = trianglesOf({{0, 1, 2}, {0, 3, 1}, {4, 0, 1}});
  Int2DArr around;
  faces.FindTriangleM(0, &around);
  ASSERT_EQ(around.GetBoundM(), 3);
  int best = -1;
  // Face 0 wins with its first edge (0.707), so its second one, exactly perpendicular, is not
  // seen; face 1 then wins with 0.0995.
  faces.FindTriangleByVectM(kAlongX, nodes, around, &best);
  EXPECT_EQ(best, 1);
  Int2DArr bad;
  const int pair[2] = {17, 5};
  bad.AddItemM(pair);
  best = -1;
  faces.FindTriangleByVectM(kAlongX, nodes, bad, &best);
  EXPECT_EQ(best, -1);
}

}  // namespace
