#pragma once

// Inline plane and line arithmetic for the library's own use.

#include "zel/core/constants.h"
#include "zel/geometry/detail/vectors.h"

namespace zel {

/// Three doubles: a difference that is used before it is stored anywhere.
struct Vec3d {
  double x, y, z;
};

constexpr Vec3d difference(Vec3 a, Vec3 b) {
  return {static_cast<double>(a.x) - b.x, static_cast<double>(a.y) - b.y,
          static_cast<double>(a.z) - b.z};
}
/// a + d, rounded once.
inline Vec3 sum(Vec3 a, Vec3d d) {
  return {roundToFloat(a.x + d.x), roundToFloat(a.y + d.y), roundToFloat(a.z + d.z)};
}
constexpr double dot(Vec3d a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec3 cross(Vec3d a, Vec3d b) {
  return {roundToFloat(a.y * b.z - a.z * b.y), roundToFloat(a.z * b.x - a.x * b.z),
          roundToFloat(a.x * b.y - a.y * b.x)};
}

/// Whether the sine between two vectors is below about the tolerance, from the squares of their
/// lengths and their cross product.
inline bool isSineTiny(double squareA, double squareB, Vec3 product) {
  return squareA * squareB * kSquareTolerance >= squareLength(product);
}

/// The d of the plane through p with the normal n.
inline float planeOffset(Vec3 p, Vec3 n) { return roundToFloat(-dot(p, n)); }
/// Unsigned distance from a plane, 0 within the tolerance.
inline float planeDistance(Vec3 n, float d, Vec3 p) { return deadAbsF(dot(n, p) + d); }

/// Where a segment ends, as a parameter; the bounds are open.
inline constexpr float kSegmentEnd = 1.0001F;
/// Whether a parameter lies between the ends of a segment, or within the tolerance of one.
inline bool isOnSegment(float parameter, float end = kSegmentEnd) {
  return parameter > -kTolerance && parameter < end;
}

/// A line seen from a point: where the perpendicular meets it (0 at a, 1 at b) and the
/// perpendicular itself. A line without length has a NaN for both.
struct LineFoot {
  float t;
  Vec3 offset;
};

inline LineFoot footOnLine(Vec3 a, Vec3 b, Vec3 p) {
  const Vec3 d = b - a;
  const Vec3 w = p - a;
  const float t = roundToFloat(dot(w, d) / dot(d, d));
  return {t, along(w, -static_cast<double>(t), d)};
}

}  // namespace zel
