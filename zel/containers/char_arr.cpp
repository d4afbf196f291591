#include "zel/containers/char_arr.h"

#include <charconv>
#include <cstring>
#include <functional>
#include <limits>
#include <optional>

#include "zel/containers/detail/rows.h"
#include "zel/containers/detail/slot_store_impl.h"
#include "zel/containers/detail/whole_file.h"
#include "zel/core/detail/refused_memory.h"

template class zel::SlotStore<char, zel::CharPolicy>;

#define ZEL_ARR CharArr
#define ZEL_SLOT char
#define ZEL_IN char
#define ZEL_OUT char*
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_LAST_INDEX
#define ZEL_HAS_KEEPING_CLEAR
#include "zel/containers/detail/family.inl"

namespace {

using Text = zel::SlotStore<char, zel::CharPolicy>;

constexpr char kCarriageReturn = 13;
constexpr char kLineFeed = 10;
constexpr char kBlank = 32;
constexpr char kProgramLetter = 'O';

bool isLineEnd(char c) { return c == kCarriageReturn || c == kLineFeed; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Length of a text with its terminating zero; 0 for null and for what no buffer can hold.
int sizeWithZero(const char* text) {
  const std::size_t size = text == nullptr ? 0 : std::strlen(text) + 1;
  return size > std::numeric_limits<int>::max() ? 0 : static_cast<int>(size);
}

bool liesIn(const Text& slots, const char* bytes) {
  const std::less<const char*> before;
  return !before(bytes, slots.data()) && before(bytes, slots.data() + slots.length());
}

/// Bytes handed in by a caller: copied when they lie in the buffer that is about to change.
class StableBytes {
 public:
  StableBytes(const Text& slots, const char* bytes, int count) : bytes_(bytes) {
    if (liesIn(slots, bytes)) {
      copy_.reserve(count);
      // The heap may have refused; then so will the buffer's own growth, as a rule.
      std::copy_n(bytes, std::min(count, copy_.length()), copy_.data());
      bytes_ = copy_.length() < count ? nullptr : copy_.data();
    }
  }
  /// Null when there was no memory for the copy.
  [[nodiscard]] const char* get() const { return bytes_; }

 private:
  Text copy_;
  const char* bytes_;
};

}  // namespace

char* CharArr::GetContentPtrM() { return slots_.data(); }

const char* CharArr::GetContentConstPtrM() const { return slots_.data(); }

int CharArr::FindItemM(char value, int* index) const {
  return zel::handOutSearch(slots_.firstWhere([value](char slot) { return slot == value; }), index);
}

int CharArr::GetItemPosiM(char value) const { return zel::occurrencesMinusOne(slots_, value); }

int CharArr::GetCurStrM(char* out) const {
  const int count = std::max(slots_.bound(), 0);
  std::copy_n(slots_.data(), count, out);
  out[count] = 0;
  return 1;
}

int CharArr::GetOneLineM(int start, char* out, int* count, int keepEnd) const {
  *count = 0;
  if (!slots_.holds(start)) {
    return 0;
  }
  const char* const begin = slots_.data() + start;
  const char* const contentEnd = slots_.data() + slots_.bound();
  const char* end = std::find_if(begin, contentEnd, isLineEnd);
  if (keepEnd != 0 && end != contentEnd) {
    ++end;
    // 10 10 is kept as one line end, like 13 10.
    end += end != contentEnd && *end == kLineFeed ? 1 : 0;
  }
  std::copy(begin, end, out);
  *count = static_cast<int>(end - begin);
  out[*count] = 0;
  return 1;
}

int CharArr::PurgeDeletedItemM() {
  slots_.purge();
  return 1;
}

int CharArr::DelContentM() {
  setContentSize(0);
  return 1;
}

// --- whole content -----------------------------------------------------------------------------

void CharArr::setContentSize(int size) {
  slots_.setBound(size);
  slots_.setAvailable(size);
}

int CharArr::SetNewStrM(const char* text) {
  const char empty = 0;
  const int size = sizeWithZero(text);
  SetValueM(std::max(size, 1), size == 0 ? &empty : text);
  return 1;
}

void CharArr::SetValueM(int count, const char* bytes) {
  count = std::max(count, 0);
  const StableBytes source(slots_, bytes, count);
  if ((source.get() == nullptr && count > 0) || !slots_.clearAndReserve(count)) {
    return;
  }
  std::copy_n(source.get(), count, slots_.data());
  setContentSize(count);
}

int CharArr::CopyM(const CharArr& other) {
  if (this == &other || !slots_.reserve(other.slots_.length())) {
    return 1;
  }
  slots_.clearKeepingStore();
  std::copy_n(other.slots_.data(), other.slots_.length(), slots_.data());
  slots_.setBound(other.slots_.bound());
  slots_.setAvailable(other.slots_.available());
  return 1;
}

int CharArr::ImportArrM(const CharArr& other) { return slots_.import(other.slots_); }

int CharArr::TrimL() {
  char* const content = slots_.data();
  char* const end = content + std::max(slots_.bound(), 0);
  char* const kept = std::find_if(content, end, [](char c) { return c != kBlank; });
  setContentSize(static_cast<int>(std::copy(kept, end, content) - content));
  return 1;
}

int CharArr::TrimR() {
  int last = slots_.bound() - 1;
  while (last > 0 && slots_[last] == kBlank) {
    --last;
  }
  setContentSize(last + 1);
  return 1;
}

// --- editing at a position ---------------------------------------------------------------------

int CharArr::InsertStringM(int position, const char* bytes, int count) {
  if (count == 0) {
    return 0;
  }
  const int oldBound = std::max(slots_.bound(), 0);
  if (count < 0 || position < 0 || position > oldBound) {
    return 1;
  }
  const StableBytes source(slots_, bytes, count);
  if (source.get() == nullptr || (oldBound > slots_.length() - count && !slots_.addSize(count))) {
    return 1;
  }
  char* const content = slots_.data();
  const bool endsWithZero = oldBound >= 1 && content[oldBound - 1] == 0;
  const int place = position == oldBound && endsWithZero ? position - 1 : position;
  std::copy_backward(content + place, content + oldBound, content + oldBound + count);
  std::copy_n(source.get(), count, content + place);
  slots_.setBound(oldBound + count);
  slots_.setAvailable(slots_.available() + count);
  return 1;
}

int CharArr::DelStringM(int position, int count) {
  const int bound = slots_.bound();
  if (position < 0 || count < 0 || position > bound - count) {
    return 1;
  }
  char* const first = slots_.data() + position;
  const auto live = std::count_if(first, first + count, zel::CharPolicy::isDeletable);
  std::copy(first + count, slots_.data() + bound, first);
  slots_.setBound(bound - count);
  slots_.setAvailable(slots_.available() - static_cast<int>(live));
  return 1;
}

int CharArr::delCarrageReturnM(int position) {
  int count = 0;
  if (slots_.holds(position) && slots_[position] == kCarriageReturn) {
    ++count;
  }
  if (slots_.holds(position + count) && slots_[position + count] == kLineFeed) {
    ++count;
  }
  return DelStringM(position, count);
}

void CharArr::AddProgNoM(int number) {
  const bool hadHeader = slots_.bound() > 0 && slots_[0] == kProgramLetter;
  if (hadHeader) {
    for (int i = 1; i < slots_.bound() && isDigit(slots_[i]); ++i) {
      DelItemM(i);
    }
  } else {
    InsertItemM(kProgramLetter, 0);
  }
  char digits[16];
  char* end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  if (!hadHeader) {
    *end++ = kCarriageReturn;
    *end++ = kLineFeed;
  }
  for (const char* digit = digits; digit != end; ++digit) {
    InsertItemM(*digit, 1 + static_cast<int>(digit - digits));
  }
  PurgeDeletedItemM();
}

// --- appending ---------------------------------------------------------------------------------

int CharArr::AddContentvcM(const char* bytes, int count) {
  constexpr int kSpare = 10;
  const int oldBound = std::max(slots_.bound(), 0);
  if (count < 1) {
    return 1;
  }
  const StableBytes source(slots_, bytes, count);
  if (source.get() == nullptr ||
      (oldBound > slots_.length() - count && !slots_.addSize(std::int64_t{count} + kSpare))) {
    return 1;
  }
  std::copy_n(source.get(), count, slots_.data() + oldBound);
  slots_.setBound(oldBound + count);
  slots_.setAvailable(slots_.available() + count);
  return 1;
}

int CharArr::AddContentM(char value) { return AddContentvcM(&value, 1); }

int CharArr::AddContentM(const char* text) {
  return AddContentvcM(text, std::max(sizeWithZero(text) - 1, 0));
}

template <class Value>
int CharArr::appendBytesOf(const Value& value) {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  return AddContentvcM(bytes, sizeof value);
}

int CharArr::AddContentM(int value) { return appendBytesOf(value); }

int CharArr::AddContentM(float value) { return appendBytesOf(value); }

int CharArr::AddContentUM(unsigned int value) { return appendBytesOf(value); }

int CharArr::AddContentM(POINT value) {
  const std::int32_t coordinates[] = {value.x, value.y};
  return appendBytesOf(coordinates);
}

int CharArr::AddContent3vfM(const float* values) {
  return AddContentvcM(reinterpret_cast<const char*>(values), 3 * sizeof(float));
}

int CharArr::addNewPosM(const char* text) {
  for (int left = sizeWithZero(text) - 1; left > 0; --left) {
    AddItemM(*text++);
  }
  AddItemM(kCarriageReturn);
  AddItemM(kLineFeed);
  return 1;
}

// --- files -------------------------------------------------------------------------------------

int CharArr::ReadFileM(const char* path, int offset) {
  std::optional<zel::WholeFileReader> file;
  const bool isOpen = zel::answerOr(false, [&] { return file.emplace(path).isOpen(); });
  if (offset < 0 || !isOpen) {
    return 0;
  }
  const std::int64_t total = file->size() + offset;
  if (total > std::numeric_limits<int>::max() || !slots_.reserve(static_cast<int>(total))) {
    return 0;
  }
  // Characters that would be written over are kept, should reading fail.
  Text kept;
  const int lost = std::min(std::max(slots_.bound(), 0), static_cast<int>(total)) - offset;
  if (!kept.reserve(lost)) {
    return 0;
  }
  char* const begin = slots_.data() + offset;
  std::copy_n(begin, std::max(lost, 0), kept.data());
  if (!file->readInto(begin)) {
    std::copy_n(kept.data(), std::max(lost, 0), begin);
    return 0;
  }
  setContentSize(static_cast<int>(total));
  return 1;
}

void CharArr::SaveFileM(const char* path) const {
  const auto size = static_cast<std::size_t>(std::max(slots_.bound(), 0));
  const bool isSaved =
      zel::answerOr(false, [&] { return zel::saveWholeFile(path, slots_.data(), size); });
  if (!isSaved) {
    throw int{zel::kWriteFailure};
  }
}
