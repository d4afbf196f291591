#include "zel/mesh/detail/node_grid.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace zel {

namespace {

// A little more than the distance at which points become equal, against rounding.
constexpr double kReach = 1.01e-4;
// The reach on both sides of a point must never span three cells.
constexpr double kSmallestCell = 2.5e-4;
// Adding it leaves a double's nearest whole number in its low bits; any double stays monotone.
constexpr double kToWhole = 6755399441055744.0;  // 1.5 x 2^52
// Entries per bucket at which the table grows.
constexpr double kFill = 2.4;
constexpr std::uint64_t kMix[4] = {0x9E3779B97F4A7C15U, 0xC2B2AE3D27D4EB4FU, 0x165667B19E3779F9U,
                                   0xD6E8FEB86659FD93U};

constexpr std::size_t kSampleSize = 64;

void prefetch(const void* address) { __builtin_prefetch(address); }

}  // namespace

NodeGrid::Bucket::Bucket() {
  std::fill_n(x, kLanes, std::numeric_limits<float>::quiet_NaN());
  std::fill_n(y, kLanes, std::numeric_limits<float>::quiet_NaN());
  std::fill_n(z, kLanes, std::numeric_limits<float>::quiet_NaN());
  std::fill_n(slot, kLanes, kEmpty);
}

void NodeGrid::Bucket::put(int lane, int newSlot, const Point& p) {
  x[lane] = p[0];
  y[lane] = p[1];
  z[lane] = p[2];
  slot[lane] = newSlot;
}

// In a full bucket a mark has to stay: entries that moved on must still be found.
void NodeGrid::Bucket::take(int lane) {
  constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
  if (isFull()) {
    put(lane, kErased, {kNone, kNone, kNone});
    return;
  }
  int last = lane;
  while (last + 1 < kLanes && slot[last + 1] != kEmpty) {
    ++last;
  }
  put(lane, slot[last], {x[last], y[last], z[last]});
  put(last, kEmpty, {kNone, kNone, kNone});
}

// --- cells -------------------------------------------------------------------------------------

std::uint64_t NodeGrid::cellOf(double x) const {
  return std::bit_cast<std::uint64_t>(x * perCell_ + kToWhole);
}

std::size_t NodeGrid::homeOf(std::uint64_t key) const {
  key ^= key >> 29;
  return static_cast<std::size_t>((key * kMix[3]) >> shift_);
}

std::size_t NodeGrid::homeOf(const Point& p) const {
  return homeOf(cellOf(p[0]) * kMix[0] + cellOf(p[1]) * kMix[1] + cellOf(p[2]) * kMix[2]);
}

std::size_t NodeGrid::nextOf(std::size_t bucket) const {
  return (bucket + 1) & (buckets_.size() - 1);
}

void NodeGrid::setCell(double cell) {
  cell_ = cell;
  perCell_ = 1.0 / cell;
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
    if (bucket.slot[0] >= 0) {
      sample.push_back({bucket.x[0], bucket.y[0], bucket.z[0]});
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
        if (bucket.slot[lane] >= 0) {
          place(bucket.slot[lane], {bucket.x[lane], bucket.y[lane], bucket.z[lane]});
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

NodeGrid::Place NodeGrid::find(const Point& p) {
  for (std::size_t i = homeOf(p);; i = nextOf(i)) {
    Bucket& bucket = buckets_[i];
    for (int lane = 0; lane < kLanes; ++lane) {
      if (bucket.isAt(lane, p)) {
        return {&bucket, lane};
      }
    }
    if (!bucket.isFull()) {
      return {nullptr, 0};
    }
  }
}

// Puts an entry for a new position into the first free lane.
bool NodeGrid::place(int slot, const Point& p) {
  for (std::size_t i = homeOf(p);; i = nextOf(i)) {
    Bucket& bucket = buckets_[i];
    for (int lane = 0; lane < kLanes; ++lane) {
      if (bucket.slot[lane] < 0) {
        used_ += bucket.slot[lane] == kEmpty ? 1U : 0U;
        ++entries_;
        bucket.put(lane, slot, p);
        return true;
      }
    }
    ++overflowed_;
  }
}

void NodeGrid::insert(int slot, const float* p) {
  if (isHopeless_ || !(std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]))) {
    return;
  }
  const Point point{p[0], p[1], p[2]};
  const Place twin = find(point);
  if (twin.bucket != nullptr) {
    twins_.add(twin.bucket->slot[twin.lane], slot);
    return;
  }
  place(slot, point);
  makeRoom();
}

void NodeGrid::erase(int slot, const float* p) {
  if (isHopeless_) {
    return;
  }
  const Place place = find({p[0], p[1], p[2]});
  if (place.bucket == nullptr || twins_.remove(place.bucket->slot[place.lane], slot)) {
    return;
  }
  const bool leavesMark = place.bucket->isFull();
  place.bucket->take(place.lane);
  --entries_;
  used_ -= leavesMark ? 0U : 1U;
}

// --- searching ---------------------------------------------------------------------------------

int NodeGrid::lowestInChain(std::size_t home, const float* p) const {
  constexpr float kNear = static_cast<float>(kReach);
  int lowest = std::numeric_limits<int>::max();
  for (std::size_t i = home;; i = nextOf(i)) {
    const Bucket& bucket = buckets_[i];
    unsigned near = 0;
    for (int lane = 0; lane < kLanes; ++lane) {
      const bool isNear = (std::fabs(bucket.x[lane] - p[0]) <= kNear) &
                          (std::fabs(bucket.y[lane] - p[1]) <= kNear) &
                          (std::fabs(bucket.z[lane] - p[2]) <= kNear);
      near |= static_cast<unsigned>(isNear) << lane;
    }
    for (; near != 0; near &= near - 1) {
      const int lane = std::countr_zero(near);
      const float there[3] = {bucket.x[lane], bucket.y[lane], bucket.z[lane]};
      if (bucket.slot[lane] < lowest && slIsEqualPoint3D(there, p) == 1) {
        lowest = bucket.slot[lane];
      }
    }
    if (!bucket.isFull()) {
      return lowest;
    }
  }
}

int NodeGrid::lowestNear(const float* p) const {
  std::uint64_t keys[8];
  int count = 1;
  keys[0] = 0;
  for (int axis = 0; axis < 3; ++axis) {
    const std::uint64_t low = cellOf(p[axis] - kReach) * kMix[axis];
    const std::uint64_t high = cellOf(p[axis] + kReach) * kMix[axis];
    for (int k = 0; high != low && k < count; ++k) {
      keys[count + k] = keys[k] + high;
    }
    for (int k = 0; k < count; ++k) {
      keys[k] += low;
    }
    count *= high == low ? 1 : 2;
  }
  std::size_t homes[8];
  for (int k = 0; k < count; ++k) {
    homes[k] = homeOf(keys[k]);
    prefetch(&buckets_[homes[k]]);
  }
  int lowest = std::numeric_limits<int>::max();
  for (int k = 0; k < count; ++k) {
    lowest = std::min(lowest, lowestInChain(homes[k], p));
  }
  return lowest == std::numeric_limits<int>::max() ? kNoIndex : lowest;
}

}  // namespace zel
