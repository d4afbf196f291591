#pragma once

/// @file
/// Streams over bytes in memory whose n-th physical read or write meets a fault.

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

namespace zel::test {

/// What happens at which of a stream's physical reads or writes, counted from 0.
struct Fault {
  enum class Kind {
    kError,        ///< EIO, once
    kInterrupted,  ///< EINTR, once
    kShort,        ///< one byte only is read or written
    kGone,         ///< EIO from then on
  };

  Kind kind = Kind::kError;
  int at = std::numeric_limits<int>::max();
};

/// The bytes behind a stream, which must outlive it.
class FaultyBytes {
 public:
  explicit FaultyBytes(Fault fault = {}, std::string bytes = "")
      : fault_(fault), bytes_(std::move(bytes)) {
    bytes_.reserve(kRoom);  // writing asks the heap for nothing
  }

  /// @param canSeek false: like a pipe, the stream does not know where it stands.
  /// @return a stream over the bytes, the receiver's to close; one only.
  [[nodiscard]] std::FILE* open(const char* mode, bool canSeek) {
    const cookie_io_functions_t calls{read, write, canSeek ? seek : nullptr, nullptr};
    std::FILE* file = fopencookie(this, mode, calls);
    std::setvbuf(file, buffer_, _IOFBF, sizeof buffer_);
    return file;
  }
  /// What has arrived.
  [[nodiscard]] const std::string& bytes() const { return bytes_; }
  /// @return whether the fault came to pass.
  [[nodiscard]] bool hasHappened() const { return calls_ > fault_.at; }

 private:
  static constexpr std::size_t kRoom = 1U << 16;
  static constexpr std::size_t kMostPerRead = 61;

  /// @return how many of `wanted` bytes this call moves; -1 when it fails.
  ssize_t granted(std::size_t wanted) {
    const bool isHit = calls_++ == fault_.at;
    if (fault_.kind == Fault::Kind::kShort) {
      return static_cast<ssize_t>(isHit ? std::min<std::size_t>(wanted, 1) : wanted);
    }
    if (!isHit && !(fault_.kind == Fault::Kind::kGone && hasHappened())) {
      return static_cast<ssize_t>(wanted);
    }
    errno = fault_.kind == Fault::Kind::kInterrupted ? EINTR : EIO;
    return -1;
  }
  static ssize_t read(void* cookie, char* out, std::size_t size) {
    auto& self = *static_cast<FaultyBytes*>(cookie);
    const std::size_t left = self.bytes_.size() - std::min(self.position_, self.bytes_.size());
    const ssize_t count = self.granted(std::min({size, left, kMostPerRead}));
    if (count > 0) {
      std::memcpy(out, self.bytes_.data() + self.position_, static_cast<std::size_t>(count));
      self.position_ += static_cast<std::size_t>(count);
    }
    return count;
  }
  // The C library asks for 0 here, not for -1, when nothing is written.
  static ssize_t write(void* cookie, const char* in, std::size_t size) {
    auto& self = *static_cast<FaultyBytes*>(cookie);
    const ssize_t count = std::max<ssize_t>(self.granted(size), 0);
    const auto part = static_cast<std::size_t>(count);
    self.bytes_.resize(std::max(self.bytes_.size(), self.position_ + part));
    self.bytes_.replace(self.position_, part, in, part);
    self.position_ += part;
    return count;
  }
  static int seek(void* cookie, off64_t* offset, int origin) {
    auto& self = *static_cast<FaultyBytes*>(cookie);
    const auto base = origin == SEEK_SET   ? off64_t{0}
                      : origin == SEEK_CUR ? static_cast<off64_t>(self.position_)
                                           : static_cast<off64_t>(self.bytes_.size());
    *offset += base;
    self.position_ = static_cast<std::size_t>(*offset);
    return *offset < 0 ? -1 : 0;
  }

  char buffer_[128];  // small, so that there are many physical reads and writes
  Fault fault_;
  int calls_ = 0;
  std::size_t position_ = 0;
  std::string bytes_;
};

}  // namespace zel::test
