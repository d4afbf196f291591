#include "tools/zel/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <vector>

#include "tools/zel/failure.h"

namespace zel::program {

namespace {

constexpr unsigned kEveryone = 0666;
constexpr unsigned kAnyWriter = 0222;

unsigned newFilePermissions() {
  const mode_t mask = umask(0);
  umask(mask);
  return kEveryone & ~mask;
}

std::filesystem::path directoryOf(const std::string& file) {
  const std::filesystem::path directory = std::filesystem::path(file).parent_path();
  return directory.empty() ? std::filesystem::path(".") : directory;
}

}  // namespace

OutputFile::OutputFile(const std::string& name) : name_(name), isStandardOutput_(name == "-") {
  struct stat status {};
  if (isStandardOutput_) {
    name_ = "standard output";
  } else if (stat(name.c_str(), &status) != 0) {
    permissions_ = newFilePermissions();
    aimAtFile(name);
  } else if (S_ISDIR(status.st_mode)) {
    throw unwritable(name_, systemText(EISDIR));
  } else if (access(name.c_str(), W_OK) != 0 || (status.st_mode & kAnyWriter) == 0) {
    throw unwritable(name_, "the file is read-only");
  } else if (S_ISREG(status.st_mode)) {
    permissions_ = status.st_mode & 07777U;
    aimAtFile(std::filesystem::canonical(name).string());
  }
  if (!content_) {
    content_.emplace(TemporaryFile::startInTemporaryDirectory());
  }
  if (!content_->isOpen()) {
    throw unwritable(name_, systemText(errno));
  }
}

void OutputFile::aimAtFile(const std::string& name) {
  target_ = name;
  // The hidden name must stay valid when the target's own name is as long as names may be.
  constexpr std::size_t kShownLetters = 200;
  const std::string shown =
      std::filesystem::path(name).filename().string().substr(0, kShownLetters);
  content_.emplace((directoryOf(name) / ("." + shown + ".")).string());
}

FILE* OutputFile::openStream() const {
  const int descriptor = dup(content_->descriptor().get());
  FILE* stream = descriptor < 0 ? nullptr : fdopen(descriptor, "w");
  if (stream == nullptr) {
    throw unwritable(name_, systemText(errno));
  }
  return stream;
}

void OutputFile::write(std::string_view bytes) const {
  if (!content_->descriptor().writeAll(bytes.data(), bytes.size())) {
    throw unwritable(name_, systemText(errno));
  }
}

long long OutputFile::size() const {
  struct stat status {};
  return fstat(content_->descriptor().get(), &status) == 0 ? status.st_size : 0;
}

void OutputFile::commit() {
  const int content = content_->descriptor().get();
  if (target_.empty()) {
    const FileDescriptor device(isStandardOutput_ ? dup(STDOUT_FILENO)
                                                  : open(name_.c_str(), O_WRONLY | O_CLOEXEC));
    copyTo(device);
    return;
  }
  if (fsync(content) != 0 || fchmod(content, permissions_) != 0 || !content_->renameTo(target_)) {
    throw unwritable(name_, systemText(errno));
  }
  // The new name lasts once the directory is on the disk; where that cannot be asked for, so be it.
  const FileDescriptor directory(open(directoryOf(target_).c_str(), O_RDONLY | O_CLOEXEC));
  if (directory.isOpen()) {
    static_cast<void>(fsync(directory.get()));
  }
}

void OutputFile::copyTo(const FileDescriptor& target) const {
  constexpr std::size_t kChunk = std::size_t{1} << 20;
  std::vector<char> chunk(kChunk);
  off_t offset = 0;
  ssize_t got = 0;
  do {
    got = pread(content_->descriptor().get(), chunk.data(), chunk.size(), offset);
    if (got < 0 || !target.writeAll(chunk.data(), static_cast<std::size_t>(got))) {
      throw unwritable(name_, systemText(errno));
    }
    offset += got;
  } while (got > 0);
}

bool isSameFile(const std::string& a, const std::string& b) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (a == "-" || b == "-" || (fs::exists(a, error) && !fs::is_regular_file(a, error))) {
    return false;
  }
  const auto placeOf = [&](const std::string& name) {
    return fs::weakly_canonical(fs::absolute(name, error), error);
  };
  return placeOf(a) == placeOf(b);
}

}  // namespace zel::program
