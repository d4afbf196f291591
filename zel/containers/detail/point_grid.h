#pragma once

/// @file
/// A spatial hash from points to slot numbers, made for searches within a small box.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace zel {

/// Finds the lowest slot whose point satisfies a predicate near a given place.
///
/// Space is cut into cubic cells; a cell hashes to a bucket of one cache line, which holds four
/// points with their slots and continues in the next bucket when full. A search visits only the
/// cells that its box touches, mostly a single one, so it costs about one cache miss. The cell
/// size follows the spacing of the points whenever the table is rebuilt.
///
/// The grid keeps its own copy of every point: whoever changes a point must erase the old one and
/// insert the new one. Points with a NaN coordinate are ignored by all operations, as nothing lies
/// near them. When an operation returns false (heap exhausted, or hundreds of points crowd into
/// one smallest cell), the grid has lost its completeness and must be given up.
class PointGrid {
 public:
  /// @param reach half width of the search box: no point farther away along any axis may satisfy
  ///              the predicates.
  explicit PointGrid(double reach);
  PointGrid(PointGrid&& other) noexcept;
  PointGrid& operator=(PointGrid&& other) noexcept;
  ~PointGrid();

  /// @param slot not negative. @return false when the grid must be given up.
  [[nodiscard]] bool insert(int slot, const float* point);
  /// Takes out what insert() was given.
  void erase(int slot, const float* point);

  /// @param matches predicate on the coordinates (x, y, z) of a stored point.
  /// @return the lowest slot whose point matches; -1 when there is none.
  template <class Matches>
  [[nodiscard]] int lowestNear(const float* point, Matches matches) const;

  /// Fetches the memory that a later search or insertion around `point` will read.
  void prefetch(const float* point) const;

  [[nodiscard]] double cellSize() const { return 1.0 / perCell_; }

 private:
  static constexpr int kLanes = 4;
  /// A lane never used; in the last lane: the bucket never was full, and searches end here.
  static constexpr std::uint32_t kFree = 0xFFFFFFFF;
  /// A lane whose point was taken out.
  static constexpr std::uint32_t kGone = 0xFFFFFFFE;
  static constexpr std::uint32_t kFirstNoSlot = 0x80000000;

  struct alignas(64) Bucket {
    float x[kLanes];
    float y[kLanes];
    float z[kLanes];
    std::uint32_t slot[kLanes];
  };

  /// Cells are numbered by the bits of a double that was rounded to an integer by adding kRounder.
  /// The number never falls as the coordinate rises, which is all that the search relies on.
  static std::uint64_t cellOf(double scaled) {
    constexpr double kRounder = 0x1.8p52;
    constexpr double kFarthest = 0x1p50;
    return std::bit_cast<std::uint64_t>(std::clamp(scaled, -kFarthest, kFarthest) + kRounder);
  }
  [[nodiscard]] std::size_t bucketOf(std::uint64_t x, std::uint64_t y, std::uint64_t z) const {
    std::uint64_t mixed =
        x * 0x9E3779B97F4A7C15U + y * 0xC2B2AE3D27D4EB4FU + z * 0x165667B19E3779F9U;
    mixed = (mixed ^ (mixed >> 32)) * 0xD6E8FEB86659FD93U;
    return static_cast<std::size_t>(mixed >> shift_);
  }
  [[nodiscard]] std::size_t homeOf(const float* point) const {
    return bucketOf(cellOf(point[0] * perCell_), cellOf(point[1] * perCell_),
                    cellOf(point[2] * perCell_));
  }
  template <class Matches>
  void probe(std::size_t bucket, Matches& matches, std::uint32_t& best) const;

  [[nodiscard]] bool allocate(int bits);
  [[nodiscard]] bool place(std::uint32_t slot, const float* point);
  [[nodiscard]] bool placeAll(const Bucket* buckets, std::size_t count);
  [[nodiscard]] bool makeRoom();
  [[nodiscard]] bool rebuild(int bits);
  [[nodiscard]] bool shrinkCells();
  void fitCells();
  [[nodiscard]] int pointsInCellOf(const float* point) const;
  [[nodiscard]] double pointsPerCell() const;
  [[nodiscard]] double medianSpacing() const;

  Bucket* buckets_ = nullptr;  ///< aligned within block_
  void* block_ = nullptr;
  std::size_t mask_ = 0;  ///< number of buckets - 1
  int shift_ = 64;        ///< hash bits that do not choose the bucket
  std::size_t used_ = 0;  ///< lanes in use or gone
  std::size_t live_ = 0;  ///< lanes in use
  double reach_;
  double perCell_;           ///< 1 / cell size
  double maxPerCell_;        ///< for the smallest cells
  double minPerCell_ = 0.0;  ///< for the largest cells not known to crowd
};

template <class Matches>
void PointGrid::probe(std::size_t bucket, Matches& matches, std::uint32_t& best) const {
  for (;; bucket = (bucket + 1) & mask_) {
    const Bucket& line = buckets_[bucket];
    for (int lane = 0; lane < kLanes; ++lane) {
      // Lanes without a point rank behind every slot, so they need no test of their own.
      const bool isMatch = matches(line.x[lane], line.y[lane], line.z[lane]);
      best = isMatch ? std::min(best, line.slot[lane]) : best;
    }
    if (line.slot[kLanes - 1] == kFree) {
      return;
    }
  }
}

template <class Matches>
int PointGrid::lowestNear(const float* point, Matches matches) const {
  if (buckets_ == nullptr) {
    return -1;
  }
  std::uint64_t low[3];
  std::uint64_t high[3];
  for (int axis = 0; axis < 3; ++axis) {
    low[axis] = cellOf((point[axis] - reach_) * perCell_);
    high[axis] = cellOf((point[axis] + reach_) * perCell_);
  }
  std::uint32_t best = kFree;
  // A NaN coordinate gives cells that hold nothing near; the loops run at most once.
  for (std::uint64_t x = low[0]; x <= high[0]; ++x) {
    for (std::uint64_t y = low[1]; y <= high[1]; ++y) {
      for (std::uint64_t z = low[2]; z <= high[2]; ++z) {
        probe(bucketOf(x, y, z), matches, best);
      }
    }
  }
  return best < kFirstNoSlot ? static_cast<int>(best) : -1;
}

}  // namespace zel
