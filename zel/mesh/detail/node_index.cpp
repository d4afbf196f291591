#include "zel/mesh/detail/node_index.h"

#include <cmath>

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
  if (!isTreeBuilt_) {
    return;
  }
  try {
    changed_.push_back(slot);
    isTreeBuilt_ = static_cast<int>(changed_.size()) <= treeBound_ + 64;
  } catch (const std::bad_alloc&) {
    isTreeBuilt_ = false;
  }
}

void NodeIndex::drop() {
  grid_.clear();
  isGridBuilt_ = false;
  gridBudget_.restart();
  isGridInVain_ = false;
  tree_.clear();
  isTreeBuilt_ = false;
  treeBudget_.restart();
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

int NodeIndex::lowestOfAll(const NodeCL* nodes, int bound, const float* p) {
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

bool NodeIndex::hasTree(const NodeCL* nodes, int bound) {
  if (isTreeBuilt_ || !treeBudget_.spend(bound, bound)) {
    return isTreeBuilt_;
  }
  try {
    tree_.build(nodes, bound);
    changed_.clear();
    // Every distance to a NaN counts as zero, so such nodes are always looked at.
    for (int slot = 0; slot < bound; ++slot) {
      const float* q = nodes[slot].point();
      if (!(std::isfinite(q[0]) && std::isfinite(q[1]) && std::isfinite(q[2]))) {
        changed_.push_back(slot);
      }
    }
    treeBound_ = bound;
    isTreeBuilt_ = true;
    treeBudget_.restart();
  } catch (const std::bad_alloc&) {
    tree_.clear();
  }
  return isTreeBuilt_;
}

int NodeIndex::nearestTo(const NodeCL* nodes, int bound, const float* p) {
  const bool isFinite = std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
  if (!isFinite || !hasTree(nodes, bound)) {
    return walkToNearest(nodes, bound, p);
  }
  Nearest best{kInfinity, kNoIndex};
  int wasted = tree_.search(nodes, p, best);
  const std::vector<int>* untrusted[2] = {&changed_, &exposed_.slots()};
  for (const std::vector<int>* slots : untrusted) {
    for (const int slot : *slots) {
      if (slot < bound) {
        best.tryNode(nodes, slot, p);
      }
    }
    wasted += static_cast<int>(slots->size());
  }
  // Stale entries cost a little at every search, in the end as much as another tree.
  isTreeBuilt_ = !treeBudget_.spend(wasted, bound);
  return best.slot;
}

}  // namespace zel
