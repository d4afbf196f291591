#pragma once

#include <cstdint>
#include <vector>

#include "zel/mesh/node.h"

namespace zel {

/// The best of the nodes looked at so far, by slDistance3() and then by index.
struct Nearest {
  float distance;
  int slot;

  /// Looks at one slot as it is now. @return whether it is live.
  bool tryNode(const NodeCL* nodes, int candidate, const float* p);
};

/// Nodes as they once were, for finding the nearest one. The nodes themselves decide: an entry
/// only says which slots are worth a look. A balanced k-d tree over an array; see J. L. Bentley,
/// Multidimensional Binary Search Trees, 1975.
class NearestTree {
 public:
  /// Takes in the live ones among `slots`, whose coordinates are finite. May throw std::bad_alloc.
  NearestTree(const NodeCL* nodes, const std::vector<int>& slots);
  [[nodiscard]] int size() const { return static_cast<int>(entries_.size()); }
  void appendSlots(std::vector<int>& slots) const;
  /// Improves `best`, by slots below the bound. @return the number of slots looked at in vain.
  int search(const NodeCL* nodes, int bound, const float* p, Nearest& best) const;

 private:
  struct Entry {
    float point[3];
    int slot;
  };
  struct Query {
    const NodeCL* nodes;
    int bound;
    const float* p;
    Nearest* best;
    int dead;

    void tryEntry(const Entry& entry);
  };
  void split(int first, int end);
  void search(int first, int end, Query& query) const;

  std::vector<Entry> entries_;
  std::vector<std::uint8_t> axes_;  ///< split axis of the range whose middle this is
};

}  // namespace zel
