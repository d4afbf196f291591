#pragma once

/// @file
/// The index of a point array.

#include <cmath>

#include "zel/containers/detail/indexed_slots_impl.h"
#include "zel/containers/detail/point_grid.h"
#include "zel/containers/detail/slot_index.h"
#include "zel/core/constants.h"

namespace zel {

using PointSlots = IndexedSlots<Float3, PointPolicy, class PointIndex>;

/// Two points are near when they differ by less than kTolerance in each coordinate.
struct NearByAxis {
  // A little more than the tolerance covers the rounding of the cell borders.
  static constexpr double kReach = 1.01 * double{kTolerance};

  static NearLanes lanes(const float* x, const float* y, const float* z, const float* p) {
    return {lanesInBox(x, y, z, p, 0.9999F * kTolerance),
            lanesInBox(x, y, z, p, 1.0001F * kTolerance)};
  }
  static bool isNear(const float* q, const float* p) {
    const auto isNearAlong = [=](int axis) {
      return std::fabs(double{q[axis]} - double{p[axis]}) < double{kTolerance};
    };
    return isNearAlong(0) && isNearAlong(1) && isNearAlong(2);
  }
};

/// Follows a point array; see IndexedSlots. Holes stay out of the grid: all have the mark as their
/// x, and only a search at the mark, which walks, may find them.
class PointIndex : public SlotIndex {
 public:
  void forget(const Float3* points, int slot) {
    if (PointGrid* grid = grid_.known(); grid != nullptr && !isHole(points[slot].data())) {
      grid->erase(slot, points[slot].data());
    }
  }
  void learn(const Float3* points, int slot, bool isInList) {
    if (PointGrid* grid = grid_.known();
        grid != nullptr && isInList && !isHole(points[slot].data())) {
      grid->insert(slot, points[slot].data());
    }
  }
  void drop() { grid_.drop(); }
  [[nodiscard]] bool validate(const Float3* points, int bound) const;

  /// The grid when it may be asked; null when a walk must do.
  [[nodiscard]] const PointGrid* grid(const Float3* points, int bound) const;
  void noteWalk(int slots) const { grid_.budget.spend(slots); }
  [[nodiscard]] static bool isHole(const float* point) { return point[0] == kFloatMark; }

 private:
  LazyPart<PointGrid> grid_{4, NearByAxis::kReach};
};

/// The lowest slot below the bound, live or not, that differs from `point` by less than kTolerance
/// in each coordinate; -1 when there is none.
[[nodiscard]] int firstNear(const PointSlots& points, const float* point);

}  // namespace zel
