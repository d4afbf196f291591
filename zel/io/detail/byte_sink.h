#pragma once

/// @file
/// Where the bytes of a mesh file go, and text on its way there.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace zel {

/// Takes the bytes of one mesh file, one piece after the other.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  /// @throws Error (kUnwritable, kExhausted).
  virtual void write(const char* bytes, std::size_t size) = 0;
};

/// Collects bytes in memory.
class StringSink : public ByteSink {
 public:
  void write(const char* bytes, std::size_t size) override { text_.append(bytes, size); }
  [[nodiscard]] std::string& text() { return text_; }

 private:
  std::string text_;
};

/// Text and raw values, handed on in large pieces. What it holds at the end goes on by flush().
class TextBuffer {
 public:
  explicit TextBuffer(ByteSink& sink)
      : sink_(sink), buffer_(std::make_unique_for_overwrite<char[]>(kSize)) {}

  TextBuffer& add(std::string_view text);
  /// A character as it is.
  TextBuffer& add(char c) {
    *room(1) = c;
    ++size_;
    return *this;
  }
  /// As "%<columns>d".
  TextBuffer& addInt(long long value, int columns = 0);
  /// As "%16.8e".
  TextBuffer& addFixedReal(float value);
  /// The shortest text that reads back to the same float.
  TextBuffer& addReal(float value);
  /// The bytes of a value as this machine holds them.
  template <class Value>
  TextBuffer& addRaw(const Value& value) {
    return add(std::string_view(reinterpret_cast<const char*>(&value), sizeof value));
  }
  /// Hands on what is left.
  void flush();

 private:
  static constexpr std::size_t kSize = std::size_t{1} << 18;
  /// Room enough for any number.
  static constexpr std::size_t kNumber = 64;

  [[nodiscard]] char* room(std::size_t size) {
    if (kSize - size_ < size) {
      flush();
    }
    return buffer_.get() + size_;
  }
  /// Right-aligns what stands behind `start` up to `end` in `columns` and keeps it.
  TextBuffer& keep(char* start, char* end, std::ptrdiff_t columns);

  ByteSink& sink_;
  std::unique_ptr<char[]> buffer_;
  std::size_t size_ = 0;
};

}  // namespace zel
