#include "zel/containers/int_arr.h"

#include "zel/containers/detail/rows.h"
#include "zel/containers/detail/slot_store_impl.h"

template class zel::SlotStore<int, zel::IntPolicy>;

#define ZEL_ARR IntArr
#define ZEL_SLOT int
#define ZEL_IN int
#define ZEL_OUT int*
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_LAST_INDEX
#define ZEL_HAS_KEEPING_CLEAR
#include "zel/containers/detail/family.inl"

int IntArr::SetAllSameValueM(int value, bool all) {
  int* store = slots_.data();
  if (all) {
    std::fill_n(store, slots_.length(), value);
    slots_.setBound(slots_.length());
    return 1;
  }
  for (int i = 0; i < slots_.bound(); ++i) {
    if (store[i] != zel::kNoIndex) {
      store[i] = value;
    }
  }
  return 1;
}

void IntArr::ChangeNodeIdxM(int oldIndex, int newIndex) {
  int position = 0;
  if (FindItemM(oldIndex, &position) == 1) {
    slots_[position] = newIndex;
  }
}

int& IntArr::ElementAtM(int index) {
  thread_local int spare;
  if (index < 0 || index >= slots_.length()) {
    spare = zel::kNoIndex;
    return spare;
  }
  return slots_[index];
}

const int& IntArr::ElementAtM(int index) const {
  static const int mark = zel::kNoIndex;
  return index < 0 || index >= slots_.length() ? mark : slots_[index];
}

int& IntArr::operator[](int index) { return ElementAtM(index); }

const int& IntArr::operator[](int index) const { return ElementAtM(index); }

int IntArr::FindItemM(int value, int* index) const {
  return zel::handOutSearch(slots_.firstWhere([value](int slot) { return slot == value; }), index);
}

int IntArr::GetItemPosiM(int value) const { return zel::occurrencesMinusOne(slots_, value); }

int IntArr::PurgeDeletedItemM() {
  slots_.purge();
  return 1;
}

int IntArr::MergeM(const IntArr& other) { return slots_.append(other.slots_); }

int IntArr::ImportArrM(const IntArr& other) { return slots_.import(other.slots_); }

int IntArr::AddItemByCompareM(int value) {
  if (slots_.bound() < 1) {
    InsertItemM(value, 0);
    return 1;
  }
  int low = 0;
  int high = slots_.bound() - 1;
  if (value > slots_[high]) {
    return InsertItemM(value, high + 1);
  }
  if (value == slots_[high]) {
    return high;
  }
  if (value <= slots_[low]) {
    return value == slots_[low] ? low : InsertItemM(value, low);
  }
  while (high - low > 1) {
    const int middle = low + (high - low) / 2;
    if (value == slots_[middle]) {
      return middle;
    }
    (value < slots_[middle] ? high : low) = middle;
  }
  return InsertItemM(value, high);
}

int IntArr::ChangeArrangeM(int start, int direction) {
  const int bound = slots_.bound();
  if ((start == 0 && direction == 1) || start < 0 || start >= bound) {
    return 1;
  }
  IntArr ring(bound);
  if (ring.GetLengthM() < bound) {
    return 1;
  }
  const int* store = slots_.data();
  if (direction == 1) {
    for (int i = start; i < bound - 1; ++i) {
      ring.AddItemM(store[i]);
    }
    for (int i = 0; i <= start; ++i) {
      ring.AddItemM(store[i]);
    }
  } else {
    for (int i = start; i > 0; --i) {
      ring.AddItemM(store[i]);
    }
    for (int i = bound - 1; i >= start; --i) {
      ring.AddItemM(store[i]);
    }
  }
  *this = std::move(ring);
  return 1;
}
