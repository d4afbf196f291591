#include "zel/mesh/detail/node_index.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <utility>

#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace zel {

namespace {

bool isLive(const NodeCL& node) { return node.IsAvailableM() == kTagAvailable; }

int walkToNodeAt(const NodeCL* nodes, int bound, const float* p) {
  for (int slot = 0; slot < bound; ++slot) {
    if (isLive(nodes[slot]) && slIsEqualPoint3D(nodes[slot].point(), p) == 1) {
      return slot;
    }
  }
  return kNoIndex;
}

int walkToNearest(const NodeCL* nodes, int bound, const float* p) {
  Nearest best{kInfinity, kNoIndex};
  for (int slot = 0; slot < bound; ++slot) {
    best.tryNode(nodes, slot, p);
  }
  return best.slot;
}

}  // namespace

int firstNodeAt(const NodeSlots& nodes, const float* p) {
  NodeIndex* index = nodes.index();
  return index == nullptr ? walkToNodeAt(nodes.data(), nodes.bound(), p)
                          : index->lowestAt(nodes.data(), nodes.bound(), p);
}

int nearestNode(const NodeSlots& nodes, const float* p) {
  NodeIndex* index = nodes.index();
  return index == nullptr ? walkToNearest(nodes.data(), nodes.bound(), p)
                          : index->nearestTo(nodes.data(), nodes.bound(), p);
}

// --- following the list ------------------------------------------------------------------------

bool NodeIndex::expose(const NodeCL* nodes, int slot, int bound) {
  if (exposed_.contains(slot)) {
    return true;
  }
  if (slot < bound) {
    forget(nodes, slot);
  }
  return exposed_.add(slot, bound);
}

void NodeIndex::forget(const NodeCL* nodes, int slot) {
  if (isGridBuilt_ && isLive(nodes[slot]) && !exposed_.contains(slot)) {
    grid_.erase(slot, nodes[slot].point());
  }
}

void NodeIndex::learn(const NodeCL* nodes, int slot, bool isInList) {
  if (!isInList || exposed_.contains(slot)) {
    return;
  }
  noteChange(slot);
  if (!isGridBuilt_ || !isLive(nodes[slot])) {
    return;
  }
  try {
    grid_.insert(slot, nodes[slot].point());
    isGridBuilt_ = !grid_.isHopeless();
  } catch (const std::bad_alloc&) {
    isGridBuilt_ = false;
  }
  if (!isGridBuilt_) {
    giveUpGrid();
  }
}

void NodeIndex::noteChange(int slot) {
  if (!hasTrees_) {
    return;
  }
  try {
    changed_.push_back(slot);
  } catch (const std::bad_alloc&) {
    fellTrees();
    return;
  }
  // Nobody may ever ask for the nearest again, yet changes go on.
  if (static_cast<int>(changed_.size()) > builtBound_ + 64) {
    fellTrees();
  }
}

void NodeIndex::drop() {
  grid_.clear();
  isGridBuilt_ = false;
  gridBudget_.restart();
  isGridInVain_ = false;
  fellTrees();
}

void NodeIndex::storeMoved(const NodeCL* nodes, int bound) {
  for (const int slot : exposed_.takeAll()) {
    learn(nodes, slot, slot < bound);
  }
  isGridInVain_ = false;
}

// --- merging -----------------------------------------------------------------------------------

void NodeIndex::giveUpGrid() {
  isGridBuilt_ = false;
  isGridInVain_ = true;
  grid_.clear();
  gridBudget_.restart();
}

void NodeIndex::buildGrid(const NodeCL* nodes, int bound) {
  std::vector<NodeGrid::Point> sample;
  const int stride = std::max(bound / 64, 1);
  for (int slot = 0; slot < bound; slot += stride) {
    const float* p = nodes[slot].point();
    if (isLive(nodes[slot]) && std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2])) {
      sample.push_back({p[0], p[1], p[2]});
    }
  }
  grid_.start(bound, std::move(sample));
  for (int slot = 0; slot < bound; ++slot) {
    if (isLive(nodes[slot]) && !exposed_.contains(slot)) {
      grid_.insert(slot, nodes[slot].point());
    }
  }
}

bool NodeIndex::hasGrid(const NodeCL* nodes, int bound) {
  if (isGridBuilt_ || isGridInVain_ || !gridBudget_.spend(bound, bound)) {
    return isGridBuilt_;
  }
  try {
    buildGrid(nodes, bound);
    isGridBuilt_ = !grid_.isHopeless();
  } catch (const std::bad_alloc&) {
    isGridBuilt_ = false;
  }
  if (!isGridBuilt_) {
    giveUpGrid();
  }
  return isGridBuilt_;
}

int NodeIndex::lowestAt(const NodeCL* nodes, int bound, const float* p) {
  if (!hasGrid(nodes, bound)) {
    return walkToNodeAt(nodes, bound, p);
  }
  const int inGrid = grid_.lowestNear(p);
  for (const int slot : exposed_.slots()) {
    if (slot >= bound || (inGrid != kNoIndex && slot > inGrid)) {
      break;
    }
    if (isLive(nodes[slot]) && slIsEqualPoint3D(nodes[slot].point(), p) == 1) {
      return slot;
    }
  }
  return inGrid;
}

// --- the nearest node --------------------------------------------------------------------------

void NodeIndex::fellTrees() {
  trees_ = {};
  changed_ = {};
  notFinite_ = {};
  hasTrees_ = false;
  treeBudget_.restart();
}

// Every distance to a NaN counts as zero, so nodes that are not finite are always looked at.
void NodeIndex::plant(const NodeCL* nodes, int bound, std::vector<int> slots) {
  const auto isUnfit = [=](int slot) {
    const float* q = slot < bound ? nodes[slot].point() : nullptr;
    return q == nullptr || !(std::isfinite(q[0]) && std::isfinite(q[1]) && std::isfinite(q[2]));
  };
  const auto unfit =
      std::stable_partition(slots.begin(), slots.end(), [&](int slot) { return !isUnfit(slot); });
  std::copy_if(unfit, slots.end(), std::back_inserter(notFinite_),
               [=](int slot) { return slot < bound; });
  slots.erase(unfit, slots.end());
  trees_.emplace_back(nodes, slots);
  builtBound_ = bound;
}

bool NodeIndex::hasTrees(const NodeCL* nodes, int bound) {
  if (hasTrees_ || !treeBudget_.spend(bound, bound)) {
    return hasTrees_;
  }
  fellTrees();
  try {
    std::vector<int> all(static_cast<std::size_t>(bound));
    std::iota(all.begin(), all.end(), 0);
    plant(nodes, bound, std::move(all));
    hasTrees_ = true;
  } catch (const std::bad_alloc&) {
    fellTrees();
  }
  return hasTrees_;
}

void NodeIndex::takeInChanges(const NodeCL* nodes, int bound) {
  constexpr std::size_t kFew = 256;
  if (changed_.size() <= kFew) {
    return;
  }
  std::vector<int> slots = std::exchange(changed_, {});
  while (!trees_.empty() && static_cast<std::size_t>(trees_.back().size()) <= 2 * slots.size()) {
    trees_.back().appendSlots(slots);
    trees_.pop_back();
  }
  std::sort(slots.begin(), slots.end());
  slots.erase(std::unique(slots.begin(), slots.end()), slots.end());
  plant(nodes, bound, std::move(slots));
}

int NodeIndex::nearestTo(const NodeCL* nodes, int bound, const float* p) {
  const bool isFinite = std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
  if (!isFinite || !hasTrees(nodes, bound)) {
    return walkToNearest(nodes, bound, p);
  }
  try {
    takeInChanges(nodes, bound);
  } catch (const std::bad_alloc&) {
    fellTrees();
    return walkToNearest(nodes, bound, p);
  }
  Nearest best{kInfinity, kNoIndex};
  int wasted = 0;
  for (const NearestTree& tree : trees_) {
    wasted += tree.search(nodes, bound, p, best);
  }
  const std::vector<int>* const inNoTree[] = {&changed_, &notFinite_, &exposed_.slots()};
  for (const std::vector<int>* slots : inNoTree) {
    for (const int slot : *slots) {
      if (slot < bound) {
        best.tryNode(nodes, slot, p);
      }
    }
    wasted += static_cast<int>(slots->size());
  }
  // Stale entries cost a little at every search, in the end as much as new trees.
  hasTrees_ = !treeBudget_.spend(wasted, bound);
  return best.slot;
}

}  // namespace zel
