#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace zel::test {

/// The bits of a float, for comparisons that tell -0 from 0 and see every last place.
inline std::uint32_t bits(float value) { return std::bit_cast<std::uint32_t>(value); }
inline std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

/// Whether two points are the same to the bit; NaN is the same as any NaN.
inline bool samePoint(const float* a, const float* b) {
  for (int i = 0; i < 3; ++i) {
    if (bits(a[i]) != bits(b[i]) && !(std::isnan(a[i]) && std::isnan(b[i]))) {
      return false;
    }
  }
  return true;
}

}  // namespace zel::test
