#pragma once

#include <bit>
#include <cstdint>
#include <vector>

#include "zel/mesh/detail/lanes.h"
#include "zel/mesh/detail/twin_rings.h"

namespace zel {

/// Triangles by the set of their corners: a table of hashes in buckets of one cache line. Slots
/// whose sets have one hash form a ring. An entry may be out of date when its slot was changed
/// through a reference; callers look at the face itself.
///
/// Functions that add may throw std::bad_alloc and leave the table fit only for clear().
class CornerSets {
 public:
  void clear();
  /// Prepares for `count` slots.
  void reserve(int count);
  /// Files a slot under its corners, wherever it was filed before.
  void put(int slot, const int* corners);
  void remove(int slot);

  /// Asks `isEnough(slot)` about every slot filed under a set of corners that are all among three
  /// nodes, until it says yes. @return whether it did.
  template <class IsEnough>
  bool anyWithin(const int* nodes, IsEnough isEnough) const {
    const Key all(nodes);
    if (all.count == 3 && anyUnder(all.hash(), isEnough)) {
      return true;
    }
    for (unsigned subset = 1; degenerate_ > 0 && subset < (1U << all.count); ++subset) {
      const Key key(all, subset);
      if (key.count < 3 && anyUnder(key.hash(), isEnough)) {
        return true;
      }
    }
    return false;
  }

 private:
  static constexpr int kLanes = 8;
  static constexpr std::uint32_t kEmpty = 0;
  static constexpr std::uint32_t kErased = 1;

  /// The distinct corners, ascending, the last repeated to fill three places.
  struct Key {
    int nodes[3];
    int count;

    explicit Key(const int* corners);
    /// The members of `all` whose bits are set.
    Key(const Key& all, unsigned members);
    /// 2 or more; odd when fewer than three corners are distinct.
    [[nodiscard]] std::uint32_t hash() const;
  };
  /// Lanes fill in order; the last one empty means that no entry has moved on.
  struct alignas(64) Bucket {
    std::uint32_t hash[kLanes] = {};
    int head[kLanes] = {};

    [[nodiscard]] bool isFull() const { return hash[kLanes - 1] != kEmpty; }
  };
  struct Place {
    Bucket* bucket;
    int lane;
  };

  [[nodiscard]] std::size_t homeOf(std::uint32_t hash) const { return hash >> shift_; }
  [[nodiscard]] std::size_t nextOf(std::size_t i) const { return (i + 1) & (buckets_.size() - 1); }
  [[nodiscard]] Place find(std::uint32_t hash);
  void place(std::uint32_t hash, int head);
  void refill(std::size_t bucketCount);

  template <class IsEnough>
  bool anyUnder(std::uint32_t hash, IsEnough& isEnough) const {
    for (std::size_t i = homeOf(hash);; i = nextOf(i)) {
      const Bucket& bucket = buckets_[i];
      if (const unsigned lanes = lanesEqual(bucket.hash, hash); lanes != 0) {
        return twins_.any(bucket.head[std::countr_zero(lanes)], isEnough);
      }
      if (!bucket.isFull()) {
        return false;
      }
    }
  }

  std::vector<Bucket> buckets_;  ///< a power of two of them, numbered by the top bits of the hash
  std::vector<std::uint32_t> hashes_;  ///< per slot; kEmpty when it is not filed
  TwinRings twins_;
  int shift_ = 31;
  std::size_t used_ = 0;     ///< lanes that are not empty, erased ones included
  std::size_t entries_ = 0;  ///< lanes that hold a ring
  int degenerate_ = 0;       ///< slots filed under fewer than three corners
};

}  // namespace zel
