#pragma once

/// @file
/// What every index of a slot array is made of. See IndexedSlots for how an array keeps one.

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace zel {

/// Slots of which a caller holds a reference: they may change unseen, so that every search tests
/// them as they are.
class ExposedSlots {
 public:
  /// @param bound of the array. @return false when these are too many to keep track of.
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
  /// The lowest one below `end` for which `matches(slot)` holds; -1 when there is none.
  template <class Matches>
  [[nodiscard]] int lowest(int end, Matches matches) const {
    for (const int slot : slots_) {
      if (slot >= end) {
        break;
      }
      if (matches(slot)) {
        return slot;
      }
    }
    return -1;
  }
  /// Ascending.
  [[nodiscard]] const std::vector<int>& slots() const { return slots_; }
  [[nodiscard]] std::vector<int> takeAll() { return std::exchange(slots_, {}); }

 private:
  std::vector<int> slots_;
};

/// Puts off building until the walks done without have cost about as much. Several threads may
/// spend at once; what one of them then forgets to count does no harm.
class WalkBudget {
 public:
  /// @param walks how many walks over the array building costs.
  explicit WalkBudget(int walks) : walks_(walks) {}
  /// Notes that `slots` slots were walked.
  void spend(std::int64_t slots) const {
    spent_.store(spent_.load(std::memory_order_relaxed) + slots, std::memory_order_relaxed);
  }
  /// Whether it pays to build for `bound` slots.
  [[nodiscard]] bool isSpent(int bound) const {
    return spent_.load(std::memory_order_relaxed) > std::int64_t{walks_} * bound;
  }
  void restart() const { spent_.store(0, std::memory_order_relaxed); }

 private:
  int walks_;
  mutable std::atomic<std::int64_t> spent_ = 0;
};

/// A part of an index, built by the search that finds the budget spent. Several threads may search
/// at once: one of them builds under a lock, and from then on finding the part costs no lock.
/// Changes, which nobody makes while others search, go to known().
template <class Content>
class LazyPart {
 public:
  /// @param arguments of the content's constructor.
  template <class... Arguments>
  explicit LazyPart(int walks, Arguments... arguments) : budget(walks), content_(arguments...) {}

  /// The content, or null when it has not been built.
  [[nodiscard]] Content* known() { return isBuilt() ? &content_ : nullptr; }
  [[nodiscard]] const Content* known() const { return isBuilt() ? &content_ : nullptr; }
  /// The content, built by `build(content)` when that pays for `bound` slots; null when a walk must
  /// do. Refused memory puts the building off.
  template <class Build>
  [[nodiscard]] const Content* ready(int bound, Build build) const {
    return isBuilt() || (budget.isSpent(bound) && make(build)) ? &content_ : nullptr;
  }
  void drop() {
    isBuilt_.store(false, std::memory_order_relaxed);
    content_.clear();
    budget.restart();
  }

  WalkBudget budget;

 private:
  [[nodiscard]] bool isBuilt() const { return isBuilt_.load(std::memory_order_acquire); }
  template <class Build>
  [[gnu::noinline]] bool make(Build build) const {
    const std::lock_guard lock(building_);
    if (!isBuilt()) {
      try {
        build(content_);
        isBuilt_.store(true, std::memory_order_release);
      } catch (const std::bad_alloc&) {
        content_.clear();
        budget.restart();
      }
    }
    return isBuilt();
  }

  mutable Content content_;
  mutable std::atomic<bool> isBuilt_ = false;
  mutable std::mutex building_;
};

/// Base of the indexes. An index also has, with `slots` the array's store:
///   forget(slots, slot)           the slot below the bound is about to change;
///   learn(slots, slot, isInList)  it has, and is (or is no longer) below the bound; may throw
///                                 std::bad_alloc, and then drop() follows;
///   drop()                        anything may have changed;
///   validate(slots, bound)        whether it is true of all slots that are not exposed.
/// A slot that becomes exposed is forgotten when it stands among the exposed ones, and then no more
/// heard of. Searches are const and may run in several threads.
struct SlotIndex {
  ExposedSlots exposed;
  int changesSinceCheck = 0;
};

}  // namespace zel
