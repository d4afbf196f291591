#include "zel/textfile/detail/line_buffer.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace zel {

void LineBuffer::add(std::string_view text) {
  const std::size_t count = std::min(text.size(), buffer_.size() - size_);
  std::memcpy(buffer_.data() + size_, text.data(), count);
  size_ += count;
}

void LineBuffer::addRight(std::string_view text, int columns) {
  const auto width = static_cast<std::size_t>(columns);
  const std::size_t blanks = width > text.size() ? width - text.size() : 0;
  if (size_ + blanks + text.size() > buffer_.size()) {
    return;
  }
  std::memset(buffer_.data() + size_, ' ', blanks);
  std::memcpy(buffer_.data() + size_ + blanks, text.data(), text.size());
  size_ += blanks + text.size();
}

void LineBuffer::addInt(int value, int columns) {
  char digits[16];
  const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  addRight({digits, static_cast<std::size_t>(end - digits)}, columns);
}

void LineBuffer::addReal(float value) {
  char digits[32];
  const auto wide = static_cast<double>(value);
  const char* end =
      std::to_chars(digits, digits + sizeof digits, wide, std::chars_format::scientific, 8).ptr;
  addRight({digits, static_cast<std::size_t>(end - digits)}, kRealColumns);
}

bool LineBuffer::writeTo(FILE* file) {
  const std::size_t size = size_;
  size_ = 0;
  return std::fwrite(buffer_.data(), 1, size, file) == size;
}

}  // namespace zel
