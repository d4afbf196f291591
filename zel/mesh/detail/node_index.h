#pragma once

/// @file
/// The index of a node list.

#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/indexed_slots_impl.h"
#include "zel/mesh/node.h"

namespace zel {

class NodeIndex {
 public:
  bool expose(const NodeCL*, int, int) { return true; }
  void forget(const NodeCL*, int) {}
  void learn(const NodeCL*, int, bool) {}
  void drop() {}
  void storeMoved(const NodeCL*, int) {}
};

using NodeSlots = IndexedSlots<NodeCL, NodeIndex>;

inline int firstNodeAt(const NodeSlots& nodes, const float* p) {
  for (int slot = 0; slot < nodes.bound(); ++slot) {
    if (nodes.isLive(slot) && slIsEqualPoint3D(nodes[slot].point(), p) == 1) {
      return slot;
    }
  }
  return kNoIndex;
}

inline int nearestNode(const NodeSlots& nodes, const float* p) {
  float best = kInfinity;
  int nearest = kNoIndex;
  for (int slot = 0; slot < nodes.bound(); ++slot) {
    if (!nodes.isLive(slot)) {
      continue;
    }
    const float distance = slDistance3(nodes[slot].point(), p);
    if (distance < best) {
      best = distance;
      nearest = slot;
    }
  }
  return nearest;
}

}  // namespace zel
