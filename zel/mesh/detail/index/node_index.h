#pragma once

/// @file
/// The index of a node list.

#include "zel/containers/detail/indexed_slots_impl.h"
#include "zel/containers/detail/point_grid.h"
#include "zel/containers/detail/slot_index.h"
#include "zel/core/constants.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/mesh/detail/index/nearest_tree.h"
#include "zel/mesh/node.h"

namespace zel {

/// Two positions are near when slIsEqualPoint3D() takes them for one.
struct NearBySquare {
  /// A little more than the distance at which points become equal, against rounding.
  static constexpr double kReach = 1.01e-4;
  static constexpr float kNearSquare = static_cast<float>(kReach * kReach);
  /// Below this, the distance is below the tolerance however the square was rounded.
  static constexpr float kSureSquare = kSquareTolerance * 0.9999F;

  static NearLanes lanes(const float* x, const float* y, const float* z, const float* p) {
    return lanesNear(x, y, z, p, kSureSquare, kNearSquare);
  }
  static bool isNear(const float* q, const float* p) { return isEqualPoint(q, p); }
};

/// Answers the two searches of a node list by position; see IndexedSlots. The grid holds exactly
/// the live slots below the bound that are not exposed.
class NodeIndex : public SlotIndex {
 public:
  void forget(const NodeCL* nodes, int slot);
  void learn(const NodeCL* nodes, int slot, bool isInList);
  void drop();
  [[nodiscard]] bool validate(const NodeCL* nodes, int bound) const;

  static constexpr int kUndecided = PointGrid::kUndecided;
  /// The lowest live node equal to p or kNowhere, where one look tells; else kUndecided.
  [[nodiscard]] int quickAt(const float* p) const {
    const PointGrid* grid = grid_.known();
    return grid != nullptr && exposed.slots().empty() ? grid->quickNear(p, NearBySquare())
                                                      : kUndecided;
  }
  /// The lowest live node equal to p, or kNoIndex.
  [[nodiscard]] int lowestAt(const NodeCL* nodes, int bound, const float* p) const;
  /// The nearest live node, or kNoIndex.
  [[nodiscard]] int nearestTo(const NodeCL* nodes, int bound, const float* p) const;

 private:
  LazyPart<PointGrid> grid_{4, NearBySquare::kReach};
  NearestForest forest_;
};

using NodeSlots = IndexedSlots<NodeCL, ElementPolicy, NodeIndex>;

/// The lowest live node equal to p, or kNoIndex.
[[nodiscard]] int firstNodeAt(const NodeSlots& nodes, const float* p);
/// The nearest live node, the lowest of equals, or kNoIndex.
[[nodiscard]] int nearestNode(const NodeSlots& nodes, const float* p);

}  // namespace zel
