#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <vector>

#include "zel/core/detail/file_name.h"

namespace zel {
namespace {

/// "NUL", "COM1" and their like, which have attributes and a name beside them as files do.
bool isDevice(const std::string& name) {
  char full[MAX_PATH];
  const DWORD length = GetFullPathNameA(name.c_str(), MAX_PATH, full, nullptr);
  return length < MAX_PATH && std::string(full, length).rfind("\\\\.\\", 0) == 0;
}

/// Whether the file has further names, which must go on showing the same content.
bool hasSeveralNames(const std::string& name) {
  const HANDLE file =
      CreateFileA(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return false;
  }
  BY_HANDLE_FILE_INFORMATION information{};
  const bool isKnown = GetFileInformationByHandle(file, &information) != 0;
  CloseHandle(file);
  return isKnown && information.nNumberOfLinks > 1;
}

// Who may do what with the file.
void copyAccessList(const std::string& source, const std::string& target) {
  DWORD size = 0;
  GetFileSecurityA(source.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> list(size);
  if (GetFileSecurityA(source.c_str(), DACL_SECURITY_INFORMATION, list.data(), size, &size) != 0) {
    SetFileSecurityA(target.c_str(), DACL_SECURITY_INFORMATION, list.data());
  }
}

// The system's own calls leave errno alone.
void setErrno(DWORD refusal) {
  const std::error_condition condition =
      std::system_category().default_error_condition(static_cast<int>(refusal));
  errno = condition.category() == std::generic_category() ? condition.value() : EIO;
}

}  // namespace

std::string presentFileName(const char* name) { return name == nullptr ? "" : name; }

FileToReplace fileToReplace(const std::string& name) {
  const DWORD attributes = GetFileAttributesA(name.c_str());
  const DWORD special = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
  const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
  const bool isSpecial = isThere && ((attributes & special) != 0 || hasSeveralNames(name));
  return {name, !isDevice(name) && !isSpecial};
}

// The C library's own calls share no deletion: a file left open could not be removed.
std::FILE* createFile(const std::string& name) {
  const HANDLE file = CreateFileA(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                  nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    setErrno(GetLastError());
    return nullptr;
  }
  const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_BINARY);
  std::FILE* const stream = descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
  if (stream == nullptr) {
    if (descriptor < 0) {
      CloseHandle(file);
    } else {
      _close(descriptor);
    }
    removeFile(name.c_str());
    errno = ENOMEM;
  }
  return stream;
}

std::FILE* createPrivateFile(const std::string& name) { return createFile(name); }

std::string uniqueNamePart() {
  static std::atomic<unsigned> count = 0;
  return std::to_string(GetCurrentProcessId()) + "-" + std::to_string(count.fetch_add(1));
}

bool isWritableFile(const std::string& name) {
  const DWORD attributes = GetFileAttributesA(name.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) == 0;
}

void inheritFileRights(const std::string& source, const std::string& target) {
  copyPermissions(source, target);
}

bool bringToDisk(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }

void bringDirectoryToDisk(const std::string& /*file*/) noexcept {}

void removeFile(const char* name) noexcept { DeleteFileA(name); }

void copyPermissions(const std::string& source, const std::string& target) {
  const DWORD attributes = GetFileAttributesA(source.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    copyAccessList(source, target);
    SetFileAttributesA(target.c_str(), attributes);
  }
}

bool moveFileOver(const std::string& source, const std::string& target) {
  const bool isMoved = MoveFileExA(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
  if (!isMoved) {
    setErrno(GetLastError());
  }
  return isMoved;
}

}  // namespace zel
