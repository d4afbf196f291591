#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "zel/containers/detail/slot_index.h"
#include "zel/mesh/node.h"

namespace zel {

/// The best of the nodes looked at so far, by slDistance3() and then by index.
struct Nearest {
  float distance;
  int slot;

  /// Looks at one slot as it is now. @return whether it is live.
  bool tryNode(const NodeCL* nodes, int candidate, const float* p);
};

/// Nodes as they once were, for finding the nearest one. The nodes themselves decide: an entry
/// only says which slots are worth a look. A balanced k-d tree over an array; see J. L. Bentley,
/// Multidimensional Binary Search Trees, 1975.
class NearestTree {
 public:
  /// Takes in the live ones among `slots`, whose coordinates are finite. May throw std::bad_alloc.
  NearestTree(const NodeCL* nodes, const std::vector<int>& slots);
  [[nodiscard]] int size() const { return static_cast<int>(entries_.size()); }
  void appendSlots(std::vector<int>& slots) const;
  /// Improves `best`, by slots below the bound. @return the number of slots looked at in vain.
  int search(const NodeCL* nodes, int bound, const float* p, Nearest& best) const;

 private:
  struct Entry {
    float point[3];
    int slot;
  };
  struct Query {
    const NodeCL* nodes;
    int bound;
    const float* p;
    Nearest* best;
    int dead;

    void tryEntry(const Entry& entry);
  };
  void split(int first, int end);
  void search(int first, int end, Query& query) const;

  std::vector<Entry> entries_;
  std::vector<std::uint8_t> axes_;  ///< split axis of the range whose middle this is
};

/// Trees that follow a list. They hold slots as they were when each was built; those that changed
/// since are kept in a list and, when that grows long, make a tree together with those that are not
/// much larger. So there are few trees, and a slot goes from one to the next only a few times; see
/// J. L. Bentley, J. B. Saxe, Decomposable Searching Problems, 1980.
///
/// Several threads may search at once: trees never change, a search that finds too much changed
/// or too many of them dead makes others under a lock, and what a thread may still be looking at
/// stays until the next change of the list.
class NearestForest {
 public:
  /// Notes that a slot has changed. May throw std::bad_alloc, after which drop() must follow.
  void note(int slot);
  void drop();
  /// Improves `best` by every slot below the bound except those noted nowhere: the exposed ones.
  /// @return false when a walk must do.
  [[nodiscard]] bool search(const NodeCL* nodes, int bound, const float* p, Nearest& best) const;
  void noteWalk(int slots) const { budget_.spend(slots); }
  /// Whether every live slot that is not exposed is known.
  [[nodiscard]] bool validate(const NodeCL* nodes, int bound, const ExposedSlots& exposed) const;

 private:
  static constexpr int kWalks = 32;

  struct Trees {
    std::vector<std::shared_ptr<const NearestTree>> trees;  ///< the largest first
    std::vector<int> changed;    ///< since the last was built; slots may repeat
    std::vector<int> notFinite;  ///< at no place of a tree; slots may repeat
    int builtBound = 0;

    void plant(const NodeCL* nodes, int bound, std::vector<int> slots);
  };

  [[nodiscard]] const Trees* ready(const NodeCL* nodes, int bound) const;
  [[nodiscard]] bool isWorn(const Trees& trees, int bound) const;
  [[nodiscard]] const Trees* renew(const NodeCL* nodes, int bound, const Trees* worn) const;
  [[nodiscard]] std::unique_ptr<Trees> grow(const NodeCL* nodes, int bound,
                                            const Trees* before) const;

  WalkBudget budget_{kWalks};
  WalkBudget waste_{kWalks};  ///< slots that searches looked at in vain
  mutable std::mutex growing_;
  mutable std::atomic<Trees*> current_ = nullptr;  ///< the last of `kept_`
  mutable std::vector<std::unique_ptr<Trees>> kept_;
};

}  // namespace zel
