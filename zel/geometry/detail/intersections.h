#pragma once

// What the intersection functions share.

#include <limits>

#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/vectors.h"

namespace zel {

/// Result for lines, or circles, that are one and the same.
inline constexpr int kCoincident = std::numeric_limits<int>::max();

/// (1 - t) a + t b
inline Vec3 between(Vec3 a, double t, Vec3 b) {
  const double s = 1.0 - t;
  return {roundToFloat(s * a.x + t * b.x), roundToFloat(s * a.y + t * b.y),
          roundToFloat(s * a.z + t * b.z)};
}

/// (b - a) / d, rounded once
inline Vec3 directionOver(Vec3 a, Vec3 b, double d) {
  const Vec3d v = difference(b, a);
  return {roundToFloat(v.x / d), roundToFloat(v.y / d), roundToFloat(v.z / d)};
}

}  // namespace zel
