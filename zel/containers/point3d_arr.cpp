#include "zel/containers/point3d_arr.h"

#include <algorithm>

#include "zel/containers/detail/point_index.h"
#include "zel/containers/detail/rows.h"

template class zel::SlotStore<zel::Float3, zel::PointPolicy>;
template class zel::IndexedSlots<zel::Float3, zel::PointPolicy, zel::PointIndex>;

#define ZEL_ARR Point3DArr
#define ZEL_SLOT zel::Float3
#define ZEL_IN const float*
#define ZEL_OUT float*
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_KEEPING_CLEAR
#include "zel/containers/detail/family.inl"

namespace {

bool isPointAvailable(const zel::Float3& point) { return point[0] > zel::kLiveNearMark; }

}  // namespace

int Point3DArr::IntialSizeM(int length) { return InitialSizeM(length); }

int Point3DArr::AddPointM(const float* point) {
  const int found = zel::firstNear(slots_, point);
  return found < 0 ? AddItemM(point) : found;
}

int Point3DArr::AppendPntsM(const Point3DArr& other) {
  const int oldBound = slots_.count();
  const int added = other.slots_.count();
  const std::int64_t missing = std::int64_t{oldBound} + added - slots_.length();
  if (missing > 0 && !slots_.addSize(missing)) {
    return 1;
  }
  zel::Float3* const fresh = slots_.changeUnindexed() + oldBound;
  for (int i = 0; i < added; ++i) {
    const zel::Float3 point = other.slots_[i];
    if (zel::PointPolicy::isLive(point[0])) {
      fresh[i] = point;
    }
  }
  if (added > 0) {
    slots_.setBound(oldBound + added);
  }
  slots_.setAvailable(slots_.bound());
  return 1;
}

void Point3DArr::SetItemValueM(int index, float x, float y, float z) {
  if (slots_.holds(index)) {
    slots_.change(index, [=](zel::Float3& point) { point = {x, y, z}; });
  }
}

void Point3DArr::SetItemZValueM(int index, float z) {
  if (slots_.holds(index)) {
    slots_.change(index, [=](zel::Float3& point) { point[2] = z; });
  }
}

float* Point3DArr::GetItemPM(int index) {
  return slots_.exists(index) ? slots_.handOut(index).data() : nullptr;
}

const float* Point3DArr::GetItemPM(int index) const {
  return slots_.exists(index) ? slots_[index].data() : nullptr;
}

int Point3DArr::IsPntAvailableM(int index) const {
  return slots_.exists(index) && isPointAvailable(slots_[index]) ? zel::kTagAvailable
                                                                 : zel::kTagNotAvailable;
}

int Point3DArr::GetVertexM(int count, const int* indices, float (*points)[3]) const {
  for (int i = 0; i < count; ++i) {
    GetItemM(points[i], indices[i]);
  }
  return 1;
}

int Point3DArr::GetPreviousM(float* item, int* index, int before) const {
  return zel::handOutFound(slots_, slots_.previousLive(before), item, index) ? 1 : -1;
}

int Point3DArr::GetLastM(float* item, int* index) const {
  return GetPreviousM(item, index, slots_.bound());
}

int Point3DArr::CancelLastItemM() {
  if (slots_.bound() > 0) {
    DelItemM(slots_.bound() - 1);
    slots_.setBound(slots_.bound() - 1);
  }
  return slots_.bound();
}
