#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>

namespace zel::test {

/// A file that can be opened by name and never touches a disk: for tests that open thousands.
class MemoryFile {
 public:
  MemoryFile()
      : descriptor_(memfd_create("zel", 0)),
        name_("/proc/self/fd/" + std::to_string(descriptor_)) {}
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  [[nodiscard]] const char* name() const { return name_.c_str(); }
  /// Replaces the content. @return whether all of it was stored.
  bool store(std::string_view content) const {
    return ftruncate(descriptor_, 0) == 0 && pwrite(descriptor_, content.data(), content.size(),
                                                    0) == static_cast<ssize_t>(content.size());
  }

 private:
  int descriptor_;
  std::string name_;
};

}  // namespace zel::test
