#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "zel/containers/detail/lanes.h"
#include "zel/containers/detail/twins.h"

namespace zel {

/// Slots by a hash of their content: a table in buckets. Slots with one hash are twins.
///
/// The low half of each hash stands in a table of its own, a fifth of the other's size: most
/// searches find nothing and end there, within the processor's caches.
///
/// Functions that add may throw std::bad_alloc and leave the table fit only for clear(). Searches
/// may run in several threads.
class SlotTable {
 public:
  /// Makes a hash fit for the table out of the high half of a well-mixed number. Bit 0 is free for
  /// the caller to set.
  [[nodiscard]] static std::uint32_t hashFrom(std::uint64_t mixed) {
    return (static_cast<std::uint32_t>(mixed >> 32) & ~3U) | 2U;
  }
  static constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;
  /// In place of a hash: the slot is not in the table.
  static constexpr std::uint32_t kNotFiled = 0;

  void clear();
  /// Prepares for `count` slots.
  void reserve(int count);
  /// Files a slot under a hash, wherever it was filed before.
  /// @return the hash that it was filed under, or kNotFiled.
  std::uint32_t put(int slot, std::uint32_t hash);
  /// Takes a slot out if it is filed. @return as put().
  std::uint32_t remove(int slot);
  [[nodiscard]] std::uint32_t hashOf(int slot) const {
    const auto number = static_cast<std::size_t>(slot);
    return number < hashes_.size() ? hashes_[number] : kNotFiled;
  }

  /// True: no slot is filed under the hash. False: that may be.
  [[nodiscard]] bool surelyLacks(std::uint32_t hash) const {
    const Tags& tags = tags_[homeOf(hash)];
    return lanesEqual(tags.of, tagOf(hash)) == 0 && !tags.isFull();
  }
  /// Asks `isEnough(slot)` about the slots filed under a hash, the lowest first, until it says yes.
  /// @return whether it did.
  template <class IsEnough>
  bool any(std::uint32_t hash, IsEnough&& isEnough) const {
    const Place place = find(hash);
    return place.lane != kNowhere && twins_.any(entries_[place.bucket].head[place.lane], isEnough);
  }
  /// Length of the table: it follows the number of different hashes, not of changes.
  [[nodiscard]] std::size_t length() const { return tags_.size() * kLanes; }
  /// Whether every slot filed can be found under its hash.
  [[nodiscard]] bool validate() const;

 private:
  static constexpr int kLanes = 8;
  static constexpr std::uint16_t kEmpty = 0;
  static constexpr std::uint16_t kErased = 1;
  static constexpr int kNowhere = -1;

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

  std::vector<Tags> tags_;        ///< a power of two of them, numbered by the top bits of the hash
  std::vector<Entries> entries_;  ///< of the same buckets
  std::vector<std::uint32_t> hashes_;  ///< per slot, or kNotFiled
  Twins twins_;
  int shift_ = 31;
  std::size_t used_ = 0;    ///< lanes that are not empty, erased ones included
  std::size_t groups_ = 0;  ///< lanes that hold slots
};

}  // namespace zel
