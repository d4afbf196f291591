#include "zel/textfile/detail/real_digits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <limits>
#include <system_error>

namespace zel {
namespace {

constexpr int kLargestPower = 22;

// 10^-22 to 10^22. A double holds the positive powers exactly, and each negative one as near as
// any double.
constexpr auto kPowersOfTen = [] {
  std::array<double, 2 * kLargestPower + 1> powers{};
  double power = 1;
  for (std::size_t i = 0; i <= kLargestPower; ++i, power *= 10) {
    powers[kLargestPower + i] = power;
    powers[kLargestPower - i] = 1 / power;
  }
  return powers;
}();

// Whether a double, at most 2 units in its last place away from the exact value, rounds to the
// float to which that rounds: it must not lie too near to the middle between two floats.
bool mayRoundAgain(double value) {
  constexpr double kSmallestSafe = 1e-37;  // above the floats of lesser precision
  constexpr double kLargestSafe = 1e38;
  constexpr std::uint64_t kDropped = (1U << 29) - 1;
  constexpr std::uint64_t kMiddle = 1U << 28;
  constexpr std::uint64_t kMargin = 4;
  const std::uint64_t dropped = std::bit_cast<std::uint64_t>(value) & kDropped;
  return value > kSmallestSafe && value < kLargestSafe &&
         (dropped < kMiddle - kMargin || dropped > kMiddle + kMargin);
}

}  // namespace

float nearestFloat(std::uint64_t mantissa, std::int64_t exponent) {
  constexpr std::uint64_t kExactInDouble = std::uint64_t{1} << 53;
  if (mantissa == 0) {
    return 0;
  }
  if (mantissa <= kExactInDouble && exponent >= -kLargestPower && exponent <= kLargestPower) {
    const double power = kPowersOfTen[static_cast<std::size_t>(exponent + kLargestPower)];
    const double value = static_cast<double>(mantissa) * power;
    if (mayRoundAgain(value)) {
      return static_cast<float>(value);
    }
  }
  return RealDigits(mantissa, exponent).value(0);
}

RealDigits::RealDigits(std::uint64_t mantissa, std::int64_t scale) : scale_(scale) {
  if (mantissa != 0) {
    count_ = static_cast<int>(std::to_chars(digits_, digits_ + kKept, mantissa).ptr - digits_);
  }
}

float RealDigits::value(std::int64_t exponent) {
  if (count_ == 0) {
    return 0;
  }
  if (hasMore_) {
    digits_[count_++] = '1';
    --scale_;
  }
  constexpr std::int64_t kBeyondAnyReal = 1'000'000;
  const int perDigit = base_ == Base::kHex ? 4 : 1;
  const std::int64_t power = scale_ * perDigit + exponent;
  char* end = digits_ + count_;
  *end++ = base_ == Base::kHex ? 'p' : 'e';
  end = std::to_chars(end, digits_ + sizeof digits_,
                      std::clamp(power, -kBeyondAnyReal, kBeyondAnyReal))
            .ptr;
  const auto format = base_ == Base::kHex ? std::chars_format::hex : std::chars_format::scientific;
  float value = 0;
  if (std::from_chars(digits_, end, value, format).ec == std::errc::result_out_of_range) {
    const bool isLarge = power + std::int64_t{count_} * perDigit > 0;
    value = isLarge ? std::numeric_limits<float>::infinity() : 0.0F;
  }
  return value;
}

}  // namespace zel
