#pragma once

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace zel::program {

/// Walks over a text line by line and word by word and never runs past its end. Numbers are read
/// to the nearest value and do not depend on the locale. A backslash joins a line to the next.
class WordScanner {
 public:
  explicit WordScanner(std::string_view text) : text_(text) {}

  /// Number of the line in hand, from 1.
  [[nodiscard]] int line() const { return line_; }
  [[nodiscard]] std::size_t position() const { return position_; }
  [[nodiscard]] bool atEnd() const { return position_ == text_.size(); }

  /// @return the next word of this line, empty when there is none.
  std::string_view word() {
    skipBlanks();
    const std::size_t start = position_;
    while (!atEnd() && !isSpace(text_[position_])) {
      ++position_;
    }
    return text_.substr(start, position_ - start);
  }

  /// Goes to the start of the next line.
  void nextLine() {
    while (!atEnd() && text_[position_] != '\n') {
      ++position_;
    }
    if (!atEnd()) {
      ++position_;
      ++line_;
    }
  }

  /// Reads a whole word as a number, a leading '+' allowed. @return false when it is none.
  template <class Number>
  static bool parse(std::string_view word, Number& value) {
    if (word.starts_with('+')) {
      word.remove_prefix(1);
    }
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    return error == std::errc() && stop == end;
  }

 private:
  static bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

  void skipBlanks() {
    for (; !atEnd(); ++position_) {
      const char c = text_[position_];
      if (c == '\\' && joinsLines()) {
        position_ = text_.find('\n', position_);
        ++line_;
      } else if (c == '\n' || !isSpace(c)) {
        return;
      }
    }
  }

  [[nodiscard]] bool joinsLines() const {
    const std::size_t next = text_.find_first_not_of('\r', position_ + 1);
    return next != std::string_view::npos && text_[next] == '\n';
  }

  std::string_view text_;
  std::size_t position_ = 0;
  int line_ = 1;
};

}  // namespace zel::program
