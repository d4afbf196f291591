#include "zel/containers/detail/point_grid.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "zel/core/memory.h"

namespace zel {

namespace {

constexpr int kFirstBits = 4;
constexpr int kLastBits = 24;  ///< 1 GiB
/// Share of the lanes in use beyond which the table doubles.
constexpr double kFullness = 0.6;
/// Buckets that one run may span; longer ones mean that cells are crowded.
constexpr int kLongestRun = 64;
/// Wanted number of points in a cell that holds any: more, and runs get long; fewer, and search
/// boxes needlessly often reach over a cell's edge.
constexpr double kMostPerCell = 2.0;
constexpr double kFewestPerCell = 1.1;
/// Search box to smallest cell.
constexpr double kSmallestCellInReaches = 4.0;
/// First cell size, set when a few dozen points are known.
constexpr double kFirstCellInSpacings = 1.0;
constexpr std::size_t kSamples = 64;

bool hasNan(const float* point) {
  return std::isnan(point[0]) || std::isnan(point[1]) || std::isnan(point[2]);
}

}  // namespace

PointGrid::PointGrid(double reach)
    : reach_(reach), perCell_(1.0 / (kSmallestCellInReaches * reach)), maxPerCell_(perCell_) {}

PointGrid::PointGrid(PointGrid&& other) noexcept : PointGrid(other.reach_) {
  *this = std::move(other);
}

PointGrid& PointGrid::operator=(PointGrid&& other) noexcept {
  std::swap(buckets_, other.buckets_);
  std::swap(block_, other.block_);
  std::swap(mask_, other.mask_);
  std::swap(shift_, other.shift_);
  std::swap(used_, other.used_);
  std::swap(live_, other.live_);
  std::swap(reach_, other.reach_);
  std::swap(perCell_, other.perCell_);
  std::swap(maxPerCell_, other.maxPerCell_);
  std::swap(minPerCell_, other.minPerCell_);
  return *this;
}

PointGrid::~PointGrid() { slFree(block_); }

bool PointGrid::insert(int slot, const float* point) {
  if (hasNan(point)) {
    return true;
  }
  if (!makeRoom()) {
    return false;
  }
  while (!place(static_cast<std::uint32_t>(slot), point)) {
    if (!shrinkCells() || !rebuild(64 - shift_)) {
      return false;
    }
  }
  return true;
}

void PointGrid::erase(int slot, const float* point) {
  if (hasNan(point) || buckets_ == nullptr) {
    return;
  }
  for (std::size_t bucket = homeOf(point);; bucket = (bucket + 1) & mask_) {
    Bucket& line = buckets_[bucket];
    for (std::uint32_t& lane : line.slot) {
      if (lane == static_cast<std::uint32_t>(slot)) {
        lane = kGone;
        --live_;
        return;
      }
    }
    if (line.slot[kLanes - 1] == kFree) {
      return;
    }
  }
}

void PointGrid::prefetch(const float* point) const {
  if (buckets_ != nullptr) {
    __builtin_prefetch(buckets_ + homeOf(point));
  }
}

// Puts a point into the first lane without one. False when the run is too long.
bool PointGrid::place(std::uint32_t slot, const float* point) {
  std::size_t bucket = homeOf(point);
  for (int run = 0; run < kLongestRun; ++run, bucket = (bucket + 1) & mask_) {
    Bucket& line = buckets_[bucket];
    for (int lane = 0; lane < kLanes; ++lane) {
      if (line.slot[lane] < kFirstNoSlot) {
        continue;
      }
      used_ += line.slot[lane] == kFree ? 1 : 0;
      ++live_;
      line.x[lane] = point[0];
      line.y[lane] = point[1];
      line.z[lane] = point[2];
      line.slot[lane] = slot;
      return true;
    }
  }
  return false;
}

// Takes a fresh table of 2^bits buckets; the old one stays the caller's to release.
bool PointGrid::allocate(int bits) {
  const std::size_t count = std::size_t{1} << bits;
  void* block = slMalloc(static_cast<std::uint32_t>(count * sizeof(Bucket) + alignof(Bucket)));
  if (block == nullptr) {
    return false;
  }
  const auto address = reinterpret_cast<std::uintptr_t>(block);
  const std::uintptr_t padding = (alignof(Bucket) - address % alignof(Bucket)) % alignof(Bucket);
  block_ = block;
  buckets_ = reinterpret_cast<Bucket*>(static_cast<char*>(block) + padding);
  mask_ = count - 1;
  shift_ = 64 - bits;
  used_ = 0;
  live_ = 0;
  for (std::size_t i = 0; i < count; ++i) {
    buckets_[i] = Bucket{{}, {}, {}, {kFree, kFree, kFree, kFree}};
  }
  return true;
}

// Keeps enough lanes free for another point.
bool PointGrid::makeRoom() {
  if (buckets_ == nullptr) {
    return allocate(kFirstBits);
  }
  const double lanes = static_cast<double>((mask_ + 1) * kLanes);
  if (static_cast<double>(used_ + 1) <= lanes * kFullness) {
    return true;
  }
  fitCells();
  // Lanes that are gone alone do not call for a larger table.
  const bool isCrowded = static_cast<double>(live_) > lanes * kFullness / 2;
  return rebuild(64 - shift_ + (isCrowded ? 1 : 0));
}

// Moves the points to a new table of 2^bits buckets.
bool PointGrid::rebuild(int bits) {
  void* const oldBlock = block_;
  const Bucket* const oldBuckets = buckets_;
  const std::size_t oldCount = mask_ + 1;
  bool isDone = bits <= kLastBits && allocate(bits);
  while (isDone && !placeAll(oldBuckets, oldCount)) {
    slFree(std::exchange(block_, nullptr));
    buckets_ = nullptr;
    isDone = shrinkCells() && allocate(bits);
  }
  if (block_ != oldBlock) {
    slFree(oldBlock);
  }
  return isDone;
}

bool PointGrid::placeAll(const Bucket* buckets, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const Bucket& line = buckets[i];
    for (int lane = 0; lane < kLanes; ++lane) {
      const float point[3] = {line.x[lane], line.y[lane], line.z[lane]};
      if (line.slot[lane] < kFirstNoSlot && !place(line.slot[lane], point)) {
        return false;
      }
    }
  }
  return true;
}

// --- cell size ---------------------------------------------------------------------------------

// Makes cells smaller after a run grew too long. False when they are the smallest already.
bool PointGrid::shrinkCells() {
  if (perCell_ >= maxPerCell_) {
    return false;
  }
  perCell_ = std::min(4.0 * perCell_, maxPerCell_);
  minPerCell_ = perCell_;
  return true;
}

// Chooses the cell size for a coming rebuild.
void PointGrid::fitCells() {
  if (mask_ + 1 == std::size_t{1} << kFirstBits) {
    perCell_ = std::min(1.0 / (kFirstCellInSpacings * medianSpacing()), maxPerCell_);
    return;
  }
  const double crowd = pointsPerCell();
  if (crowd > kMostPerCell) {
    perCell_ = std::min(2.0 * perCell_, maxPerCell_);
  } else if (crowd < kFewestPerCell) {
    perCell_ = std::max(perCell_ / 2.0, minPerCell_);
  }
}

int PointGrid::pointsInCellOf(const float* point) const {
  const auto cell = [this](float x, float y, float z) {
    return std::array{cellOf(x * perCell_), cellOf(y * perCell_), cellOf(z * perCell_)};
  };
  const auto wanted = cell(point[0], point[1], point[2]);
  int count = 0;
  for (std::size_t bucket = homeOf(point);; bucket = (bucket + 1) & mask_) {
    const Bucket& line = buckets_[bucket];
    for (int lane = 0; lane < kLanes; ++lane) {
      const bool isPoint = line.slot[lane] < kFirstNoSlot;
      count += isPoint && cell(line.x[lane], line.y[lane], line.z[lane]) == wanted ? 1 : 0;
    }
    if (line.slot[kLanes - 1] == kFree) {
      return count;
    }
  }
}

// Mean over a sample of the points of how many share their cell.
double PointGrid::pointsPerCell() const {
  int points = 0;
  int sampled = 0;
  const std::size_t step = std::max<std::size_t>((mask_ + 1) / kSamples, 1);
  for (std::size_t i = 0; i <= mask_; i += step) {
    const Bucket& line = buckets_[i];
    if (line.slot[0] < kFirstNoSlot) {
      const float point[3] = {line.x[0], line.y[0], line.z[0]};
      points += pointsInCellOf(point);
      ++sampled;
    }
  }
  return sampled == 0 ? kFewestPerCell : static_cast<double>(points) / sampled;
}

// Median distance (largest coordinate difference) from the points of a small table to their
// nearest neighbours.
double PointGrid::medianSpacing() const {
  std::array<std::array<float, 3>, kLanes << kFirstBits> points;
  std::size_t count = 0;
  for (std::size_t i = 0; i <= mask_; ++i) {
    for (int lane = 0; lane < kLanes; ++lane) {
      if (buckets_[i].slot[lane] < kFirstNoSlot) {
        points[count++] = {buckets_[i].x[lane], buckets_[i].y[lane], buckets_[i].z[lane]};
      }
    }
  }
  std::array<double, kLanes << kFirstBits> nearest;
  nearest.fill(std::numeric_limits<double>::max());
  for (std::size_t a = 0; a < count; ++a) {
    for (std::size_t b = 0; b < count; ++b) {
      double distance = 0.0;
      for (std::size_t axis = 0; axis < 3; ++axis) {
        distance = std::max(distance, std::fabs(static_cast<double>(points[a][axis]) -
                                                static_cast<double>(points[b][axis])));
      }
      nearest[a] = a == b ? nearest[a] : std::min(nearest[a], distance);
    }
  }
  const auto median = nearest.begin() + static_cast<std::ptrdiff_t>(count / 2);
  std::nth_element(nearest.begin(), median, nearest.begin() + static_cast<std::ptrdiff_t>(count));
  return *median;
}

}  // namespace zel
