#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace zel::program {

/// A number for people: up to six significant digits, never in the locale's own way.
inline std::string shortText(double value) {
  constexpr int kDigits = 6;
  std::array<char, 64> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                 std::chars_format::general, kDigits)
                       .ptr;
  return {text.data(), end};
}

/// @return the number that fills the whole text, by the rules of C in every locale: digits, a
/// point,
///         an exponent. Nothing else counts, nor do numbers that are not finite or that the type
///         cannot hold.
template <class Number>
std::optional<Number> readNumber(std::string_view text) {
  Number number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  const bool isNumber =
      error == std::errc() && stop == end && std::isfinite(static_cast<double>(number));
  return isNumber ? std::optional<Number>(number) : std::nullopt;
}

/// A count for people, in groups of three: 1,234,567.
inline std::string groupedText(long long count) {
  const std::string digits = std::to_string(count);
  const std::size_t sign = count < 0 ? 1 : 0;
  std::string text;
  for (std::size_t place = 0; place < digits.size(); ++place) {
    if (place > sign && (digits.size() - place) % 3 == 0) {
      text += ',';
    }
    text += digits[place];
  }
  return text;
}

/// "(x, y, z)" for people.
template <class Number>
std::string pointText(const std::array<Number, 3>& point) {
  return "(" + shortText(point[0]) + ", " + shortText(point[1]) + ", " + shortText(point[2]) + ")";
}

/// One line of a report: an indented label, padded to `width`, and its value.
inline std::string reportRow(const std::string& label, const std::string& value,
                             std::size_t width = 18) {
  std::string text = "  " + label;
  text.resize(text.size() < width ? width : text.size() + 1, ' ');
  return text + value + "\n";
}

}  // namespace zel::program
