#include "tools/zel/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "tools/zel/failure.h"

namespace zel::program {

namespace {

/// A pipe that never ends must not fill the disk.
constexpr std::uint64_t kLargestPipe = std::uint64_t{8} << 30;
constexpr std::size_t kChunk = std::size_t{1} << 20;

/// read() that goes on after an interruption.
ssize_t readSome(int descriptor, char* bytes, std::size_t size) {
  ssize_t got = 0;
  do {
    got = read(descriptor, bytes, size);
  } while (got < 0 && errno == EINTR);
  return got;
}

}  // namespace

InputFile::InputFile(const std::string& name) : name_(name), path_(name) {
  if (name == "-") {
    name_ = "standard input";
    spool(STDIN_FILENO);
    return;
  }
  const FileDescriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status {};
  if (!file.isOpen() || fstat(file.get(), &status) != 0) {
    throw unreadable(name_, systemText(errno));
  }
  if (S_ISDIR(status.st_mode)) {
    throw unreadable(name_, systemText(EISDIR));
  }
  if (S_ISREG(status.st_mode)) {
    size_ = static_cast<std::uint64_t>(status.st_size);
  } else {
    spool(file.get());
  }
}

void InputFile::spool(int descriptor) {
  const std::string start = TemporaryFile::startInTemporaryDirectory();
  if (start.empty()) {
    throw unreadable(name_, "there is no directory for temporary files");
  }
  spooled_.emplace(start);
  if (!spooled_->isOpen()) {
    throw unreadable(name_, "no temporary file: " + systemText(errno));
  }
  path_ = spooled_->path();
  std::vector<char> chunk(kChunk);
  for (;;) {
    const ssize_t got = readSome(descriptor, chunk.data(), chunk.size());
    if (got == 0) {
      return;
    }
    if (got < 0 || !spooled_->descriptor().writeAll(chunk.data(), static_cast<std::size_t>(got))) {
      throw unreadable(name_, systemText(errno));
    }
    size_ += static_cast<std::uint64_t>(got);
    if (size_ > kLargestPipe) {
      throw exhausted(name_, "more than 8 GiB from a pipe");
    }
  }
}

std::string InputFile::readAll() const {
  const FileDescriptor file(open(path_.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.isOpen()) {
    throw unreadable(name_, systemText(errno));
  }
  std::string bytes(size_, '\0');
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t got = readSome(file.get(), bytes.data() + filled, bytes.size() - filled);
    if (got < 0) {
      throw unreadable(name_, systemText(errno));
    }
    if (got == 0) {
      break;
    }
    filled += static_cast<std::size_t>(got);
  }
  bytes.resize(filled);
  return bytes;
}

}  // namespace zel::program
