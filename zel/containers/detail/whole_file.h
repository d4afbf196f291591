#pragma once

/// @file
/// Files read and saved as a whole.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace zel {

/// A file with a known size, open for reading all of it.
class WholeFileReader {
 public:
  explicit WholeFileReader(const char* path);
  /// @return whether the file is open and has a size below 2^31; directories and pipes
  ///         do not.
  [[nodiscard]] bool isOpen() const { return size_ >= 0; }
  /// @return its bytes; negative when not open.
  [[nodiscard]] std::int64_t size() const { return size_; }
  /// @param[out] bytes room for size() bytes; less is read from a file that has shrunk meanwhile.
  /// @return false when reading fails.
  [[nodiscard]] bool readInto(char* bytes);

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Closer> file_;
  std::int64_t size_ = -1;
};

/// Creates or replaces a file. A read-only file is replaced and stays read-only.
///
/// The bytes are written to a second file beside it, which then takes its place; so a save that
/// fails leaves the old file alone. Devices, files with several hard links or of another owner, and
/// files in directories that take no second file, are written directly.
/// @return false when the file could not be saved. @throws std::bad_alloc, with nothing written.
[[nodiscard]] bool saveWholeFile(const char* path, const char* bytes, std::size_t count);

}  // namespace zel
