#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "zel/core/constants.h"
#include "zel/core/memory.h"
#include "zel/textfile/detail/platform_stdio.h"

namespace zel {
namespace {

/// Whether the stream was opened as text: then it turns CR LF into LF, and its positions are wrong
/// in files whose lines end in LF.
bool translatesLineEnds(FILE* file) {
  const int descriptor = _fileno(file);
  const int mode = _setmode(descriptor, _O_BINARY);
  if (mode != -1 && mode != _O_BINARY) {
    _setmode(descriptor, mode);
  }
  return mode != _O_BINARY;
}

// Pipes take seeks without a complaint.
bool isOnDisk(FILE* file) {
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
  return GetFileType(handle) == FILE_TYPE_DISK;
}

}  // namespace

// Always as bytes: files have the same content on every system, and positions count bytes.
FILE* openStream(const char* name, const char* mode) {
  std::string bytesMode = mode;
  std::erase(bytesMode, 't');
  if (bytesMode.find('b') == std::string::npos) {
    bytesMode.insert(std::min<std::size_t>(bytesMode.size(), 1), "b");
  }
  return std::fopen(name, bytesMode.c_str());
}

// Any number of characters goes back as long as they lie in the stream's buffer. Seeking would not
// do: streams that translate line ends miss the place, and pipes only seem to seek.
bool canTakeLineBack([[maybe_unused]] FILE* file, [[maybe_unused]] std::size_t size) {
#if defined(_UCRT)
  return false;  // its streams do not show their buffer
#else
  const auto held = static_cast<std::size_t>(std::max(file->_cnt, 0));
  return held >= size || std::memchr(file->_ptr, '\n', held) != nullptr;
#endif
}

void giveBack(FILE* file, std::string_view text) {
  for (; !text.empty(); text.remove_suffix(1)) {
    if (std::ungetc(static_cast<unsigned char>(text.back()), file) == EOF) {
      kwErrorMessage(kOutOfMemory);
      return;
    }
  }
}

bool takesWrites(FILE* /*file*/) { return true; }
bool isBeingWritten(FILE* /*file*/) { return false; }

std::int64_t bytesLeft(FILE* file) {
  const std::int64_t length = _filelengthi64(_fileno(file));
  const std::int64_t position = tell(file);
  if (length < 0 || position < 0 || !isOnDisk(file)) {
    return std::numeric_limits<std::int64_t>::max();
  }
  return translatesLineEnds(file) ? length : std::max<std::int64_t>(length - position, 0);
}

CLocaleScope::CLocaleScope()
    : threadSetting_(_configthreadlocale(_ENABLE_PER_THREAD_LOCALE)),
      previous_(setlocale(LC_ALL, nullptr)) {
  setlocale(LC_ALL, "C");
}

CLocaleScope::~CLocaleScope() {
  setlocale(LC_ALL, previous_.c_str());
  _configthreadlocale(threadSetting_);
}

}  // namespace zel
