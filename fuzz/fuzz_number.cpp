// A number as people type it: its parsers must find what the C library finds in the part of the
// text that the decimal grammar covers.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "zel/textfile/number_parse.h"

namespace {

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

std::size_t digitsAt(const std::string& text, std::size_t at) {
  return text.find_first_not_of("0123456789", at) - at;
}

std::string withoutBlanks(const std::string& text) {
  return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

bool isBlank(const std::string& text) { return withoutBlanks(text).empty(); }

/// The length of the number that the text begins with, 0 for none.
std::size_t realLength(const std::string& text) {
  const std::string ended = text + "\n";
  std::size_t at = ended[0] == '+' || ended[0] == '-' ? 1 : 0;
  const std::size_t whole = digitsAt(ended, at);
  at += whole;
  std::size_t fraction = 0;
  if (ended[at] == '.') {
    fraction = digitsAt(ended, at + 1);
    at += 1 + fraction;
  }
  if (whole + fraction == 0) {
    return 0;
  }
  if (ended[at] == 'e' || ended[at] == 'E') {
    const std::size_t sign = ended[at + 1] == '+' || ended[at + 1] == '-' ? 1 : 0;
    const std::size_t exponent = digitsAt(ended, at + 1 + sign);
    at += exponent > 0 ? 1 + sign + exponent : 0;
  }
  return at;
}

void checkReal(const std::string& text) {
  const std::string number = withoutBlanks(text);
  const std::size_t length = realLength(number);
  const double expected = std::strtod(number.substr(0, length).c_str(), nullptr);
  std::string rest = number.substr(length);
  rest.erase(0, !rest.empty() && rest[0] == '-' ? 1 : 0);
  const bool mayBeZero = !number.empty() && (number[0] == '0' || number[0] == '-');
  const int accepted = isBlank(rest) && (expected != 0 || mayBeZero) ? 1 : 0;

  double value = 77;
  require(slSimpleFloatParse(text.c_str(), &value) == accepted);
  require(std::memcmp(&value, &expected, sizeof value) == 0 || (value == 0 && expected == 0));
  float narrow = 77;
  require(slSimpleFloatParseF(text.c_str(), &narrow) == accepted);
  require(narrow == (accepted == 1 ? static_cast<float>(expected) : 0.0F));
}

void checkInteger(const std::string& text) {
  const std::string number = withoutBlanks(text);
  const std::string ended = number + "\n";
  const std::size_t sign = ended[0] == '+' || ended[0] == '-' ? 1 : 0;
  const std::size_t digits = digitsAt(ended, sign);
  const double real = std::strtod(number.substr(0, sign + digits).c_str(), nullptr);
  const bool isTaken =
      digits > 0 && isBlank(number.substr(sign + digits)) && (real != 0 || number[0] == '0');
  int value = 77;
  require(slSimpleIntParse(text.c_str(), &value) == (isTaken ? 1 : 0));
  // A double holds every 32-bit number, so clamping it is exact.
  using Limits = std::numeric_limits<int>;
  const double clamped = std::clamp<double>(real, Limits::min(), Limits::max());
  require(value == (isTaken ? static_cast<int>(clamped) : 77));
}

void checkExact(const std::string& text, int count) {
  int value = 77;
  const int result = slStrToInt(count, text.c_str(), &value);
  const std::string taken = text.substr(0, static_cast<std::size_t>(std::max(count, 0)));
  const std::size_t sign = !taken.empty() && (taken[0] == '+' || taken[0] == '-') ? 1 : 0;
  const bool isNumber = count >= 1 && taken.size() == static_cast<std::size_t>(count) &&
                        taken.find_first_not_of("0123456789", sign) == std::string::npos;
  require(result == (isNumber ? 1 : 0));
  if (isNumber && count <= 9) {
    require(value == std::atoi(taken.c_str()));
  }
  require(isNumber || value == 77);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = std::string(reinterpret_cast<const char*>(data), size).c_str();
  checkReal(text);
  checkInteger(text);
  for (int count = -1; count < 14; ++count) {
    checkExact(text, count);
  }
  return 0;
}
