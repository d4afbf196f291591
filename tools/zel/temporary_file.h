#pragma once

#include <string>

#include "tools/zel/file_descriptor.h"

namespace zel::program {

/// A file that is removed again unless it is given its final name, also when the program is
/// interrupted (SIGINT, SIGTERM, SIGHUP).
class TemporaryFile {
 public:
  /// Creates the file `start` + six random characters, readable by the owner alone.
  /// isOpen() tells whether that worked; errno says why not.
  explicit TemporaryFile(const std::string& start);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] bool isOpen() const { return descriptor_.isOpen(); }
  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] const FileDescriptor& descriptor() const { return descriptor_; }
  /// Gives the file its final name, replacing what bears it. @return false with errno set.
  [[nodiscard]] bool renameTo(const std::string& target);

  /// Start of a name in the system's directory for temporary files.
  static std::string startInTemporaryDirectory();

 private:
  std::string path_;
  FileDescriptor descriptor_;
  bool renamed_ = false;
};

}  // namespace zel::program
