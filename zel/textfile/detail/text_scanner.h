#pragma once

/// @file
/// Reads numbers, words and line ends from a stdio stream by the rules of scanf, in the "C"
/// locale whatever the process has set.

#include <cstdint>
#include <cstdio>
#include <string_view>

#include "zel/textfile/detail/platform_stdio.h"

namespace zel {

/// Characters that scanners of the calling thread have taken, ever: the difference of two answers
/// tells how much was read in between from a stream that does not know its position.
[[nodiscard]] inline std::int64_t charactersTaken() { return takenOfThread; }

/// How far a TextScanner may look ahead.
enum class LookAhead {
  kChar,  ///< one character: what comes after the operation is not the scanner's
  kLine,  ///< to the end of the line: the operation normally takes the whole of it
};

/// Scans for one operation and is not kept: on destruction everything looked at but not taken goes
/// back, so that the stream stands right behind what was taken. A null stream is an empty one, and
/// so is one whose reading has failed: what a failure cut off is never taken for a whole number,
/// word or line.
///
/// Looking ahead by lines is several times faster. Giving back more than a character then costs a
/// seek, or is left to `ungetc` where the stream cannot seek. Where neither would do, one character
/// is looked at whatever was asked for.
class TextScanner {
 public:
  TextScanner(FILE* file, LookAhead lookAhead) : file_(file), lookAhead_(lookAhead) {}
  ~TextScanner() {
    const auto left = static_cast<std::size_t>(end_ - at_);
    takenOfThread += static_cast<std::int64_t>(fetched_ - left);
    if (left != 0) {
      giveBack(file_, {at_, left});
    }
  }
  TextScanner(const TextScanner&) = delete;
  TextScanner& operator=(const TextScanner&) = delete;

  /// @return the next character without taking it, or EOF.
  int peek() { return at_ != end_ ? static_cast<unsigned char>(*at_) : refill(); }
  /// Takes the next character. @return it, or EOF.
  int take() {
    const int c = peek();
    at_ += c != EOF ? 1 : 0;
    return c;
  }
  /// Takes the next character if it is `wanted`.
  bool takeIf(char wanted) {
    const bool taken = peek() == static_cast<unsigned char>(wanted);
    at_ += taken ? 1 : 0;
    return taken;
  }
  /// @return whether reading met an error rather than the end of the file.
  [[nodiscard]] bool failed() const { return hasFailed_; }

  void skipSpace();
  /// Takes everything up to and including the next line feed. @return whether there was one.
  bool skipLine();
  /// Takes a line with its end and stores up to `size` - 1 characters of it and a terminator; the
  /// end, LF or CR LF, is not stored. With `size` below 1 nothing is stored. A line that could not
  /// be read to its end is empty.
  void line(char* text, int size);
  /// Takes white space and then the separator's characters, a blank standing for any amount of
  /// white space. @return whether all of them were there.
  bool skipSeparator(std::string_view separator);
  /// Skips white space and takes a word. @param[out] word receives it and a terminator; null
  /// drops it. @return whether there was a whole word.
  bool word(char* word);
  /// As word(nullptr). @param[out] equals whether the word taken is `wanted`.
  bool wordIs(std::string_view wanted, bool* equals);
  /// Skips white space as skipSpace(), but looks no further ahead than a character beyond the
  /// line: for the end of an operation.
  void skipTrailingSpace();
  /// Skips white space and takes a decimal integer ("%d"). @return false, with `value` untouched,
  /// when there is none or no `int` can hold it.
  bool number(int& value, int maxColumns = 0x7FFFFFFF);
  /// Skips white space and takes a real number ("%f"): decimal, hexadecimal, infinity or NaN.
  /// @return false, with `value` untouched, when there is none.
  bool number(float& value);

 private:
  template <class Sink>
  bool takeWord(Sink sink);
  static constexpr std::size_t kLineRoom = 256;

  /// Moves on from a character that peek() has shown. @return the next one, as peek().
  int next() {
    ++at_;
    return peek();
  }
  int refill();
  void readLine();
  bool takeSign();
  bool takeLetters(std::string_view lowerCase);
  bool namedReal(float& value);
  bool hexReal(float& value);
  bool decimalReal(float& value, bool hasDigit);
  std::int64_t takeDigits(std::uint64_t& mantissa);
  std::int64_t takeExponent(char letter);

  FILE* file_;
  LookAhead lookAhead_;
  bool hasFailed_ = false;
  std::size_t fetched_ = 0;
  const char* at_ = nullptr;
  const char* end_ = nullptr;
  char buffer_[kLineRoom];  // left alone until used: a scanner is made for each operation
};

}  // namespace zel
