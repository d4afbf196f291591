#include "zel/textfile/files.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "zel/core/constants.h"
#include "zel/core/detail/refused_memory.h"
#include "zel/core/platform.h"
#include "zel/textfile/detail/text_view.h"

namespace {

using zel::PathKind;
using zel::viewOf;

bool isSeparator(char c) { return c == '\\' || c == '/'; }

PathKind kindOf(const char* path) {
  return zel::answerOr(PathKind::kNothing, [&] { return zel::platform().findPath(path); });
}

bool exists(const char* path) { return kindOf(path) != PathKind::kNothing; }

bool isPresentDrive(char letter) {
  const auto code = static_cast<unsigned char>(letter);
  if (std::isalpha(code) == 0) {
    return false;
  }
  const int bit = std::toupper(code) - 'A';
  return (zel::platform().presentDrives() >> bit & 1U) != 0;
}

// The length of what names the root of an absolute path; 0 when the path is refused.
std::size_t rootLength(std::string_view path) {
  if (isSeparator(path[0]) && zel::platform().presentDrives() == 0) {
    return 1;
  }
  if (path[1] != ':' || !isPresentDrive(path[0])) {
    return 0;
  }
  std::size_t end = 2;
  while (end < path.size() && !isSeparator(path[end])) {
    ++end;
  }
  const std::size_t length = end < path.size() ? end + 1 : end;
  return path.substr(0, length).find(' ') == std::string_view::npos ? length : 0;
}

bool makeDirectory(const char* path) {
  return zel::answerOr(false, [&] { return zel::platform().createDirectory(path); }) ||
         kindOf(path) == PathKind::kDirectory;
}

}  // namespace

bool slIsExistentPath(const char* path) { return exists(viewOf(path).data()); }

int slFindSingleFile(const char* path) {
  std::string_view text = viewOf(path);
  if (text.empty() || text.size() >= zel::kPathLimit) {
    return 0;
  }
  if (isSeparator(text.back())) {
    text.remove_suffix(1);
  }
  char trimmed[zel::kPathLimit];
  zel::copyTruncated(trimmed, text);
  return exists(trimmed) ? 1 : 0;
}

int slCreateDirRecursively(const char* path) {
  std::string_view text = viewOf(path);
  if (text.size() >= zel::kPathLimit) {
    return 0;
  }
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  const std::size_t root = text.size() < 2 ? 0 : rootLength(text);
  if (root == 0) {
    return 0;
  }
  char prefix[zel::kPathLimit];
  for (std::size_t end = root + 1; end <= text.size(); ++end) {
    const bool partEnds = end == text.size() || isSeparator(text[end]);
    if (!partEnds || isSeparator(text[end - 1])) {
      continue;
    }
    zel::copyTruncated(prefix, text.substr(0, end));
    if (!makeDirectory(prefix)) {
      return 0;
    }
  }
  return 1;
}

int slCopyFile(const char* source, const char* destination) {
  const std::string_view from = viewOf(source);
  const std::string_view to = viewOf(destination);
  if (from.size() >= zel::kPathLimit || to.size() >= zel::kPathLimit) {
    return 1;
  }
  char target[2 * zel::kPathLimit];
  zel::copyTruncated(target, to);
  if (!to.empty() && isSeparator(to.back())) {
    zel::copyText(target + to.size(), from.substr(from.find_last_of("\\/") + 1));
  }
  // A target that could not be looked for may be there.
  static_cast<void>(zel::answerOr(false, [&] {
    return zel::platform().findPath(target) == PathKind::kNothing &&
           zel::platform().copyFile(from.data(), target);
  }));
  return 1;
}
