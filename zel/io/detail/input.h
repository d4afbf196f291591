#pragma once

/// @file
/// The bytes of one mesh file, wherever they come from.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "zel/core/error.h"

namespace zel {

/// Where bytes come from, one after the other.
class ByteOrigin {
 public:
  virtual ~ByteOrigin() = default;
  /// Reads up to `size` bytes. @return how many; 0 at the end. @throws Error (kUnreadable).
  virtual std::size_t read(char* bytes, std::size_t size) = 0;
  /// How many bytes are left; nothing when that cannot be known beforehand.
  [[nodiscard]] virtual std::optional<std::uint64_t> bytesLeft() { return std::nullopt; }
  /// Goes back by that many bytes. @return whether it could.
  virtual bool stepBack(std::uint64_t /*bytes*/) { return false; }
  /// The bytes left, when they lie in memory anyway.
  [[nodiscard]] virtual std::optional<std::string_view> inMemory() { return std::nullopt; }
};

/// One mesh file being read: its name and its bytes. The first of them can be looked at beforehand.
class Input {
 public:
  /// @throws Error (kUnreadable) when the file cannot be opened.
  [[nodiscard]] static Input ofFile(const std::string& name);
  [[nodiscard]] static Input ofBytes(std::span<const std::byte> bytes, const std::string& name);
  /// @param stream must live as long as the input.
  [[nodiscard]] static Input ofStream(std::istream& stream, const std::string& name);

  /// The name to use in messages.
  [[nodiscard]] const std::string& name() const { return name_; }
  /// Looks at the next `size` bytes without taking them; fewer only at the end.
  [[nodiscard]] std::string_view peek(std::size_t size);
  /// Takes up to `size` bytes. @return how many; fewer only at the end.
  std::size_t read(char* bytes, std::size_t size);
  /// How many bytes are left; nothing when that cannot be known beforehand.
  [[nodiscard]] std::optional<std::uint64_t> bytesLeft() const;
  /// How many bytes have been taken.
  [[nodiscard]] std::uint64_t position() const { return position_; }
  /// Goes back to an earlier position. @return whether it could.
  [[nodiscard]] bool rewindTo(std::uint64_t position);
  /// Takes all that is left as one piece, which lives as long as this input.
  [[nodiscard]] std::string_view takeAll();

  /// @param name of a file beside this one, relative to it.
  /// @return that file; nothing when this input is no file, or that one no ordinary file that can
  ///         be opened.
  [[nodiscard]] std::optional<Input> beside(const std::string& name) const;

  /// A malformed file. @param place where, as far as it is known.
  [[nodiscard]] Error fault(const std::string& why, FilePlace place = {}) const;

 private:
  Input(std::string name, std::unique_ptr<ByteOrigin> origin, bool isFile = false);

  std::string name_;
  bool isFile_;
  std::unique_ptr<ByteOrigin> origin_;
  std::vector<char> ahead_;     // looked at, in part taken
  std::size_t aheadTaken_ = 0;  // how much of it
  std::uint64_t position_ = 0;
  std::unique_ptr<char[]> all_;
};

/// The error of a system call that failed. @param error its number; 0: unknown.
/// @return outOfMemory() when that was the reason, else one of the given code.
[[nodiscard]] Error systemError(ErrorCode code, int error, const std::string& file);

}  // namespace zel
