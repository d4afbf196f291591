#pragma once

#include <climits>
#include <cstdint>
#include <vector>

namespace zel {

/// Triangles by the set of their corners: chains of slots under a hash of the set. An entry may be
/// out of date when its slot was changed through a reference; callers look at the face itself.
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
    if (all.count == 3 && anyUnder(all, isEnough)) {
      return true;
    }
    for (unsigned subset = 1; degenerate_ > 0 && subset < (1U << all.count); ++subset) {
      const Key key(all, subset);
      if (key.count < 3 && anyUnder(key, isEnough)) {
        return true;
      }
    }
    return false;
  }

 private:
  static constexpr int kEnd = -1;
  static constexpr int kNotFiled = INT_MIN;

  /// The distinct corners, ascending, the last repeated to fill three places.
  struct Key {
    int nodes[3];
    int count;

    explicit Key(const int* corners);
    /// The members of `all` whose bits are set.
    Key(const Key& all, unsigned members);
    /// Odd when fewer than three corners are distinct.
    [[nodiscard]] std::uint32_t hash() const;
  };
  struct Link {
    std::uint32_t hash = 0;
    int next = kEnd;
    int previous = kNotFiled;  ///< a slot, or ~head when first of its chain
  };

  [[nodiscard]] std::size_t headOf(std::uint32_t hash) const { return hash >> shift_; }
  Link& at(int slot) { return links_[static_cast<std::size_t>(slot)]; }
  void grow(std::size_t count);
  void link(int slot);

  template <class IsEnough>
  bool anyUnder(const Key& key, IsEnough& isEnough) const {
    if (heads_.empty()) {
      return false;
    }
    const std::uint32_t hash = key.hash();
    for (int slot = heads_[headOf(hash)]; slot != kEnd;) {
      const Link& link = links_[static_cast<std::size_t>(slot)];
      if (link.hash == hash && isEnough(slot)) {
        return true;
      }
      slot = link.next;
    }
    return false;
  }

  std::vector<int> heads_;  ///< a power of two of chains, by the top bits of the hash
  std::vector<Link> links_;
  int shift_ = 32;
  int degenerate_ = 0;  ///< slots filed under fewer than three corners
};

}  // namespace zel
