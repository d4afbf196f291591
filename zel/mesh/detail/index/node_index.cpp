#include "zel/mesh/detail/index/node_index.h"

#include <cmath>

#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace zel {

namespace {

bool isLive(const NodeCL& node) { return node.IsAvailableM() == kTagAvailable; }

bool isFinite(const float* p) {
  return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

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
  const NodeIndex* index = nodes.index();
  return index == nullptr ? walkToNodeAt(nodes.data(), nodes.count(), p)
                          : index->lowestAt(nodes.data(), nodes.count(), p);
}

int nearestNode(const NodeSlots& nodes, const float* p) {
  const NodeIndex* index = nodes.index();
  return index == nullptr ? walkToNearest(nodes.data(), nodes.count(), p)
                          : index->nearestTo(nodes.data(), nodes.count(), p);
}

// --- following the list ------------------------------------------------------------------------

void NodeIndex::forget(const NodeCL* nodes, int slot) {
  if (PointGrid* grid = grid_.known(); grid != nullptr && isLive(nodes[slot])) {
    grid->erase(slot, nodes[slot].point());
  }
}

void NodeIndex::learn(const NodeCL* nodes, int slot, bool isInList) {
  if (!isInList) {
    return;
  }
  forest_.note(slot);
  if (PointGrid* grid = grid_.known(); grid != nullptr && isLive(nodes[slot])) {
    grid->insert(slot, nodes[slot].point());
  }
}

void NodeIndex::drop() {
  grid_.drop();
  forest_.drop();
}

bool NodeIndex::validate(const NodeCL* nodes, int bound) const {
  const PointGrid* grid = grid_.known();
  std::size_t inGrid = 0;
  for (int slot = 0; grid != nullptr && slot < bound; ++slot) {
    const float* p = nodes[slot].point();
    const bool isIn = isLive(nodes[slot]) && !exposed.contains(slot) && isFinite(p);
    if (isIn && !grid->holds(slot, p)) {
      return false;
    }
    inGrid += isIn ? 1U : 0U;
  }
  return (grid == nullptr || (grid->size() == inGrid && grid->validate())) &&
         forest_.validate(nodes, bound, exposed);
}

// --- searching ---------------------------------------------------------------------------------

int NodeIndex::lowestAt(const NodeCL* nodes, int bound, const float* p) const {
  const PointGrid* grid = grid_.ready(bound, [=, this](PointGrid& content) {
    content.build(bound, [=, this](int slot) {
      return isLive(nodes[slot]) && !exposed.contains(slot) ? nodes[slot].point() : nullptr;
    });
  });
  if (grid == nullptr) {
    const int found = walkToNodeAt(nodes, bound, p);
    grid_.budget.spend(found == kNoIndex ? bound : found + 1);
    return found;
  }
  const int inGrid = grid->lowestNear(p, NearBySquare());
  const int loose = exposed.lowest(inGrid < 0 ? bound : inGrid, [=](int slot) {
    return isLive(nodes[slot]) && slIsEqualPoint3D(nodes[slot].point(), p) == 1;
  });
  return loose >= 0 ? loose : inGrid < 0 ? kNoIndex : inGrid;
}

int NodeIndex::nearestTo(const NodeCL* nodes, int bound, const float* p) const {
  Nearest best{kInfinity, kNoIndex};
  if (!isFinite(p) || !forest_.search(nodes, bound, p, best)) {
    forest_.noteWalk(bound);
    return walkToNearest(nodes, bound, p);
  }
  for (const int slot : exposed.slots()) {
    if (slot < bound) {
      best.tryNode(nodes, slot, p);
    }
  }
  return best.slot;
}

}  // namespace zel
