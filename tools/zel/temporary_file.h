#pragma once

#include <string>

#include "tools/zel/file_descriptor.h"

namespace zel::program {

/// From now on a signal that ends the program (SIGINT, SIGTERM, SIGHUP, SIGPIPE) first removes its
/// temporary files and the outputs that are not finished.
void cleanUpWhenEnded();

/// A file that is removed again, also when the program is interrupted.
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

  /// @return the start of a name in the system's directory for temporary files; empty when there
  ///         is no such directory.
  static std::string startInTemporaryDirectory();

 private:
  std::string path_;
  FileDescriptor descriptor_;
};

}  // namespace zel::program
