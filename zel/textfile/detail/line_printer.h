#pragma once

/// @file
/// Text and numbers in the default formats, gathered in memory and written by few calls.

#include <array>
#include <cstdio>
#include <string_view>

namespace zel {

/// Columns of the default integer formats.
inline constexpr int kByteColumns = 5;
inline constexpr int kIntColumns = 10;
/// Columns of the default real format, "%16.8e".
inline constexpr int kRealColumns = 16;

/// Prints exactly what printf prints, without a locale. One is made for each operation; what it
/// holds goes to the stream by finish(), or earlier when it does not fit.
class LinePrinter {
 public:
  explicit LinePrinter(FILE* file) : file_(file) {}
  LinePrinter(const LinePrinter&) = delete;
  LinePrinter& operator=(const LinePrinter&) = delete;

  LinePrinter& add(std::string_view text);
  /// As "%<columns>d".
  LinePrinter& addInt(int value, int columns);
  /// As "%16.8e".
  LinePrinter& addReal(float value);
  /// Writes what is left. @return whether everything was written.
  bool finish();

 private:
  void addRight(std::string_view text, int columns);
  void flush();

  FILE* file_;
  bool succeeded_ = true;
  std::size_t size_ = 0;
  std::array<char, 1024> buffer_;  // left alone until used
};

}  // namespace zel
