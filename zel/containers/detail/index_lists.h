#pragma once

/// @file
/// Sorted index lists kept in a tuple array: entries (value, key, ...) edited by real insertion
/// and removal instead of marks.

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "zel/containers/detail/policies.h"
#include "zel/containers/slot_store.h"

namespace zel {

/// Two slots between which a search has closed in.
struct IndexRange {
  int low;
  int high;
};

/// Halves a list in ascending order of one component until a middle slot holds `key` (then both
/// ends are that slot) or the ends are neighbours. The list must not be empty.
template <std::size_t kComponent, class Slot, class Policy>
IndexRange halve(const SlotStore<Slot, Policy>& list, int key) {
  IndexRange range{0, list.bound() - 1};
  while (range.high - range.low > 1) {
    const int middle = range.low + (range.high - range.low) / 2;
    const int found = list[middle][kComponent];
    if (found == key) {
      return {middle, middle};
    }
    (found < key ? range.low : range.high) = middle;
  }
  return range;
}

/// @return an index whose component 0 is `key`, or kNoIndex.
template <class Slot, class Policy>
int findFirstComponent(const SlotStore<Slot, Policy>& list, int key) {
  if (list.bound() < 1) {
    return kNoIndex;
  }
  const IndexRange range = halve<0>(list, key);
  if (list[range.low][0] == key) {
    return range.low;
  }
  return list[range.high][0] == key ? range.high : kNoIndex;
}

/// Inserts (value, key) before or behind the entry at `position`, by its key in component 1.
template <class Slot, class Policy>
void addInIndexList(SlotStore<Slot, Policy>& list, int position, int key, int value) {
  Slot entry{};
  entry[0] = value;
  entry[1] = key;
  if (list.bound() < 1) {
    list.add(entry);
    return;
  }
  if (!list.holds(position)) {
    return;
  }
  const int place = list[position][1] > key ? position : position + 1;
  if (place == list.bound()) {
    list.set(entry, place);
  } else {
    list.insert(entry, place);
  }
}

template <class Slot, class Policy>
void removeFromIndexList(SlotStore<Slot, Policy>& list, int position) {
  if (!list.holds(position)) {
    return;
  }
  Slot* entries = list.data();
  const int last = list.bound() - 1;
  std::copy(entries + position + 1, entries + last + 1, entries + position);
  entries[last][0] = kNoIndex;
  entries[last][1] = kNoIndex;
  list.setBound(last);
  list.setAvailable(list.available() - 1);
}

/// Orders the slots from `low` to `high` around the middle one. @return its final position.
template <class Slot>
int partitionAroundMiddle(Slot* slots, int low, int high) {
  std::swap(slots[low], slots[low + (high - low) / 2]);
  const int pivot = slots[low][0];
  int left = low;
  int right = high;
  while (left < right) {
    while (slots[right][0] > pivot) {
      --right;
    }
    while (left < right && slots[left][0] <= pivot) {
      ++left;
    }
    if (left < right) {
      std::swap(slots[left], slots[right]);
    }
  }
  std::swap(slots[low], slots[right]);
  return right;
}

/// Sorts by component 0, ascending. A part that keeps splitting badly (many equal keys) is handed
/// to a merge sort, so the cost stays near n log n.
template <class Slot, class Policy>
void sortByFirstComponent(SlotStore<Slot, Policy>& list) {
  struct Part {
    int low;
    int high;
    int splitsLeft;
  };
  const int count = std::max(list.bound(), 0);
  const int splits = 2 * static_cast<int>(std::bit_width(static_cast<unsigned>(count)));
  const auto before = [](const Slot& a, const Slot& b) { return a[0] < b[0]; };
  Slot* slots = list.data();
  std::array<Part, 2 * 32 + 2> pending;  // one part a level waits, at most
  pending[0] = {0, count - 1, splits};
  for (std::size_t waiting = 1; waiting > 0;) {
    const Part part = pending[--waiting];
    if (part.low >= part.high) {
      continue;
    }
    if (part.splitsLeft == 0) {
      std::stable_sort(slots + part.low, slots + part.high + 1, before);
      continue;
    }
    const int middle = partitionAroundMiddle(slots, part.low, part.high);
    pending[waiting++] = {part.low, middle - 1, part.splitsLeft - 1};
    pending[waiting++] = {middle + 1, part.high, part.splitsLeft - 1};
  }
}

}  // namespace zel
