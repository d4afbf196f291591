#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "zel/containers/detail/slot_table.h"

namespace zel {

/// Triangles by the set of their corners. An entry may be out of date when its slot was changed
/// through a reference; callers look at the face itself.
///
/// Functions that add may throw std::bad_alloc and leave the table fit only for clear(). Searches
/// but surelyLacks() may run in several threads.
class CornerSets {
 public:
  void clear() {
    table_.clear();
    degenerate_ = 0;
  }
  /// Prepares for `count` slots.
  void reserve(int count) { table_.reserve(count); }
  /// Files a slot under its corners, wherever it was filed before.
  void put(int slot, const int* corners) {
    const bool isAsked =
        askedHash_ != SlotTable::kNotFiled && std::equal(corners, corners + 3, asked_.begin());
    const std::uint32_t hash = isAsked ? askedHash_ : Key(corners).hash();
    degenerate_ += isDegenerate(hash) - isDegenerate(table_.put(slot, hash));
  }
  void remove(int slot) { degenerate_ -= isDegenerate(table_.remove(slot)); }

  /// True: no slot is filed under a set of corners that are all among three distinct nodes. False:
  /// that may be.
  [[nodiscard]] bool surelyLacks(const int* nodes) {
    asked_ = {nodes[0], nodes[1], nodes[2]};
    askedHash_ = hashOf(sorted(nodes));
    return degenerate_ == 0 && table_.surelyLacks(askedHash_);
  }
  /// Asks `isEnough(slot)` about every slot filed under a set of corners that are all among three
  /// nodes, until it says yes. @return whether it did.
  template <class IsEnough>
  bool anyWithin(const int* nodes, IsEnough isEnough) const {
    const Key all(nodes);
    if (all.count == 3 && table_.any(all.hash(), isEnough)) {
      return true;
    }
    for (unsigned subset = 1; degenerate_ > 0 && subset < (1U << all.count); ++subset) {
      const Key key(all, subset);
      if (key.count < 3 && table_.any(key.hash(), isEnough)) {
        return true;
      }
    }
    return false;
  }
  /// Whether the slot is filed under its corners.
  [[nodiscard]] bool isFiled(int slot, const int* corners) const {
    return table_.hashOf(slot) == Key(corners).hash();
  }
  [[nodiscard]] bool validate() const { return table_.validate(); }

 private:
  using Corners = std::array<int, 3>;

  // Without branches: the order of corners is as good as random.
  [[nodiscard]] static Corners sorted(const int* corners) {
    const int low = std::min(corners[0], corners[1]);
    const int high = std::max(corners[0], corners[1]);
    const int rest = std::max(low, corners[2]);
    return {std::min(low, corners[2]), std::min(high, rest), std::max(high, rest)};
  }
  [[nodiscard]] static std::uint32_t hashOf(const Corners& nodes) {
    const auto part = [&](std::size_t k) { return static_cast<std::uint32_t>(nodes[k]); };
    std::uint64_t sum = (std::uint64_t{part(0)} << 32 | part(1)) * SlotTable::kMix;
    sum = ((sum ^ (sum >> 32)) + part(2)) * SlotTable::kMix;
    return SlotTable::hashFrom((sum ^ (sum >> 32)) * SlotTable::kMix);
  }
  // Hashes of fewer than three corners are odd.
  [[nodiscard]] static int isDegenerate(std::uint32_t hash) { return static_cast<int>(hash & 1U); }

  /// The distinct corners, ascending, the last repeated to fill three places.
  struct Key {
    Corners nodes;
    int count = 3;

    explicit Key(const int* corners) : nodes(sorted(corners)) {
      if (nodes[0] == nodes[1] || nodes[1] == nodes[2]) {
        closeUp(std::unique(nodes.begin(), nodes.end()));
      }
    }
    /// The members of `all` whose bits are set, at least one.
    Key(const Key& all, unsigned members) : nodes{} {
      auto end = nodes.begin();
      for (unsigned k = 0; k < 3; ++k) {
        if ((members >> k & 1U) != 0) {
          *end++ = all.nodes[k];
        }
      }
      closeUp(end);
    }
    void closeUp(Corners::iterator end) {
      count = static_cast<int>(end - nodes.begin());
      std::fill(end, nodes.end(), *(end - 1));
    }
    [[nodiscard]] std::uint32_t hash() const { return hashOf(nodes) | (count < 3 ? 1U : 0U); }
  };

  SlotTable table_;
  int degenerate_ = 0;  ///< slots filed under fewer than three corners
  /// The set last asked about, often the next to be filed.
  Corners asked_{};
  std::uint32_t askedHash_ = SlotTable::kNotFiled;
};

}  // namespace zel
