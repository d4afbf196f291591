#pragma once

/// @file
/// Files that appear whole or not at all.

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "zel/core/api.h"

namespace zel {

/// An output that appears whole or not at all: its content is written to a file beside the target,
/// brought to the disk, and only then renamed over it. Without commit() nothing appears.
///
/// A file that is replaced passes on its permissions and, as far as the system allows, its owner
/// and group (a setuid or setgid mark never); symbolic links are followed, also those whose target
/// is yet to come. Devices, pipes and streams receive the content in one go at the end; until then
/// it lies in the system's directory for temporary files.
class ZEL_API OutputFile {
 public:
  /// @param name of the target.
  /// @throws Error (kUnwritable) when the target is a directory, is read-only, or its directory
  ///         takes no file.
  explicit OutputFile(const std::string& name);
  /// @param stream receives the content; stays the caller's. @param name how messages call it.
  /// @throws Error (kUnwritable) when there is no place for a temporary file.
  OutputFile(std::FILE* stream, const std::string& name);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// The name to use in messages.
  [[nodiscard]] const std::string& name() const { return name_; }
  /// Appends to the content. @throws Error (kUnwritable).
  void write(std::string_view bytes);
  /// @return how many bytes the content has so far.
  [[nodiscard]] std::uint64_t size() const { return size_; }
  /// Makes the output appear. @throws Error (kUnwritable); then nothing has appeared, except that
  ///         a device or stream may have received a part.
  void commit();

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  void startBeside(const std::string& target, bool replaces);
  void startInTemporaryDirectory();
  void start(const std::string& prefix, bool isPrivate);
  void replaceTarget();
  void copyTo(std::FILE* target);
  void discard();

  std::string name_;
  std::string target_;           // the file to replace; empty: a device or a stream
  std::FILE* stream_ = nullptr;  // where the content goes if not to a file of that name
  std::string contentPath_;      // empty once it has become the target
  std::unique_ptr<std::FILE, Closer> content_;
  std::uint64_t size_ = 0;
};

/// Removes the content files of all outputs that are not committed yet. For a program's signal
/// handlers: it takes no memory and no lock.
ZEL_API void removeUnfinishedOutputs() noexcept;

}  // namespace zel
