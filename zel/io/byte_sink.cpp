#include "zel/io/detail/byte_sink.h"

#include <charconv>
#include <cstring>

#include "zel/textfile/detail/line_printer.h"

namespace zel {

TextBuffer& TextBuffer::add(std::string_view text) {
  if (text.size() > kSize) {
    flush();
    sink_.write(text.data(), text.size());
    return *this;
  }
  std::memcpy(room(text.size()), text.data(), text.size());
  size_ += text.size();
  return *this;
}

TextBuffer& TextBuffer::keep(char* start, char* end, std::ptrdiff_t columns) {
  const std::ptrdiff_t blanks = columns - (end - start);
  if (blanks > 0) {
    std::memmove(start + blanks, start, static_cast<std::size_t>(end - start));
    std::memset(start, ' ', static_cast<std::size_t>(blanks));
    end += blanks;
  }
  size_ = static_cast<std::size_t>(end - buffer_.get());
  return *this;
}

TextBuffer& TextBuffer::addInt(long long value, int columns) {
  char* const start = room(kNumber);
  return keep(start, std::to_chars(start, start + kNumber, value).ptr, columns);
}

TextBuffer& TextBuffer::addFixedReal(float value) {
  constexpr int kDecimals = 8;
  char* const start = room(kNumber);
  const auto wide = static_cast<double>(value);
  const auto end =
      std::to_chars(start, start + kNumber, wide, std::chars_format::scientific, kDecimals).ptr;
  return keep(start, end, kRealColumns);
}

TextBuffer& TextBuffer::addReal(float value) {
  char* const start = room(kNumber);
  return keep(start, std::to_chars(start, start + kNumber, value).ptr, 0);
}

void TextBuffer::flush() {
  if (size_ > 0) {
    sink_.write(buffer_.get(), size_);
  }
  size_ = 0;
}

}  // namespace zel
