#include "zel/containers/kw_string.h"

#include <algorithm>
#include <cstring>
#include <utility>

KwStringCL::KwStringCL() = default;

KwStringCL::KwStringCL(char tag) : KwBaseCL(tag) {}

KwStringCL::KwStringCL(const KwStringCL& other) = default;

KwStringCL::KwStringCL(KwStringCL&& other) noexcept
    : KwBaseCL(other), text_(std::move(other.text_)) {}

KwStringCL& KwStringCL::operator=(const KwStringCL& other) = default;

KwStringCL& KwStringCL::operator=(KwStringCL&& other) noexcept {
  KwBaseCL::operator=(other);
  text_ = std::move(other.text_);
  return *this;
}

KwStringCL::~KwStringCL() = default;

int KwStringCL::GetLengthM() const { return text_.GetBoundM(); }

void KwStringCL::DelItemM() { KwBaseCL::DelItemM(); }

void KwStringCL::SetValueM(int count, const char* bytes) { text_.SetValueM(count, bytes); }

int KwStringCL::AddStringM(const char* text) { return text_.SetNewStrM(text); }

void KwStringCL::GetValueM(int* count, char* out) const {
  *count = text_.GetBoundM();
  std::copy_n(text_.GetContentConstPtrM(), *count, out);
}

int KwStringCL::GetStringM(char* out) const {
  const int length = text_.GetBoundM();
  if (length < 1) {
    return 0;
  }
  const char* const text = text_.GetContentConstPtrM();
  char* const end = std::copy(text, std::find(text, text + length, '\0'), out);
  *end = 0;
  return 1;
}

int KwStringCL::CompareStrM(int /*count*/, const char* text) const {
  const char* const stored = text_.GetContentConstPtrM();
  text = text == nullptr ? "" : text;
  for (int i = 0; i < text_.GetBoundM(); ++i) {
    const auto given = static_cast<unsigned char>(*text);
    const auto kept = static_cast<unsigned char>(stored[i]);
    if (given != kept) {
      return given < kept ? -1 : 1;
    }
    text += *text != 0 ? 1 : 0;
  }
  return 0;
}

KwStringCL::operator const char*() const {
  return text_.GetBoundM() < 1 ? nullptr : text_.GetContentConstPtrM();
}
