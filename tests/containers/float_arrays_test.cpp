// What RealArr, Point2DArr and PixelArr do differently.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "support/bits.h"
#include "zel/containers/pixel_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/real_arr.h"

namespace {

using zel::test::bits;

constexpr float kMark = -1.0e18F;
constexpr int kNoIndex = -2147483647;

RealArr realsOf(const std::vector<float>& values) {
  RealArr array;
  for (const float value : values) {
    array.AddItemM(value);
  }
  return array;
}

Point2DArr ringOf(const std::vector<std::pair<float, float>>& points) {
  Point2DArr array;
  for (const auto& [x, y] : points) {
    const float point[2] = {x, y};
    array.AddItemM(point);
  }
  return array;
}

TEST(RealArr, markHasItsExactBits) {
  const RealArr array;
  EXPECT_EQ(bits(*array.getCurrentItemPrtConstM()), 0xDD5E0B6BU);
}

TEST(RealArr, findsWithinTheToleranceStrictly) {
  const RealArr array = realsOf({5.0F, 1.0F, 2.0F});
  int index = 0;
  EXPECT_EQ(array.FindItemM(1.00005F, &index), 1);
  EXPECT_EQ(index, 1);
  EXPECT_EQ(array.FindItemM(1.0002F, &index), 0);
  EXPECT_EQ(index, kNoIndex);
  EXPECT_EQ(array.FindItemM(1.0001F, &index), 0);
  EXPECT_EQ(array.FindItemM(2.0001F, &index), 1);  // the nearest float lies 9.99e-05 away
  EXPECT_EQ(array.FindItemM(std::nanf(""), &index), 0);
}

TEST(RealArr, nearestPrefersTheEarlierAndCountsHolesAtTheMark) {
  int index = 0;
  EXPECT_EQ(RealArr().FindNearItemM(1.0F, &index), kMark);
  EXPECT_EQ(index, kNoIndex);
  RealArr array = realsOf({1.0F, 3.0F});
  EXPECT_EQ(array.FindNearItemM(2.0F, &index), 1.0F);
  EXPECT_EQ(index, 0);
  array.DelItemM(0);
  EXPECT_EQ(array.FindNearItemM(-2e18F, &index), kMark);
  EXPECT_EQ(index, 0);
}

TEST(RealArr, purgeReturnsIntoTheObjectWithWhatLayThereBefore) {
  RealArr array = realsOf({1, 2, 3, 4, 5, 6});
  EXPECT_EQ(array.GetLengthM(), 15);
  for (const int index : {0, 2, 4}) {
    array.DelItemM(index);
  }
  array.PurgeDeletedItemM();
  EXPECT_EQ(array.GetLengthM(), 4);
  EXPECT_EQ(array.GetBoundM(), 3);
  const float* store = array.getCurrentItemPrtConstM();
  EXPECT_EQ(std::vector<float>(store, store + 4), (std::vector<float>{2, 4, 6, 4}));
  array.AddItemM(9);  // over a stale value
  EXPECT_EQ(array.GetAvailableNumM(), 3);
  array.PurgeDeletedItemM();
  EXPECT_EQ(array.GetBoundM(), 4);
}

TEST(RealArr, occurrencesCountExactEqualityOnly) {
  const RealArr array = realsOf({1.0F, 1.0F, 1.00001F});
  EXPECT_EQ(array.GetItemPosiM(1.0F), 1);
  EXPECT_EQ(array.GetItemPosiM(2.0F), -1);
}

TEST(Point2DArr, orientationIsOneForClockwiseRingsAndFewPoints) {
  EXPECT_EQ(ringOf({}).CheckCcwM(), 1);
  EXPECT_EQ(ringOf({{0, 0}, {1, 0}}).CheckCcwM(), 1);
  EXPECT_EQ(ringOf({{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}).CheckCcwM(), 0);
  EXPECT_EQ(ringOf({{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}}).CheckCcwM(), 1);
  // The closing edge is left out: with it, this counter-clockwise ring would sum to +1.
  EXPECT_EQ(ringOf({{9, 9}, {10, 9}, {9, 10}, {9, 9}}).CheckCcwM(), 0);
  EXPECT_EQ(ringOf({{-9, 9}, {-8, 9}, {-9, 10}, {-9, 9}}).CheckCcwM(), 1);
}

TEST(Point2DArr, scopeIgnoresDeletedPointsAndStartsInverted) {
  Point2DArr array = ringOf({{-50, 0}, {1, 7}, {4, -2}, {3, -6e17F}});
  array.DelItemM(0);
  float x[2];
  float y[2];
  array.GetScopeM(x, y);
  EXPECT_EQ(x[0], 1.0F);
  EXPECT_EQ(x[1], 4.0F);
  EXPECT_EQ(y[0], -2.0F);
  EXPECT_EQ(y[1], 7.0F);
  Point2DArr().GetScopeM(x, y);
  EXPECT_EQ(x[0], 1.0e18F);
  EXPECT_EQ(y[1], -1.0e18F);
}

TEST(Point2DArr, boundTestTellsOutsideAndKnowsNoSmallRings) {
  const Point2DArr square = ringOf({{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}});
  const float inside[2] = {0.5F, 1.25F};
  const float outside[2] = {3, 1.25F};
  const float onEdge[2] = {2, 1.25F};
  EXPECT_EQ(square.JudgePntInBoundM(inside), 0);
  EXPECT_EQ(square.JudgePntInBoundM(outside), 1);
  EXPECT_EQ(square.JudgePntInBoundM(onEdge), 1);
  EXPECT_EQ(ringOf({{0, 0}, {1, 0}, {0, 0}}).JudgePntInBoundM(outside), 0);
}

}  // namespace
