#pragma once

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

#include <fstream>
#include <string>
#include <string_view>

#include "support/temp_dir.h"

namespace zel::test {

/// A file for tests that open thousands. It can be opened by name and, where the system has such
/// files, never touches a disk.
class MemoryFile {
 public:
#if defined(__linux__)
  MemoryFile()
      : descriptor_(memfd_create("zel", 0)),
        name_("/proc/self/fd/" + std::to_string(descriptor_)) {}
  ~MemoryFile() { close(descriptor_); }
#else
  MemoryFile() : name_(dir_.file("bytes")) {}
#endif
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  [[nodiscard]] const char* name() const { return name_.c_str(); }
  /// Replaces the content. @return whether all of it was stored.
  [[nodiscard]] bool store(std::string_view content) const {
    std::ofstream file(name_, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    return file.good();
  }

 private:
#if defined(__linux__)
  int descriptor_;
#else
  TempDir dir_;
#endif
  std::string name_;
};

}  // namespace zel::test
