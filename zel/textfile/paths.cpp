#include "zel/textfile/paths.h"

#include <cstdio>
#include <cstring>
#include <string_view>

#include "zel/textfile/detail/text_view.h"

namespace {

using zel::copyText;
using zel::viewOf;

std::string_view namePart(std::string_view fullName) {
  return fullName.substr(fullName.rfind('\\') + 1);
}

std::string_view mainName(std::string_view fullName) {
  const std::string_view name = namePart(fullName);
  return name.substr(0, name.rfind('.'));
}

}  // namespace

int slGetPathAndName(const char* fullName, char* path, char* name) {
  const std::string_view whole = viewOf(fullName);
  const std::string_view tail = namePart(whole);
  const std::size_t pathLength = whole.size() - tail.size();
  if (name != nullptr) {
    copyText(name, tail);
  }
  copyText(path, whole.substr(0, pathLength));
  return pathLength != 0 ? 1 : 0;
}

int slGetFileExtension(const char* fullName, char* extension) {
  const std::string_view whole = viewOf(fullName);
  const std::size_t dot = whole.rfind('.');
  const bool found = dot != std::string_view::npos;
  copyText(extension, found ? whole.substr(dot + 1) : std::string_view());
  return found ? 1 : 0;
}

int slGetFileMainName(const char* fullName, char* out) {
  copyText(out, mainName(viewOf(fullName)));
  return 1;
}

int slGetMipMapFileName(const char* fullName, char* out, int level) {
  const std::string_view whole = viewOf(fullName);
  const std::string_view stem = mainName(whole);
  char number[16];
  std::snprintf(number, sizeof number, "-%d.", level);
  copyText(out, stem);
  copyText(out + stem.size(), number);
  slGetFileExtension(fullName, out + stem.size() + std::strlen(number));
  return 1;
}

int slCombFileName(char* directory, const char* name) {
  if (directory == nullptr || name == nullptr) {
    return 0;
  }
  std::size_t length = std::strlen(directory);
  if (length != 0) {
    length -= directory[length - 1] == '\\' ? 1 : 0;
    directory[length++] = '\\';
    name += *name == '\\' ? 1 : 0;
  }
  copyText(directory + length, name);
  return 1;
}

void slCatFileNameWithPath(char* name, const char* path) {
  const std::string_view tail = viewOf(name);
  if (name == nullptr) {
    return;
  }
  if (tail == "NULL") {
    *name = '\0';
    return;
  }
  const std::string_view head = viewOf(path);
  std::memmove(name + head.size(), name, tail.size() + 1);
  std::memcpy(name, head.data(), head.size());
}
