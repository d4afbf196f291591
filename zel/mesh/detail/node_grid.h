#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "zel/core/constants.h"
#include "zel/mesh/detail/lanes.h"
#include "zel/mesh/detail/twin_rings.h"

namespace zel {

/// Slots by position: finds the lowest one within the merge tolerance of a point.
///
/// A hash table of cells, wider than twice the tolerance, so that a point and all that may equal
/// it lie in at most eight of them, nearly always one. An entry carries the position itself; the
/// nodes are not touched. Entries stand in buckets of one cache line and, when theirs is full, in
/// the next ones. Of several slots at exactly one position only the lowest has an entry.
/// See M. Teschner et al., Optimized Spatial Hashing for Collision Detection, 2003.
///
/// Functions that insert may throw std::bad_alloc and leave the grid fit only for clear().
class NodeGrid {
 public:
  using Point = std::array<float, 3>;

  /// Empties the grid and sizes it for about `count` points, of which `sample` shows some.
  void start(int count, std::vector<Point> sample);
  void clear();
  /// Adds a slot that is not in the grid. Points that are not finite equal none and are left out.
  void insert(int slot, const float* p);
  /// Takes a slot out, given the position under which it was inserted.
  void erase(int slot, const float* p);
  /// @return the lowest slot that slIsEqualPoint3D() finds equal to p, or kNoIndex.
  [[nodiscard]] int lowestNear(const float* p) const;
  /// What lowestNear() finds, where one look tells; kUndecided elsewhere. Short, so that the
  /// processor can wait for the buckets of several calls at once.
  [[nodiscard]] int quickNear(const float* p) const;
  static constexpr int kUndecided = -1;
  /// Too many different points lie within the tolerance of each other: walking is the better way.
  [[nodiscard]] bool isHopeless() const { return isHopeless_; }

 private:
  static constexpr int kLanes = 4;
  /// A little more than the distance at which points become equal, against rounding.
  static constexpr double kReach = 1.01e-4;
  static constexpr float kNearSquare = static_cast<float>(kReach * kReach);
  /// Below this, the distance is below the tolerance however the square was rounded.
  static constexpr float kSureSquare = kSquareTolerance * 0.9999F;
  /// Adding it leaves a double's nearest whole number in its low bits; any double stays monotone.
  static constexpr double kToWhole = 6755399441055744.0;  // 1.5 x 2^52
  static constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;
  /// Entries farther apart than this are never near one point.
  static constexpr float kRivalSquare = 4.1F * kNearSquare;
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
    [[nodiscard]] bool hasOverflowed() const { return (marks[0] & kFlag) != 0; }
    void setOverflowed() { marks[0] |= kFlag; }
    /// A point may be near one of these entries and one that has moved on.
    [[nodiscard]] bool isRivalled() const { return (marks[1] & kFlag) != 0; }
    void setRivalled() { marks[1] |= kFlag; }
    [[nodiscard]] Point pointOf(int lane) const { return {x[lane], y[lane], z[lane]}; }

   private:
    static constexpr std::uint32_t kFlag = 0x80000000;
  };
  struct Place {
    Bucket* bucket;
    int lane;
  };

  [[nodiscard]] std::uint64_t cellOf(double x) const;
  [[nodiscard]] std::size_t homeOf(std::uint64_t x, std::uint64_t y, std::uint64_t z) const {
    const std::uint64_t sum = ((x * kMix + y) * kMix + z) * kMix;
    return static_cast<std::size_t>((sum ^ (sum >> 29)) * kMix >> shift_);
  }
  [[nodiscard]] std::size_t homeOf(const Point& p) const;
  [[nodiscard]] std::size_t nextOf(std::size_t bucket) const;
  [[nodiscard]] Place find(std::size_t home, const float* p);
  [[nodiscard]] int lowestInChain(std::size_t home, const float* p) const;
  [[nodiscard]] int lowestInCells(const float* p) const;
  void place(std::size_t home, std::uint32_t slot, const Point& p);
  void setCell(double cell);
  void refill(std::size_t bucketCount, double cell);
  void makeRoom();
  [[nodiscard]] double idealCell(std::vector<Point> sample, std::size_t count) const;
  [[nodiscard]] std::vector<Point> sampleEntries() const;
  [[nodiscard]] bool isCrowded() const;

  std::vector<Bucket> buckets_;  ///< a power of two of them
  TwinRings twins_;
  double cell_ = 1.0;
  double perCell_ = 1.0;
  double inner_ = 0.0;          ///< up to here from its middle, in cells, a cell has no neighbours
  int shift_ = 0;               ///< leaves the hash's top bits as the bucket number
  std::size_t used_ = 0;        ///< lanes that are not empty, erased ones included
  std::size_t entries_ = 0;     ///< lanes that hold a slot
  std::size_t overflowed_ = 0;  ///< buckets passed over by insertions since the last refill
  bool isHopeless_ = false;
};

// Most points lie well inside one cell and have at most one entry near them. The whole number
// nearest to a coordinate, in cells, names its cell; how far it is off tells how near the next one
// is. (Where a double no longer tells that well, neighbouring floats lie farther apart than the
// tolerance.)
inline int NodeGrid::quickNear(const float* p) const {
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
  const auto [surely, maybe] = lanesNear(bucket.x, bucket.y, bucket.z, p, kSureSquare, kNearSquare);
  if (surely != maybe || (maybe & (maybe - 1)) != 0) {
    return kUndecided;
  }
  if (maybe != 0) {
    return bucket.isRivalled() ? kUndecided
                               : static_cast<int>(bucket.slotOf(std::countr_zero(maybe)));
  }
  return bucket.hasOverflowed() ? kUndecided : kNoIndex;
}

inline int NodeGrid::lowestNear(const float* p) const {
  const int quick = quickNear(p);
  return quick == kUndecided ? lowestInCells(p) : quick;
}

}  // namespace zel
