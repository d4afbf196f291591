#pragma once

/// @file
/// The index of a node list.

#include "zel/mesh/detail/exposed_slots.h"
#include "zel/mesh/detail/indexed_slots_impl.h"
#include "zel/mesh/detail/nearest_tree.h"
#include "zel/mesh/detail/node_grid.h"
#include "zel/mesh/node.h"

namespace zel {

/// Answers the two searches of a node list by position.
///
/// The grid holds exactly the live slots below the bound that nobody holds a reference of. The
/// trees hold slots as they were when each was built; those that changed since are kept in a list
/// and, when that grows long, make a tree together with those that are not much larger. So there
/// are few trees, and a slot goes from one to the next only a few times; see J. L. Bentley, J. B.
/// Saxe, Decomposable Searching Problems, 1980.
class NodeIndex {
 public:
  // What IndexedSlots tells; see there.
  [[nodiscard]] bool expose(const NodeCL* nodes, int slot, int bound);
  void forget(const NodeCL* nodes, int slot);
  void learn(const NodeCL* nodes, int slot, bool isInList);
  void drop();
  void storeMoved(const NodeCL* nodes, int bound);

  /// The lowest live node equal to p or kNoIndex, where one look tells; else kUndecided.
  [[nodiscard]] int quickAt(const float* p) const {
    return isGridBuilt_ && exposed_.slots().empty() ? grid_.quickNear(p) : kUndecided;
  }
  static constexpr int kUndecided = NodeGrid::kUndecided;
  /// The lowest live node equal to p, or kNoIndex.
  [[nodiscard]] int lowestAt(const NodeCL* nodes, int bound, const float* p);
  /// The nearest live node, or kNoIndex.
  [[nodiscard]] int nearestTo(const NodeCL* nodes, int bound, const float* p);

 private:
  [[nodiscard]] bool hasGrid(const NodeCL* nodes, int bound);
  void giveUpGrid();
  void buildGrid(const NodeCL* nodes, int bound);
  [[nodiscard]] bool hasTrees(const NodeCL* nodes, int bound);
  void plant(const NodeCL* nodes, int bound, std::vector<int> slots);
  void takeInChanges(const NodeCL* nodes, int bound);
  void fellTrees();
  void noteChange(int slot);

  ExposedSlots exposed_;

  NodeGrid grid_;
  bool isGridBuilt_ = false;
  WalkBudget gridBudget_{4};
  bool isGridInVain_ = false;  ///< tried, and not worth trying again until the store moves

  std::vector<NearestTree> trees_;  ///< the largest first
  bool hasTrees_ = false;
  std::vector<int> changed_;    ///< since the last tree was built; slots may repeat
  std::vector<int> notFinite_;  ///< at no place of a tree; slots may repeat
  int builtBound_ = 0;
  WalkBudget treeBudget_{32};
};

using NodeSlots = IndexedSlots<NodeCL, NodeIndex>;

/// The lowest live node equal to p, or kNoIndex.
[[nodiscard]] int firstNodeAt(const NodeSlots& nodes, const float* p);
/// The nearest live node, the lowest of equals, or kNoIndex.
[[nodiscard]] int nearestNode(const NodeSlots& nodes, const float* p);

}  // namespace zel
