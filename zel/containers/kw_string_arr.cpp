#include "zel/containers/kw_string_arr.h"

#include <new>
#include <utility>

#include "zel/containers/detail/slot_store_impl.h"
#include "zel/containers/detail/text_index.h"

template class zel::SlotStore<KwStringCL, zel::ElementPolicy>;

namespace {

using Texts = zel::SlotStore<KwStringCL, zel::ElementPolicy>;

/// Up to this length a walk is as fast as the index.
constexpr int kSmallLength = 64;
constexpr int kNotFound = -1;

std::string_view textOf(const KwStringCL& element) {
  const char* const bytes = element;
  return bytes == nullptr ? std::string_view()
                          : std::string_view(bytes, static_cast<std::size_t>(element.GetLengthM()));
}

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
  if (!isWhole(slots_, other.slots_)) {
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
  if (!isWhole(copy, other.slots_)) {
    return *this;
  }
  copy.setBound(other.slots_.bound());
  copy.setAvailable(other.slots_.available());
  copy.setIncrement(other.slots_.increment());
  slots_ = std::move(copy);
  index_.reset();
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
  if (found != kNotFound) {
    return found;
  }
  KwStringCL element(zel::kTagAvailable);
  element.AddStringM(text);
  return element.GetLengthM() < 1 ? GetBoundM() : slots_.add(std::move(element));
}

void KwStringArr::SetValueM(int index, int count, const char* bytes) {
  if (!slots_.holds(index)) {
    return;
  }
  const bool isIndexed = index_ != nullptr && index < index_->covered();
  if (isIndexed) {
    index_->forget(index, textOf(slots_[index]));
  }
  slots_[index].SetValueM(count, bytes);
  if (isIndexed) {
    try {
      index_->learn(index, textOf(slots_[index]));
    } catch (const std::bad_alloc&) {
      index_.reset();
    }
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
  return index < 0 || index >= slots_.length() ? 0 : slots_[index].GetLengthM();
}

int KwStringArr::FindStrM(const char* text) const {
  if (text == nullptr) {
    text = "";
  }
  const int bound = slots_.bound();
  try {
    if (index_ == nullptr && bound > kSmallLength) {
      index_.reset(new zel::TextIndex());
    }
    while (index_ != nullptr && index_->covered() < bound) {
      index_->cover(textOf(slots_[index_->covered()]));
    }
  } catch (const std::bad_alloc&) {
    index_.reset();
  }
  if (index_ != nullptr) {
    return index_->lowestMatch(text, [this](int slot) { return textOf(slots_[slot]); });
  }
  return slots_.firstWhere(
      [text](const KwStringCL& element) { return element.CompareStrM(0, text) == 0; });
}

int KwStringArr::StrCmpM(int index, int count, const char* text) const {
  return slots_.holds(index) && slots_[index].CompareStrM(count, text) == 0 ? 1 : 0;
}

int KwStringArr::DelItemM(int index) {
  slots_.remove(index);
  if (index_ != nullptr && index_->covered() > slots_.bound()) {
    index_->uncoverLast(textOf(slots_[slots_.bound()]));
  }
  return 1;
}

int KwStringArr::DelAllM() {
  slots_.clear();
  index_.reset();
  return 1;
}
