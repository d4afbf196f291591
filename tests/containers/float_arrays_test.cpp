// What RealArr, Point2DArr and PixelArr do differently.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "support/array_values.h"
#include "zel/containers/pixel_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/real_arr.h"

namespace zel::test {
namespace {

constexpr float kMark = -1.0e18F;
constexpr int kNoIndex = -2147483647;

TEST(RealArr, findsWithinTheToleranceStrictly) {
  const RealArr array = arrayOf<RealArr>({5.0F, 1.0F, 2.0F});
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
  RealArr array = arrayOf<RealArr>({1.0F, 3.0F});
  EXPECT_EQ(array.FindNearItemM(2.0F, &index), 1.0F);
  EXPECT_EQ(index, 0);
  array.DelItemM(0);
  EXPECT_EQ(array.FindNearItemM(-2e18F, &index), kMark);
  EXPECT_EQ(index, 0);
}

TEST(RealArr, purgeReturnsIntoTheObjectWithWhatLayThereBefore) {
  RealArr array = arrayOf<RealArr>({1, 2, 3, 4, 5, 6});
  for (const int index : {0, 2, 4}) {
    array.DelItemM(index);
  }
  EXPECT_EQ(array.GetLengthM(), 15);
  array.PurgeDeletedItemM();
  EXPECT_EQ(countsOf(array), (Counts{.bound = 3, .live = 3, .length = 4}));
  const float* store = array.getCurrentItemPrtConstM();
  EXPECT_EQ(std::vector<float>(store, store + 4), (std::vector<float>{2, 4, 6, 4}));
  array.AddItemM(9);  // over a stale value
  EXPECT_EQ(array.GetAvailableNumM(), 3);
  array.PurgeDeletedItemM();
  EXPECT_EQ(array.GetBoundM(), 4);
}

TEST(RealArr, occurrencesCountExactEqualityOnly) {
  const RealArr array = arrayOf<RealArr>({1.0F, 1.0F, 1.00001F});
  EXPECT_EQ(array.GetItemPosiM(1.0F), 1);
  EXPECT_EQ(array.GetItemPosiM(2.0F), -1);
}

TEST(Point2DArr, orientationIsOneForClockwiseRingsAndFewPoints) {
  EXPECT_EQ(Point2DArr().CheckCcwM(), 1);
  EXPECT_EQ(arrayOf<Point2DArr>({{0, 0}, {1, 0}}).CheckCcwM(), 1);
  EXPECT_EQ(arrayOf<Point2DArr>({{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}).CheckCcwM(), 0);
  EXPECT_EQ(arrayOf<Point2DArr>({{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}}).CheckCcwM(), 1);
  // The closing edge is left out: with it, this counter-clockwise ring would sum to +1.
  EXPECT_EQ(arrayOf<Point2DArr>({{9, 9}, {10, 9}, {9, 10}, {9, 9}}).CheckCcwM(), 0);
  EXPECT_EQ(arrayOf<Point2DArr>({{-9, 9}, {-8, 9}, {-9, 10}, {-9, 9}}).CheckCcwM(), 1);
}

TEST(Point2DArr, scopeIgnoresDeletedPointsAndStartsInverted) {
  auto array = arrayOf<Point2DArr>({{-50, 0}, {1, 7}, {4, -2}, {3, -6e17F}});
  array.DelItemM(0);
  std::array<float, 2> x, y;
  array.GetScopeM(x.data(), y.data());
  EXPECT_EQ(x, (std::array<float, 2>{1, 4}));
  EXPECT_EQ(y, (std::array<float, 2>{-2, 7}));
  Point2DArr().GetScopeM(x.data(), y.data());
  EXPECT_EQ(x[0], 1.0e18F);
  EXPECT_EQ(y[1], -1.0e18F);
}

TEST(Point2DArr, boundTestTellsOutsideAndKnowsNoSmallRings) {
  const Point2DArr square = arrayOf<Point2DArr>({{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}});
  const float inside[2] = {0.5F, 1.25F};
  const float outside[2] = {3, 1.25F};
  const float onEdge[2] = {2, 1.25F};
  EXPECT_EQ(square.JudgePntInBoundM(inside), 0);
  EXPECT_EQ(square.JudgePntInBoundM(outside), 1);
  EXPECT_EQ(square.JudgePntInBoundM(onEdge), 1);
  EXPECT_EQ(arrayOf<Point2DArr>({{0, 0}, {1, 0}, {0, 0}}).JudgePntInBoundM(outside), 0);
}

}  // namespace
}  // namespace zel::test
