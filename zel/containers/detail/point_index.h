#pragma once

/// @file
/// The index of a point store: a grid of its points, kept in step with changes.

#include <array>
#include <cmath>

#include "zel/containers/detail/heap.h"
#include "zel/containers/detail/point_grid.h"
#include "zel/containers/point_store.h"
#include "zel/core/constants.h"

namespace zel {

/// Whether two points differ by less than kTolerance in each coordinate.
inline bool isNearPoint(const float* a, float x, float y, float z) {
  const auto isNear = [](float p, float q) {
    return std::fabs(static_cast<double>(p) - static_cast<double>(q)) <
           static_cast<double>(kTolerance);
  };
  return isNear(a[0], x) && isNear(a[1], y) && isNear(a[2], z);
}

/// Knows the slots from 0 to some bound. Slots that changed lately, or that callers may change
/// unseen, are loose: they stand in a short list beside the grid and are compared one by one.
class PointIndex : public HeapObject {
 public:
  /// Makes a slot loose, before it changes or is handed out.
  /// @return false when the grid must be given up; so for all others.
  [[nodiscard]] bool loosen(const Float3* points, int slot, const HandedOutSlots& handedOut,
                            int length);
  /// Forgets the slots from `bound` on, which have not changed unless they are loose.
  void cutTo(const Float3* points, int bound);
  /// Takes in the slots up to `bound` and settles loose ones that nobody holds.
  [[nodiscard]] bool follow(const Float3* points, int bound, const HandedOutSlots& handedOut,
                            int length);
  /// @return the lowest slot known near `point`, -1 when there is none.
  [[nodiscard]] int lowestNear(const Float3* points, const float* point) const;

 private:
  static constexpr int kMostLoose = 64;

  [[nodiscard]] int* findLoose(int slot);
  [[nodiscard]] bool settle(const Float3* points, const HandedOutSlots& handedOut, int length);

  // A little more than the tolerance covers the rounding of the cell borders.
  PointGrid grid_{1.01 * static_cast<double>(kTolerance)};
  int covered_ = 0;
  std::array<int, kMostLoose> loose_{};
  int looseCount_ = 0;
};

}  // namespace zel
