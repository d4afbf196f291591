#include "zel/core/detail/number_scan.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace zel {
namespace {

const char* skipBlanks(const char* text) {
  while (*text == ' ' || *text == '\t') {
    ++text;
  }
  return text;
}

const char* skipDigits(const char* text) {
  while (*text >= '0' && *text <= '9') {
    ++text;
  }
  return text;
}

// The number's end by the decimal grammar; `text` itself when there is no number.
const char* endOfReal(const char* text) {
  const char* mantissa = *text == '+' || *text == '-' ? text + 1 : text;
  const char* end = skipDigits(mantissa);
  const bool hasWhole = end != mantissa;
  if (*end == '.') {
    const char* fraction = end + 1;
    const char* fractionEnd = skipDigits(fraction);
    if (!hasWhole && fractionEnd == fraction) {
      return text;
    }
    end = fractionEnd;
  } else if (!hasWhole) {
    return text;
  }
  if (*end == 'e' || *end == 'E') {
    const char* exponent = end[1] == '+' || end[1] == '-' ? end + 2 : end + 1;
    const char* exponentEnd = skipDigits(exponent);
    end = exponentEnd != exponent ? exponentEnd : end;
  }
  return end;
}

// The value of a number that a double cannot hold: 0 when it is below 1, else infinity.
double outOfRange(const char* first, const char* last) {
  const char* mantissaEnd = std::find_if(first, last, [](char c) { return c == 'e' || c == 'E'; });
  const char* point = std::find(first, mantissaEnd, '.');
  const char* leading =
      std::find_if(first, mantissaEnd, [](char c) { return c >= '1' && c <= '9'; });
  if (leading == mantissaEnd) {
    return 0.0;
  }
  int exponent = 0;
  if (mantissaEnd != last) {
    const char* digits = mantissaEnd[1] == '+' ? mantissaEnd + 2 : mantissaEnd + 1;
    const auto result = std::from_chars(digits, last, exponent);
    if (result.ec != std::errc()) {
      exponent = *digits == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
  }
  const double magnitude = static_cast<double>(exponent) + static_cast<double>(point - leading);
  return magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

double convertReal(const char* first, const char* last) {
  if (first == last) {
    return 0.0;
  }
  const bool negative = *first == '-';
  if (*first == '+' || *first == '-') {
    ++first;
  }
  double value = 0.0;
  if (std::from_chars(first, last, value).ec == std::errc::result_out_of_range) {
    value = outOfRange(first, last);
  }
  return negative ? -value : value;
}

// The integer of the whole text, limited to `Int`.
template <class Int>
std::optional<Int> scanInteger(const char* text) {
  const bool startsWithZero = *text == '0';
  const bool negative = *text == '-';
  const char* digits = *text == '+' || *text == '-' ? text + 1 : text;
  const char* end = skipDigits(digits);
  if (*skipBlanks(end) != '\0' || end == digits) {
    return std::nullopt;
  }
  std::int64_t value = 0;
  if (std::from_chars(digits, end, value).ec != std::errc()) {
    value = std::numeric_limits<std::int64_t>::max();
  }
  if (value == 0 && !startsWithZero) {
    return std::nullopt;
  }
  using Limits = std::numeric_limits<Int>;
  return static_cast<Int>(
      std::clamp<std::int64_t>(negative ? -value : value, Limits::min(), Limits::max()));
}

}  // namespace

std::optional<std::int32_t> scanSigned(const char* text) {
  return scanInteger<std::int32_t>(skipBlanks(text));
}

std::optional<std::uint32_t> scanUnsigned(const char* text) {
  text = skipBlanks(text);
  if (*text == '-') {
    return std::nullopt;
  }
  return scanInteger<std::uint32_t>(text);
}

RealScan scanReal(const char* text) {
  text = skipBlanks(text);
  const char* end = endOfReal(text);
  const double value = convertReal(text, end);
  if (value == 0.0 && *text != '0' && *text != '-') {
    return {value, false};
  }
  if (*end == '-') {
    ++end;
  }
  return {value, *skipBlanks(end) == '\0'};
}

}  // namespace zel
