#pragma once

#include <algorithm>

#include "zel/containers/point3d_arr.h"
#include "zel/core/constants.h"

namespace zel {

/// Whether IsPntAvailableM() calls a point available, told from the point itself.
inline bool isAvailable(const float* point) { return point[0] > kLiveNearMark; }

/// Calls visit(point, slot) for up to `k` available points from slot `start` upward; a negative
/// `k` takes as many as there are slots.
template <class Visit>
void scanAvailable(const Point3DArr& points, int start, int k, Visit visit) {
  const int bound = points.GetBoundM();
  int left = k < 0 ? bound : k;
  const auto* store = points.getCurrentItemPrtConstM();
  for (int slot = std::max(start, 0); slot < bound && left > 0; ++slot) {
    if (isAvailable(store[slot])) {
      visit(static_cast<const float*>(store[slot]), slot);
      --left;
    }
  }
}

/// Calls visit(point) for every point whose x lies above the mark's neighbourhood.
template <class Visit>
void scanAboveMark(const Point3DArr& points, Visit visit) {
  const auto* store = points.getCurrentItemPrtConstM();
  for (int slot = 0; slot < points.GetBoundM(); ++slot) {
    if (isAvailable(store[slot])) {
      visit(static_cast<const float*>(store[slot]));
    }
  }
}

}  // namespace zel
