#include "zel/containers/int_arr.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "support/array_values.h"

namespace zel::test {
namespace {

using Integers = std::vector<int>;

constexpr int kMark = -2147483647;

TEST(IntArr, purgeLeavesAStaleTailThatLaterWritesDoNotCount) {
  IntArr array = arrayOf<IntArr>({5, 1, 6});
  array.DelItemM(1);
  EXPECT_EQ(array.PurgeDeletedItemM(), 1);
  EXPECT_EQ(valuesOf(array), (Integers{5, 6}));
  EXPECT_EQ(array.getCurrentItemPrtConstM()[2], 6);
  array.AddItemM(7);
  EXPECT_EQ(array.GetAvailableNumM(), 2);
}

TEST(IntArr, smallestIntegerIsNotLiveButSurvivesAPurge) {
  IntArr array = arrayOf<IntArr>({-2147483647 - 1, kMark, 3});
  EXPECT_EQ(array.GetAvailableNumM(-1), 1);
  array.PurgeDeletedItemM();
  EXPECT_EQ(valuesOf(array), (Integers{-2147483647 - 1, 3}));
}

TEST(IntArr, itemPosiTellsOccurrencesMinusOneCappedAtTwo) {
  const IntArr array = arrayOf<IntArr>({1, 2, 2, 3, 3, 3, 4, 4, 4, 4});
  for (const auto& [value, position] : {std::pair{0, -1}, {1, 0}, {2, 1}, {3, 2}, {4, 2}}) {
    EXPECT_EQ(array.GetItemPosiM(value), position);
  }
}

TEST(IntArr, findSeesHolesAndTheFirstMatchWins) {
  IntArr array = arrayOf<IntArr>({4, 8, 8});
  int index = 0;
  EXPECT_EQ(array.FindItemM(8, &index), 1);
  EXPECT_EQ(index, 1);
  EXPECT_EQ(array.FindItemM(9, &index), 0);
  EXPECT_EQ(index, kMark);
  array.DelItemM(0);
  EXPECT_EQ(array.FindItemM(kMark, &index), 1);
  EXPECT_EQ(index, 0);
  array.ChangeNodeIdxM(8, 9);  // the first match only
  array.ChangeNodeIdxM(5, 7);
  EXPECT_EQ(valuesOf(array), (Integers{kMark, 9, 8}));
}

TEST(IntArr, settingAllSlotsLeavesTheCount) {
  IntArr array = arrayOf<IntArr>({1, 2, 3});
  array.DelItemM(1);
  array.SetAllSameValueM(8, false);
  EXPECT_EQ(valuesOf(array), (Integers{8, kMark, 8}));
  array.SetAllSameValueM(9, true);
  EXPECT_EQ(valuesOf(array), (Integers{9, 9, 9, 9}));
  EXPECT_EQ(array.GetAvailableNumM(), 2);
}

TEST(IntArr, mergeAppendsTheLiveValuesAndReturnsTheOldBound) {
  IntArr array = arrayOf<IntArr>({1});
  IntArr other = arrayOf<IntArr>({2, 3, 4, 5, 6});
  other.DelItemM(1);
  EXPECT_EQ(array.MergeM(other), 1);
  EXPECT_EQ(valuesOf(array), (Integers{1, 2, 4, 5, 6}));
  EXPECT_EQ(array.GetLengthM(), 5);
  EXPECT_EQ(array.MergeM(array), 5);
  EXPECT_EQ(array.GetBoundM(), 10);
}

TEST(IntArr, mergeCopesWithACountBelowTheLiveSlots) {
  IntArr other;
  other.AddSizeM(60);
  other.SetAllSameValueM(3, true);  // 64 live slots, count 0
  IntArr array;
  array.MergeM(other);
  EXPECT_EQ(array.GetBoundM(), 64);
  EXPECT_EQ(array.ImportArrM(other), 0);
  EXPECT_EQ(array.GetBoundM(), 128);
}

TEST(IntArr, importGrowsByTheCountEvenWithRoomToSpare) {
  IntArr array(20);
  EXPECT_EQ(array.ImportArrM(arrayOf<IntArr>({1, 2, 3})), 3);
  EXPECT_EQ(array.GetLengthM(), 23);
  EXPECT_EQ(array.ImportArrM(array), 3);
  EXPECT_EQ(valuesOf(array), (Integers{1, 2, 3, 1, 2, 3}));
}

TEST(IntArr, sortedInsertionKeepsOrderAndFindsWhatIsThere) {
  IntArr array;
  std::set<int> expected;
  std::mt19937 random(7);
  for (int i = 0; i < 300; ++i) {
    const int value = static_cast<int>(random() % 200);
    const auto [place, isNew] = expected.insert(value);
    ASSERT_EQ(array.AddItemByCompareM(value), isNew ? 1 : std::distance(expected.begin(), place));
    ASSERT_EQ(valuesOf(array), Integers(expected.begin(), expected.end()));
  }
}

TEST(IntArr, sortedSearchPrefersTheLastThenTheFirstThenTheMiddle) {
  EXPECT_EQ(arrayOf<IntArr>({10, 20, 20, 20, 30}).AddItemByCompareM(20), 2);
  EXPECT_EQ(arrayOf<IntArr>({10, 20, 20, 20}).AddItemByCompareM(20), 3);
  EXPECT_EQ(arrayOf<IntArr>({10, 10, 10, 20}).AddItemByCompareM(10), 0);
}

TEST(IntArr, ringIsTurnedToStartWhereAsked) {
  const struct {
    int start, isForward;
    Integers turned;
  } rows[] = {{2, 1, {12, 13, 10, 11, 12}},
              {2, 0, {12, 11, 10, 13, 12}},
              {0, 0, {10, 13, 12, 11, 10}},
              {-1, 0, {10, 11, 12, 13, 10}},
              {5, 0, {10, 11, 12, 13, 10}}};
  for (const auto& [start, isForward, turned] : rows) {
    IntArr ring = arrayOf<IntArr>({10, 11, 12, 13, 10});
    ring.ChangeArrangeM(start, isForward);
    EXPECT_EQ(valuesOf(ring), turned);
  }
}

TEST(IntArr, elementOutsideTheStoreIsASpareHoldingTheMark) {
  IntArr array = arrayOf<IntArr>({1});
  array[-1] = 5;
  array.ElementAtM(4) = 6;
  EXPECT_EQ(array[4], kMark);
  EXPECT_EQ(static_cast<const IntArr&>(array)[-1], kMark);
  array[3] = 8;  // allocated, though beyond the bound
  EXPECT_EQ(array.ElementAtM(3), 8);
  EXPECT_EQ(array.GetItemPM(3), nullptr);
  EXPECT_EQ(*array.GetItemPM(0), 1);
}

}  // namespace
}  // namespace zel::test
