#include "zel/textfile/detail/platform_stdio.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <algorithm>
#include <limits>
#include <memory>

#include "zel/core/detail/file_name.h"

#if defined(_WIN32)
#include <io.h>
#endif

namespace zel {

#if defined(_WIN32)

FILE* openStream(const char* name, const char* mode) { return std::fopen(name, mode); }

std::int64_t bytesLeft(FILE* file) {
  const std::int64_t length = _filelengthi64(_fileno(file));
  const std::int64_t position = tell(file);
  return length < 0 || position < 0 ? std::numeric_limits<std::int64_t>::max()
                                    : std::max<std::int64_t>(length - position, 0);
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

#else

namespace {

struct FileCloser {
  void operator()(FILE* file) const { std::fclose(file); }
};

}  // namespace

FILE* openStream(const char* name, const char* mode) {
  std::unique_ptr<FILE, FileCloser> file(std::fopen(presentFileName(name).c_str(), mode));
  struct stat status {};
  if (file == nullptr || fstat(fileno(file.get()), &status) != 0 || S_ISDIR(status.st_mode)) {
    return nullptr;
  }
  return file.release();
}

std::int64_t bytesLeft(FILE* file) {
  struct stat status {};
  const std::int64_t position = tell(file);
  if (position < 0 || fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::numeric_limits<std::int64_t>::max();
  }
  return std::max<std::int64_t>(status.st_size - position, 0);
}

CLocaleScope::CLocaleScope() {
  static const locale_t neutral = newlocale(LC_ALL_MASK, "C", nullptr);
  previous_ = uselocale(neutral);
}

CLocaleScope::~CLocaleScope() { uselocale(previous_); }

#endif

}  // namespace zel
