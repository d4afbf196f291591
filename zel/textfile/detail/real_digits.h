#pragma once

/// @file
/// From the digits of a real number to the nearest float, whatever their number.

#include <cstdint>

namespace zel {

/// @return the float nearest to mantissa x 10^exponent, ties to even; infinity beyond its range.
[[nodiscard]] float nearestFloat(std::uint64_t mantissa, std::int64_t exponent);

/// Collects the digits of one unsigned number of any length in fixed room.
///
/// The exact middle between two floats has at most 113 significant digits. What follows the
/// first 120 can therefore matter only by not being zero, and is remembered as one digit.
class RealDigits {
 public:
  enum class Base { kDecimal, kHex };

  explicit RealDigits(Base base) : base_(base) {}
  /// Continues the decimal number mantissa x 10^scale, whose digits are all of the mantissa's.
  RealDigits(std::uint64_t mantissa, std::int64_t scale);

  void add(char digit, bool behindPoint) {
    if (count_ == 0 && digit == '0') {
      scale_ -= behindPoint ? 1 : 0;
    } else if (count_ < kKept) {
      digits_[count_++] = digit;
      scale_ -= behindPoint ? 1 : 0;
    } else {
      hasMore_ = hasMore_ || digit != '0';
      scale_ += behindPoint ? 0 : 1;
    }
  }
  /// @param exponent written behind the digits: powers of ten, or of two for hexadecimal digits.
  /// @return the nearest float, ties to even; infinity beyond its range.
  [[nodiscard]] float value(std::int64_t exponent);

 private:
  static constexpr int kKept = 120;

  Base base_ = Base::kDecimal;
  int count_ = 0;
  std::int64_t scale_ = 0;  // how far right of the last digit kept the point stands
  bool hasMore_ = false;
  char digits_[kKept + 24];
};

}  // namespace zel
