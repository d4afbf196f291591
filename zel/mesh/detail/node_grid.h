#pragma once

#include <array>
#include <cstdint>
#include <vector>

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
  /// Too many different points lie within the tolerance of each other: walking is the better way.
  [[nodiscard]] bool isHopeless() const { return isHopeless_; }

 private:
  static constexpr int kLanes = 4;
  static constexpr int kEmpty = -1;
  static constexpr int kErased = -2;

  /// Lanes fill in order; the last one empty means that no entry has moved on.
  struct alignas(64) Bucket {
    float x[kLanes];
    float y[kLanes];
    float z[kLanes];
    int slot[kLanes];

    Bucket();
    void put(int lane, int newSlot, const Point& p);
    void take(int lane);
    [[nodiscard]] bool isAt(int lane, const Point& p) const {
      return x[lane] == p[0] && y[lane] == p[1] && z[lane] == p[2];
    }
    [[nodiscard]] bool isFull() const { return slot[kLanes - 1] != kEmpty; }
  };
  struct Place {
    Bucket* bucket;
    int lane;
  };

  [[nodiscard]] std::uint64_t cellOf(double x) const;
  [[nodiscard]] std::size_t homeOf(std::uint64_t key) const;
  [[nodiscard]] std::size_t homeOf(const Point& p) const;
  [[nodiscard]] std::size_t nextOf(std::size_t bucket) const;
  [[nodiscard]] Place find(const Point& p);
  [[nodiscard]] int lowestInChain(std::size_t bucket, const float* p) const;
  bool place(int slot, const Point& p);
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
  int shift_ = 0;               ///< leaves the hash's top bits as the bucket number
  std::size_t used_ = 0;        ///< lanes that are not empty, erased ones included
  std::size_t entries_ = 0;     ///< lanes that hold a slot
  std::size_t overflowed_ = 0;  ///< buckets passed over by insertions since the last refill
  bool isHopeless_ = false;
};

}  // namespace zel
