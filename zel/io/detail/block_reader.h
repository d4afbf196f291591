#pragma once

/// @file
/// Binary records out of an input, read in large blocks.

#include <algorithm>
#include <cstring>
#include <memory>

#include "zel/io/detail/input.h"

namespace zel {

/// Gives out the bytes of an input piece by piece, each in one run.
class BlockReader {
 public:
  /// The longest piece.
  static constexpr std::size_t kLongest = std::size_t{1} << 20;

  explicit BlockReader(Input& input)
      : input_(input), buffer_(std::make_unique_for_overwrite<char[]>(kLongest)) {}

  /// @return the next `size` bytes, valid until the next call; null when fewer are left.
  const char* take(std::size_t size) {
    if (end_ - at_ < size && !refill(size)) {
      return nullptr;
    }
    const char* const piece = buffer_.get() + at_;
    at_ += size;
    return piece;
  }
  /// Takes bytes without looking at them. @return whether there were as many.
  bool skip(std::uint64_t size) {
    while (size > 0) {
      const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(size, kLongest));
      if (take(part) == nullptr) {
        return false;
      }
      size -= part;
    }
    return true;
  }
  /// How many bytes are left; nothing when that cannot be known beforehand.
  [[nodiscard]] std::optional<std::uint64_t> bytesLeft() const {
    const std::optional<std::uint64_t> left = input_.bytesLeft();
    return left ? std::optional(*left + (end_ - at_)) : std::nullopt;
  }
  /// Where in the file the next byte stands.
  [[nodiscard]] std::uint64_t position() const { return input_.position() - (end_ - at_); }
  /// Counts the bytes left, to the end.
  std::uint64_t countRest() {
    std::uint64_t count = end_ - at_;
    while (const std::size_t got = input_.read(buffer_.get(), kLongest)) {
      count += got;
    }
    at_ = end_ = 0;
    return count;
  }

 private:
  bool refill(std::size_t size) {
    std::memmove(buffer_.get(), buffer_.get() + at_, end_ - at_);
    end_ -= at_;
    at_ = 0;
    end_ += input_.read(buffer_.get() + end_, kLongest - end_);
    return end_ >= size;
  }

  Input& input_;
  std::unique_ptr<char[]> buffer_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;
};

}  // namespace zel
