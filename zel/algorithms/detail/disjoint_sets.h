#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

namespace zel {

/// Sets that grow together; the lowest member stands for its set.
class DisjointSets {
 public:
  explicit DisjointSets(int count) : parents_(static_cast<std::size_t>(count)) {
    std::iota(parents_.begin(), parents_.end(), 0);
  }
  /// @return the lowest member of the set of `i`.
  int find(int i) {
    while (parent(i) != i) {
      parent(i) = parent(parent(i));
      i = parent(i);
    }
    return i;
  }
  /// @return whether the two sets were different.
  bool join(int a, int b) {
    a = find(a);
    b = find(b);
    parent(std::max(a, b)) = std::min(a, b);
    return a != b;
  }

 private:
  int& parent(int i) { return parents_[static_cast<std::size_t>(i)]; }

  std::vector<int> parents_;
};

}  // namespace zel
