#pragma once

/// @file
/// The numbers of a PLY file's body, text or binary.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "zel/io/detail/block_reader.h"
#include "zel/io/detail/ply_header.h"
#include "zel/io/detail/text_cursor.h"

namespace zel {

/// Numbers one after the other out of a binary body. Text bodies have the same interface, so that
/// one reader serves both.
class BinaryPlySource {
 public:
  BinaryPlySource(Input& input, bool isBigEndian)
      : input_(input),
        bytes_(input),
        isSwapped_(isBigEndian == (std::endian::native == std::endian::little)) {}

  static constexpr bool kIsText = false;

  /// How many elements of that least size may follow at most; nothing when that is not known.
  [[nodiscard]] std::optional<std::uint64_t> bytesLeft() const { return bytes_.bytesLeft(); }
  void beginElement() {}
  void endElement() {}
  long long takeInt(PlyType type) {
    const char* const from = take(sizeOf(type));
    switch (type) {
      case PlyType::kInt8:
        return load<std::int8_t>(from);
      case PlyType::kUint8:
        return load<std::uint8_t>(from);
      case PlyType::kInt16:
        return load<std::int16_t>(from);
      case PlyType::kUint16:
        return load<std::uint16_t>(from);
      case PlyType::kInt32:
        return load<std::int32_t>(from);
      case PlyType::kUint32:
        return load<std::uint32_t>(from);
      case PlyType::kInt64:
        return load<std::int64_t>(from);
      case PlyType::kUint64:
        return static_cast<long long>(load<std::uint64_t>(from));
      case PlyType::kFloat:
        return wholeOf(load<float>(from));
      default:
        return wholeOf(load<double>(from));
    }
  }
  template <class Real>
  Real takeReal(PlyType type) {
    if (type == PlyType::kFloat) {
      return static_cast<Real>(load<float>(take(sizeof(float))));
    }
    if (type == PlyType::kDouble) {
      return static_cast<Real>(load<double>(take(sizeof(double))));
    }
    return static_cast<Real>(takeInt(type));
  }
  void skip(PlyType type, std::uint64_t count) {
    if (!bytes_.skip(count * sizeOf(type))) {
      throw tooShort();
    }
  }
  /// The bytes behind the last element.
  [[nodiscard]] long long countRest() { return static_cast<long long>(bytes_.countRest()); }
  [[nodiscard]] Error fault(const std::string& why) const {
    return input_.fault(why, {.byte = static_cast<long long>(bytes_.position())});
  }
  [[nodiscard]] std::size_t position() const { return static_cast<std::size_t>(bytes_.position()); }
  [[nodiscard]] bool lacksLineEnd() const { return false; }

 private:
  const char* take(std::size_t size) {
    const char* const from = bytes_.take(size);
    if (from == nullptr) {
      throw tooShort();
    }
    return from;
  }
  template <class Number>
  Number load(const char* from) const {
    char bytes[sizeof(Number)];
    std::memcpy(bytes, from, sizeof bytes);
    if (isSwapped_) {
      std::reverse(bytes, bytes + sizeof bytes);
    }
    return std::bit_cast<Number>(bytes);
  }
  template <class Real>
  [[nodiscard]] long long wholeOf(Real value) const {
    constexpr Real kMost = 9007199254740992.0;  // 2^53
    if (!(std::fabs(value) <= kMost) || std::trunc(value) != value) {
      throw fault("a whole number is none");
    }
    return static_cast<long long>(value);
  }
  [[nodiscard]] Error tooShort() const { return fault("the file ends before its elements do"); }

  Input& input_;
  BlockReader bytes_;
  bool isSwapped_;
};

/// As BinaryPlySource, out of text: each element on a line of its own.
class TextPlySource {
 public:
  TextPlySource(Input& input, long long headerLines)
      : input_(input), text_(input.takeAll(), headerLines + 1), start_(text_) {}

  static constexpr bool kIsText = true;

  [[nodiscard]] std::optional<std::uint64_t> bytesLeft() const {
    return text_.rest().size() + 1;  // the last line may lack its end
  }
  void beginElement() {
    do {
      text_.skipBlanks();
    } while (text_.takeLineEnd());
  }
  void endElement() {
    text_.skipBlanks();
    if (!text_.atLineEnd()) {
      throw fault("a line holds more than its element");
    }
    lacksLineEnd_ = !text_.takeLineEnd();
  }
  long long takeInt(PlyType /*type*/) {
    long long value = 0;
    text_.skipBlanks();
    TextCursor ahead = text_;
    if (ahead.takeInt(value) && ahead.atWordEnd()) {
      text_ = ahead;
      return value;
    }
    constexpr double kMost = 9007199254740992.0;  // 2^53
    const auto real = takeReal<double>(PlyType::kDouble);
    if (!(std::fabs(real) <= kMost) || std::trunc(real) != real) {
      throw fault("a whole number is none");
    }
    return static_cast<long long>(real);
  }
  template <class Real>
  Real takeReal(PlyType /*type*/) {
    Real value = 0;
    text_.skipBlanks();
    if (!text_.takeReal(value) || !text_.atWordEnd()) {
      throw fault(text_.atEnd() ? "the file ends before its elements do"
                                : "a number is missing, malformed or out of range");
    }
    return value;
  }
  void skip(PlyType type, std::uint64_t count) {
    for (std::uint64_t k = 0; k < count; ++k) {
      static_cast<void>(takeReal<double>(type));
    }
  }
  [[nodiscard]] long long countRest() {
    beginElement();
    return static_cast<long long>(text_.rest().size());
  }
  [[nodiscard]] Error fault(const std::string& why) const {
    return input_.fault(why, {.line = text_.line()});
  }
  [[nodiscard]] std::size_t position() const { return text_.position(); }
  /// Whether the last element's line is not ended.
  [[nodiscard]] bool lacksLineEnd() const { return lacksLineEnd_; }
  /// The body once more, from its start.
  [[nodiscard]] TextPlySource again() const {
    TextPlySource other = *this;
    other.text_ = start_;
    return other;
  }

 private:
  Input& input_;
  TextCursor text_;
  TextCursor start_;
  bool lacksLineEnd_ = false;
};

}  // namespace zel
