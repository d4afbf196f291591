// The format table and the separator.

#include <cstring>
#include <string_view>

#include "zel/core/constants.h"
#include "zel/textfile/detail/text_view.h"
#include "zel/textfile/kw_iocl.h"

namespace {

constexpr const char* kDefaultFormats[] = {
    "%5d",
    "%10d",
    "%16.8e",
    "%s",
    "%10d, %10d",
    "%16.8e, %16.8e",
    "%16.8e, %16.8e, %16.8e",
    "%16.8e, %16.8e, %16.8e, %16.8e",
    "%16.8e, %16.8e, %16.8e, %16.8e",
    "%5d, %5d, %5d, %5d",
    "%10d, %10d, %10d, %10d",
    "%10d, %10d, %10d",
};
constexpr int kIntSlot = 1;
constexpr std::size_t kSeparatorLimit = 49;

}  // namespace

KwIOCL::KwIOCL() : defaultFmts_{}, versionNum_(zel::kNoIndex) {
  int slot = 0;
  for (const char* format : kDefaultFormats) {
    zel::copyTruncated(defaultFmts_[slot++], format);
  }
  LoadDefaultFmtM(-1);
}

int KwIOCL::LoadDefaultFmtM(int slot) {
  const int first = slot == -1 ? 0 : slot;
  const int last = slot == -1 ? kSlots - 1 : slot;
  for (int i = first; i <= last; ++i) {
    if (i >= 0 && i < kSlots) {
      SetFmtM(i, defaultFmts_[i]);
    }
  }
  return 1;
}

int KwIOCL::SetFmtM(int slot, const char* format) {
  if (slot >= 0 && slot < kSlots) {
    zel::copyTruncated(fmts_[slot], zel::viewOf(format));
    isDefaultFmt_[slot] = std::strcmp(fmts_[slot], defaultFmts_[slot]) == 0;
  }
  return 1;
}

void KwIOCL::GetFmtStrM(char* out) const {
  zel::copyText(out, defaultFmts_[kIntSlot]);
  out += std::strlen(out);
  out += zel::copyEscaped(out, separator_);
  zel::copyText(out, "%s");
}

void KwIOCL::SetSeparatorM(const char* separator) {
  const std::string_view text = zel::viewOf(separator);
  if (text.size() < kSeparatorLimit) {
    zel::copyTruncated(separator_, text);
  }
}

void KwIOCL::SetAutoNewLineM(int on) { autoNewLine_ = on; }

int KwIOCL::GetAutoNewLineM() const { return autoNewLine_; }
