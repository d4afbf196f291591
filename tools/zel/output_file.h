#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "tools/zel/temporary_file.h"

namespace zel::program {

/// An output that appears whole or not at all: it is written beside its target, brought to the
/// disk, and only then renamed. Standard output and devices receive it in one go at the end.
class OutputFile {
 public:
  /// @param name a file name, or "-" for standard output.
  /// @throws Failure (code 4) when the target is a directory, is read-only, or its directory
  ///         takes no file.
  explicit OutputFile(const std::string& name);

  /// The name to use in messages.
  [[nodiscard]] const std::string& name() const { return name_; }
  /// A new stream for writing the content; whoever takes it closes it.
  /// @throws Failure (code 4).
  [[nodiscard]] FILE* openStream() const;
  /// Writes a piece of the content. @throws Failure (code 4).
  void write(std::string_view bytes) const;
  /// Bytes written so far.
  [[nodiscard]] long long size() const;
  /// Makes the output appear. Without this call nothing does. @throws Failure (code 4).
  void commit();

 private:
  void aimAtFile(const std::string& name);
  void copyTo(const FileDescriptor& target) const;

  std::string name_;
  bool isStandardOutput_;
  std::string target_;        ///< the file to replace; empty: a device or standard output
  unsigned permissions_ = 0;  ///< of the finished file
  std::optional<TemporaryFile> content_;
};

/// Whether what is written to one file would replace the other. Devices are not replaced.
[[nodiscard]] bool isSameFile(const std::string& a, const std::string& b);

}  // namespace zel::program
