#pragma once

// The corners of a rectangle as a list, and rectangles from two corners.

#include <array>

#include "zel/geometry/records.h"

namespace zel {

inline std::array<float*, 4> corners(RectangleD& r) {
  return {r.corner0, r.corner1, r.corner2, r.corner3};
}
inline std::array<const float*, 4> corners(const RectangleD& r) {
  return {r.corner0, r.corner1, r.corner2, r.corner3};
}

/// The rectangle along the axes between its smallest and its largest x and y, at z = 0.
inline RectangleD rectangleBetween(float minX, float minY, float maxX, float maxY) {
  return {{minX, minY, 0.0F}, {maxX, minY, 0.0F}, {maxX, maxY, 0.0F}, {minX, maxY, 0.0F}};
}

}  // namespace zel
