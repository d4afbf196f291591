// Path names taken apart and put together again, texts edited, and files and folders of any name
// asked for in a system that exists in memory only.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

#include "zel/core/platform.h"
#include "zel/textfile/files.h"
#include "zel/textfile/paths.h"
#include "zel/textfile/string_edit.h"

namespace {

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

constexpr std::size_t kMost = 600;
using Buffer = std::array<char, 4 * kMost>;

/// Folders by their full names; drives C and, without any, the root.
class MemorySystem : public zel::Platform {
 public:
  explicit MemorySystem(bool hasDrives) : hasDrives_(hasDrives) { zel::setPlatform(this); }
  ~MemorySystem() override { zel::setPlatform(nullptr); }
  zel::PathKind findPath(const char* path) override {
    if (folders.count(path) != 0) {
      return zel::PathKind::kDirectory;
    }
    return files.count(path) != 0 ? zel::PathKind::kFile : zel::PathKind::kNothing;
  }
  bool createDirectory(const char* path) override {
    require(std::string(path).size() < 260);
    return findPath(path) == zel::PathKind::kNothing && folders.insert(path).second;
  }
  bool copyFile(const char* /*source*/, const char* target) override {
    require(findPath(target) == zel::PathKind::kNothing);
    return files.insert(target).second;
  }
  std::uint32_t presentDrives() override { return hasDrives_ ? 1U << 2 : 0; }

  std::set<std::string> folders;
  std::set<std::string> files;

 private:
  bool hasDrives_;
};

void takeApart(const std::string& text) {
  Buffer path{};
  Buffer name{};
  const bool hasPath = slGetPathAndName(text.c_str(), path.data(), name.data()) == 1;
  require(std::string(path.data()) + name.data() == text);
  require(hasPath == (text.find('\\') != std::string::npos));
  require(std::string(name.data()).find('\\') == std::string::npos);

  Buffer extension{};
  Buffer mainName{};
  const bool hasDot = slGetFileExtension(text.c_str(), extension.data()) == 1;
  require(hasDot == (text.find('.') != std::string::npos));
  slGetFileMainName(text.c_str(), mainName.data());
  const std::string dotted = std::string(mainName.data()) + "." + extension.data();
  require(name.data() == (std::string(name.data()).find('.') == std::string::npos
                              ? std::string(mainName.data())
                              : dotted));
  Buffer level{};
  slGetMipMapFileName(text.c_str(), level.data(), -7);
  require(std::string(mainName.data()) + "--7." + extension.data() == level.data());
}

void putTogether(const std::string& head, const std::string& tail) {
  Buffer joined{};
  std::copy(head.begin(), head.end(), joined.begin());
  require(slCombFileName(joined.data(), tail.c_str()) == 1);
  const std::string whole = joined.data();
  if (head.empty()) {
    require(whole == tail);
  } else {
    const std::string left = head.back() == '\\' ? head.substr(0, head.size() - 1) : head;
    require(whole == left + "\\" + (tail.empty() || tail[0] != '\\' ? tail : tail.substr(1)));
  }
  Buffer full{};
  std::copy(tail.begin(), tail.end(), full.begin());
  slCatFileNameWithPath(full.data(), head.c_str());
  require(full.data() == (tail == "NULL" ? std::string() : head + tail));
}

void edit(const std::string& head, const std::string& tail) {
  Buffer text{};
  std::copy(head.begin(), head.end(), text.begin());
  const int capacity = static_cast<int>(head.size() + 3 * tail.size());
  const char seed = tail.empty() ? ',' : tail[0];
  slInsStrBySeed(text.data(), capacity, tail.c_str(), seed);
  require(static_cast<int>(std::string(text.data()).size()) <=
          std::max(capacity, static_cast<int>(head.size())));
  std::string expected = head;
  for (std::size_t at = expected.find(seed); at != std::string::npos && !head.empty();
       at = expected.find(seed, at + 1 + tail.size())) {
    if (static_cast<int>(expected.size() + tail.size()) + 1 >= capacity) {
      break;
    }
    expected.insert(at + 1, tail);
  }
  require(expected == text.data());
  slInsertStr(text.data(), tail.c_str());
  require(tail + expected == text.data());
}

void askForFiles(const std::string& head, const std::string& tail) {
  for (const bool hasDrives : {false, true}) {
    MemorySystem system(hasDrives);
    const int isMade = slCreateDirRecursively(head.c_str());
    const std::string path = head.substr(std::min(head.find_first_not_of(' '), head.size()));
    const bool isAbsolute = path.size() >= 2 && head.size() < 260 &&
                            (hasDrives ? (path[0] == 'c' || path[0] == 'C') && path[1] == ':'
                                       : path[0] == '\\' || path[0] == '/');
    require(isMade == 0 || isAbsolute);
    require(isMade == 1 || system.folders.empty() || isAbsolute);
    require(slCreateDirRecursively(head.c_str()) == isMade);
    require(slFindSingleFile(tail.c_str()) == 0 || system.folders.size() > 0);
    require(slCopyFile(head.c_str(), tail.c_str()) == 1 && system.files.size() <= 1);
  }
  static_cast<void>(slIsExistentPath(tail.c_str()));  // in the real system
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text =
      std::string(reinterpret_cast<const char*>(data), std::min(size, kMost)).c_str();
  const std::size_t cut = text.find('\n');
  const std::string head = text.substr(0, cut);
  const std::string tail = cut == std::string::npos ? std::string() : text.substr(cut + 1);
  takeApart(text);
  putTogether(head, tail);
  edit(head, tail);
  askForFiles(head, tail);
  return 0;
}
