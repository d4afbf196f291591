#include "zel/textfile/detail/text_scanner.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/real_digits.h"

namespace zel {
namespace {

bool isSpace(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isDigit(int c) { return c >= '0' && c <= '9'; }
int lowerCase(int c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; }
bool isHexDigit(int c) { return isDigit(c) || (lowerCase(c) >= 'a' && lowerCase(c) <= 'f'); }

}  // namespace

constinit thread_local std::int64_t takenOfThread = 0;

int TextScanner::refill() {
  if (file_ == nullptr || hasFailed_) {
    return EOF;
  }
  if (lookAhead_ == LookAhead::kLine && canTakeLineBack(file_, sizeof buffer_ - 1)) {
    readLine();
  } else {
    const int c = readChar(file_);
    buffer_[0] = static_cast<char>(c);
    at_ = buffer_;
    end_ = c != EOF ? buffer_ + 1 : buffer_;
    buffer_[1] = '\0';
  }
  if (at_ == end_) {
    hasFailed_ = std::feof(file_) == 0;
    return EOF;
  }
  fetched_ += static_cast<std::size_t>(end_ - at_);
  return static_cast<unsigned char>(*at_);
}

// Reads up to a line end or a full buffer. fgets() does not tell how much it stored, and the text
// may hold zeros: line feeds put into the buffer beforehand show where its terminator stands.
void TextScanner::readLine() {
  std::memset(buffer_, '\n', sizeof buffer_);
  at_ = end_ = buffer_;
  if (std::fgets(buffer_, sizeof buffer_, file_) == nullptr) {
    return;
  }
  const char* last = buffer_ + sizeof buffer_ - 1;
  const auto* feed = static_cast<const char*>(std::memchr(buffer_, '\n', sizeof buffer_));
  if (feed == nullptr) {
    end_ = last;
  } else if (feed != last && feed[1] == '\0') {
    end_ = feed + 1;
  } else {
    end_ = feed - 1;
  }
}

// Inside the buffer no end is looked for: a zero, which is no space, stands behind its last
// character.
void TextScanner::skipSpace() {
  while (peek() != EOF) {
    const char* c = at_;
    while (isSpace(*c)) {
      ++c;
    }
    at_ = c;
    if (at_ != end_) {
      return;
    }
  }
}

bool TextScanner::skipLine() {
  while (peek() != EOF) {
    const void* feed = std::memchr(at_, '\n', static_cast<std::size_t>(end_ - at_));
    at_ = feed != nullptr ? static_cast<const char*>(feed) + 1 : end_;
    if (feed != nullptr) {
      return true;
    }
  }
  return false;
}

void TextScanner::line(char* text, int size) {
  int stored = 0;
  for (int c = take(); c != '\n' && c != EOF; c = take()) {
    const bool endsLine = c == '\r' && peek() == '\n';
    if (!endsLine && stored < size - 1) {
      text[stored++] = static_cast<char>(c);
    }
  }
  if (size > 0) {
    text[hasFailed_ ? 0 : stored] = '\0';
  }
}

bool TextScanner::skipSeparator(std::string_view separator) {
  skipSpace();
  for (const char c : separator) {
    if (isSpace(c)) {
      skipSpace();
    } else if (!takeIf(c)) {
      return false;
    }
  }
  return true;
}

// Skips white space and hands the characters of a word to `sink`, one by one.
template <class Sink>
bool TextScanner::takeWord(Sink sink) {
  skipSpace();
  int c = peek();
  if (c == EOF) {
    return false;
  }
  for (; c != EOF && !isSpace(c); c = next()) {
    sink(static_cast<char>(c));
  }
  return !hasFailed_;
}

bool TextScanner::word(char* word) {
  if (word == nullptr) {
    return takeWord([](char) {});
  }
  const bool found = takeWord([&](char c) { *word++ = c; });
  if (found || hasFailed_) {
    *word = '\0';
  }
  return found;
}

bool TextScanner::wordIs(std::string_view wanted, bool* equals) {
  std::size_t length = 0;
  bool isSame = true;
  const bool found = takeWord([&](char c) {
    isSame = isSame && length < wanted.size() && wanted[length] == c;
    ++length;
  });
  *equals = found && isSame && length == wanted.size();
  return found;
}

void TextScanner::skipTrailingSpace() {
  lookAhead_ = LookAhead::kChar;
  skipSpace();
}

// Takes an optional sign. @return whether it was a minus.
bool TextScanner::takeSign() {
  const bool negative = takeIf('-');
  if (!negative) {
    takeIf('+');
  }
  return negative;
}

bool TextScanner::number(int& value, int maxColumns) {
  skipSpace();
  int columns = maxColumns - (peek() == '-' || peek() == '+' ? 1 : 0);
  const bool negative = takeSign();
  const std::int64_t limit = std::numeric_limits<int>::max() + (negative ? 1LL : 0LL);
  int c = peek();
  if (columns <= 0 || !isDigit(c)) {
    return false;
  }
  std::int64_t magnitude = 0;
  for (; columns > 0 && isDigit(c); --columns) {
    magnitude = magnitude > limit ? magnitude : magnitude * 10 + (c - '0');
    c = next();
  }
  if (magnitude > limit || hasFailed_) {
    return false;
  }
  value = static_cast<int>(negative ? -magnitude : magnitude);
  return true;
}

bool TextScanner::takeLetters(std::string_view letters) {
  for (const char letter : letters) {
    if (lowerCase(peek()) != letter) {
      return false;
    }
    take();
  }
  return true;
}

// A number written as a word; it counts only when it is spelt out to its end.
bool TextScanner::namedReal(float& value) {
  if (lowerCase(peek()) == 'n') {
    value = std::numeric_limits<float>::quiet_NaN();
    return takeLetters("nan");
  }
  value = std::numeric_limits<float>::infinity();
  return takeLetters("inf") && (lowerCase(peek()) != 'i' || takeLetters("inity"));
}

// Takes decimal digits while `mantissa` has room for one more. @return how many.
std::int64_t TextScanner::takeDigits(std::uint64_t& mantissa) {
  constexpr std::uint64_t kRoomForOneMore = 1'000'000'000'000'000'000;
  std::int64_t count = 0;
  while (peek() != EOF) {
    const char* digit = at_;  // the zero behind the buffer ends this, as in skipSpace()
    for (; isDigit(*digit) && mantissa < kRoomForOneMore; ++digit) {
      mantissa = mantissa * 10 + static_cast<unsigned>(*digit - '0');
    }
    count += digit - at_;
    at_ = digit;
    if (at_ != end_) {
      break;
    }
  }
  return count;
}

// The exponent behind `letter`, 0 without one. A letter without digits is taken and counts as
// exponent 0, as stdio has it.
std::int64_t TextScanner::takeExponent(char letter) {
  if (lowerCase(peek()) != letter) {
    return 0;
  }
  take();
  const bool negative = takeSign();
  constexpr std::uint64_t kBeyondAnyReal = 1'000'000'000'000;
  std::uint64_t exponent = 0;
  takeDigits(exponent);
  while (isDigit(peek())) {
    take();
  }
  const auto limited = static_cast<std::int64_t>(std::min(exponent, kBeyondAnyReal));
  return negative ? -limited : limited;
}

bool TextScanner::hexReal(float& value) {
  RealDigits digits(RealDigits::Base::kHex);
  bool behindPoint = false;
  bool hasDigit = false;
  for (int c = peek();; c = next()) {
    if (isHexDigit(c)) {
      digits.add(static_cast<char>(c), behindPoint);
      hasDigit = true;
    } else if (c == '.' && !behindPoint) {
      behindPoint = true;
    } else {
      break;
    }
  }
  if (hasDigit) {
    value = digits.value(takeExponent('p'));
  }
  return hasDigit;
}

// A decimal number; with `hasDigit` its first digit, a zero, was taken before.
bool TextScanner::decimalReal(float& value, bool hasDigit) {
  std::uint64_t mantissa = 0;
  const std::int64_t whole = takeDigits(mantissa);
  bool behindPoint = takeIf('.');
  const std::int64_t fraction = behindPoint ? takeDigits(mantissa) : 0;
  if (!hasDigit && whole + fraction == 0) {
    return false;
  }
  if (!isDigit(peek())) {
    value = nearestFloat(mantissa, takeExponent('e') - fraction);
    return true;
  }
  RealDigits digits(mantissa, -fraction);
  for (int c = peek(); isDigit(c) || (c == '.' && !behindPoint); c = next()) {
    if (c == '.') {
      behindPoint = true;
    } else {
      digits.add(static_cast<char>(c), behindPoint);
    }
  }
  value = digits.value(takeExponent('e'));
  return true;
}

bool TextScanner::number(float& value) {
  skipSpace();
  const bool negative = takeSign();
  const int first = lowerCase(peek());
  float magnitude = 0;
  bool found = false;
  if (first == 'i' || first == 'n') {
    found = namedReal(magnitude);
  } else {
    const bool zeroTaken = takeIf('0');
    const bool isHex = zeroTaken && (takeIf('x') || takeIf('X'));
    found = isHex ? hexReal(magnitude) : decimalReal(magnitude, zeroTaken);
  }
  if (!found || hasFailed_) {
    return false;
  }
  value = negative ? -magnitude : magnitude;
  return true;
}

}  // namespace zel
