#include "zel/mesh/detail/node_grid.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "zel/core/constants.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/mesh/detail/lanes.h"

namespace zel {

namespace {

// The reach on both sides of a point must never span three cells.
constexpr double kSmallestCell = 2.5e-4;
// Entries per bucket at which the table grows.
constexpr double kFill = 2.4;

constexpr std::size_t kSampleSize = 64;
constexpr NodeGrid::Point kNowhere{std::numeric_limits<float>::quiet_NaN(),
                                   std::numeric_limits<float>::quiet_NaN(),
                                   std::numeric_limits<float>::quiet_NaN()};
constexpr int kNone = std::numeric_limits<int>::max();

void prefetch(const void* address) { __builtin_prefetch(address); }

}  // namespace

NodeGrid::Bucket::Bucket() {
  for (int lane = 0; lane < kLanes; ++lane) {
    marks[lane] = 0;
    put(lane, kEmpty, kNowhere);
  }
}

void NodeGrid::Bucket::put(int lane, std::uint32_t slot, const Point& p) {
  x[lane] = p[0];
  y[lane] = p[1];
  z[lane] = p[2];
  setSlot(lane, slot);
}

// In a full bucket a mark has to stay: entries that moved on must still be found.
void NodeGrid::Bucket::take(int lane) {
  if (isFull()) {
    put(lane, kErased, kNowhere);
    return;
  }
  int last = lane;
  while (last + 1 < kLanes && slotOf(last + 1) != kEmpty) {
    ++last;
  }
  put(lane, slotOf(last), pointOf(last));
  put(last, kEmpty, kNowhere);
}

// --- cells -------------------------------------------------------------------------------------

std::uint64_t NodeGrid::cellOf(double x) const {
  return std::bit_cast<std::uint64_t>(x * perCell_ + kToWhole);
}

std::size_t NodeGrid::homeOf(const Point& p) const {
  return homeOf(cellOf(p[0]), cellOf(p[1]), cellOf(p[2]));
}

std::size_t NodeGrid::nextOf(std::size_t bucket) const {
  return (bucket + 1) & (buckets_.size() - 1);
}

void NodeGrid::setCell(double cell) {
  cell_ = cell;
  perCell_ = 1.0 / cell;
  inner_ = 0.5 - kReach * perCell_ - 1e-6;
}

// About one point per cell, for points spread over a surface.
double NodeGrid::idealCell(std::vector<Point> sample, std::size_t count) const {
  if (sample.empty() || count == 0) {
    return 64 * kSmallestCell;
  }
  // A tenth at either end is left out: strays must not set the scale.
  std::array<double, 3> extent;
  const std::size_t low = sample.size() / 10;
  const std::size_t high = sample.size() - 1 - low;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    std::sort(sample.begin(), sample.end(),
              [=](const Point& a, const Point& b) { return a[axis] < b[axis]; });
    extent[axis] = double{sample[high][axis]} - sample[low][axis];
  }
  std::sort(extent.begin(), extent.end());
  const double n = static_cast<double>(count);
  const double spacing = std::max(std::sqrt(extent[2] * extent[1] / n), extent[2] / n);
  return std::max(2 * spacing, kSmallestCell);
}

std::vector<NodeGrid::Point> NodeGrid::sampleEntries() const {
  std::vector<Point> sample;
  const std::size_t stride = std::max<std::size_t>(buckets_.size() / kSampleSize, 1);
  for (std::size_t i = 0; i < buckets_.size(); i += stride) {
    const Bucket& bucket = buckets_[i];
    if (bucket.isTaken(0)) {
      sample.push_back(bucket.pointOf(0));
    }
  }
  return sample;
}

// --- the table ---------------------------------------------------------------------------------

void NodeGrid::clear() {
  buckets_ = {};
  twins_.clear();
  used_ = entries_ = overflowed_ = 0;
  isHopeless_ = false;
}

void NodeGrid::start(int count, std::vector<Point> sample) {
  clear();
  const auto wanted = static_cast<std::size_t>(count / kFill) + 16;
  refill(std::bit_ceil(wanted), idealCell(std::move(sample), static_cast<std::size_t>(count)));
}

// Cells that cannot shrink are given more patience.
bool NodeGrid::isCrowded() const {
  return overflowed_ > (cell_ <= kSmallestCell ? 8U : 1U) * entries_ + 256;
}

// Moves all entries to a table of the given size; into smaller cells where they crowd.
void NodeGrid::refill(std::size_t bucketCount, double cell) {
  std::vector<Bucket> old;
  old.swap(buckets_);
  for (double shrink = 4;; shrink *= 2) {
    buckets_.assign(bucketCount, Bucket());
    shift_ = 64 - std::countr_zero(bucketCount);
    setCell(cell);
    used_ = entries_ = overflowed_ = 0;
    for (const Bucket& bucket : old) {
      for (int lane = 0; lane < kLanes && !isCrowded(); ++lane) {
        if (bucket.isTaken(lane)) {
          const Point p = bucket.pointOf(lane);
          place(homeOf(p), bucket.slotOf(lane), p);
        }
      }
    }
    if (!isCrowded()) {
      return;
    }
    if (cell <= kSmallestCell) {
      clear();
      isHopeless_ = true;
      return;
    }
    cell = std::max(cell / shrink, kSmallestCell);
  }
}

void NodeGrid::makeRoom() {
  const double limit = kFill * static_cast<double>(buckets_.size());
  if (isCrowded()) {
    refill(buckets_.size(), cell_ <= kSmallestCell ? cell_ : std::max(cell_ / 4, kSmallestCell));
  } else if (static_cast<double>(used_) >= limit) {
    const bool isGrowing = static_cast<double>(entries_) > limit / 2;
    const double ideal = idealCell(sampleEntries(), entries_ * 2);
    const bool isFit = cell_ > ideal / 4 && cell_ < ideal * 3;
    refill(buckets_.size() * (isGrowing ? 2 : 1), isFit ? cell_ : ideal);
  }
}

NodeGrid::Place NodeGrid::find(std::size_t home, const float* p) {
  for (std::size_t i = home;; i = nextOf(i)) {
    Bucket& bucket = buckets_[i];
    if (const unsigned same = lanesAt(bucket.x, bucket.y, bucket.z, p); same != 0) {
      return {&bucket, std::countr_zero(same)};
    }
    if (!bucket.hasOverflowed()) {
      return {nullptr, 0};
    }
  }
}

// Puts an entry for a new position into the first free lane.
void NodeGrid::place(std::size_t home, std::uint32_t slot, const Point& p) {
  for (std::size_t i = home;; i = nextOf(i)) {
    Bucket& bucket = buckets_[i];
    for (int lane = 0; lane < kLanes; ++lane) {
      if (!bucket.isTaken(lane)) {
        used_ += bucket.slotOf(lane) == kEmpty ? 1U : 0U;
        ++entries_;
        bucket.put(lane, slot, p);
        if (bucket.hasOverflowed()) {
          bucket.setRivalled();
        }
        return;
      }
    }
    bucket.setOverflowed();
    if (lanesNear(bucket.x, bucket.y, bucket.z, p.data(), 0, kRivalSquare).maybe != 0) {
      bucket.setRivalled();
    }
    ++overflowed_;
  }
}

void NodeGrid::insert(int slot, const float* p) {
  if (isHopeless_ || !(std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]))) {
    return;
  }
  const Point point{p[0], p[1], p[2]};
  const std::size_t home = homeOf(point);
  if (const Place twin = find(home, p); twin.bucket != nullptr) {
    auto head = static_cast<int>(twin.bucket->slotOf(twin.lane));
    twins_.addInOrder(head, slot);
    twin.bucket->setSlot(twin.lane, static_cast<std::uint32_t>(head));
    return;
  }
  place(home, static_cast<std::uint32_t>(slot), point);
  makeRoom();
}

void NodeGrid::erase(int slot, const float* p) {
  if (isHopeless_) {
    return;
  }
  const Place place = find(homeOf(Point{p[0], p[1], p[2]}), p);
  if (place.bucket == nullptr) {
    return;
  }
  auto head = static_cast<int>(place.bucket->slotOf(place.lane));
  if (twins_.remove(head, slot)) {
    place.bucket->setSlot(place.lane, static_cast<std::uint32_t>(head));
    return;
  }
  const bool leavesMark = place.bucket->isFull();
  place.bucket->take(place.lane);
  --entries_;
  used_ -= leavesMark ? 0U : 1U;
}

// --- searching ---------------------------------------------------------------------------------

int NodeGrid::lowestInChain(std::size_t home, const float* p) const {
  int lowest = kNone;
  for (std::size_t i = home;; i = nextOf(i)) {
    const Bucket& bucket = buckets_[i];
    for (unsigned near = lanesNear(bucket.x, bucket.y, bucket.z, p, kSureSquare, kNearSquare).maybe;
         near != 0; near &= near - 1) {
      const int lane = std::countr_zero(near);
      if (isEqualPoint(bucket.pointOf(lane).data(), p)) {
        lowest = std::min(lowest, static_cast<int>(bucket.slotOf(lane)));
      }
    }
    if (!bucket.hasOverflowed()) {
      return lowest;
    }
  }
}

int NodeGrid::lowestInCells(const float* p) const {
  std::uint64_t ends[3][2];
  for (int axis = 0; axis < 3; ++axis) {
    ends[axis][0] = cellOf(p[axis] - kReach);
    ends[axis][1] = cellOf(p[axis] + kReach);
  }
  std::size_t homes[8];
  int count = 0;
  for (int corner = 0; corner < 8; ++corner) {
    std::uint64_t cell[3];
    bool isNew = true;
    for (int axis = 0; axis < 3; ++axis) {
      const bool isHigh = (corner >> axis & 1) != 0;
      isNew = isNew && !(isHigh && ends[axis][1] == ends[axis][0]);
      cell[axis] = ends[axis][isHigh ? 1 : 0];
    }
    if (isNew) {
      homes[count] = homeOf(cell[0], cell[1], cell[2]);
      prefetch(&buckets_[homes[count++]]);
    }
  }
  int lowest = kNone;
  for (int k = 0; k < count; ++k) {
    lowest = std::min(lowest, lowestInChain(homes[k], p));
  }
  return lowest == kNone ? kNoIndex : lowest;
}

}  // namespace zel
