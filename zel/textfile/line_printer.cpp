#include "zel/textfile/detail/line_printer.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace zel {

LinePrinter& LinePrinter::add(std::string_view text) {
  while (text.size() > buffer_.size() - size_) {
    const std::size_t part = buffer_.size() - size_;
    std::memcpy(buffer_.data() + size_, text.data(), part);
    size_ += part;
    text.remove_prefix(part);
    flush();
  }
  std::copy(text.begin(), text.end(), buffer_.data() + size_);
  size_ += text.size();
  return *this;
}

void LinePrinter::addRight(std::string_view text, int columns) {
  static constexpr std::string_view kBlanks = "                ";
  const auto width = static_cast<std::size_t>(columns);
  add(kBlanks.substr(0, width > text.size() ? width - text.size() : 0)).add(text);
}

LinePrinter& LinePrinter::addInt(int value, int columns) {
  char digits[16];
  const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  addRight({digits, static_cast<std::size_t>(end - digits)}, columns);
  return *this;
}

LinePrinter& LinePrinter::addReal(float value) {
  char digits[32];
  const auto wide = static_cast<double>(value);
  const char* end =
      std::to_chars(digits, digits + sizeof digits, wide, std::chars_format::scientific, 8).ptr;
  addRight({digits, static_cast<std::size_t>(end - digits)}, kRealColumns);
  return *this;
}

void LinePrinter::flush() {
  succeeded_ =
      succeeded_ && file_ != nullptr && std::fwrite(buffer_.data(), 1, size_, file_) == size_;
  size_ = 0;
}

bool LinePrinter::finish() {
  if (size_ != 0) {
    flush();
  }
  return succeeded_;
}

}  // namespace zel
