#include "zel/mesh/detail/nearest_tree.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace zel {

namespace {

constexpr int kLeafSize = 12;

// A true distance above this cannot give a float distance as small as `distance`; all distances
// below the tolerance count as zero.
double farthestThatMatters(float distance) {
  return std::max(double{distance}, 1.001 * kTolerance) * 1.000001;
}

}  // namespace

bool Nearest::tryNode(const NodeCL* nodes, int candidate, const float* p) {
  const NodeCL& node = nodes[candidate];
  if (node.IsAvailableM() != kTagAvailable) {
    return false;
  }
  const float d = slDistance3(node.point(), p);
  if (d < distance || (d == distance && slot != kNoIndex && candidate < slot)) {
    distance = d;
    slot = candidate;
  }
  return true;
}

void NearestTree::Query::tryEntry(const Entry& entry) {
  dead += entry.slot < bound && best->tryNode(nodes, entry.slot, p) ? 0 : 1;
}

NearestTree::NearestTree(const NodeCL* nodes, const std::vector<int>& slots) {
  entries_.reserve(slots.size());
  for (const int slot : slots) {
    if (nodes[slot].IsAvailableM() == kTagAvailable) {
      const float* p = nodes[slot].point();
      entries_.push_back({{p[0], p[1], p[2]}, slot});
    }
  }
  axes_.assign(entries_.size(), 0);
  split(0, size());
}

void NearestTree::appendSlots(std::vector<int>& slots) const {
  for (const Entry& entry : entries_) {
    slots.push_back(entry.slot);
  }
}

// Halves the range by the axis along which it is longest.
void NearestTree::split(int first, int end) {
  while (end - first > kLeafSize) {
    float low[3];
    float high[3];
    std::copy_n(entries_[static_cast<std::size_t>(first)].point, 3, low);
    std::copy_n(low, 3, high);
    for (int i = first; i < end; ++i) {
      for (int k = 0; k < 3; ++k) {
        const float x = entries_[static_cast<std::size_t>(i)].point[k];
        low[k] = std::min(low[k], x);
        high[k] = std::max(high[k], x);
      }
    }
    int axis = 0;
    for (int k = 1; k < 3; ++k) {
      if (double{high[k]} - low[k] > double{high[axis]} - low[axis]) {
        axis = k;
      }
    }
    const int middle = first + (end - first) / 2;
    std::nth_element(entries_.begin() + first, entries_.begin() + middle, entries_.begin() + end,
                     [=](const Entry& a, const Entry& b) { return a.point[axis] < b.point[axis]; });
    axes_[static_cast<std::size_t>(middle)] = static_cast<std::uint8_t>(axis);
    split(first, middle);
    first = middle + 1;
  }
}

int NearestTree::search(const NodeCL* nodes, int bound, const float* p, Nearest& best) const {
  Query query{nodes, bound, p, &best, 0};
  search(0, size(), query);
  return query.dead;
}

void NearestTree::search(int first, int end, Query& query) const {
  while (end - first > kLeafSize) {
    const int middle = first + (end - first) / 2;
    const Entry& entry = entries_[static_cast<std::size_t>(middle)];
    const int axis = axes_[static_cast<std::size_t>(middle)];
    const double offset = double{query.p[axis]} - entry.point[axis];
    const bool isBelow = offset < 0;
    search(isBelow ? first : middle + 1, isBelow ? middle : end, query);
    if (std::fabs(offset) > farthestThatMatters(query.best->distance)) {
      return;
    }
    query.tryEntry(entry);
    (isBelow ? first : end) = isBelow ? middle + 1 : middle;
  }
  const double limit = farthestThatMatters(query.best->distance);
  for (int i = first; i < end; ++i) {
    const Entry& entry = entries_[static_cast<std::size_t>(i)];
    const double dx = double{query.p[0]} - entry.point[0];
    const double dy = double{query.p[1]} - entry.point[1];
    const double dz = double{query.p[2]} - entry.point[2];
    if (dx * dx + dy * dy + dz * dz <= limit * limit) {
      query.tryEntry(entry);
    }
  }
}

}  // namespace zel
