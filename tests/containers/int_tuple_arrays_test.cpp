// What Int2DArr, Int3DArr and Int4DArr add: sorted index lists, sorting, single components.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "zel/containers/int2d_arr.h"
#include "zel/containers/int3d_arr.h"
#include "zel/containers/int4d_arr.h"

namespace {

constexpr int kMark = -2147483647;

Int2DArr indexList(const std::vector<int>& keys) {
  Int2DArr list;
  for (const int key : keys) {
    const int entry[2] = {key * 100, key};
    list.AddItemM(entry);
  }
  return list;
}

template <std::size_t kWidth, class Array>
std::vector<std::array<int, kWidth>> tuplesOf(const Array& array) {
  std::vector<std::array<int, kWidth>> tuples(static_cast<std::size_t>(array.GetBoundM()));
  for (int i = 0; i < array.GetBoundM(); ++i) {
    array.GetItemM(tuples[static_cast<std::size_t>(i)].data(), i);
  }
  return tuples;
}

TEST(IndexLists, missNamesTheNeighbourAndInsertionLandsInOrder) {
  struct Case {
    int key;
    int position;
    int inserted;
  };
  for (const Case& c : {Case{25, 1, 2}, Case{5, 0, 0}, Case{35, 2, 3}, Case{15, 0, 1}}) {
    Int2DArr list = indexList({10, 20, 30});
    int position = 0;
    int value = 0;
    EXPECT_EQ(list.FindIdxInLstM(c.key, &position, &value), 0);
    EXPECT_EQ(position, c.position) << c.key;
    EXPECT_EQ(list.AddInIdxLstM(position, c.key, 7), 1);
    EXPECT_EQ(tuplesOf<2>(list)[static_cast<std::size_t>(c.inserted)],
              (std::array<int, 2>{7, c.key}));
  }
}

TEST(IndexLists, growByFindAndAddInAnyOrder) {
  std::mt19937 random(11);
  Int2DArr list;
  std::vector<int> keys;
  for (int i = 0; i < 400; ++i) {
    const int key = static_cast<int>(random() % 300);
    int position = 0;
    int value = 0;
    const bool isKnown = std::binary_search(keys.begin(), keys.end(), key);
    ASSERT_EQ(list.FindIdxInLstM(key, &position, &value), isKnown ? 1 : 0);
    if (isKnown) {
      ASSERT_EQ(value, -key);
    } else {
      list.AddInIdxLstM(position, key, -key);
      keys.insert(std::upper_bound(keys.begin(), keys.end(), key), key);
    }
  }
  const auto tuples = tuplesOf<2>(list);
  ASSERT_EQ(tuples.size(), keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    ASSERT_EQ(tuples[i], (std::array<int, 2>{-keys[i], keys[i]}));
  }
}

TEST(IndexLists, emptyListHasNoPositionAndTakesAnyForInsertion) {
  Int2DArr list;
  int position = 3;
  int value = 3;
  EXPECT_EQ(list.FindIdxInLstM(4, &position, &value), 0);
  EXPECT_EQ(position, kMark);
  EXPECT_EQ(value, kMark);
  list.AddInIdxLstM(position, 4, 9);
  EXPECT_EQ(tuplesOf<2>(list), (std::vector<std::array<int, 2>>{{9, 4}}));
  for (const int outside : {-1, 1, kMark}) {
    list.AddInIdxLstM(outside, 5, 5);
    list.DelItemInLstM(outside);
  }
  EXPECT_EQ(list.GetBoundM(), 1);
}

TEST(IndexLists, removalMovesTheRestAndDropsTheCountEvenForAHole) {
  Int2DArr list = indexList({1, 2, 3});
  list.DelItemM(0);
  EXPECT_EQ(list.GetAvailableNumM(), 2);
  EXPECT_EQ(list.DelItemInLstM(0), 1);
  EXPECT_EQ(list.GetAvailableNumM(), 1);
  EXPECT_EQ(tuplesOf<2>(list), (std::vector<std::array<int, 2>>{{200, 2}, {300, 3}}));
  const int(*store)[2] = list.getCurrentItemPrtConstM();
  EXPECT_EQ(store[2][0], kMark);
  EXPECT_EQ(store[2][1], kMark);
}

TEST(IndexLists, findByValueLooksAtEitherComponent) {
  const Int2DArr list = indexList({4, 7, 7});
  int other = 5;
  EXPECT_EQ(list.FindItemByValueM(0, 700, &other), 1);
  EXPECT_EQ(other, 7);
  EXPECT_EQ(list.FindItemByValueM(1, 7, &other), 1);
  EXPECT_EQ(other, 700);
  EXPECT_EQ(list.FindItemByValueM(1, 8, &other), -1);
  EXPECT_EQ(list.FindItemByValueM(2, 7, &other), -1);
  EXPECT_EQ(other, 700);
}

template <class Array, std::size_t kWidth>
void expectSortsAndFinds(std::mt19937& random, int count, int keys) {
  Array array;
  for (int i = 0; i < count; ++i) {
    std::array<int, kWidth> tuple;
    tuple.fill(i);
    tuple[0] = static_cast<int>(random() % static_cast<unsigned>(keys));
    array.AddItemM(tuple.data());
  }
  auto expected = tuplesOf<kWidth>(array);
  array.QuickSortM();
  auto sorted = tuplesOf<kWidth>(array);
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
      expectSortsAndFinds<Int3DArr, 3>(random, count, keys);
      expectSortsAndFinds<Int4DArr, 4>(random, count, keys);
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
  EXPECT_EQ(tuplesOf<3>(array)[0], (std::array<int, 3>{kMark, 150000, 150000}));
}

TEST(Int3DArr, searchLooksAtAnotherComponentThanInsertion) {
  Int3DArr list;
  list.AddInIdxLstM(0, 20, 1);
  list.AddInIdxLstM(0, 10, 2);  // before: key 10 < 20
  EXPECT_EQ(tuplesOf<3>(list), (std::vector<std::array<int, 3>>{{2, 10, 0}, {1, 20, 0}}));
  EXPECT_EQ(list.FindIdxInLstM(10), kMark);
  EXPECT_EQ(list.FindIdxInLstM(2), 0);
}

TEST(Int4DArr, changingTheFirstValueGrowsByTheIncrementOnly) {
  Int4DArr array;
  EXPECT_EQ(array.ChangeFirstValueM(5, 4), 1);
  EXPECT_EQ(array.GetLengthM(), 14);
  EXPECT_EQ(array.GetBoundM(), 5);
  EXPECT_EQ(array.GetAvailableNumM(), 1);
  array.ChangeFirstValueM(6, 4);
  EXPECT_EQ(array.GetAvailableNumM(), 1);
  array.ChangeFirstValueM(6, 40);  // 10 < 40 - 14 + 1
  EXPECT_EQ(array.GetLengthM(), 51);
  array.ChangeFirstValueM(6, -1);
  EXPECT_EQ(array.GetBoundM(), 41);
}

TEST(Int4DArr, modifyingOneComponentKeepsNoBooks) {
  Int4DArr array;
  const int item[4] = {1, 2, 3, 4};
  array.AddItemM(item);
  for (const auto& [index, component] : {std::pair{-1, 0}, {4, 0}, {0, -1}, {0, 4}}) {
    EXPECT_EQ(array.ModifyItemM(9, index, component), 1);
  }
  array.ModifyItemM(8, 0, 2);
  EXPECT_EQ(tuplesOf<4>(array)[0], (std::array<int, 4>{1, 2, 8, 4}));
  array.ModifyItemM(kMark, 0, 0);
  EXPECT_EQ(array.GetAvailableNumM(), 1);
}

}  // namespace
