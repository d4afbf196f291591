#pragma once

// Inline vector arithmetic for the library's own use. The exported functions forward to it.
//
// Rounding: a Vec3 holds floats. Every operation below computes in double and rounds once where the
// result is stored, which is what the exported functions promise. A dot product stays a double.

#include "zel/core/constants.h"
#include "zel/geometry/detail/scalars.h"

namespace zel {

/// Three floats by value. Made from a pointer wherever one is given, so that outputs may alias.
struct Vec3 {
  float x, y, z;

  constexpr Vec3(float px, float py, float pz) : x(px), y(py), z(pz) {}
  constexpr Vec3(const float* p) : x(p[0]), y(p[1]), z(p[2]) {}  // NOLINT: implicit on purpose

  constexpr void store(float* out) const {
    out[0] = x;
    out[1] = y;
    out[2] = z;
  }
};

inline float roundToFloat(double value) { return static_cast<float>(value); }

// One operation on floats rounds the same whether or not it passes through double.
constexpr Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
constexpr Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
constexpr Vec3 operator-(Vec3 a) { return {-a.x, -a.y, -a.z}; }

constexpr double dot(Vec3 a, Vec3 b) {
  return static_cast<double>(a.x) * b.x + static_cast<double>(a.y) * b.y +
         static_cast<double>(a.z) * b.z;
}

inline Vec3 cross(Vec3 a, Vec3 b) {
  const double ax = a.x, ay = a.y, az = a.z;
  const double bx = b.x, by = b.y, bz = b.z;
  return {roundToFloat(ay * bz - az * by), roundToFloat(az * bx - ax * bz),
          roundToFloat(ax * by - ay * bx)};
}

/// a + t u
inline Vec3 along(Vec3 a, double t, Vec3 u) {
  return {roundToFloat(a.x + t * u.x), roundToFloat(a.y + t * u.y), roundToFloat(a.z + t * u.z)};
}

constexpr double squareLength(Vec3 v) { return dot(v, v); }
inline double lengthD(Vec3 v) { return root(squareLength(v)); }
/// 0 or at least the tolerance; `slNorm2`.
inline float length(Vec3 v) { return roundToFloat(lengthD(v)); }

inline double squareDistanceD(Vec3 a, Vec3 b) {
  const double dx = static_cast<double>(a.x) - b.x;
  const double dy = static_cast<double>(a.y) - b.y;
  const double dz = static_cast<double>(a.z) - b.z;
  return dx * dx + dy * dy + dz * dz;
}
/// The squared distance, rounded to float; `slSquareDistance3`.
inline float squareDistance(Vec3 a, Vec3 b) { return roundToFloat(squareDistanceD(a, b)); }
inline float distance(Vec3 a, Vec3 b) { return roundToFloat(root(squareDistance(a, b))); }
inline bool isEqualPoint(Vec3 a, Vec3 b) { return squareDistance(a, b) < kSquareTolerance; }

/// `slNormalize`: unit length in place, or (1, 0, 0) and false.
inline bool normalize(Vec3& v) {
  const float len = length(v);
  if (len <= kTolerance) {
    v = {1.0F, 0.0F, 0.0F};
    return false;
  }
  v = {v.x / len, v.y / len, v.z / len};
  return true;
}
inline Vec3 normalized(Vec3 v) {
  normalize(v);
  return v;
}

/// Squared distance in x and y alone, rounded to float; `slPlaneDistSqr`.
inline float planeSquareDistance(const float* a, const float* b) {
  const double dx = static_cast<double>(a[0]) - b[0];
  const double dy = static_cast<double>(a[1]) - b[1];
  return roundToFloat(dx * dx + dy * dy);
}

}  // namespace zel
