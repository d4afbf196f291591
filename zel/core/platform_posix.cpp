#include <dirent.h>
#include <fnmatch.h>
#include <iconv.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <thread>

#include "zel/core/detail/file_name.h"
#include "zel/core/detail/refused_memory.h"
#include "zel/core/detail/text_code.h"
#include "zel/core/platform.h"

namespace zel {
namespace {

namespace fs = std::filesystem;

/// A converter of text codes; there is none where the system lacks the tables or memory.
class Converter {
 public:
  Converter(const char* to, const char* from) : converter_(iconv_open(to, from)) {}
  ~Converter() {
    if (isKnown()) {
      iconv_close(converter_);
    }
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  [[nodiscard]] bool isKnown() const { return converter_ != reinterpret_cast<iconv_t>(-1); }
  /// As iconv().
  std::size_t convert(char** in, std::size_t* left, char** out, std::size_t* room) const {
    return iconv(converter_, in, left, out, room);
  }

 private:
  iconv_t converter_;
};

constexpr auto kFailed = static_cast<std::size_t>(-1);

PathKind kindOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    return PathKind::kNothing;
  }
  return S_ISDIR(status.st_mode) ? PathKind::kDirectory : PathKind::kFile;
}

/// A pattern for fnmatch() in which only '*' and '?' stand for other characters.
std::string patternOf(const std::string& name) {
  std::string pattern;
  for (const char c : name) {
    pattern += c == '[' ? "[[]" : std::string(1, c);
  }
  return pattern;
}

struct DirectoryCloser {
  void operator()(DIR* directory) const { closedir(directory); }
};

// Not by the standard library's iterator, which ends the program when memory is refused.
PathKind findPattern(const std::string& path) {
  const std::size_t nameAt = path.rfind('/') + 1;
  const std::string folder = path.substr(0, nameAt);
  const std::string pattern = patternOf(path.substr(nameAt));
  const std::unique_ptr<DIR, DirectoryCloser> directory(
      opendir(folder.empty() ? "." : folder.c_str()));
  if (directory == nullptr) {
    if (errno == ENOMEM) {
      throw std::bad_alloc();
    }
    return PathKind::kNothing;
  }
  while (const dirent* entry = readdir(directory.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != ".." && fnmatch(pattern.c_str(), entry->d_name, 0) == 0) {
      return kindOf(folder + entry->d_name);
    }
  }
  return PathKind::kNothing;
}

}  // namespace

std::uint32_t Platform::tickCount() {
  using std::chrono::milliseconds;
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(std::chrono::duration_cast<milliseconds>(now).count());
}

UtcTime Platform::utcTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  gmtime_r(&now, &parts);
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min};
}

void Platform::sleep(std::uint32_t milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

// Without a desktop there is no cursor, no key and no sound.
bool Platform::shiftKeyPressed() { return false; }
ScreenPosition Platform::cursorPosition() { return {0, 0}; }
void Platform::setCursorPosition(ScreenPosition /*position*/) {}
void Platform::playSound(const char* /*file*/, SoundMode /*mode*/) {}

// Better an unreadable notice than none.
void Platform::showMessage(const char* gbkText) {
  const std::string text = answerOr<std::string>({}, [&] { return noticeInUtf8(gbkText); });
  const char* const bare = gbkText != nullptr ? gbkText : "";
  std::fprintf(stderr, "%s\n", text.empty() ? bare : text.c_str());
}

PathKind Platform::findPath(const char* path) {
  const std::string native = presentFileName(path);
  if (native.empty() || native.back() == '/') {
    return PathKind::kNothing;
  }
  const bool isPattern = native.find_first_of("*?", native.rfind('/') + 1) != std::string::npos;
  return isPattern ? findPattern(native) : kindOf(native);
}

FileAccess Platform::fileAccess(const char* path) {
  struct stat status {};
  if (stat(presentFileName(path).c_str(), &status) != 0) {
    return FileAccess::kNoFile;
  }
  return (status.st_mode & S_IWUSR) != 0 ? FileAccess::kWritable : FileAccess::kReadOnly;
}

bool Platform::setFileAccess(const char* path, FileAccess access) {
  const auto change =
      access == FileAccess::kWritable ? fs::perm_options::add : fs::perm_options::remove;
  const auto writers =
      access == FileAccess::kWritable
          ? fs::perms::owner_write
          : fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  std::error_code error;
  fs::permissions(presentFileName(path), writers, change, error);
  return !error;
}

bool Platform::createDirectory(const char* path) {
  std::error_code error;
  return fs::create_directory(presentFileName(path), error);
}

bool Platform::copyFile(const char* source, const char* target) {
  std::error_code error;
  return fs::copy_file(presentFileName(source), presentFileName(target),
                       fs::copy_options::overwrite_existing, error);
}

std::uint32_t Platform::presentDrives() { return 0; }

std::string utf8FromGbk(std::string_view gbk) {
  const Converter converter("UTF-8", "GBK");
  std::string source(gbk);
  char* in = source.data();
  std::size_t left = source.size();
  std::string utf8;
  while (left > 0) {
    std::array<char, 256> block;
    char* out = block.data();
    std::size_t room = block.size();
    const bool known = converter.isKnown();
    const std::size_t result = known ? converter.convert(&in, &left, &out, &room) : kFailed;
    utf8.append(block.data(), out);
    if (result == kFailed && (!known || errno != E2BIG)) {
      utf8 += known || static_cast<signed char>(*in) < 0 ? '?' : *in;
      ++in;
      --left;
    }
  }
  return utf8;
}

}  // namespace zel
