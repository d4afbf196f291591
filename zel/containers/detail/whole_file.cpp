#include "zel/containers/detail/whole_file.h"

#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "zel/core/detail/file_name.h"
#include "zel/core/detail/platform_stream.h"
#include "zel/core/detail/refused_memory.h"
#include "zel/core/platform.h"

namespace zel {

namespace {

/// Lifts the write protection of a file while it is replaced.
class WritableMeanwhile {
 public:
  explicit WritableMeanwhile(const char* path)
      : path_(path), wasReadOnly_(platform().fileAccess(path) == FileAccess::kReadOnly) {
    if (wasReadOnly_) {
      platform().setFileAccess(path_, FileAccess::kWritable);
    }
  }
  ~WritableMeanwhile() { static_cast<void>(restore()); }
  WritableMeanwhile(const WritableMeanwhile&) = delete;
  WritableMeanwhile& operator=(const WritableMeanwhile&) = delete;
  /// @return false when the protection could not be put back.
  [[nodiscard]] bool restore() {
    return !std::exchange(wasReadOnly_, false) || answerOr(false, [this] {
      return platform().setFileAccess(path_, FileAccess::kReadOnly);
    });
  }

 private:
  const char* path_;
  bool wasReadOnly_;
};

/// Writes everything and closes. False when any of it failed.
bool writeAndClose(std::FILE* file, const char* bytes, std::size_t count) {
  const bool isWritten = std::fwrite(bytes, 1, count, file) == count;
  return flushAndClose(file) && isWritten;
}

/// A file beside another that takes its place, or disappears.
class FileBeside {
 public:
  /// Creates one that did not exist.
  explicit FileBeside(const std::string& target) : target_(target) {
    constexpr int kTries = 100;
    for (int i = 0; i < kTries && file_ == nullptr; ++i) {
      name_ = target + ".new" + std::to_string(i);
      file_ = createFile(name_);
    }
  }
  ~FileBeside() {
    if (file_ != nullptr && !hasMoved_) {
      std::remove(name_.c_str());
    }
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;
  [[nodiscard]] bool exists() const { return file_ != nullptr; }
  /// Closes it in any case. @return false when anything failed.
  [[nodiscard]] bool fillAndMove(const char* bytes, std::size_t count) {
    copyPermissions(target_, name_);  // before anything can be read in it
    hasMoved_ = writeAndClose(file_, bytes, count) && moveFileOver(name_, target_);
    return hasMoved_;
  }

 private:
  const std::string& target_;
  std::string name_;
  std::FILE* file_ = nullptr;
  bool hasMoved_ = false;
};

bool saveDirectly(const std::string& name, const char* bytes, std::size_t count) {
  std::FILE* file = std::fopen(name.c_str(), "wb");
  return file != nullptr && writeAndClose(file, bytes, count);
}

}  // namespace

WholeFileReader::WholeFileReader(const char* path)
    : file_(std::fopen(presentFileName(path).c_str(), "rb")) {
  if (file_ != nullptr && seek(file_.get(), 0, SEEK_END) == 0) {
    const std::int64_t size = tell(file_.get());
    // A directory, where it can be opened at all, claims the largest size there is.
    size_ = size <= std::numeric_limits<std::int32_t>::max() ? size : -1;
    std::rewind(file_.get());
  }
}

bool WholeFileReader::readInto(char* bytes) {
  const auto size = static_cast<std::size_t>(size_);
  return std::fread(bytes, 1, size, file_.get()) == size || std::ferror(file_.get()) == 0;
}

bool saveWholeFile(const char* path, const char* bytes, std::size_t count) {
  const FileToReplace target = fileToReplace(presentFileName(path));
  WritableMeanwhile writable(target.name.c_str());
  std::optional<FileBeside> beside;
  if (target.isReplaceable) {
    beside.emplace(target.name);
  }
  const bool isSaved = beside.has_value() && beside->exists()
                           ? beside->fillAndMove(bytes, count)
                           : saveDirectly(target.name, bytes, count);
  return writable.restore() && isSaved;
}

}  // namespace zel
