#include "zel/containers/point3d_arr.h"

#include <gtest/gtest.h>

#include <array>

#include "support/array_values.h"

namespace zel::test {
namespace {

constexpr float kMark = -1.0e18F;
constexpr int kNoIndex = -2147483647;

Point3DArr pointsAlongX(int count) {
  Point3DArr array;
  for (int i = 0; i < count; ++i) {
    const float point[3] = {static_cast<float>(i), 10, 20};
    array.AddItemM(point);
  }
  return array;
}

TEST(Point3DArr, addingAnEqualPointReturnsTheStoredOne) {
  Point3DArr array;
  const auto added = [&](float x, float y, float z) {
    return array.AddPointM(std::array{x, y, z}.data());
  };
  EXPECT_EQ(added(0, 0, 0), 0);
  EXPECT_EQ(added(0.00009F, -0.00009F, 0.00009F), 0);
  EXPECT_EQ(array.GetBoundM(), 1);
  EXPECT_EQ(added(0, 0, 0.0001F), 1);
  EXPECT_EQ(added(100, 0, 0), 2);
  EXPECT_EQ(added(100.0001F, 0, 0), 2);  // the nearest float lies 9.9e-05 away
  // Holes match queries at the mark with their stale coordinates only.
  array.DelItemM(1);
  EXPECT_EQ(added(kMark, 0, 0.0001F), 1);
  EXPECT_EQ(added(kMark, 10, 0), 3);
}

TEST(Point3DArr, cancellingTakesTheBoundDownByTwo) {
  Point3DArr array = pointsAlongX(3);
  EXPECT_EQ(array.CancelLastItemM(), 1);
  EXPECT_EQ(array.GetAvailableNumM(), 2);
  EXPECT_EQ(array.getCurrentItemPrtConstM()[1][0], 1.0F);  // kept beyond the bound
  EXPECT_EQ(array.CancelLastItemM(), -1);
  EXPECT_EQ(array.CancelLastItemM(), -1);
  float point[3] = {7, 7, 7};
  int index = 0;
  EXPECT_EQ(array.GetFirstM(point, &index), -1);
  EXPECT_EQ(array.GetLastM(point, &index), -1);
  EXPECT_EQ(array.AddItemM(point), 0);
  EXPECT_EQ(array.GetBoundM(), 1);
}

TEST(Point3DArr, lastReturnsOneAndWalksByTheLowerThreshold) {
  Point3DArr array = pointsAlongX(2);
  const float hidden[3] = {-7e17F, 1, 1};  // between the thresholds
  array.AddItemM(hidden);
  float point[3];
  int index = 0;
  EXPECT_EQ(array.GetLastM(point, &index), 1);
  EXPECT_EQ(index, 2);
  EXPECT_EQ(array.IsPntAvailableM(2), 31);
  EXPECT_EQ(array.GetNextM(point, &index, 1), -1);
  EXPECT_EQ(point[2], kMark);
  for (const int before : {0, -1, -2147483647 - 1}) {
    EXPECT_EQ(array.GetPreviousM(point, &index, before), -1);
    EXPECT_EQ(index, kNoIndex);
  }
  EXPECT_EQ(array.GetPreviousM(point, &index, 2147483647), 1);
  array.DelItemM(0);
  for (const int unavailable : {0, -1, 4}) {
    EXPECT_EQ(array.IsPntAvailableM(unavailable), 30);
  }
}

TEST(Point3DArr, appendingKeepsHolesInPlaceAndCountsThem) {
  Point3DArr other = pointsAlongX(3);
  other.DelItemM(1);
  Point3DArr array = pointsAlongX(2);
  EXPECT_EQ(array.AppendPntsM(other), 1);
  EXPECT_EQ(countsOf(array), (Counts{.bound = 5, .live = 5, .length = 5}));
  EXPECT_EQ(array.IsPntAvailableM(3), 30);
  EXPECT_EQ(array.getCurrentItemPrtConstM()[4][0], 2.0F);
  array.DelItemM(0);
  array.AppendPntsM(Point3DArr());
  EXPECT_EQ(countsOf(array), (Counts{.bound = 5, .live = 5, .length = 5}));
  array.AppendPntsM(array);
  EXPECT_EQ(array.GetBoundM(), 10);
  EXPECT_EQ(array.getCurrentItemPrtConstM()[9][0], 2.0F);
}

TEST(Point3DArr, verticesAreReadOneByOne) {
  const Point3DArr array = pointsAlongX(3);
  const int indices[] = {2, 9, 0};
  float points[3][3] = {{5, 5, 5}, {5, 5, 5}, {5, 5, 5}};
  EXPECT_EQ(array.GetVertexM(3, indices, points), 1);
  EXPECT_EQ(std::to_array(points[0]), (std::array<float, 3>{2, 10, 20}));
  EXPECT_EQ(std::to_array(points[1]), (std::array<float, 3>{kMark, kMark, 5}));
  EXPECT_EQ(std::to_array(points[2]), (std::array<float, 3>{0, 10, 20}));
  EXPECT_EQ(array.GetVertexM(0, indices, points), 1);
}

TEST(Point3DArr, itemPointerReachesAllocatedSlotsOnly) {
  Point3DArr array = pointsAlongX(1);
  EXPECT_NE(array.GetItemPM(3), nullptr);
  EXPECT_EQ(array.GetItemPM(4), nullptr);
  EXPECT_EQ(array.GetItemPM(-1), nullptr);
  array.SetItemZValueM(0, 3);
  array.SetItemZValueM(1, 3);
  EXPECT_EQ(array.GetItemPM(0)[2], 3.0F);
  EXPECT_EQ(array.GetItemPM(1)[2], kMark);
}

TEST(Point3DArr, bothSpellingsOfInitialSizeGrow) {
  Point3DArr array;
  EXPECT_EQ(array.InitialSizeM(6), 1);
  EXPECT_EQ(array.IntialSizeM(9), 1);
  EXPECT_EQ(array.GetLengthM(), 9);
}

}  // namespace
}  // namespace zel::test
