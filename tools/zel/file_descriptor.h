#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <utility>

namespace zel::program {

/// Owns a POSIX file descriptor.
class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  ~FileDescriptor() {
    if (isOpen()) {
      close(descriptor_);
    }
  }
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
  [[nodiscard]] int get() const { return descriptor_; }

  /// Writes everything, however often the system has to be asked. @return false with errno set.
  [[nodiscard]] bool writeAll(const char* bytes, std::size_t size) const {
    while (size > 0) {
      const ssize_t put = write(descriptor_, bytes, size);
      if (put < 0 && errno == EINTR) {
        continue;
      }
      if (put < 0) {
        return false;
      }
      bytes += put;
      size -= static_cast<std::size_t>(put);
    }
    return true;
  }

 private:
  int descriptor_;
};

}  // namespace zel::program
