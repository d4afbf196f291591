#include "zel/containers/point2d_arr.h"

#include "zel/containers/detail/rows.h"
#include "zel/containers/detail/slot_store_impl.h"

template class zel::SlotStore<zel::Float2, zel::FloatTuplePolicy>;

#define ZEL_ARR Point2DArr
#define ZEL_SLOT zel::Float2
#define ZEL_IN const float*
#define ZEL_OUT float*
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_KEEPING_CLEAR
#include "zel/containers/detail/family.inl"

int Point2DArr::CheckCcwM() const {
  const int bound = slots_.bound();
  if (bound - 1 < 2) {
    return 1;
  }
  float sum = 0.0F;
  for (int i = 1; i < bound - 1; ++i) {
    const zel::Float2& previous = slots_[i - 1];
    const zel::Float2& current = slots_[i];
    sum = static_cast<float>(static_cast<double>(sum) +
                             static_cast<double>(previous[0]) * current[1] -
                             static_cast<double>(current[0]) * previous[1]);
  }
  return sum <= 0.0F ? 1 : 0;
}

void Point2DArr::GetScopeM(float* xRange, float* yRange) const {
  float* const ranges[] = {xRange, yRange};
  for (float* range : ranges) {
    range[0] = zel::kInfinity;
    range[1] = -zel::kInfinity;
  }
  for (int i = 0; i < slots_.bound(); ++i) {
    const zel::Float2& point = slots_[i];
    if (!(point[0] > zel::kLiveHalfMark && point[1] > zel::kLiveHalfMark)) {
      continue;
    }
    for (std::size_t axis = 0; axis < 2; ++axis) {
      ranges[axis][0] = point[axis] < ranges[axis][0] ? point[axis] : ranges[axis][0];
      ranges[axis][1] = point[axis] > ranges[axis][1] ? point[axis] : ranges[axis][1];
    }
  }
}
