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
          place(bucket.slotOf(lane), bucket.pointOf(lane));
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
      if (bucket.pointOf(lane) == p) {
        return {&bucket, lane};
      }
    }
    if (!bucket.hasOverflowed()) {
      return {nullptr, 0};
    }
  }
}

// Puts an entry for a new position into the first free lane.
void NodeGrid::place(std::uint32_t slot, const Point& p) {
  for (std::size_t i = homeOf(p);; i = nextOf(i)) {
    Bucket& bucket = buckets_[i];
    for (int lane = 0; lane < kLanes; ++lane) {
      if (!bucket.isTaken(lane)) {
        used_ += bucket.slotOf(lane) == kEmpty ? 1U : 0U;
        ++entries_;
        bucket.put(lane, slot, p);
        return;
      }
    }
    bucket.setOverflowed();
    ++overflowed_;
  }
}

void NodeGrid::insert(int slot, const float* p) {
  if (isHopeless_ || !(std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]))) {
    return;
  }
  const Point point{p[0], p[1], p[2]};
  if (const Place twin = find(point); twin.bucket != nullptr) {
    auto head = static_cast<int>(twin.bucket->slotOf(twin.lane));
    twins_.addInOrder(head, slot);
    twin.bucket->setSlot(twin.lane, static_cast<std::uint32_t>(head));
    return;
  }
  place(static_cast<std::uint32_t>(slot), point);
  makeRoom();
}

void NodeGrid::erase(int slot, const float* p) {
  if (isHopeless_) {
    return;
  }
  const Place place = find({p[0], p[1], p[2]});
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

inline int NodeGrid::lowestInChain(std::size_t home, const float* p) const {
  constexpr float kNearSquare = static_cast<float>(kReach * kReach);
  int lowest = kNone;
  for (std::size_t i = home;; i = nextOf(i)) {
    const Bucket& bucket = buckets_[i];
    for (unsigned near = lanesNear(bucket.x, bucket.y, bucket.z, p, kNearSquare); near != 0;
         near &= near - 1) {
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

// Most points lie well inside one cell. The whole number nearest to a coordinate, in cells, names
// its cell; how far it is off tells how near the next one is. Beyond kMiddle the difference is no
// longer exact enough.
int NodeGrid::lowestNear(const float* p) const {
  constexpr double kMiddle = 1 << 30;
  std::uint64_t key = 0;
  double off = 0;
  double far = 0;
  for (int axis = 0; axis < 3; ++axis) {
    const double x = p[axis] * perCell_;
    const double whole = x + kToWhole;
    key += std::bit_cast<std::uint64_t>(whole) * kMix[axis];
    off = std::max(off, std::fabs(x - (whole - kToWhole)));
    far = std::max(far, std::fabs(x));
  }
  const int lowest =
      off < inner_ && far < kMiddle ? lowestInChain(homeOf(key), p) : lowestInCells(p);
  return lowest == kNone ? kNoIndex : lowest;
}

int NodeGrid::lowestInCells(const float* p) const {
  std::uint64_t low[3];
  std::uint64_t high[3];
  for (int axis = 0; axis < 3; ++axis) {
    low[axis] = cellOf(p[axis] - kReach) * kMix[axis];
    high[axis] = cellOf(p[axis] + kReach) * kMix[axis];
  }
  std::size_t homes[8];
  int count = 0;
  for (int corner = 0; corner < 8; ++corner) {
    std::uint64_t key = 0;
    bool isNew = true;
    for (int axis = 0; axis < 3; ++axis) {
      const bool isHigh = (corner >> axis & 1) != 0;
      isNew = isNew && !(isHigh && high[axis] == low[axis]);
      key += isHigh ? high[axis] : low[axis];
    }
    if (isNew) {
      homes[count] = homeOf(key);
      prefetch(&buckets_[homes[count++]]);
    }
  }
  int lowest = kNone;
  for (int k = 0; k < count; ++k) {
    lowest = std::min(lowest, lowestInChain(homes[k], p));
  }
  return lowest;
}

}  // namespace zel
