#pragma once

#include <array>
#include <cmath>
#include <random>

namespace zel::test {

using Double3 = std::array<double, 3>;

/// A point or a direction of floats; a call takes it wherever it takes a float[3] or a float[2].
struct Float3 : std::array<float, 3> {
  operator const float*() const { return data(); }  // NOLINT(google-explicit-constructor)
  operator float*() { return data(); }              // NOLINT(google-explicit-constructor)
};

inline Double3 operator+(Double3 a, Double3 b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
inline Double3 operator-(Double3 a, Double3 b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
inline Double3 operator*(double t, Double3 a) { return {t * a[0], t * a[1], t * a[2]}; }
inline double dot(Double3 a, Double3 b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline Double3 cross(Double3 a, Double3 b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double norm(Double3 a) { return std::sqrt(dot(a, a)); }
inline Double3 unit(Double3 a) { return (1.0 / norm(a)) * a; }
inline Double3 widen(const float* p) { return {p[0], p[1], p[2]}; }
inline Float3 narrow(Double3 p) {
  return {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2])};
}
/// Distance of a result from the point that it should be.
inline double apart(const float* p, Double3 q) { return norm(widen(p) - q); }
/// A unit vector across an axis that does not happen to run along (3, 5, 8).
inline Double3 perpendicularTo(Double3 axis) { return unit(cross(axis, {0.3, 0.5, 0.8})); }
/// The unit vector of the xy plane at an angle from +x.
inline Double3 flatDirection(double angle) { return {std::cos(angle), std::sin(angle), 0}; }

/// Two unit directions and the unit normal of both.
struct ObliqueDirections {
  Double3 u, v, normal;
};

/// Random configurations from one seed, in double precision and already exact in float.
class RandomGeometry {
 public:
  explicit RandomGeometry(unsigned seed) : random_(seed) {}

  float number(double low, double high) {
    return static_cast<float>(std::uniform_real_distribution<double>(low, high)(random_));
  }
  Double3 point(double extent) {
    return {number(-extent, extent), number(-extent, extent), number(-extent, extent)};
  }
  /// A point of the xy plane.
  Double3 flatPoint(double extent) { return {number(-extent, extent), number(-extent, extent), 0}; }
  /// A unit vector, rounded to float.
  Double3 direction() {
    Double3 v = point(1.0);
    while (norm(v) < 0.1 || norm(v) > 1.0) {
      v = point(1.0);
    }
    return widen(narrow(unit(v)));
  }
  /// Directions whose angle has at least the given sine.
  ObliqueDirections obliqueDirections(double leastSine) {
    const Double3 u = direction();
    Double3 v = direction();
    while (norm(cross(u, v)) < leastSine) {
      v = direction();
    }
    return {u, v, unit(cross(u, v))};
  }

 private:
  std::mt19937 random_;
};

}  // namespace zel::test
