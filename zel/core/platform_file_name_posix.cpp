#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "zel/core/detail/file_name.h"

namespace zel {

std::string presentFileName(const char* name) {
  std::string path = name == nullptr ? "" : name;
  if (path.find('\\') != std::string::npos && access(path.c_str(), F_OK) != 0) {
    std::replace(path.begin(), path.end(), '\\', '/');
  }
  return path;
}

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
