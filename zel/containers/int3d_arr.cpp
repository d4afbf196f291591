#include "zel/containers/int3d_arr.h"

#include "zel/containers/detail/index_lists.h"
#include "zel/containers/detail/rows.h"
#include "zel/containers/detail/slot_store_impl.h"

template class zel::SlotStore<zel::Int3, zel::IntPolicy>;

#define ZEL_ARR Int3DArr
#define ZEL_SLOT zel::Int3
#define ZEL_IN const int*
#define ZEL_OUT int*
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_LAST_INDEX
#include "zel/containers/detail/family.inl"

int Int3DArr::FindIdxInLstM(int key) const { return zel::findFirstComponent(slots_, key); }

void Int3DArr::QuickSortM() { zel::sortByFirstComponent(slots_); }

int Int3DArr::AddInIdxLstM(int position, int key, int value) {
  zel::addInIndexList(slots_, position, key, value);
  return 1;
}

int Int3DArr::DelItemInLstM(int position) {
  zel::removeFromIndexList(slots_, position);
  return 1;
}
