#include "tools/zel/temporary_file.h"

#include <fcntl.h>
#include <signal.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "zel/io/output_file.h"

namespace zel::program {

namespace {

/// Files to remove when a signal ends the program. A handler may only touch plain memory, so the
/// names are copied into slots here; the program has at most two such files at a time.
struct DoomedFile {
  std::atomic<bool> used = false;
  std::array<char, 4096> path{};
};
std::array<DoomedFile, 4> doomedFiles;

extern "C" void removeDoomedFiles(int signalNumber) {
  removeUnfinishedOutputs();
  for (DoomedFile& file : doomedFiles) {
    if (file.used.load()) {
      unlink(file.path.data());
    }
  }
  signal(signalNumber, SIG_DFL);
  raise(signalNumber);
}

void doom(const std::string& path) {
  for (DoomedFile& file : doomedFiles) {
    if (!file.used.load() && path.size() < file.path.size()) {
      std::memcpy(file.path.data(), path.c_str(), path.size() + 1);
      file.used.store(true);
      return;
    }
  }
}

void spare(const std::string& path) {
  for (DoomedFile& file : doomedFiles) {
    if (file.used.load() && path == file.path.data()) {
      file.used.store(false);
    }
  }
}

}  // namespace

void cleanUpWhenEnded() {
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
    if (signal(number, removeDoomedFiles) == SIG_IGN) {
      signal(number, SIG_IGN);
    }
  }
}

TemporaryFile::TemporaryFile(const std::string& start)
    : path_(start + "XXXXXX"), descriptor_(mkostemp(path_.data(), O_CLOEXEC)) {
  if (isOpen()) {
    doom(path_);
  }
}

TemporaryFile::~TemporaryFile() {
  if (isOpen()) {
    unlink(path_.c_str());
    spare(path_);
  }
}

std::string TemporaryFile::startInTemporaryDirectory() {
  std::error_code error;
  const std::filesystem::path directory = std::filesystem::temp_directory_path(error);
  return error ? "" : (directory / "zel-").string();
}

}  // namespace zel::program
