// Adding, reordering and moving nodes.

#include <algorithm>
#include <cstdint>
#include <limits>

#include "zel/containers/detail/indexed_slots_impl.h"
#include "zel/geometry/detail/transform_many.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/index/node_index.h"
#include "zel/mesh/node.h"

namespace {

/// The positions of the first `bound` nodes.
zel::VectorRun positions(NodeCL* store, int bound) {
  return {store->point(), static_cast<std::size_t>(std::max(bound, 0)), sizeof(NodeCL)};
}

}  // namespace

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
