#pragma once

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdint>
#include <mutex>
#include <vector>

#include "zel/core/constants.h"

namespace zel {

/// The faces around each node: one row of slots per node, all rows in one block.
///
/// A row holds at least the slots whose faces have the node; it may hold others, because nodes far
/// out share rows and because a slot that no longer has the node leaves only when the row is
/// tidied. Rows are put in order when they are asked for, so that adding is cheap.
///
/// Functions that add may throw std::bad_alloc and leave the rows fit only for clear(). Several
/// threads may ask for rows at once: one of them puts a row in order, under a lock.
class Incidence {
 public:
  struct View {
    const int* slots;  ///< ascending
    int count;
  };

  void clear();
  template <class Face>
  void build(const Face* faces, int bound);
  void add(int node, int slot);
  /// Notes that one slot of the node's row no longer has the node.
  void noteGone(int node) {
    Row& row = rowOf(node);
    if (++row.gone > 8 && row.gone > row.size / 2) {
      row.markUntidy();
    }
  }
  /// The slots below `bound` of a node's row.
  template <class Face>
  [[nodiscard]] View around(const Face* faces, int bound, int node) const;
  /// So much has been added since it was built that building anew pays.
  [[nodiscard]] bool isOutgrown(int bound) const {
    return bound > 2 * builtBound_ + 64 || block_.size() > 8 * builtSize_ + 4096;
  }
  /// Whether the rows of a face's corners name its slot.
  [[nodiscard]] bool isNamed(int slot, const int* corners, int cornerCount) const;

 private:
  struct Row {
    int begin = 0;
    int size = 0;
    int capacity = 0;
    int sorted = 0;  ///< so many at the front are ascending and distinct: all, or of them the ~
    int gone = 0;

    [[nodiscard]] bool isTidy() {
      return std::atomic_ref(sorted).load(std::memory_order_acquire) >= 0;
    }
    void markUntidy() { sorted = sorted < 0 ? sorted : ~sorted; }
    void markTidy() { std::atomic_ref(sorted).store(size, std::memory_order_release); }
  };

  // Rows of ordinary nodes are their own; numbers beyond the table are scattered over it.
  [[nodiscard]] std::size_t rowNumber(int node) const {
    const auto number = static_cast<std::uint32_t>(node);
    const std::uint64_t beyond = std::uint64_t{number} >> bits_;
    return (number + beyond * 0x9E3779B1U) & (rows_.size() - 1);
  }
  [[nodiscard]] Row& rowOf(int node) const { return rows_[rowNumber(node)]; }
  void size(int highestNode, int bound, int corners);
  void allot();
  template <class Face, class Visit>
  void visitCorners(const Face* faces, int bound, Visit visit) const;
  template <class Keep>
  void tidy(Row& row, Keep keep) const;

  mutable std::vector<Row> rows_;  ///< a power of two of them
  mutable std::vector<int> block_;
  mutable std::mutex tidying_;
  int bits_ = 0;
  int builtBound_ = 0;
  std::size_t builtSize_ = 0;
};

// Visits each face's corners, equal ones once.
template <class Face, class Visit>
void Incidence::visitCorners(const Face* faces, int bound, Visit visit) const {
  for (int slot = 0; slot < bound; ++slot) {
    const auto& corners = faces[slot].record().corners;
    for (const int& corner : corners) {
      if (std::find(&corners[0], &corner, corner) == &corner) {
        visit(corner, slot);
      }
    }
  }
}

template <class Face>
void Incidence::build(const Face* faces, int bound) {
  int highest = 0;
  visitCorners(faces, bound, [&](int node, int /*slot*/) { highest = std::max(highest, node); });
  size(highest, bound, static_cast<int>(std::size(faces[0].record().corners)));
  visitCorners(faces, bound, [&](int node, int /*slot*/) { ++rowOf(node).capacity; });
  allot();
  visitCorners(faces, bound, [&](int node, int slot) {
    Row& row = rowOf(node);
    block_[static_cast<std::size_t>(row.begin + row.size++)] = slot;
  });
  // Nodes that share a row may have entered one slot twice.
  for (Row& row : rows_) {
    const auto first = block_.begin() + row.begin;
    row.size = static_cast<int>(std::unique(first, first + row.size) - first);
    row.sorted = row.size;
  }
}

template <class Face>
Incidence::View Incidence::around(const Face* faces, int bound, int node) const {
  Row& row = rowOf(node);
  if (!row.isTidy()) {
    const std::size_t number = rowNumber(node);
    const std::lock_guard lock(tidying_);
    tidy(row, [&](int slot) {
      const auto& corners = faces[slot].record().corners;
      return slot < bound && std::any_of(std::begin(corners), std::end(corners),
                                         [&](int corner) { return rowNumber(corner) == number; });
    });
  }
  const int* slots = block_.data() + row.begin;
  int count = row.size;
  while (count > 0 && slots[count - 1] >= bound) {
    --count;
  }
  return {slots, count};
}

template <class Keep>
void Incidence::tidy(Row& row, Keep keep) const {
  if (row.isTidy()) {
    return;  // another thread was first
  }
  const auto first = block_.begin() + row.begin;
  const auto middle = first + ~row.sorted;
  auto end = first + row.size;
  std::sort(middle, end);
  std::inplace_merge(first, middle, end);
  end = std::unique(first, end);
  end = std::remove_if(first, end, [&](int slot) { return !keep(slot); });
  row.size = static_cast<int>(end - first);
  row.gone = 0;
  row.markTidy();
}

}  // namespace zel
