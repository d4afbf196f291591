#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "containers/array_kinds.h"

namespace zel::test {

/// The common contract as plainly as it can be written: a vector of slots and three counters.
template <class Array>
struct SlotModel {
  using K = Kind<Array>;
  using Item = typename K::Item;

  std::vector<Item> slots = std::vector<Item>(4, filledItem<Array>(K::kMark));
  int bound = 0;
  int available = 0;
  int increment = 10;

  int length() const { return static_cast<int>(slots.size()); }
  Item& at(int index) { return slots[static_cast<std::size_t>(index)]; }
  const Item& at(int index) const { return slots[static_cast<std::size_t>(index)]; }

  void addSize(int count) {
    if (count > 0) {
      slots.resize(slots.size() + static_cast<std::size_t>(count), filledItem<Array>(K::kMark));
    }
  }
  void set(Item item, int index) {
    if (index < 0) {
      return;
    }
    if (index >= length()) {
      addSize(std::max(length(), increment - length() + index + 1));
    }
    available += K::countsOver(at(index)[0]) ? 1 : 0;
    bound = std::max(bound, index + 1);
    at(index) = item;
  }
  int add(const Item& item) {
    set(item, std::max(bound, 0));
    return bound - 1;
  }
  void insert(const Item& item, int position) {
    if (position < 0 || position > bound) {
      return;
    }
    if (bound == length() || K::kInsertIsWrite) {
      set(bound > 0 ? at(bound - 1) : item, bound);
    } else {
      ++bound;
      ++available;
    }
    for (int i = bound - 1; i > position; --i) {
      at(i) = at(i - 1);
    }
    at(position) = item;
  }
  void remove(int index) {
    if (index < 0 || index >= bound) {
      return;
    }
    if (K::deletable(at(index)[0])) {
      at(index)[0] = K::kMark;
      --available;
    }
    bound -= index == bound - 1 ? 1 : 0;
  }
  void clear() {
    const int keptIncrement = increment;
    *this = SlotModel();
    increment = keptIncrement;
  }
};

template <class Array>
void expectSameSlots(const Array& array, const SlotModel<Array>& model) {
  ASSERT_EQ(array.GetLengthM(), model.length());
  ASSERT_EQ(array.GetBoundM(), model.bound);
  ASSERT_EQ(array.GetAvailableNumM(), model.available);
  for (int i = 0; i < model.length(); ++i) {
    ASSERT_TRUE(sameBits<Array>(rawSlot(array, i), model.at(i))) << "slot " << i;
  }
}

/// Walks the array forward and compares with the model's slots, then asks at the edges.
template <class Array>
void expectSameWalk(const Array& array, const SlotModel<Array>& model) {
  using K = Kind<Array>;
  typename K::Item item;
  int index = 0;
  int live = 0;
  int result = array.GetFirstM(item.data(), &index);
  for (int i = 0; i < model.bound; ++i) {
    if (!K::walked(model.at(i)[0])) {
      continue;
    }
    ++live;
    ASSERT_EQ(result, 1);
    ASSERT_EQ(index, i);
    ASSERT_TRUE(sameBits<Array>(item, model.at(i)));
    result = array.GetNextM(item.data(), &index, index);
  }
  ASSERT_EQ(result, -1);
  ASSERT_EQ(index, kIntMark);
  ASSERT_TRUE(sameBits<Array>(item, filledItem<Array>(K::kMark)));
  ASSERT_EQ(array.GetAvailableNumM(-1), live);
  if constexpr (K::kLastIsIndex) {
    int last = model.bound - 1;
    while (last >= 0 && !K::walked(model.at(last)[0])) {
      --last;
    }
    ASSERT_EQ(array.GetLastM(item.data(), &index), last);
    ASSERT_EQ(index, last < 0 ? kIntMark : last);
    ASSERT_TRUE(sameBits<Array>(item, last < 0 ? filledItem<Array>(K::kMark) : model.at(last)));
  }
  ASSERT_EQ(array.GetNextM(item.data(), &index, 2147483647), -1);
}

}  // namespace zel::test
