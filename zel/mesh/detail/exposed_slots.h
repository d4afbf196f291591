#pragma once

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace zel {

/// Slots of which a caller holds a reference: they may change unseen, so that every search tests
/// them as they are.
class ExposedSlots {
 public:
  /// @param bound of the list. @return false when these are too many to keep track of.
  [[nodiscard]] bool add(int slot, int bound) {
    const auto place = std::lower_bound(slots_.begin(), slots_.end(), slot);
    if (place != slots_.end() && *place == slot) {
      return true;
    }
    // Testing them all must stay far below the cost of a walk.
    if (static_cast<int>(slots_.size()) >= 64 + bound / 128) {
      return false;
    }
    try {
      slots_.insert(place, slot);
    } catch (const std::bad_alloc&) {
      return false;
    }
    return true;
  }
  [[nodiscard]] bool contains(int slot) const {
    return !slots_.empty() && std::binary_search(slots_.begin(), slots_.end(), slot);
  }
  /// Ascending.
  [[nodiscard]] const std::vector<int>& slots() const { return slots_; }
  [[nodiscard]] std::vector<int> takeAll() { return std::exchange(slots_, {}); }

 private:
  std::vector<int> slots_;
};

/// Puts off building an index until the walks done without it have cost about as much.
class WalkBudget {
 public:
  /// @param walks how many walks over the list an index costs.
  explicit WalkBudget(int walks) : walks_(walks) {}
  /// Notes that `slots` slots were walked. @return whether an index over `bound` slots pays now.
  bool spend(int slots, int bound) {
    spent_ += slots;
    return spent_ > std::int64_t{walks_} * bound;
  }
  void restart() { spent_ = 0; }

 private:
  int walks_;
  std::int64_t spent_ = 0;
};

}  // namespace zel
