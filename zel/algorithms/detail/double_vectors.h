#pragma once

#include <cmath>
#include <cstddef>

#include "zel/core/plain_types.h"

namespace zel {

// Points are floats; differences of them are taken in double precision, so that nothing is lost
// before the last step. No product of three of these can overflow.

/// b - a.
inline Double3 between(const float* a, const float* b) {
  return {double{b[0]} - a[0], double{b[1]} - a[1], double{b[2]} - a[2]};
}
inline Double3 cross(const Double3& u, const Double3& v) {
  return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}
inline double dot(const Double3& u, const Double3& v) {
  return u[0] * v[0] + u[1] * v[1] + u[2] * v[2];
}
/// The length; NaN when a component is NaN, which std::hypot() does not promise.
inline double length(const Double3& v) { return std::sqrt(dot(v, v)); }
/// The distance of two points; NaN when a coordinate is NaN.
inline double distanceBetween(const float* a, const float* b) { return length(between(a, b)); }

inline bool isFinitePoint(const float* p) {
  return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

}  // namespace zel
