#include "zel/containers/detail/point_index.h"

#include <algorithm>

namespace zel {

int* PointIndex::findLoose(int slot) {
  int* const end = loose_.data() + looseCount_;
  int* const found = std::find(loose_.data(), end, slot);
  return found == end ? nullptr : found;
}

bool PointIndex::loosen(const Float3* points, int slot, const HandedOutSlots& handedOut,
                        int length) {
  if (slot >= covered_ || findLoose(slot) != nullptr) {
    return true;
  }
  if (looseCount_ == kMostLoose && !settle(points, handedOut, length)) {
    return false;
  }
  grid_.erase(slot, points[slot].data());
  loose_[static_cast<std::size_t>(looseCount_++)] = slot;
  return true;
}

void PointIndex::cutTo(const Float3* points, int bound) {
  while (covered_ > std::max(bound, 0)) {
    const int slot = --covered_;
    if (int* loose = findLoose(slot)) {
      *loose = loose_[static_cast<std::size_t>(--looseCount_)];
    } else {
      grid_.erase(slot, points[slot].data());
    }
  }
}

// Puts the loose slots into the grid, except those that somebody holds.
bool PointIndex::settle(const Float3* points, const HandedOutSlots& handedOut, int length) {
  int kept = 0;
  for (int i = 0; i < looseCount_; ++i) {
    const int slot = loose_[static_cast<std::size_t>(i)];
    if (handedOut.holds(slot, length)) {
      loose_[static_cast<std::size_t>(kept++)] = slot;
    } else if (!grid_.insert(slot, points[slot].data())) {
      return false;
    }
  }
  looseCount_ = kept;
  return true;
}

bool PointIndex::follow(const Float3* points, int bound, const HandedOutSlots& handedOut,
                        int length) {
  if (looseCount_ > 0 && !settle(points, handedOut, length)) {
    return false;
  }
  for (; covered_ < bound; ++covered_) {
    if (handedOut.holds(covered_, length)) {
      loose_[static_cast<std::size_t>(looseCount_++)] = covered_;
    } else if (!grid_.insert(covered_, points[covered_].data())) {
      return false;
    }
  }
  return true;
}

int PointIndex::lowestNear(const Float3* points, const float* point) const {
  int best = grid_.lowestNear(
      point, [point](float x, float y, float z) { return isNearPoint(point, x, y, z); });
  for (int i = 0; i < looseCount_; ++i) {
    const int slot = loose_[static_cast<std::size_t>(i)];
    const Float3& candidate = points[slot];
    if ((best < 0 || slot < best) && isNearPoint(point, candidate[0], candidate[1], candidate[2])) {
      best = slot;
    }
  }
  return best;
}

}  // namespace zel
