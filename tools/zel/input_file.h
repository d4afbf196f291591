#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/zel/temporary_file.h"

namespace zel::program {

/// What the user named as input, made readable as a file: standard input and pipes are first
/// taken into a temporary file, because mesh files are read by position.
class InputFile {
 public:
  /// @param name a file name, or "-" for standard input.
  /// @throws Failure (code 3) when it is a directory, missing or not readable; (code 5) when a
  ///         pipe delivers more than the program takes in.
  explicit InputFile(const std::string& name);

  /// The name to use in messages.
  [[nodiscard]] const std::string& name() const { return name_; }
  /// The file to open.
  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::uint64_t size() const { return size_; }
  /// Whether path() is the user's own file, beside which others may lie (a .mtl, a .bin).
  [[nodiscard]] bool isOwnFile() const { return !spooled_; }
  /// @return all bytes. @throws Failure (code 3).
  [[nodiscard]] std::string readAll() const;

 private:
  void spool(int descriptor);

  std::string name_;
  std::string path_;
  std::uint64_t size_ = 0;
  std::optional<TemporaryFile> spooled_;
};

}  // namespace zel::program
