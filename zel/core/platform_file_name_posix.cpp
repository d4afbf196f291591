#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

#include "zel/core/detail/file_name.h"

namespace zel {

std::string presentFileName(const char* name) {
  std::string path = name == nullptr ? "" : name;
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

std::filesystem::path pathOfName(const std::string& name) { return name; }

std::string nameOfPath(const std::filesystem::path& path) { return path.string(); }

FileToReplace fileToReplace(const std::string& name) {
  struct stat status {};
  if (stat(name.c_str(), &status) != 0) {
    const bool isDanglingLink = lstat(name.c_str(), &status) == 0;
    return {name, !isDanglingLink};
  }
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(name.c_str(), nullptr),
                                                         &std::free);
  const bool isOwn = status.st_nlink == 1 && status.st_uid == geteuid();
  return {real == nullptr ? name : real.get(), real != nullptr && isOwn && S_ISREG(status.st_mode)};
}

std::FILE* createFile(const std::string& name) { return std::fopen(name.c_str(), "wbx"); }

std::FILE* createPrivateFile(const std::string& name) {
  const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  std::FILE* const stream = file < 0 ? nullptr : fdopen(file, "wb");
  if (file >= 0 && stream == nullptr) {
    close(file);
    unlink(name.c_str());
    errno = ENOMEM;
  }
  return stream;
}

std::string uniqueNamePart() {
  static std::atomic<unsigned> count = 0;
  return std::to_string(getpid()) + "-" + std::to_string(count.fetch_add(1));
}

bool isWritableFile(const std::string& name) {
  constexpr mode_t kAnyWriter = S_IWUSR | S_IWGRP | S_IWOTH;
  struct stat status {};
  return stat(name.c_str(), &status) == 0 && (status.st_mode & kAnyWriter) != 0 &&
         access(name.c_str(), W_OK) == 0;
}

// Where the group cannot be passed on, its permissions would be another group's.
void inheritFileRights(const std::string& source, const std::string& target) {
  struct stat status {};
  if (stat(source.c_str(), &status) != 0) {
    return;
  }
  mode_t mode = status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO | S_ISVTX);
  if (chown(target.c_str(), status.st_uid, status.st_gid) != 0 &&
      chown(target.c_str(), static_cast<uid_t>(-1), status.st_gid) != 0) {
    mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << 3);
  }
  chmod(target.c_str(), mode);
}

bool bringToDisk(std::FILE* file) {
  return std::fflush(file) == 0 && (fsync(fileno(file)) == 0 || errno == EINVAL);
}

void bringDirectoryToDisk(const std::string& file) noexcept {
  char directory[PATH_MAX] = ".";  // asks for no memory: what was to be done is done
  const std::size_t end = file.rfind('/') + 1;
  if (end < sizeof directory) {
    file.copy(directory, end);  // nothing when the name has no slash
  }
  const int descriptor = open(directory, O_RDONLY | O_CLOEXEC);
  if (descriptor >= 0) {
    static_cast<void>(fsync(descriptor));
    close(descriptor);
  }
}

void removeFile(const char* name) noexcept { unlink(name); }

void copyPermissions(const std::string& source, const std::string& target) {
  struct stat status {};
  if (stat(source.c_str(), &status) == 0) {
    // Of a group that is not the user's own, the file changes hands.
    [[maybe_unused]] const int ignored =
        chown(target.c_str(), static_cast<uid_t>(-1), status.st_gid);
    chmod(target.c_str(), status.st_mode & 07777);
  }
}

bool moveFileOver(const std::string& source, const std::string& target) {
  return std::rename(source.c_str(), target.c_str()) == 0;
}

}  // namespace zel
