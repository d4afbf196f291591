#pragma once

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <vector>

class TriangleCL;

namespace zel {

/// Finds the faces that run along an edge in a given direction. Built once over all slots of a
/// face list, whose corners must then stay as they are; tags may change.
///
/// Hubs of many edges cost no more than others: their edges are sorted by the far node, and faces
/// that a search has found to be out of the running are not looked at again.
class DirectedEdges {
 public:
  /// What a visitor says of a slot.
  enum class Verdict {
    kTaken,       ///< this is the one
    kPassedOver,  ///< not this time
    kGone,        ///< neither now nor ever again
  };

  /// @param faces `count` slots, deleted ones included.
  /// @param nodeCount corners 0 to nodeCount - 1 are kept compactly; others are allowed but dearer.
  DirectedEdges(const TriangleCL* faces, int count, int nodeCount);

  /// Visits the slots of the faces in whose winding `from` is followed by `to`, in ascending order,
  /// without those known to be gone, until visit(slot) takes one.
  /// @return whether it did.
  template <class Visit>
  bool firstAlong(int from, int to, Visit visit) {
    if (from < 0 || from >= nodeCount()) {
      const auto found = irregular_.find(from);
      return found != irregular_.end() &&
             firstIn(found->second.data(), found->second.data() + found->second.size(), to, visit);
    }
    const auto node = static_cast<std::size_t>(from);
    return firstIn(edges_.data() + starts_[node], edges_.data() + starts_[node + 1], to, visit);
  }

 private:
  struct Edge {
    int to;
    int slot;
  };
  /// Longer rows are sorted by far node, then slot; the others by slot alone.
  static constexpr std::ptrdiff_t kShortRow = 16;

  [[nodiscard]] int nodeCount() const { return static_cast<int>(starts_.size()) - 1; }
  static void sortIfLong(Edge* first, Edge* last);

  template <class Visit>
  static bool firstIn(Edge* first, Edge* last, int to, Visit& visit) {
    if (last - first > kShortRow) {
      first =
          std::lower_bound(first, last, to, [](const Edge& e, int node) { return e.to < node; });
      return first != last && first->to == to && firstInGroup(first, last, visit);
    }
    for (; first != last; ++first) {
      if (first->to == to && visit(first->slot) == Verdict::kTaken) {
        return true;
      }
    }
    return false;
  }

  /// The edges from `first` on that have its far node. How many at the front are gone is noted in
  /// place of the first one's slot.
  template <class Visit>
  static bool firstInGroup(Edge* first, const Edge* last, Visit& visit) {
    int gone = first->slot < 0 ? ~first->slot : 0;
    bool isFront = true;
    bool isTaken = false;
    for (const Edge* edge = first + gone; edge != last && edge->to == first->to; ++edge) {
      const Verdict verdict = visit(edge->slot);
      isTaken = verdict == Verdict::kTaken;
      if (isTaken) {
        break;
      }
      isFront = isFront && verdict == Verdict::kGone;
      gone += isFront ? 1 : 0;
    }
    first->slot = gone > 0 ? ~gone : first->slot;
    return isTaken;
  }

  std::vector<std::size_t> starts_;  // per node, into edges_; one more at the end
  std::vector<Edge> edges_;          // grouped by origin
  std::unordered_map<int, std::vector<Edge>> irregular_;
};

}  // namespace zel
