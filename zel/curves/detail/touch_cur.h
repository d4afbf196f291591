#pragma once

#include "zel/curves/touch_cur.h"
#include "zel/geometry/detail/vectors.h"

namespace zel {

/// @return whether no component of the two ends differs by more than the tolerance.
inline bool isCollapsed(const TouchCurD& c) {
  const Vec3 chord = Vec3(c.startPnt) - Vec3(c.endPnt);
  return deadAbs(chord.x) + deadAbs(chord.y) + deadAbs(chord.z) < kTolerance;
}

}  // namespace zel
