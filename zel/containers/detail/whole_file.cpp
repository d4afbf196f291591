#include "zel/containers/detail/whole_file.h"

#include <limits>
#include <string>

#include "zel/core/detail/file_name.h"
#include "zel/core/detail/platform_stream.h"
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
  ~WritableMeanwhile() {
    if (wasReadOnly_) {
      platform().setFileAccess(path_, FileAccess::kReadOnly);
    }
  }
  WritableMeanwhile(const WritableMeanwhile&) = delete;
  WritableMeanwhile& operator=(const WritableMeanwhile&) = delete;

 private:
  const char* path_;
  bool wasReadOnly_;
};

/// Writes everything and closes. False when any of it failed.
bool writeAndClose(std::FILE* file, const char* bytes, std::size_t count) {
  const bool isWritten = std::fwrite(bytes, 1, count, file) == count;
  return flushAndClose(file) && isWritten;
}

/// Creates a file beside `name` that did not exist. @param[out] beside its name.
std::FILE* createBeside(const std::string& name, std::string& beside) {
  constexpr int kTries = 100;
  for (int i = 0; i < kTries; ++i) {
    beside = name + ".new" + std::to_string(i);
    if (std::FILE* file = createFile(beside)) {
      return file;
    }
  }
  return nullptr;
}

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

void WholeFileReader::readInto(char* bytes) {
  // The file may have shrunk meanwhile; what is missing stays as it was.
  [[maybe_unused]] const std::size_t read =
      std::fread(bytes, 1, static_cast<std::size_t>(size_), file_.get());
}

bool saveWholeFile(const char* path, const char* bytes, std::size_t count) {
  const FileToReplace target = fileToReplace(presentFileName(path));
  const WritableMeanwhile writable(target.name.c_str());
  std::string beside;
  std::FILE* file = target.isOrdinary ? createBeside(target.name, beside) : nullptr;
  if (file == nullptr) {
    return saveDirectly(target.name, bytes, count);
  }
  copyPermissions(target.name, beside);
  const bool isSaved = writeAndClose(file, bytes, count) && moveFileOver(beside, target.name);
  if (!isSaved) {
    std::remove(beside.c_str());
  }
  return isSaved;
}

}  // namespace zel
