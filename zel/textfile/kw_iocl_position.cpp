// Where the stream stands, and skipping over what it holds.

#include <string_view>

#include "zel/core/constants.h"
#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/text_scanner.h"
#include "zel/textfile/detail/text_view.h"
#include "zel/textfile/kw_iocl.h"

namespace {

constexpr int kSearchBuffer = 255;

}  // namespace

void KwIOCL::RewindM() {
  if (FILE* file = stream_.get()) {
    stream_.seek(0, SEEK_SET);
    std::clearerr(file);
  }
}

void KwIOCL::SeekM(long offset, int origin) {
  if (stream_.get() != nullptr) {
    stream_.seek(offset, origin);
  }
}

int KwIOCL::EofM() const {
  FILE* file = stream_.get();
  return file == nullptr || std::feof(file) != 0 || zel::tell(file) >= fileLength_ ? 1 : 0;
}

int KwIOCL::FinishedReadM() const {
  if (EofM() == 1) {
    return 1;
  }
  FILE* file = stream_.get();
  const std::int64_t position = zel::tell(file);
  if (position < 0 || zel::seek(file, 0, SEEK_END) != 0) {
    return 0;
  }
  const std::int64_t length = zel::tell(file);
  zel::seek(file, position, SEEK_SET);
  return position >= length ? 1 : 0;
}

int KwIOCL::SkipLineM() {
  FILE* file = readable();
  if (!isText()) {
    nextStringEquals({});
    return 1;
  }
  zel::TextScanner scanner(file, zel::LookAhead::kLine);
  if (!scanner.skipLine() && scanner.failed()) {
    throw zel::kReadFailure;
  }
  return 1;
}

int KwIOCL::SkipSomeLinesM(int count) {
  for (int i = 0; i < count; ++i) {
    SkipLineM();
    if (isText() && std::feof(stream_.get()) != 0) {
      break;  // every further line is empty
    }
  }
  return 1;
}

int KwIOCL::SearchStrM(const char* text) {
  const std::string_view wanted = zel::viewOf(text);
  while (EofM() == 0) {
    if (isText()) {
      char line[kSearchBuffer];
      InputGetsM(line, kSearchBuffer);
      if (wanted == line) {
        return 1;
      }
    } else if (nextStringEquals(wanted)) {
      return 1;
    }
  }
  return 0;
}
