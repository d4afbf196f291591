#include "zel/mesh/detail/index/nearest_tree.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <new>
#include <numeric>
#include <utility>

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

// --- the forest --------------------------------------------------------------------------------

void NearestForest::note(int slot) {
  Trees* trees = current_.load(std::memory_order_relaxed);
  if (trees == nullptr) {
    return;
  }
  kept_.erase(kept_.begin(), kept_.end() - 1);
  trees->changed.push_back(slot);
  // Nobody may ever ask for the nearest again, yet changes go on.
  if (static_cast<int>(trees->changed.size()) > trees->builtBound + 64) {
    drop();
  }
}

void NearestForest::drop() {
  current_.store(nullptr, std::memory_order_relaxed);
  kept_.clear();
  budget_.restart();
  waste_.restart();
}

// Every distance to a NaN counts as zero, so nodes that are not finite are always looked at.
void NearestForest::Trees::plant(const NodeCL* nodes, int bound, std::vector<int> slots) {
  const auto isFit = [=](int slot) {
    const float* q = slot < bound ? nodes[slot].point() : nullptr;
    return q != nullptr && std::isfinite(q[0]) && std::isfinite(q[1]) && std::isfinite(q[2]);
  };
  const auto unfit = std::stable_partition(slots.begin(), slots.end(), isFit);
  std::copy_if(unfit, slots.end(), std::back_inserter(notFinite),
               [=](int slot) { return slot < bound; });
  slots.erase(unfit, slots.end());
  trees.push_back(std::make_shared<const NearestTree>(nodes, slots));
  builtBound = bound;
}

bool NearestForest::isWorn(const Trees& trees, int bound) const {
  constexpr std::size_t kFew = 256;
  return trees.changed.size() > kFew || waste_.isSpent(bound);
}

// Trees of what is there now: new ones for what has changed, or all anew.
std::unique_ptr<NearestForest::Trees> NearestForest::grow(const NodeCL* nodes, int bound,
                                                          const Trees* before) const {
  auto made = std::make_unique<Trees>();
  std::vector<int> slots;
  if (before == nullptr || waste_.isSpent(bound)) {
    slots.resize(static_cast<std::size_t>(bound));
    std::iota(slots.begin(), slots.end(), 0);
  } else {
    made->trees = before->trees;
    made->notFinite = before->notFinite;
    slots = before->changed;
    auto& trees = made->trees;
    while (!trees.empty() && static_cast<std::size_t>(trees.back()->size()) <= 2 * slots.size()) {
      trees.back()->appendSlots(slots);
      trees.pop_back();
    }
    std::sort(slots.begin(), slots.end());
    slots.erase(std::unique(slots.begin(), slots.end()), slots.end());
  }
  made->plant(nodes, bound, std::move(slots));
  return made;
}

// Out of memory, the worn trees do: they are true, only slower.
const NearestForest::Trees* NearestForest::renew(const NodeCL* nodes, int bound,
                                                 const Trees* worn) const {
  const std::lock_guard lock(growing_);
  const Trees* before = current_.load(std::memory_order_acquire);
  if (before != worn) {
    return before;  // another thread was first
  }
  try {
    kept_.push_back(grow(nodes, bound, before));
    current_.store(kept_.back().get(), std::memory_order_release);
  } catch (const std::bad_alloc&) {
    budget_.restart();
  }
  waste_.restart();
  return current_.load(std::memory_order_relaxed);
}

const NearestForest::Trees* NearestForest::ready(const NodeCL* nodes, int bound) const {
  const Trees* trees = current_.load(std::memory_order_acquire);
  const bool isDue = trees == nullptr ? budget_.isSpent(bound) : isWorn(*trees, bound);
  return isDue ? renew(nodes, bound, trees) : trees;
}

bool NearestForest::search(const NodeCL* nodes, int bound, const float* p, Nearest& best) const {
  const Trees* trees = ready(nodes, bound);
  if (trees == nullptr) {
    return false;
  }
  int wasted = 0;
  for (const auto& tree : trees->trees) {
    wasted += tree->search(nodes, bound, p, best);
  }
  for (const std::vector<int>* slots : {&trees->changed, &trees->notFinite}) {
    for (const int slot : *slots) {
      if (slot < bound) {
        best.tryNode(nodes, slot, p);
      }
    }
  }
  wasted += static_cast<int>(trees->changed.size());
  if (wasted > 0) {
    waste_.spend(wasted);
  }
  return true;
}

bool NearestForest::validate(const NodeCL* nodes, int bound, const ExposedSlots& exposed) const {
  const Trees* trees = current_.load(std::memory_order_acquire);
  if (trees == nullptr) {
    return true;
  }
  std::vector<int> known(trees->changed);
  known.insert(known.end(), trees->notFinite.begin(), trees->notFinite.end());
  for (const auto& tree : trees->trees) {
    tree->appendSlots(known);
  }
  std::sort(known.begin(), known.end());
  for (int slot = 0; slot < bound; ++slot) {
    const bool isWanted = nodes[slot].IsAvailableM() == kTagAvailable && !exposed.contains(slot);
    if (isWanted && !std::binary_search(known.begin(), known.end(), slot)) {
      return false;
    }
  }
  return true;
}

}  // namespace zel
