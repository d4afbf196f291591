#include "zel/mesh/detail/faces/directed_edges.h"

#include <algorithm>

#include "zel/mesh/triangle.h"

namespace zel {
namespace {

/// Calls visit(from, to, slot) for the three edges of every slot, in the face's winding.
template <class Visit>
void forEachEdge(const TriangleCL* faces, int count, Visit visit) {
  for (int slot = 0; slot < count; ++slot) {
    int corners[3];
    faces[slot].GetTriangleM(corners);
    visit(corners[0], corners[1], slot);
    visit(corners[1], corners[2], slot);
    visit(corners[2], corners[0], slot);
  }
}

}  // namespace

DirectedEdges::DirectedEdges(const TriangleCL* faces, int count, int nodeCount)
    : starts_(static_cast<std::size_t>(std::max(nodeCount, 0)) + 1, 0) {
  const auto isRegular = [&](int node) { return node >= 0 && node < this->nodeCount(); };
  forEachEdge(faces, count, [&](int from, int to, int slot) {
    if (isRegular(from)) {
      ++starts_[static_cast<std::size_t>(from)];
    } else {
      irregular_[from].push_back({to, slot});
    }
  });
  std::size_t end = 0;
  for (std::size_t& start : starts_) {
    end += start;
    start = end;
  }
  // Filling each node's range from its end, last slot first, leaves it ascending and `starts_` at
  // the ranges' beginnings.
  edges_.resize(end);
  for (int slot = count - 1; slot >= 0; --slot) {
    forEachEdge(faces + slot, 1, [&](int from, int to, int /*slot*/) {
      if (isRegular(from)) {
        edges_[--starts_[static_cast<std::size_t>(from)]] = {to, slot};
      }
    });
  }
  for (std::size_t node = 0; node + 1 < starts_.size(); ++node) {
    sortIfLong(edges_.data() + starts_[node], edges_.data() + starts_[node + 1]);
  }
  for (auto& [node, row] : irregular_) {
    sortIfLong(row.data(), row.data() + row.size());
  }
}

void DirectedEdges::sortIfLong(Edge* first, Edge* last) {
  if (last - first > kShortRow) {
    std::sort(first, last, [](const Edge& a, const Edge& b) {
      return a.to < b.to || (a.to == b.to && a.slot < b.slot);
    });
  }
}

}  // namespace zel
