#include "zel/containers/int2d_arr.h"

#include "zel/containers/detail/index_lists.h"
#include "zel/containers/detail/rows.h"
#include "zel/containers/detail/slot_store_impl.h"

template class zel::SlotStore<zel::Int2, zel::IntPolicy>;

#define ZEL_ARR Int2DArr
#define ZEL_SLOT zel::Int2
#define ZEL_IN const int*
#define ZEL_OUT int*
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_KEEPING_CLEAR
#include "zel/containers/detail/family.inl"

int Int2DArr::AddInIdxLstM(int position, int key, int value) {
  zel::addInIndexList(slots_, position, key, value);
  return 1;
}

int Int2DArr::DelItemInLstM(int position) {
  zel::removeFromIndexList(slots_, position);
  return 1;
}

int Int2DArr::FindIdxInLstM(int key, int* position, int* value) const {
  *position = zel::kNoIndex;
  *value = zel::kNoIndex;
  if (slots_.bound() < 1) {
    return 0;
  }
  const zel::IndexRange range = zel::halve<1>(slots_, key);
  // The key belongs next to the lower end unless it reaches the upper one.
  const bool takeUpper = slots_[range.low][1] < key && slots_[range.high][1] <= key;
  *position = takeUpper ? range.high : range.low;
  *value = slots_[*position][0];
  return slots_[*position][1] == key ? 1 : 0;
}

int Int2DArr::FindItemByValueM(int which, int target, int* other) const {
  if (which != 0 && which != 1) {
    return -1;
  }
  const auto component = static_cast<std::size_t>(which);
  const int found = slots_.firstWhere(
      [component, target](const zel::Int2& pair) { return pair[component] == target; });
  if (found >= 0) {
    *other = slots_[found][1 - component];
  }
  return found;
}
