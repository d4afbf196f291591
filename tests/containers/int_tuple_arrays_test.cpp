// What Int2DArr, Int3DArr and Int4DArr add: sorted index lists, sorting, single components.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <vector>

#include "support/array_values.h"
#include "zel/containers/int2d_arr.h"
#include "zel/containers/int3d_arr.h"
#include "zel/containers/int4d_arr.h"

namespace zel::test {
namespace {

constexpr int kMark = -2147483647;

using Pairs = std::vector<std::array<int, 2>>;

TEST(IndexLists, growByFindAndAddAndMissesNameTheNeighbourBefore) {
  std::mt19937 random(11);
  Int2DArr list;
  std::map<int, int> valueOfKey;
  for (int i = 0; i < 400; ++i) {
    const int key = static_cast<int>(random() % 300);
    const auto behind = valueOfKey.lower_bound(key);
    const bool isKnown = behind != valueOfKey.end() && behind->first == key;
    const auto rank = static_cast<int>(std::distance(valueOfKey.begin(), behind));
    int position = 0;
    int value = 0;
    ASSERT_EQ(list.FindIdxInLstM(key, &position, &value), isKnown ? 1 : 0);
    if (isKnown) {
      ASSERT_EQ(position, rank);
      ASSERT_EQ(value, behind->second);
    } else {
      ASSERT_EQ(position, i == 0 ? kMark : std::max(rank - 1, 0));
      ASSERT_EQ(list.AddInIdxLstM(position, key, i), 1);
      valueOfKey[key] = i;
    }
  }
  Pairs expected;
  for (const auto& [key, value] : valueOfKey) {
    expected.push_back({value, key});
  }
  EXPECT_EQ(valuesOf(list), expected);
}

TEST(IndexLists, emptyListHasNoPositionAndTakesAnyForInsertion) {
  Int2DArr list;
  int position = 3;
  int value = 3;
  EXPECT_EQ(list.FindIdxInLstM(4, &position, &value), 0);
  EXPECT_EQ(position, kMark);
  EXPECT_EQ(value, kMark);
  list.AddInIdxLstM(position, 4, 9);
  EXPECT_EQ(valuesOf(list), (Pairs{{9, 4}}));
  for (const int outside : {-1, 1, kMark}) {
    list.AddInIdxLstM(outside, 5, 5);
    list.DelItemInLstM(outside);
  }
  EXPECT_EQ(list.GetBoundM(), 1);
}

TEST(IndexLists, removalMovesTheRestAndDropsTheCountEvenForAHole) {
  auto list = arrayOf<Int2DArr>({{100, 1}, {200, 2}, {300, 3}});
  list.DelItemM(0);
  EXPECT_EQ(list.DelItemInLstM(0), 1);
  EXPECT_EQ(list.GetAvailableNumM(), 1);
  EXPECT_EQ(valuesOf(list), (Pairs{{200, 2}, {300, 3}}));
  const int(*store)[2] = list.getCurrentItemPrtConstM();
  EXPECT_EQ(store[2][0], kMark);
  EXPECT_EQ(store[2][1], kMark);
}

TEST(IndexLists, findByValueLooksAtEitherComponent) {
  const auto list = arrayOf<Int2DArr>({{400, 4}, {700, 7}, {701, 7}});
  int other = 5;
  EXPECT_EQ(list.FindItemByValueM(0, 700, &other), 1);
  EXPECT_EQ(other, 7);
  EXPECT_EQ(list.FindItemByValueM(1, 7, &other), 1);
  EXPECT_EQ(other, 700);
  EXPECT_EQ(list.FindItemByValueM(1, 8, &other), -1);
  EXPECT_EQ(list.FindItemByValueM(2, 7, &other), -1);
  EXPECT_EQ(other, 700);
}

template <class Array>
void expectSortsAndFinds(std::mt19937& random, int count, int keys) {
  Array array;
  for (int i = 0; i < count; ++i) {
    Value<Array> tuple;
    tuple.fill(i);
    tuple[0] = static_cast<int>(random() % static_cast<unsigned>(keys));
    array.AddItemM(tuple.data());
  }
  auto expected = valuesOf(array);
  array.QuickSortM();
  auto sorted = valuesOf(array);
  EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end(),
                             [](const auto& a, const auto& b) { return a[0] < b[0]; }));
  for (int key = 0; key < keys; ++key) {
    const int found = array.FindIdxInLstM(key);
    const bool isThere = std::any_of(sorted.begin(), sorted.end(),
                                     [key](const auto& tuple) { return tuple[0] == key; });
    ASSERT_EQ(found != kMark, isThere);
    ASSERT_TRUE(!isThere || sorted[static_cast<std::size_t>(found)][0] == key);
  }
  std::sort(expected.begin(), expected.end());
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(sorted, expected);  // whole tuples travelled
}

TEST(TupleSort, ordersByTheFirstComponentAndKeepsTuplesWhole) {
  std::mt19937 random(5);
  for (const int count : {0, 1, 2, 3, 100, 2000}) {
    for (const int keys : {1, 2, 500}) {
      expectSortsAndFinds<Int3DArr>(random, count, keys);
      expectSortsAndFinds<Int4DArr>(random, count, keys);
    }
  }
}

TEST(TupleSort, manyEqualKeysStayFastAndHolesComeFirst) {
  Int3DArr array;
  for (int i = 0; i < 300000; ++i) {
    const int tuple[3] = {7, i, i};
    array.AddItemM(tuple);
  }
  array.DelItemM(150000);
  array.QuickSortM();
  EXPECT_EQ(valuesOf(array)[0], (std::array<int, 3>{kMark, 150000, 150000}));
}

TEST(Int3DArr, searchLooksAtAnotherComponentThanInsertion) {
  Int3DArr list;
  list.AddInIdxLstM(0, 20, 1);
  list.AddInIdxLstM(0, 10, 2);  // before: key 10 < 20
  EXPECT_EQ(valuesOf(list), (std::vector<Value<Int3DArr>>{{2, 10, 0}, {1, 20, 0}}));
  EXPECT_EQ(list.FindIdxInLstM(10), kMark);
  EXPECT_EQ(list.FindIdxInLstM(2), 0);
}

TEST(Int4DArr, changingTheFirstValueGrowsByTheIncrementOnly) {
  Int4DArr array;
  EXPECT_EQ(array.ChangeFirstValueM(5, 4), 1);
  array.ChangeFirstValueM(6, 4);
  EXPECT_EQ(countsOf(array), (Counts{.bound = 5, .live = 1, .length = 14}));
  array.ChangeFirstValueM(6, 40);  // 10 < 40 - 14 + 1
  array.ChangeFirstValueM(6, -1);
  EXPECT_EQ(countsOf(array), (Counts{.bound = 41, .live = 2, .length = 51}));
}

TEST(Int4DArr, modifyingOneComponentKeepsNoBooks) {
  auto array = arrayOf<Int4DArr>({{1, 2, 3, 4}});
  for (const auto& [index, component] : {std::pair{-1, 0}, {4, 0}, {0, -1}, {0, 4}}) {
    EXPECT_EQ(array.ModifyItemM(9, index, component), 1);
  }
  array.ModifyItemM(8, 0, 2);
  EXPECT_EQ(valuesOf(array)[0], (std::array<int, 4>{1, 2, 8, 4}));
  array.ModifyItemM(kMark, 0, 0);
  EXPECT_EQ(array.GetAvailableNumM(), 1);
}

}  // namespace
}  // namespace zel::test
