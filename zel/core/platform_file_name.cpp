#include "zel/core/detail/file_name.h"

#include <algorithm>
#include <cstdio>

#if defined(_WIN32)
#define NOMINMAX
#include <windows.h>
#else
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#endif

namespace zel {

#if defined(_WIN32)

std::string presentFileName(const char* name) { return name == nullptr ? "" : name; }

FileToReplace fileToReplace(const std::string& name) {
  const DWORD attributes = GetFileAttributesA(name.c_str());
  const DWORD special = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE;
  return {name, attributes == INVALID_FILE_ATTRIBUTES || (attributes & special) == 0};
}

void copyPermissions(const std::string& /*source*/, const std::string& /*target*/) {}

bool moveFileOver(const std::string& source, const std::string& target) {
  return MoveFileExA(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

#else

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
  return {real == nullptr ? name : real.get(), S_ISREG(status.st_mode)};
}

void copyPermissions(const std::string& source, const std::string& target) {
  struct stat status {};
  if (stat(source.c_str(), &status) == 0) {
    chmod(target.c_str(), status.st_mode & 07777);
  }
}

bool moveFileOver(const std::string& source, const std::string& target) {
  return std::rename(source.c_str(), target.c_str()) == 0;
}

#endif

}  // namespace zel
