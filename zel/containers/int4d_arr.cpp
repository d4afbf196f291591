#include "zel/containers/int4d_arr.h"

#include "zel/containers/detail/index_lists.h"
#include "zel/containers/detail/rows.h"
#include "zel/containers/detail/slot_store_impl.h"

template class zel::SlotStore<zel::Int4, zel::IntPolicy>;

#define ZEL_ARR Int4DArr
#define ZEL_SLOT zel::Int4
#define ZEL_IN const int*
#define ZEL_OUT int*
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_LAST_INDEX
#include "zel/containers/detail/family.inl"

int Int4DArr::ModifyItemM(int value, int index, int component) {
  const bool isInside = index >= 0 && index < slots_.length() && component >= 0 && component < 4;
  if (isInside) {
    slots_[index][static_cast<std::size_t>(component)] = value;
  }
  return 1;
}

int Int4DArr::ChangeFirstValueM(int value, int index) {
  if (index < 0) {
    return 1;
  }
  const std::int64_t missing = std::int64_t{index} - slots_.length() + 1;
  const std::int64_t increment = slots_.increment();
  if (missing > 0 && !slots_.addSize(increment < missing ? increment + missing : increment)) {
    return 1;
  }
  if (slots_[index][0] == zel::kNoIndex) {
    slots_.setAvailable(slots_.available() + 1);
  }
  slots_.setBound(std::max(slots_.bound(), index + 1));
  slots_[index][0] = value;
  return 1;
}

int Int4DArr::FindIdxInLstM(int key) const { return zel::findFirstComponent(slots_, key); }

void Int4DArr::QuickSortM() { zel::sortByFirstComponent(slots_); }

int Int4DArr::AddInIdxLstM(int position, int key, int value) {
  zel::addInIndexList(slots_, position, key, value);
  return 1;
}

int Int4DArr::DelItemInLstM(int position) {
  zel::removeFromIndexList(slots_, position);
  return 1;
}
