// A list of points in the plane as a ring around an area.

#include "zel/containers/point2d_arr.h"
#include "zel/geometry/inside_tests.h"

int Point2DArr::JudgePntInBoundM(const float* point) const {
  constexpr int kSmallestRing = 4;  // a triangle whose last point repeats the first
  if (GetBoundM() < kSmallestRing) {
    return 0;
  }
  return slPointInterFaceM(getCurrentItemPrtConstM(), GetBoundM(), point) == 0 ? 1 : 0;
}
