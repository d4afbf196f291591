// Merging nodes: on the way in, by a list, and all that are left.

#include <new>
#include <vector>

#include "zel/containers/detail/indexed_slots_impl.h"
#include "zel/containers/int_arr.h"
#include "zel/mesh/detail/index/node_index.h"
#include "zel/mesh/node.h"
#include "zel/mesh/triangle.h"

namespace {

using zel::NodeIndex;

// Apart from the quick answer, so that this stays as short as it can be.
[[gnu::noinline]] int mergeSlowly(zel::NodeSlots& nodes, const NodeCL& node, int quick) {
  const int found =
      quick == NodeIndex::kUndecided ? zel::firstNodeAt(nodes, node.point()) : zel::kNoIndex;
  return found == zel::kNoIndex ? nodes.add(node) : found;
}

}  // namespace

int NodeArr::MergeNodeLstM(const NodeCL& node, int* idx) {
  const NodeIndex* index = nodes_.knownIndex();
  const int quick = index == nullptr ? NodeIndex::kUndecided : index->quickAt(node.point());
  *idx = quick >= 0 ? quick : mergeSlowly(nodes_, node, quick);
  return 1;
}

void NodeArr::MergeNodesM(IntArr* lst, int from, int to, TriangleArr* tris) {
  int target = zel::kNoIndex;
  lst->GetItemM(&target, to);
  if (target < 0) {
    return;
  }
  for (int k = from < 0 ? 0 : from; k < to; ++k) {
    int old = zel::kNoIndex;
    lst->GetItemM(&old, k);
    if (old < 0) {
      continue;
    }
    if (tris != nullptr) {
      tris->ChangeNodeIdxM(old, target);
    }
    if (old != target && nodes_.isLive(old)) {
      nodes_.remove(old);
    }
    lst->DelItemM(k);
  }
}

namespace {

// Sets the first entry of each live node but the first to 0.
template <class IsLive>
void pointFirstEntriesToZero(IntArr* lst, int nodeCount, IsLive isLive) {
  std::vector<bool> isDone(static_cast<std::size_t>(nodeCount));
  int* entries = lst->getCurrentItemPrtM();
  for (int k = 0; k < lst->GetBoundM(); ++k) {
    const int node = entries[k];
    if (node > 0 && node < nodeCount && isLive(node) && !isDone[static_cast<std::size_t>(node)]) {
      isDone[static_cast<std::size_t>(node)] = true;
      entries[k] = 0;
    }
  }
}

}  // namespace

void NodeArr::PurgeDeletedNodes(IntArr* lst, TriangleArr* tris) {
  const int count = nodes_.count();
  lst->PurgeDeletedItemM();
  try {
    pointFirstEntriesToZero(lst, count, [this](int slot) { return nodes_.isLive(slot); });
  } catch (const std::bad_alloc&) {
    kwErrorMessage(zel::kOutOfMemory);
    return;
  }
  int last = 0;
  for (int slot = 1; slot < count; ++slot) {
    if (!nodes_.isLive(slot)) {
      continue;
    }
    last = slot;
    if (tris != nullptr) {
      tris->ChangeNodeIdxM(slot, 0);
    }
  }
  if (last > 0) {
    nodes_.change(0, [&](NodeCL& node) { node = nodes_[last]; });
  }
}
