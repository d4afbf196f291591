#include <sys/stat.h>
#include <sys/types.h>
#if defined(__GLIBC__)
#include <stdio_ext.h>
#endif

#include <algorithm>
#include <limits>
#include <memory>

#include "zel/core/constants.h"
#include "zel/core/detail/file_name.h"
#include "zel/core/memory.h"
#include "zel/textfile/detail/platform_stdio.h"

namespace zel {
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

void giveBack(FILE* file, std::string_view text) {
  if (text.size() > 1 && seek(file, -static_cast<std::int64_t>(text.size()), SEEK_CUR) == 0) {
    return;
  }
  for (; !text.empty(); text.remove_suffix(1)) {
    if (std::ungetc(static_cast<unsigned char>(text.back()), file) == EOF) {
      kwErrorMessage(kOutOfMemory);
      return;
    }
  }
}

#if defined(__GLIBC__)
bool takesWrites(FILE* file) { return __fwritable(file) != 0; }
bool isBeingWritten(FILE* file) { return __fwriting(file) != 0; }
#else
bool takesWrites(FILE* /*file*/) { return true; }
bool isBeingWritten(FILE* /*file*/) { return false; }
#endif

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

}  // namespace zel
