#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "zel/core/plain_types.h"

namespace zel {

/// The exact sign of a sum: the terms become an expansion whose parts do not overlap. J. R.
/// Shewchuk, "Adaptive precision floating-point arithmetic and fast robust geometric predicates",
/// 1997, section 2.4.
template <std::size_t kTerms>
int signOfSum(const std::array<double, kTerms>& terms) {
  std::array<double, kTerms> parts{};
  std::size_t count = 0;
  for (const double term : terms) {
    double sum = term;
    for (std::size_t i = 0; i < count; ++i) {
      const double larger = sum + parts[i];
      const double virtualPart = larger - sum;
      const double error = (sum - (larger - virtualPart)) + (parts[i] - virtualPart);
      sum = larger;
      parts[i] = error;
    }
    parts[count++] = sum;
  }
  for (std::size_t i = count; i > 0; --i) {
    if (parts[i - 1] != 0.0) {
      return parts[i - 1] > 0.0 ? 1 : -1;
    }
  }
  return 0;
}

/// @return 1 when a, b, c turn left, -1 when they turn right, 0 when they lie on a line: exactly.
inline int turnOf(const Float2& a, const Float2& b, const Float2& c) {
  const double left = (double{b[0]} - a[0]) * (double{c[1]} - a[1]);
  const double right = (double{b[1]} - a[1]) * (double{c[0]} - a[0]);
  constexpr double kRounding = 4.0 * 0x1p-53;  // of differences, products and their difference
  const double turn = left - right;
  if (std::fabs(turn) > kRounding * (std::fabs(left) + std::fabs(right))) {
    return turn > 0.0 ? 1 : -1;
  }
  // Products of two floats are exact.
  const auto product = [](float x, float y) { return double{x} * y; };
  return signOfSum<6>({product(a[0], b[1]), -product(a[1], b[0]), product(b[0], c[1]),
                       -product(b[1], c[0]), product(c[0], a[1]), -product(c[1], a[0])});
}

}  // namespace zel
