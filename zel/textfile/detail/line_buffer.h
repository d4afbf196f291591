#pragma once

/// @file
/// One line of numbers in the default formats, built in memory and written by one call.

#include <array>
#include <cstdio>
#include <string_view>

namespace zel {

/// Columns of the default integer formats.
inline constexpr int kByteColumns = 5;
inline constexpr int kIntColumns = 10;
/// Columns of the default real format, "%16.8e".
inline constexpr int kRealColumns = 16;

/// Prints exactly what printf prints, without a locale. The buffer holds the longest line that
/// the library writes (nine values and their separators); more is dropped.
class LineBuffer {
 public:
  void add(std::string_view text);
  void add(char c) { add(std::string_view(&c, 1)); }
  /// As "%<columns>d".
  void addInt(int value, int columns = 0);
  /// As "%16.8e".
  void addReal(float value);
  /// Writes what was added and forgets it. @return whether all of it was written.
  [[nodiscard]] bool writeTo(FILE* file);

 private:
  void addRight(std::string_view text, int columns);

  std::array<char, 1024> buffer_;
  std::size_t size_ = 0;
};

}  // namespace zel
