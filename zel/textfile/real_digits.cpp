#include "zel/textfile/detail/real_digits.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <limits>
#include <system_error>

namespace zel {
namespace {

// Powers of ten that a double holds exactly.
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kLargestPower = 22;

// Whether rounding once more, to a float, must give what rounding the exact value gives. Only a
// double in the very middle between two floats hides on which side of it the exact value lies.
bool mayRoundAgain(double value) {
  constexpr double kSmallestSafe = 1e-37;  // above the floats of lesser precision
  constexpr double kLargestSafe = 1e38;
  constexpr std::uint64_t kDropped = (1U << 29) - 1;
  constexpr std::uint64_t kMiddle = 1U << 28;
  return value > kSmallestSafe && value < kLargestSafe &&
         (std::bit_cast<std::uint64_t>(value) & kDropped) != kMiddle;
}

}  // namespace

float nearestFloat(std::uint64_t mantissa, std::int64_t exponent) {
  constexpr std::uint64_t kExactInDouble = std::uint64_t{1} << 53;
  if (mantissa <= kExactInDouble && exponent >= -kLargestPower && exponent <= kLargestPower) {
    // Both operands are exact, so this is the double nearest to the number.
    const auto whole = static_cast<double>(mantissa);
    const double value =
        exponent < 0 ? whole / kPowersOfTen[-exponent] : whole * kPowersOfTen[exponent];
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
