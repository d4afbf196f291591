#include "zel/containers/int_arr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

constexpr int kMark = -2147483647;

IntArr arrayOf(const std::vector<int>& values) {
  IntArr array;
  for (const int value : values) {
    array.AddItemM(value);
  }
  return array;
}

std::vector<int> contentOf(const IntArr& array) {
  const int* store = array.getCurrentItemPrtConstM();
  return {store, store + std::max(array.GetBoundM(), 0)};
}

TEST(IntArr, purgeLeavesAStaleTailThatLaterWritesDoNotCount) {
  IntArr array = arrayOf({5, 1, 6});
  array.DelItemM(1);
  EXPECT_EQ(array.PurgeDeletedItemM(), 1);
  EXPECT_EQ(contentOf(array), (std::vector<int>{5, 6}));
  EXPECT_EQ(array.GetAvailableNumM(), 2);
  EXPECT_EQ(array.getCurrentItemPrtConstM()[2], 6);
  array.AddItemM(7);
  EXPECT_EQ(array.GetAvailableNumM(), 2);
}

TEST(IntArr, smallestIntegerIsNotLiveButSurvivesAPurge) {
  IntArr array = arrayOf({-2147483647 - 1, kMark, 3});
  EXPECT_EQ(array.GetAvailableNumM(-1), 1);
  array.PurgeDeletedItemM();
  EXPECT_EQ(contentOf(array), (std::vector<int>{-2147483647 - 1, 3}));
}

TEST(IntArr, itemPosiTellsOccurrencesMinusOneCappedAtTwo) {
  const IntArr array = arrayOf({1, 2, 2, 3, 3, 3, 4, 4, 4, 4});
  const std::vector<int> expected{-1, 0, 1, 2, 2};
  for (int value = 0; value < 5; ++value) {
    EXPECT_EQ(array.GetItemPosiM(value), expected[static_cast<std::size_t>(value)]);
  }
}

TEST(IntArr, findSeesHolesAndTheFirstMatchWins) {
  IntArr array = arrayOf({4, 8, 8});
  int index = 0;
  EXPECT_EQ(array.FindItemM(8, &index), 1);
  EXPECT_EQ(index, 1);
  EXPECT_EQ(array.FindItemM(9, &index), 0);
  EXPECT_EQ(index, kMark);
  array.DelItemM(0);
  EXPECT_EQ(array.FindItemM(kMark, &index), 1);
  EXPECT_EQ(index, 0);
}

TEST(IntArr, changeNodeIdxReplacesTheFirstMatchOnly) {
  IntArr array = arrayOf({1, 2, 2});
  array.ChangeNodeIdxM(2, 9);
  array.ChangeNodeIdxM(5, 7);
  EXPECT_EQ(contentOf(array), (std::vector<int>{1, 9, 2}));
}

TEST(IntArr, settingAllSlotsLeavesTheCount) {
  IntArr array = arrayOf({1, 2, 3});
  array.DelItemM(1);
  array.SetAllSameValueM(8, false);
  EXPECT_EQ(contentOf(array), (std::vector<int>{8, kMark, 8}));
  array.SetAllSameValueM(9, true);
  EXPECT_EQ(contentOf(array), (std::vector<int>{9, 9, 9, 9}));
  EXPECT_EQ(array.GetAvailableNumM(), 2);
}

TEST(IntArr, mergeAppendsTheLiveValuesAndReturnsTheOldBound) {
  IntArr array = arrayOf({1});
  IntArr other = arrayOf({2, 3, 4, 5, 6});
  other.DelItemM(1);
  EXPECT_EQ(array.MergeM(other), 1);
  EXPECT_EQ(contentOf(array), (std::vector<int>{1, 2, 4, 5, 6}));
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
  EXPECT_EQ(array.ImportArrM(arrayOf({1, 2, 3})), 3);
  EXPECT_EQ(array.GetLengthM(), 23);
  EXPECT_EQ(array.ImportArrM(array), 3);
  EXPECT_EQ(contentOf(array), (std::vector<int>{1, 2, 3, 1, 2, 3}));
}

TEST(IntArr, sortedInsertionKeepsOrderAndFindsWhatIsThere) {
  IntArr array;
  std::vector<int> expected;
  std::mt19937 random(7);
  for (int i = 0; i < 300; ++i) {
    const int value = static_cast<int>(random() % 200);
    const auto place = std::lower_bound(expected.begin(), expected.end(), value);
    if (place != expected.end() && *place == value) {
      EXPECT_EQ(array.AddItemByCompareM(value), place - expected.begin());
    } else {
      expected.insert(place, value);
      EXPECT_EQ(array.AddItemByCompareM(value), 1);
    }
    ASSERT_EQ(contentOf(array), expected);
  }
}

TEST(IntArr, sortedSearchPrefersTheLastThenTheFirstThenTheMiddle) {
  IntArr middle = arrayOf({10, 20, 20, 20, 30});
  EXPECT_EQ(middle.AddItemByCompareM(20), 2);
  IntArr last = arrayOf({10, 20, 20, 20});
  EXPECT_EQ(last.AddItemByCompareM(20), 3);
  IntArr first = arrayOf({10, 10, 10, 20});
  EXPECT_EQ(first.AddItemByCompareM(10), 0);
}

TEST(IntArr, ringIsTurnedToStartWhereAsked) {
  const IntArr ring = arrayOf({10, 11, 12, 13, 10});
  IntArr array = ring;
  array.ChangeArrangeM(2, 1);
  EXPECT_EQ(contentOf(array), (std::vector<int>{12, 13, 10, 11, 12}));
  array = ring;
  array.ChangeArrangeM(2, 0);
  EXPECT_EQ(contentOf(array), (std::vector<int>{12, 11, 10, 13, 12}));
  array = ring;
  array.ChangeArrangeM(0, 0);
  EXPECT_EQ(contentOf(array), (std::vector<int>{10, 13, 12, 11, 10}));
  for (const int start : {-1, 5}) {
    array.ChangeArrangeM(start, 0);
    EXPECT_EQ(array.GetItemPosiM(13), 0);
  }
}

TEST(IntArr, elementOutsideTheStoreIsASpareHoldingTheMark) {
  IntArr array = arrayOf({1});
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
