#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <vector>

#include "zel/mesh/detail/lanes.h"
#include "zel/mesh/detail/twin_rings.h"

namespace zel {

/// Triangles by the set of their corners: a table of hashes in buckets. Slots whose sets have one
/// hash form a ring. An entry may be out of date when its slot was changed through a reference;
/// callers look at the face itself.
///
/// The low half of each hash stands in a table of its own, a fifth of the other's size: most
/// searches find nothing and end there, within the processor's caches.
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

  /// True: no slot is filed under a set of corners that are all among three distinct nodes. False:
  /// that may be.
  [[nodiscard]] bool surelyLacks(const int* nodes) {
    asked_ = {nodes[0], nodes[1], nodes[2]};
    askedHash_ = hashOf(sorted(nodes));
    const Tags& tags = tags_[homeOf(askedHash_)];
    return degenerate_ == 0 && lanesEqual(tags.of, tagOf(askedHash_)) == 0 && !tags.isFull();
  }
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
  static constexpr std::uint16_t kEmpty = 0;
  static constexpr std::uint16_t kErased = 1;
  static constexpr std::uint32_t kNotFiled = 0;

  using Corners = std::array<int, 3>;

  /// The distinct corners, ascending, the last repeated to fill three places.
  struct Key {
    Corners nodes;
    int count;

    explicit Key(const int* corners);
    /// The members of `all` whose bits are set.
    Key(const Key& all, unsigned members);
    /// 2 or more; odd when fewer than three corners are distinct.
    [[nodiscard]] std::uint32_t hash() const { return hashOf(nodes) | (count < 3 ? 1U : 0U); }
  };
  // Without branches: the order of corners is as good as random.
  [[nodiscard]] static Corners sorted(const int* corners) {
    const int low = std::min(corners[0], corners[1]);
    const int high = std::max(corners[0], corners[1]);
    const int rest = std::max(low, corners[2]);
    return {std::min(low, corners[2]), std::min(high, rest), std::max(high, rest)};
  }
  [[nodiscard]] static std::uint32_t hashOf(const Corners& nodes) {
    const auto part = [&](std::size_t k) { return static_cast<std::uint32_t>(nodes[k]); };
    std::uint64_t sum = (std::uint64_t{part(0)} << 32 | part(1)) * kMix;
    sum = ((sum ^ (sum >> 32)) + part(2)) * kMix;
    return (static_cast<std::uint32_t>((sum ^ (sum >> 32)) * kMix >> 32) & ~3U) | 2U;
  }
  static constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;

  /// Lanes fill in order; the last one empty means that no entry has moved on.
  struct alignas(16) Tags {
    std::uint16_t of[kLanes] = {};

    [[nodiscard]] bool isFull() const { return of[kLanes - 1] != kEmpty; }
  };
  struct alignas(64) Entries {
    std::uint32_t hash[kLanes] = {};
    int head[kLanes] = {};
  };
  struct Place {
    std::size_t bucket;  ///< where the search ended
    int lane;            ///< kNowhere: there is none
  };
  static constexpr int kNowhere = -1;

  [[nodiscard]] std::size_t homeOf(std::uint32_t hash) const { return hash >> shift_; }
  [[nodiscard]] std::size_t nextOf(std::size_t i) const { return (i + 1) & (tags_.size() - 1); }
  [[nodiscard]] static std::uint16_t tagOf(std::uint32_t hash) {
    return static_cast<std::uint16_t>(hash);
  }
  [[nodiscard]] Place find(std::uint32_t hash) const {
    for (std::size_t i = homeOf(hash);; i = nextOf(i)) {
      for (unsigned lanes = lanesEqual(tags_[i].of, tagOf(hash)); lanes != 0; lanes &= lanes - 1) {
        const int lane = std::countr_zero(lanes);
        if (entries_[i].hash[lane] == hash) {
          return {i, lane};
        }
      }
      if (!tags_[i].isFull()) {
        return {i, kNowhere};
      }
    }
  }
  void fill(std::size_t bucket, std::uint32_t hash, int head);
  void refill(std::size_t bucketCount);

  template <class IsEnough>
  bool anyUnder(std::uint32_t hash, IsEnough& isEnough) const {
    const Place place = find(hash);
    return place.lane != kNowhere && twins_.any(entries_[place.bucket].head[place.lane], isEnough);
  }

  std::vector<Tags> tags_;        ///< a power of two of them, numbered by the top bits of the hash
  std::vector<Entries> entries_;  ///< of the same buckets
  std::vector<std::uint32_t> hashes_;  ///< per slot, or kNotFiled
  TwinRings twins_;
  int shift_ = 31;
  std::size_t used_ = 0;   ///< lanes that are not empty, erased ones included
  std::size_t rings_ = 0;  ///< lanes that hold a ring
  int degenerate_ = 0;     ///< slots filed under fewer than three corners
  /// The set last asked about, often the next to be filed.
  Corners asked_{};
  std::uint32_t askedHash_ = kNotFiled;
};

}  // namespace zel
