#pragma once

/// @file
/// Reading words and numbers out of text in memory.

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace zel {

/// @return what a decimal number beyond the range of a double, or of a float, stands for: zero or
/// an
///         infinity. @param number by the grammar of std::from_chars().
[[nodiscard]] double outOfRangeReal(std::string_view number);

/// Walks over text line by line and never runs past its end. Numbers are rounded to the nearest
/// value and do not depend on the locale. A line ends in LF, CR LF or a lone CR.
class TextCursor {
 public:
  /// @param line the number of its first line.
  explicit TextCursor(std::string_view text, long long line = 1)
      : begin_(text.data()), at_(text.data()), end_(text.data() + text.size()), line_(line) {}

  /// Number of the line in hand, from 1.
  [[nodiscard]] long long line() const { return line_; }
  [[nodiscard]] std::size_t position() const { return static_cast<std::size_t>(at_ - begin_); }
  [[nodiscard]] bool atEnd() const { return at_ == end_; }
  [[nodiscard]] bool atLineEnd() const { return at_ == end_ || isLineEnd(*at_); }
  /// @return whether a blank or the end of the line comes next.
  [[nodiscard]] bool atWordEnd() const { return at_ == end_ || isSpace(*at_); }
  /// @return the text that is left.
  [[nodiscard]] std::string_view rest() const { return {at_, end_}; }
  /// @return the next character; 0 at the end.
  [[nodiscard]] char peek() const { return at_ == end_ ? '\0' : *at_; }

  void skipBlanks() {
    while (at_ != end_ && isBlank(*at_)) {
      ++at_;
    }
  }
  /// Skips blanks, and a backslash at the end of a line together with that end.
  void skipBlanksAndJoins() {
    skipBlanks();
    while (at_ != end_ && *at_ == '\\' && at_ + 1 != end_ && isLineEnd(at_[1])) {
      ++at_;
      takeLineEnd();
      skipBlanks();
    }
  }
  /// Takes a character if it comes next.
  bool take(char c) {
    const bool found = at_ != end_ && *at_ == c;
    at_ += found ? 1 : 0;
    return found;
  }
  /// Takes a text if it comes next.
  bool take(std::string_view text) {
    const bool found = rest().starts_with(text);
    at_ += found ? text.size() : 0;
    return found;
  }
  /// Takes what stands before the next blank or line end; may be empty.
  std::string_view takeWord() {
    const char* const first = at_;
    while (at_ != end_ && !isSpace(*at_)) {
      ++at_;
    }
    return {first, at_};
  }
  /// Takes the rest of the line, without its end.
  std::string_view takeLine() {
    const char* const first = at_;
    while (at_ != end_ && !isLineEnd(*at_)) {
      ++at_;
    }
    return {first, at_};
  }
  /// Takes the end of the line, if it comes next. @return whether it did; false at the text's end.
  bool takeLineEnd() {
    if (at_ == end_ || !isLineEnd(*at_)) {
      return false;
    }
    const char* const second = at_ + 1;
    at_ = *at_ == '\r' && second != end_ && *second == '\n' ? second + 1 : second;
    ++line_;
    return true;
  }
  /// Takes a number, a plus sign allowed. @return false, with nothing taken, when there is none, or
  ///         none of that type.
  template <class Int>
  bool takeInt(Int& value) {
    const auto [stop, error] = std::from_chars(numberStart(), end_, value);
    if (error != std::errc()) {
      return false;
    }
    at_ = stop;
    return true;
  }
  /// As takeInt(). Numbers too small for the type become zero.
  /// @param takesHuge whether numbers too large become an infinity; else they are none.
  template <class Real>
  bool takeReal(Real& value, bool takesHuge = false) {
    const char* const first = numberStart();
    const auto [stop, error] = std::from_chars(first, end_, value);
    if (error == std::errc::invalid_argument || stop[-1] == ')') {  // "nan(text)" is no number
      return false;
    }
    if (error == std::errc::result_out_of_range) {
      value = static_cast<Real>(outOfRangeReal({first, stop}));
      if (value != 0 && !takesHuge) {
        return false;
      }
    }
    at_ = stop;
    return true;
  }

  static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }
  static bool isLineEnd(char c) { return c == '\n' || c == '\r'; }
  static bool isSpace(char c) { return isBlank(c) || isLineEnd(c); }

 private:
  [[nodiscard]] const char* numberStart() const {
    return end_ - at_ > 1 && *at_ == '+' && at_[1] != '-' ? at_ + 1 : at_;
  }

  const char* begin_;
  const char* at_;
  const char* end_;
  long long line_;
};

/// Takes a whole word as a number. @return false when it is none.
template <class Number>
bool parseWord(std::string_view word, Number& value) {
  TextCursor cursor(word);
  if constexpr (std::is_floating_point_v<Number>) {
    return cursor.takeReal(value) && cursor.atEnd();
  } else {
    return cursor.takeInt(value) && cursor.atEnd();
  }
}

}  // namespace zel
