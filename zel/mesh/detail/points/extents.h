#pragma once

#include "zel/geometry/detail/vectors.h"

namespace zel {

/// The ranges [smallest, largest] of points along three directions, kept in the caller's arrays.
class Extents {
 public:
  Extents(const float* a1, const float* a2, const float* a3, float* r1, float* r2, float* r3)
      : directions_{a1, a2, a3}, ranges_{r1, r2, r3} {}

  /// Widens the ranges by one point; the first sets both ends.
  void take(const float* point, bool isFirst) const {
    for (int k = 0; k < 3; ++k) {
      const float value = roundToFloat(dot(point, directions_[k]));
      float* range = ranges_[k];
      if (isFirst) {
        range[0] = range[1] = value;
      } else if (value > range[1]) {
        range[1] = value;
      } else if (value < range[0]) {
        range[0] = value;
      }
    }
  }

 private:
  const float* directions_[3];
  float* ranges_[3];
};

}  // namespace zel
