#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

class TriangleCL;

namespace zel {

/// Finds the faces that run along an edge in a given direction. Built once over all slots of a
/// face list, whose corners must then stay as they are; tags may change.
class DirectedEdges {
 public:
  /// @param faces `count` slots, deleted ones included.
  /// @param nodeCount corners 0 to nodeCount - 1 are kept compactly; others are allowed but dearer.
  DirectedEdges(const TriangleCL* faces, int count, int nodeCount);

  /// Visits the slots of the faces in whose winding `from` is followed by `to`, in ascending order,
  /// until visit(slot) returns true. @return whether it did.
  template <class Visit>
  bool firstAlong(int from, int to, Visit visit) const {
    if (from < 0 || from >= nodeCount()) {
      const auto found = irregular_.find(from);
      return found != irregular_.end() &&
             firstIn(found->second.data(), found->second.data() + found->second.size(), to, visit);
    }
    const std::size_t node = static_cast<std::size_t>(from);
    return firstIn(edges_.data() + starts_[node], edges_.data() + starts_[node + 1], to, visit);
  }

 private:
  struct Edge {
    int to;
    int slot;
  };

  [[nodiscard]] int nodeCount() const { return static_cast<int>(starts_.size()) - 1; }

  template <class Visit>
  static bool firstIn(const Edge* first, const Edge* last, int to, Visit visit) {
    for (; first != last; ++first) {
      if (first->to == to && visit(first->slot)) {
        return true;
      }
    }
    return false;
  }

  std::vector<std::size_t> starts_;  // per node, into edges_; one more at the end
  std::vector<Edge> edges_;          // grouped by origin, ascending by slot
  std::unordered_map<int, std::vector<Edge>> irregular_;
};

}  // namespace zel
