#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "containers/array_kinds.h"
#include "support/array_values.h"

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

  int addSize(int count) {
    slots.resize(slots.size() + static_cast<std::size_t>(std::max(count, 0)),
                 filledItem<Array>(K::kMark));
    return 1;
  }
  int setIncrement(int count) {
    increment = count > 0 ? count : increment;
    return 1;
  }
  int set(Item item, int index) {
    if (index < 0) {
      return 1;
    }
    if (index >= length()) {
      addSize(std::max(length(), increment - length() + index + 1));
    }
    available += K::countsOver(at(index)[0]) ? 1 : 0;
    bound = std::max(bound, index + 1);
    at(index) = item;
    return 1;
  }
  int add(const Item& item) {
    set(item, std::max(bound, 0));
    return bound - 1;
  }
  int insert(const Item& item, int position) {
    if (position < 0 || position > bound) {
      return 1;
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
    return 1;
  }
  int remove(int index) {
    if (index < 0 || index >= bound) {
      return 1;
    }
    if (K::isLive(at(index)[0])) {
      at(index)[0] = K::kMark;
      --available;
    }
    bound -= index == bound - 1 ? 1 : 0;
    return 1;
  }
  int clear() {
    *this = SlotModel{.increment = increment};
    return 1;
  }
};

template <class Array>
void expectSameSlots(const Array& array, const SlotModel<Array>& model) {
  ASSERT_EQ(countsOf(array), (Counts{model.bound, model.available, model.length()}));
  for (int i = 0; i < model.length(); ++i) {
    ASSERT_TRUE(sameBits<Array>(rawSlot(array, i), model.at(i))) << "slot " << i;
  }
}

/// Walks the array forward and compares with the model's slots, then asks at the edges.
template <class Array>
void expectSameWalk(const Array& array, const SlotModel<Array>& model) {
  using K = Kind<Array>;
  const auto isWalked = [&](int i) { return !K::kWalkSkipsHoles || K::isLive(model.at(i)[0]); };
  typename K::Item item;
  int index = 0;
  int live = 0;
  int result = array.GetFirstM(item.data(), &index);
  for (int i = 0; i < model.bound; ++i) {
    if (!isWalked(i)) {
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
    while (last >= 0 && !isWalked(last)) {
      --last;
    }
    ASSERT_EQ(array.GetLastM(item.data(), &index), last);
    ASSERT_EQ(index, last < 0 ? kIntMark : last);
    ASSERT_TRUE(sameBits<Array>(item, last < 0 ? filledItem<Array>(K::kMark) : model.at(last)));
  }
  ASSERT_EQ(array.GetNextM(item.data(), &index, 2147483647), -1);
}

}  // namespace zel::test
