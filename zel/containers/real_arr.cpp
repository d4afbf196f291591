#include "zel/containers/real_arr.h"

#include <cmath>

#include "zel/containers/detail/rows.h"
#include "zel/containers/detail/slot_store_impl.h"

template class zel::SlotStore<float, zel::RealPolicy>;

#define ZEL_ARR RealArr
#define ZEL_SLOT float
#define ZEL_IN float
#define ZEL_OUT float*
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_LAST_INDEX
#define ZEL_HAS_KEEPING_CLEAR
#include "zel/containers/detail/family.inl"

namespace {

double distance(float a, float b) {
  return std::fabs(static_cast<double>(a) - static_cast<double>(b));
}

}  // namespace

int RealArr::FindItemM(float value, int* index) const {
  const int found = slots_.firstWhere(
      [value](float slot) { return distance(value, slot) < static_cast<double>(zel::kTolerance); });
  return zel::handOutSearch(found, index);
}

float RealArr::FindNearItemM(float value, int* index) const {
  if (slots_.bound() < 1) {
    *index = zel::kNoIndex;
    return zel::kFloatMark;
  }
  int best = 0;
  for (int i = 1; i < slots_.bound(); ++i) {
    if (distance(value, slots_[i]) < distance(value, slots_[best])) {
      best = i;
    }
  }
  *index = best;
  return slots_[best];
}

int RealArr::GetItemPosiM(float value) const { return zel::occurrencesMinusOne(slots_, value); }

void RealArr::PurgeDeletedItemM() { slots_.purge(); }

int RealArr::ImportArrM(const RealArr& other) { return slots_.import(other.slots_); }
