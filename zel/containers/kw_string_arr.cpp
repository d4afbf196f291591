#include "zel/containers/kw_string_arr.h"

#include <utility>

#include "zel/containers/detail/text_index.h"

template class zel::SlotStore<KwStringCL, zel::ElementPolicy>;
template class zel::IndexedSlots<KwStringCL, zel::ElementPolicy, zel::TextIndex>;

namespace {

using Texts = zel::SlotStore<KwStringCL, zel::ElementPolicy>;

/// Whether the heap had room for every text of a copy.
bool isWhole(const Texts& copy, const Texts& original) {
  for (int i = 0; i < original.bound(); ++i) {
    if (i >= copy.length() || copy[i].GetLengthM() != original[i].GetLengthM()) {
      return false;
    }
  }
  return true;
}

}  // namespace

KwStringArr::KwStringArr() = default;

KwStringArr::KwStringArr(const KwStringArr& other) : slots_(other.slots_) {
  if (!isWhole(slots_.store(), other.slots_.store())) {
    slots_.clear();
  }
}

KwStringArr::KwStringArr(KwStringArr&& other) noexcept = default;

KwStringArr& KwStringArr::operator=(const KwStringArr& other) {
  if (this == &other) {
    return *this;
  }
  Texts copy;
  const bool isInline = other.slots_.length() == copy.length();
  if (!isInline && !copy.addSize(other.slots_.length())) {
    return *this;
  }
  for (int i = 0; i < other.slots_.bound(); ++i) {
    copy[i] = other.slots_[i];
  }
  if (!isWhole(copy, other.slots_.store())) {
    return *this;
  }
  copy.setBound(other.slots_.bound());
  copy.setAvailable(other.slots_.available());
  copy.setIncrement(other.slots_.increment());
  slots_.replace(std::move(copy));
  return *this;
}

KwStringArr& KwStringArr::operator=(KwStringArr&& other) noexcept = default;

KwStringArr::~KwStringArr() = default;

int KwStringArr::GetLengthM() const { return slots_.length(); }

int KwStringArr::GetBoundM() const { return slots_.bound(); }

int KwStringArr::GetAvailableNumM() const { return slots_.available(); }

int KwStringArr::AddStringM(int count, const char* bytes) {
  KwStringCL element(zel::kTagAvailable);
  element.SetValueM(count, bytes);
  // Without its bytes it would match every text.
  const bool isRefused = element.GetLengthM() < count;
  return isRefused ? GetBoundM() : slots_.add(std::move(element));
}

int KwStringArr::AddByCompM(const char* text) {
  const int found = FindStrM(text);
  if (found >= 0) {
    return found;
  }
  KwStringCL element(zel::kTagAvailable);
  element.AddStringM(text);
  return element.GetLengthM() < 1 ? GetBoundM() : slots_.add(std::move(element));
}

void KwStringArr::SetValueM(int index, int count, const char* bytes) {
  if (slots_.holds(index)) {
    slots_.change(index, [=](KwStringCL& element) { element.SetValueM(count, bytes); });
  }
}

void KwStringArr::GetValueM(int index, int* count, char* out) const {
  if (slots_.holds(index) && zel::ElementPolicy::isLive(slots_[index])) {
    slots_[index].GetValueM(count, out);
  } else {
    *count = 0;
    out[0] = 0;
  }
}

int KwStringArr::GetLengthM(int index) const {
  return slots_.exists(index) ? slots_[index].GetLengthM() : 0;
}

int KwStringArr::FindStrM(const char* text) const {
  return zel::firstMatch(slots_, text == nullptr ? "" : text);
}

int KwStringArr::StrCmpM(int index, int count, const char* text) const {
  return slots_.holds(index) && slots_[index].CompareStrM(count, text) == 0 ? 1 : 0;
}

int KwStringArr::DelItemM(int index) {
  slots_.remove(index);
  return 1;
}

int KwStringArr::DelAllM() {
  slots_.clear();
  return 1;
}
