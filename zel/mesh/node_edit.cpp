// Adding, merging, reordering and moving nodes.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <vector>

#include "zel/containers/detail/indexed_slots_impl.h"
#include "zel/containers/int_arr.h"
#include "zel/geometry/detail/transform_many.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/node_index.h"
#include "zel/mesh/node.h"
#include "zel/mesh/triangle.h"

namespace {

/// The positions of the first `bound` nodes.
zel::VectorRun positions(NodeCL* store, int bound) {
  return {store->point(), static_cast<std::size_t>(std::max(bound, 0)), sizeof(NodeCL)};
}

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

int NodeArr::AddNodeByIndex(int i, const NodeArr& src) {
  // A slot beyond the bound may be live, too: plain files put nodes there.
  const bool isTaken = nodes_.at(i).IsAvailableM() == zel::kTagAvailable;
  if (src.nodes_.isLive(i) && !isTaken) {
    nodes_.set(src.nodes_[i], i);
  }
  return 1;
}

void NodeArr::AddPntAndNormM(NodeCL& scratch, const float* limit, float x, float y, float z,
                             float /*unused1*/, float /*unused2*/, float /*unused3*/) {
  const bool isInside =
      x > -zel::kFineTolerance && x < limit[0] && y > -zel::kFineTolerance && y < limit[1];
  if (!isInside) {
    return;
  }
  const int slot = nodes_.count();
  float point[3] = {x, y, z};
  if (slot < nodes_.length()) {
    nodes_.changeUnindexed()[slot].SetPntM(point);
    nodes_.takeUpNextSlot();
    return;
  }
  point[2] = z <= 0 ? zel::kTolerance : z;
  scratch.SetPntM(point);
  nodes_.add(scratch);
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

void NodeArr::InverseNodeLstM() {
  NodeCL* store = nodes_.changeAll().data();
  std::reverse(store, store + nodes_.count());
}

void NodeArr::InverseMeshNodeLstM(int rows, int cols) {
  if (rows < 2 || cols < 1 || std::int64_t{rows} * cols > nodes_.count()) {
    return;
  }
  NodeCL* store = nodes_.changeAll().data();
  for (int row = 0; row < rows / 2; ++row) {
    std::swap_ranges(store + row * cols, store + (row + 1) * cols, store + (rows - 1 - row) * cols);
  }
}

void NodeArr::TransByMatrixM(const float* matrix) {
  NodeCL* store = nodes_.changeAll().data();
  zel::transformPointsAndDirections(matrix, positions(store, nodes_.count()), store->normal());
}

void NodeArr::ScaleM(const float* matrix) {
  NodeCL* store = nodes_.changeAll().data();
  zel::transformPoints(matrix, positions(store, nodes_.count()));
}

int NodeArr::ExtendByRotateToCircleM(int n, const float* p, const float* dir) {
  const std::int64_t length = (std::int64_t{n} + 1) * nodes_.count();
  if (n < 1 || length < 1 || length > std::numeric_limits<int>::max()) {
    return 1;
  }
  float step[16];
  slGetRotateMatrix(p, dir, static_cast<float>(double{zel::kTwoPi} / (n - 1)), step);
  NodeArr ring(*this);
  if (!nodes_.reserve(static_cast<int>(length))) {
    return 1;
  }
  for (int k = 1; k < n; ++k) {
    ring.TransByMatrixM(step);
    for (int slot = 0; slot < ring.nodes_.count(); ++slot) {
      if (ring.nodes_.isLive(slot)) {
        nodes_.add(ring.nodes_[slot]);
      }
    }
  }
  return 1;
}
