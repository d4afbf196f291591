#pragma once

// Inline matrix arithmetic for the library's own use; the exported functions forward to it.

#include "zel/geometry/detail/vectors.h"

namespace zel {

/// m (p, 1) without the fourth component; `slMatrix16MultiPoint3`.
inline Vec3 transformPoint(const float m[16], Vec3 p) {
  const double x = p.x, y = p.y, z = p.z;
  return {roundToFloat(m[0] * x + m[4] * y + m[8] * z + m[12]),
          roundToFloat(m[1] * x + m[5] * y + m[9] * z + m[13]),
          roundToFloat(m[2] * x + m[6] * y + m[10] * z + m[14])};
}

/// m (v, 0); `slMatrix16MultiVector3`.
inline Vec3 transformDirection(const float m[16], Vec3 v) {
  const double x = v.x, y = v.y, z = v.z;
  return {roundToFloat(m[0] * x + m[4] * y + m[8] * z),
          roundToFloat(m[1] * x + m[5] * y + m[9] * z),
          roundToFloat(m[2] * x + m[6] * y + m[10] * z)};
}

}  // namespace zel
