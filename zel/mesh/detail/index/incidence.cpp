#include "zel/mesh/detail/index/incidence.h"

namespace zel {

void Incidence::clear() {
  rows_ = {};
  block_ = {};
}

void Incidence::size(int highestNode, int bound, int corners) {
  const auto most = static_cast<std::size_t>(bound) * static_cast<std::size_t>(corners);
  const std::size_t wanted = std::min(static_cast<std::size_t>(highestNode) + 1, most);
  rows_.assign(std::bit_ceil(std::max<std::size_t>(wanted, 64)), Row());
  bits_ = std::countr_zero(rows_.size());
  builtBound_ = bound;
  builtSize_ = most;
}

void Incidence::allot() {
  int total = 0;
  for (Row& row : rows_) {
    row.begin = total;
    total += row.capacity;
  }
  block_.assign(static_cast<std::size_t>(total), 0);
}

void Incidence::add(int node, int slot) {
  Row& row = rowOf(node);
  if (row.size == row.capacity) {
    const int capacity = std::max(2 * row.capacity, 4);
    const auto begin = static_cast<int>(block_.size());
    block_.resize(block_.size() + static_cast<std::size_t>(capacity));
    std::copy_n(block_.begin() + row.begin, row.size, block_.begin() + begin);
    row.begin = begin;
    row.capacity = capacity;
  }
  int* slots = block_.data() + row.begin;
  if (row.size > 0 && slots[row.size - 1] >= slot) {
    row.markUntidy();
  }
  row.sorted += row.sorted < 0 ? 0 : 1;
  slots[row.size++] = slot;
}

bool Incidence::isNamed(int slot, const int* corners, int cornerCount) const {
  return std::all_of(corners, corners + cornerCount, [&](int corner) {
    const Row& row = rowOf(corner);
    const auto first = block_.begin() + row.begin;
    return std::find(first, first + row.size, slot) != first + row.size;
  });
}

}  // namespace zel
