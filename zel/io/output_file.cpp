#include "zel/io/output_file.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include "zel/core/detail/file_name.h"
#include "zel/core/detail/platform_stream.h"
#include "zel/core/error.h"
#include "zel/core/platform.h"
#include "zel/io/detail/input.h"

namespace zel {

namespace {

namespace fs = std::filesystem;

/// Names of content files. A signal handler may only touch plain memory, so they are copied here;
/// a file beyond the last slot is merely not removed by removeUnfinishedOutputs().
struct UnfinishedFile {
  enum State : int { kFree, kChanging, kUsed };
  std::atomic<int> state = kFree;
  std::array<char, 4096> path{};
};
std::array<UnfinishedFile, 16> unfinishedFiles;
static_assert(std::atomic<int>::is_always_lock_free);

void enter(const std::string& path) {
  for (UnfinishedFile& file : unfinishedFiles) {
    int expected = UnfinishedFile::kFree;
    if (path.size() < file.path.size() &&
        file.state.compare_exchange_strong(expected, UnfinishedFile::kChanging)) {
      std::memcpy(file.path.data(), path.c_str(), path.size() + 1);
      file.state.store(UnfinishedFile::kUsed);
      return;
    }
  }
}

void leave(const std::string& path) {
  for (UnfinishedFile& file : unfinishedFiles) {
    if (file.state.load() == UnfinishedFile::kUsed && path == file.path.data()) {
      file.state.store(UnfinishedFile::kFree);
      return;
    }
  }
}

/// Follows links to the file that they name, whether it is there or not.
fs::path followed(const std::string& name) {
  constexpr int kMostLinks = 40;
  fs::path path = pathOfName(name);
  std::error_code error;
  for (int link = 0; fs::is_symlink(fs::symlink_status(path, error)); ++link) {
    const fs::path target = fs::read_symlink(path, error);
    if (error || link == kMostLinks) {
      throw systemError(ErrorCode::kUnwritable, ELOOP, name);
    }
    path = path.parent_path() / target;
  }
  return path;
}

/// @return how many bytes were written; fewer than all with errno set.
bool writeAll(std::FILE* file, std::string_view bytes) {
  errno = 0;
  while (!bytes.empty()) {
    const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), file);
    bytes.remove_prefix(written);
    if (!bytes.empty()) {
      if (errno != EINTR) {
        return false;
      }
      std::clearerr(file);
    }
  }
  return true;
}

Error unwritable(const std::string& name, int error) {
  return systemError(ErrorCode::kUnwritable, error, name);
}

}  // namespace

OutputFile::OutputFile(const std::string& name) : name_(name) {
  const std::string present = presentFileName(name.c_str());
  std::error_code error;
  const fs::file_status status = fs::status(pathOfName(present), error);
  if (status.type() == fs::file_type::directory) {
    throw unwritable(name_, EISDIR);
  }
  if (!fs::exists(status)) {
    startBeside(nameOfPath(followed(present)), false);
  } else if (!isWritableFile(present)) {
    throw Error(ErrorCode::kUnwritable, "cannot write", "the file is read-only", name_);
  } else if (fs::is_regular_file(status)) {
    startBeside(nameOfPath(followed(present)), true);
  } else {
    startInTemporaryDirectory();
  }
}

OutputFile::OutputFile(std::FILE* stream, const std::string& name) : name_(name), stream_(stream) {
  startInTemporaryDirectory();
}

OutputFile::~OutputFile() { discard(); }

void OutputFile::startBeside(const std::string& target, bool replaces) {
  target_ = target;
  // The hidden name must stay valid when the target's own name is as long as names may be.
  constexpr std::size_t kShownLetters = 200;
  const fs::path path = pathOfName(target);
  const std::string shown = nameOfPath(path.filename()).substr(0, kShownLetters);
  start(nameOfPath(path.parent_path() / pathOfName("." + shown + ".")), replaces);
}

void OutputFile::startInTemporaryDirectory() {
  std::error_code error;
  const fs::path directory = fs::temp_directory_path(error);
  if (error) {
    throw Error(ErrorCode::kUnwritable, "cannot write",
                "there is no directory for temporary files: " + error.message(), name_);
  }
  start(nameOfPath(directory / "zel-"), true);
}

void OutputFile::start(const std::string& prefix, bool isPrivate) {
  constexpr int kTries = 100;
  for (int attempt = 0; attempt < kTries && content_ == nullptr; ++attempt) {
    contentPath_ = prefix + uniqueNamePart();
    errno = 0;
    content_.reset(isPrivate ? createPrivateFile(contentPath_) : createFile(contentPath_));
    if (content_ == nullptr && errno != EEXIST) {
      break;
    }
  }
  if (content_ == nullptr) {
    throw unwritable(name_, errno);
  }
  enter(contentPath_);
}

void OutputFile::write(std::string_view bytes) {
  if (!writeAll(content_.get(), bytes)) {
    throw unwritable(name_, errno);
  }
  size_ += bytes.size();
}

void OutputFile::commit() {
  errno = 0;
  if (std::fflush(content_.get()) != 0) {
    throw unwritable(name_, errno);
  }
  if (!target_.empty()) {
    replaceTarget();
  } else if (stream_ != nullptr) {
    copyTo(stream_);
  } else {
    const std::unique_ptr<std::FILE, Closer> device(std::fopen(name_.c_str(), "wb"));
    if (device == nullptr) {
      throw unwritable(name_, errno);
    }
    copyTo(device.get());
  }
  discard();
}

void OutputFile::replaceTarget() {
  if (!bringToDisk(content_.get())) {
    throw unwritable(name_, errno);
  }
  content_.reset();  // some systems rename no open file
  inheritFileRights(target_, contentPath_);
  if (!moveFileOver(contentPath_, target_)) {
    throw unwritable(name_, errno);
  }
  leave(contentPath_);
  contentPath_.clear();
  bringDirectoryToDisk(target_);
}

void OutputFile::copyTo(std::FILE* target) {
  constexpr std::size_t kChunk = std::size_t{1} << 20;
  content_.reset();
  const std::unique_ptr<std::FILE, Closer> content(std::fopen(contentPath_.c_str(), "rb"));
  std::vector<char> chunk(kChunk);
  for (std::uint64_t left = size_; left > 0;) {
    errno = 0;
    const std::size_t got =
        content == nullptr ? 0 : std::fread(chunk.data(), 1, chunk.size(), content.get());
    if (got == 0 || !writeAll(target, {chunk.data(), got})) {
      throw unwritable(name_, errno);
    }
    left -= got;
  }
  if (std::fflush(target) != 0) {
    throw unwritable(name_, errno);
  }
}

void OutputFile::discard() {
  content_.reset();
  if (!contentPath_.empty()) {
    removeFile(contentPath_.c_str());
    leave(contentPath_);
    contentPath_.clear();
  }
}

void removeUnfinishedOutputs() noexcept {
  for (const UnfinishedFile& file : unfinishedFiles) {
    if (file.state.load() == UnfinishedFile::kUsed) {
      removeFile(file.path.data());
    }
  }
}

}  // namespace zel
