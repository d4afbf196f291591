#include "zel/containers/detail/point_index.h"

namespace zel {

const PointGrid* PointIndex::grid(const Float3* points, int bound) const {
  return grid_.ready(bound, [=, this](PointGrid& grid) {
    grid.build(bound, [=, this](int slot) {
      const float* p = points[slot].data();
      return isHole(p) || exposed.contains(slot) ? nullptr : p;
    });
  });
}

bool PointIndex::validate(const Float3* points, int bound) const {
  const PointGrid* grid = grid_.known();
  std::size_t inGrid = 0;
  for (int slot = 0; grid != nullptr && slot < bound; ++slot) {
    const float* p = points[slot].data();
    const bool isIn = !isHole(p) && !exposed.contains(slot) && std::isfinite(p[0]) &&
                      std::isfinite(p[1]) && std::isfinite(p[2]);
    if (isIn && !grid->holds(slot, p)) {
      return false;
    }
    inGrid += isIn ? 1U : 0U;
  }
  return grid == nullptr || (grid->size() == inGrid && grid->validate());
}

int firstNear(const PointSlots& points, const float* point) {
  const PointIndex* index = points.index();
  const auto isNear = [&](int slot) { return NearByAxis::isNear(points[slot].data(), point); };
  if (const PointGrid* grid = index == nullptr || PointIndex::isHole(point)
                                  ? nullptr
                                  : index->grid(points.data(), points.bound())) {
    const int found = grid->lowestNear(point, NearByAxis());
    const int loose = index->exposed.lowest(found < 0 ? points.bound() : found, isNear);
    return loose < 0 ? found : loose;
  }
  const int found =
      points.firstWhere([=](const Float3& slot) { return NearByAxis::isNear(slot.data(), point); });
  if (index != nullptr) {
    index->noteWalk(found < 0 ? points.bound() : found + 1);
  }
  return found;
}

}  // namespace zel
