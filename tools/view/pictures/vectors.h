#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace zel::view {

using Vector3 = std::array<float, 3>;

[[nodiscard]] inline float dot(const Vector3& a, const Vector3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
[[nodiscard]] inline Vector3 cross(const Vector3& a, const Vector3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
/// a - b.
[[nodiscard]] inline Vector3 minus(const Vector3& a, const Vector3& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
/// a + share b.
[[nodiscard]] inline Vector3 plus(const Vector3& a, const Vector3& b, float share = 1) {
  return {a[0] + share * b[0], a[1] + share * b[1], a[2] + share * b[2]};
}
[[nodiscard]] inline float length(const Vector3& v) { return std::hypot(v[0], v[1], v[2]); }
/// @return v made one long, or `otherwise` when it has no length.
[[nodiscard]] inline Vector3 unit(const Vector3& v, const Vector3& otherwise = {}) {
  const float size = length(v);
  return size > 0 ? Vector3{v[0] / size, v[1] / size, v[2] / size} : otherwise;
}

}  // namespace zel::view
