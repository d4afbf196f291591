#pragma once

/// @file
/// Slots by position: the one grid behind merging nodes, adding points and welding meshes.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "zel/containers/detail/lanes.h"
#include "zel/containers/detail/twins.h"
#include "zel/core/detail/prefetch.h"

namespace zel {

/// Finds the lowest slot whose point is near a given one.
///
/// A hash table of cells, wider than twice the reach, so that a point and all that may be near it
/// lie in at most eight of them, nearly always one; their size follows the spacing of the points.
/// An entry carries the position itself; the array is not touched. Entries stand in buckets of one
/// cache line and, when theirs is full, in the next ones. Of several slots at exactly one position
/// only the lowest has an entry. Should points crowd in one of the smallest cells, the later ones
/// stand in a list of their own, in ascending order, so that searches elsewhere stay quick.
/// See M. Teschner et al., Optimized Spatial Hashing for Collision Detection, 2003.
///
/// What near means is the searcher's to say, with a `Near` of two members: `lanes(x, y, z, p)` for
/// four points at once, which may leave some undecided, and `isNear(q, p)`. No point farther than
/// the reach along any axis may be near. Points that are not finite are near none and left out.
///
/// Functions that insert may throw std::bad_alloc and leave the grid fit only for clear(). Searches
/// may run in several threads.
class PointGrid {
 public:
  using Point = std::array<float, 3>;
  static constexpr int kNowhere = -1;
  static constexpr int kUndecided = -2;

  explicit PointGrid(double reach);

  /// Empties the grid and sizes it for about `count` points, of which `sample` shows some.
  void start(std::size_t count, std::vector<Point> sample);
  /// Starts with the points of the slots below `bound`: `pointOf(slot)`, null for a slot without.
  template <class PointOf>
  void build(int bound, PointOf pointOf);
  /// Takes the store back, too.
  void clear();
  /// Adds a slot that is not in the grid.
  void insert(int slot, const float* p);
  /// Takes a slot out, given the position under which it was inserted.
  void erase(int slot, const float* p);

  /// @return the lowest slot near p, or kNowhere.
  template <class Near>
  [[nodiscard]] int lowestNear(const float* p, const Near& near) const;
  /// What lowestNear() finds, where one look tells; kUndecided elsewhere. Short, so that the
  /// processor can wait for the buckets of several calls at once.
  template <class Near>
  [[nodiscard]] int quickNear(const float* p, const Near& near) const;
  /// Sends for the memory that a search or an insertion at p will read.
  void prefetch(const float* p) const { zel::prefetch(&buckets_[homeOf(p)]); }

  /// Slots in the grid.
  [[nodiscard]] std::size_t size() const { return size_; }
  /// Whether the slot stands in the grid at p.
  [[nodiscard]] bool holds(int slot, const float* p) const;
  [[nodiscard]] double cellSize() const { return 1.0 / perCell_; }
  /// Whether every entry can be found and is counted.
  [[nodiscard]] bool validate() const;

 private:
  static constexpr int kLanes = 4;
  /// Buckets in which an entry may stand, its own included.
  static constexpr int kLongestRun = 16;
  /// Adding it leaves a double's nearest whole number in its low bits.
  static constexpr double kToWhole = 6755399441055744.0;  // 1.5 x 2^52
  /// Marks in place of a slot; a store holds far fewer slots than these numbers.
  static constexpr std::uint32_t kErased = 0x3FFFFFFE;
  static constexpr std::uint32_t kEmpty = 0x3FFFFFFF;

  /// Lanes fill in order.
  struct alignas(64) Bucket {
    float x[kLanes];
    float y[kLanes];
    float z[kLanes];
    std::uint32_t marks[kLanes];  ///< the slots; the top bits are flags of the bucket

    Bucket();
    void put(int lane, std::uint32_t slot, const Point& p);
    void take(int lane);
    void setSlot(int lane, std::uint32_t slot) { marks[lane] = (marks[lane] & kFlag) | slot; }
    [[nodiscard]] std::uint32_t slotOf(int lane) const { return marks[lane] & kEmpty; }
    [[nodiscard]] bool isTaken(int lane) const { return slotOf(lane) < kErased; }
    [[nodiscard]] bool isFull() const { return slotOf(kLanes - 1) != kEmpty; }
    /// Entries have moved on to the next bucket.
    [[nodiscard]] bool hasOverflowed() const { return (marks[0] & kFlag) != 0; }
    void setOverflowed() { marks[0] |= kFlag; }
    /// A point may be near one of these entries and one that has moved on.
    [[nodiscard]] bool isRivalled() const { return (marks[1] & kFlag) != 0; }
    void setRivalled() { marks[1] |= kFlag; }
    /// Entries at home here stand in a list of their own.
    [[nodiscard]] bool isCrowded() const { return (marks[2] & kFlag) != 0; }
    void setCrowded() { marks[2] |= kFlag; }
    [[nodiscard]] Point pointOf(int lane) const { return {x[lane], y[lane], z[lane]}; }

   private:
    static constexpr std::uint32_t kFlag = 0x80000000;
  };
  struct Place {
    std::size_t bucket;
    int lane;  ///< kNowhere: there is none
  };
  struct Entry {
    int slot;
    Point point;
  };
  /// Ascending.
  using Crowd = std::vector<Entry>;
  /// The cells that the reach round a point touches, by their buckets.
  struct Homes {
    std::array<std::size_t, 8> buckets;
    int count;
  };

  [[nodiscard]] std::uint64_t cellOf(double x) const {
    return std::bit_cast<std::uint64_t>(x * perCell_ + kToWhole);
  }
  [[nodiscard]] std::size_t homeOf(std::uint64_t x, std::uint64_t y, std::uint64_t z) const {
    const std::uint64_t sum =
        x * 0x9E3779B97F4A7C15U + y * 0xC2B2AE3D27D4EB4FU + z * 0x165667B19E3779F9U;
    return static_cast<std::size_t>((sum ^ (sum >> 32)) * 0xD6E8FEB86659FD93U >> shift_);
  }
  [[nodiscard]] std::size_t homeOf(const float* p) const {
    return homeOf(cellOf(p[0]), cellOf(p[1]), cellOf(p[2]));
  }
  [[nodiscard]] std::size_t nextOf(std::size_t bucket) const {
    return (bucket + 1) & (buckets_.size() - 1);
  }
  [[nodiscard]] Homes homesAround(const float* p) const;
  [[nodiscard]] Place find(std::size_t home, const float* p) const;
  template <class Near>
  [[nodiscard]] int lowestAtHome(std::size_t home, const float* p, const Near& near,
                                 int lowest) const;
  [[nodiscard]] bool hasRival(const Bucket& bucket, const Point& p) const;
  void place(std::size_t home, int slot, const Point& p);
  bool placeOrJoin(int slot, const Point& p);
  [[nodiscard]] static Crowd::const_iterator placeIn(const Crowd& crowd, int slot);
  void setCell(double cell);
  void refill(std::size_t bucketCount, double cell);
  [[nodiscard]] bool placeAll(const std::vector<Bucket>& buckets,
                              const std::unordered_map<std::size_t, Crowd>& crowds);
  void makeRoom();
  [[nodiscard]] double idealCell(std::vector<Point> sample, std::size_t count) const;
  [[nodiscard]] std::vector<Point> sampleEntries() const;
  [[nodiscard]] bool isTooFull() const;
  [[nodiscard]] bool isReachable(std::size_t bucket, int lane) const;

  double reach_;
  double smallestCell_;
  double farthest_;              ///< coordinates beyond it are near only equal ones
  std::vector<Bucket> buckets_;  ///< a power of two of them
  std::unordered_map<std::size_t, Crowd> crowds_;  ///< by bucket
  Twins twins_;
  double cell_ = 1.0;
  double perCell_ = 1.0;
  double inner_ = 0.0;          ///< up to here from its middle, in cells, a cell has no neighbours
  int shift_ = 0;               ///< leaves the hash's top bits as the bucket number
  std::size_t used_ = 0;        ///< lanes that are not empty, erased ones included
  std::size_t entries_ = 0;     ///< lanes that hold a slot
  std::size_t size_ = 0;        ///< slots: in lanes, their twins, and in crowds
  std::size_t overflowed_ = 0;  ///< buckets passed over by insertions since the last refill
};

template <class PointOf>
void PointGrid::build(int bound, PointOf pointOf) {
  constexpr int kSampleSize = 64;
  constexpr int kAhead = 16;
  std::vector<Point> sample;
  for (int slot = 0; slot < bound; slot += std::max(bound / kSampleSize, 1)) {
    if (const float* p = pointOf(slot); p != nullptr) {
      sample.push_back({p[0], p[1], p[2]});
    }
  }
  start(static_cast<std::size_t>(std::max(bound, 0)), std::move(sample));
  for (int slot = 0; slot < bound; ++slot) {
    if (const float* ahead = slot + kAhead < bound ? pointOf(slot + kAhead) : nullptr) {
      prefetch(ahead);
    }
    if (const float* p = pointOf(slot); p != nullptr) {
      insert(slot, p);
    }
  }
}

// Most points lie well inside one cell and have at most one entry near them. The whole number
// nearest to a coordinate, in cells, names its cell; how far it is off tells how near the next one
// is. (Where a double no longer tells that well, coordinates lie beyond farthest_.)
template <class Near>
int PointGrid::quickNear(const float* p, const Near& near) const {
  std::uint64_t cell[3];
  double off = 0;
  for (int axis = 0; axis < 3; ++axis) {
    const double x = p[axis] * perCell_;
    const double whole = x + kToWhole;
    cell[axis] = std::bit_cast<std::uint64_t>(whole);
    off = std::max(off, std::fabs(x - (whole - kToWhole)));
  }
  if (!(off < inner_)) {
    return kUndecided;
  }
  const Bucket& bucket = buckets_[homeOf(cell[0], cell[1], cell[2])];
  const auto [surely, maybe] = near.lanes(bucket.x, bucket.y, bucket.z, p);
  if (surely != maybe || (maybe & (maybe - 1)) != 0) {
    return kUndecided;
  }
  if (maybe != 0) {
    return bucket.isRivalled() ? kUndecided
                               : static_cast<int>(bucket.slotOf(std::countr_zero(maybe)));
  }
  return bucket.hasOverflowed() ? kUndecided : kNowhere;
}

template <class Near>
int PointGrid::lowestNear(const float* p, const Near& near) const {
  const int quick = quickNear(p, near);
  if (quick != kUndecided) {
    return quick;
  }
  const Homes homes = homesAround(p);
  int lowest = static_cast<int>(kErased);
  for (std::size_t k = 0; k < static_cast<std::size_t>(homes.count); ++k) {
    lowest = lowestAtHome(homes.buckets[k], p, near, lowest);
  }
  return lowest == static_cast<int>(kErased) ? kNowhere : lowest;
}

// The lowest slot near p among the entries at home in a bucket, if it is below `lowest`.
template <class Near>
int PointGrid::lowestAtHome(std::size_t home, const float* p, const Near& near, int lowest) const {
  std::size_t i = home;
  for (int run = 0; run < kLongestRun; ++run, i = nextOf(i)) {
    const Bucket& bucket = buckets_[i];
    for (unsigned lanes = near.lanes(bucket.x, bucket.y, bucket.z, p).maybe; lanes != 0;
         lanes &= lanes - 1) {
      const int lane = std::countr_zero(lanes);
      if (near.isNear(bucket.pointOf(lane).data(), p)) {
        lowest = std::min(lowest, static_cast<int>(bucket.slotOf(lane)));
      }
    }
    if (!bucket.hasOverflowed()) {
      return lowest;
    }
  }
  if (buckets_[home].isCrowded()) {
    for (const Entry& entry : crowds_.find(home)->second) {
      if (entry.slot >= lowest) {
        break;
      }
      if (near.isNear(entry.point.data(), p)) {
        return entry.slot;
      }
    }
  }
  return lowest;
}

}  // namespace zel
