#pragma once

#include <bit>
#include <cstdint>

namespace zel::test {

/// The bits of a float, for comparisons that tell -0 from 0 and see every last place.
inline std::uint32_t bits(float value) { return std::bit_cast<std::uint32_t>(value); }
inline std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

}  // namespace zel::test
