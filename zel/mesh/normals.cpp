// Normals of nodes from faces and from grids.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>
#include <vector>

#include "zel/core/constants.h"
#include "zel/core/memory.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/index/node_index.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace {

using zel::NodeSlots;

// v x w, normalised.
void unitCross(const double* v, const double* w, float* out) {
  for (int k = 0; k < 3; ++k) {
    const int i = (k + 1) % 3;
    const int j = (k + 2) % 3;
    out[k] = static_cast<float>(v[i] * w[j] - v[j] * w[i]);
  }
  slNormalize(out);
}

// Gives every corner of a face the normal spanned by its first, second and last.
template <int kCount>
void spreadFlatNormal(NodeSlots& nodes, const zel::FaceRecord<kCount>& face) {
  for (const int corner : face.corners) {
    if (!nodes.exists(corner)) {
      return;
    }
  }
  const float* origin = nodes[face.corners[0]].point();
  const float* second = nodes[face.corners[1]].point();
  const float* last = nodes[face.corners[kCount - 1]].point();
  double v[3];
  double w[3];
  for (int k = 0; k < 3; ++k) {
    v[k] = double{second[k]} - origin[k];
    w[k] = double{last[k]} - origin[k];
  }
  float normal[3];
  unitCross(v, w, normal);
  for (const int corner : face.corners) {
    nodes.changeUnindexed()[corner].SetNormM(normal);
  }
}

// A row-major grid of nodes, seen from one of them.
class GridNode {
 public:
  /// @param slot a slot of the list, the node's.
  GridNode(NodeSlots& nodes, int slot, int cols, bool isLastRow, bool isLastCol)
      : nodes_(nodes), slot_(slot), cols_(cols), isLastRow_(isLastRow), isLastCol_(isLastCol) {}

  void generateNormal() {
    float u[3] = {};
    float w[3] = {};
    const bool isCopied = !columnDirection(u);
    if (!rowDirection(w) || isCopied || isNeighbourMissing_) {
      return;
    }
    const double along[3] = {u[0], u[1], u[2]};
    const double across[3] = {w[0], w[1], w[2]};
    float normal[3];
    unitCross(along, across, normal);
    nodes_.changeUnindexed()[slot_].SetNormM(normal);
  }

 private:
  // Both directions answer false when they have copied a neighbour's normal instead.
  bool columnDirection(float* u) {
    if (isLastCol_) {
      return difference(slot_ - 1, slot_, u) || !copyNormalOf(slot_ - 1);
    }
    if (difference(slot_, slot_ + 1, u)) {
      return true;
    }
    if (isLastRow_) {
      return !copyNormalOf(slot_ - cols_);
    }
    difference(slot_, slot_ + cols_ + 1, u);
    return true;
  }

  bool rowDirection(float* w) {
    if (isLastRow_) {
      return difference(slot_ - cols_, slot_, w) || !copyNormalOf(slot_ - cols_);
    }
    if (difference(slot_, slot_ + cols_, w)) {
      return true;
    }
    if (isLastCol_) {
      return !copyNormalOf(slot_ - 1);
    }
    difference(slot_, slot_ + cols_ + 1, w);
    return true;
  }

  // @return whether the two nodes are apart.
  bool difference(std::int64_t from, std::int64_t to, float* out) {
    if (std::max(from, to) >= nodes_.count()) {
      isNeighbourMissing_ = true;
      return true;
    }
    const float* start = nodes_[static_cast<int>(from)].point();
    const float* end = nodes_[static_cast<int>(to)].point();
    double sum = 0;
    for (int k = 0; k < 3; ++k) {
      out[k] = static_cast<float>(double{end[k]} - start[k]);
      sum += std::fabs(double{out[k]});
    }
    return !(sum < zel::kGridDegenerate);
  }

  bool copyNormalOf(std::int64_t other) {
    nodes_.changeUnindexed()[slot_].SetNormM(nodes_[static_cast<int>(other)].normal());
    return true;
  }

  NodeSlots& nodes_;
  int slot_;
  std::int64_t cols_;
  bool isLastRow_;
  bool isLastCol_;
  bool isNeighbourMissing_ = false;
};

}  // namespace

void NodeArr::ReGenNormalVectM(const TriangleCL& triangle) {
  spreadFlatNormal(nodes_, triangle.record());
}

void NodeArr::ReGenNormalVectM(const QuadCL& quad) { spreadFlatNormal(nodes_, quad.record()); }

int NodeArr::ReGenNormalVectM(int row, int col, int rows, int cols) {
  const bool isInGrid = row >= 0 && row < rows && col >= 0 && col < cols;
  const std::int64_t slot = std::int64_t{row} * cols + col;
  if (rows >= 2 && cols >= 2 && isInGrid && slot < nodes_.count()) {
    GridNode(nodes_, static_cast<int>(slot), cols, row == rows - 1, col == cols - 1)
        .generateNormal();
  }
  return 1;
}

int NodeArr::CalculateNormByFaceviewLst(const TriangleArr& tris, const QuadArr& /*quads*/) {
  std::vector<bool> isUsed;
  try {
    isUsed.resize(static_cast<std::size_t>(nodes_.count()));
  } catch (const std::bad_alloc&) {
    kwErrorMessage(zel::kOutOfMemory);
    return 1;
  }
  for (int face = 0; face < tris.GetBoundM(); ++face) {
    for (const int corner : tris[face].record().corners) {
      if (nodes_.holds(corner)) {
        isUsed[static_cast<std::size_t>(corner)] = true;
      }
    }
  }
  for (int slot = 0; slot < nodes_.count(); ++slot) {
    if (isUsed[static_cast<std::size_t>(slot)]) {
      slNormalize(nodes_.changeUnindexed()[slot].normal());
    }
  }
  return 1;
}

int NodeArr::NegativeNormalVectM() {
  NodeCL* store = nodes_.changeUnindexed();
  for (int slot = 0; slot < nodes_.count(); ++slot) {
    if (nodes_.isLive(slot)) {
      const float* n = store[slot].normal();
      const float flipped[3] = {-n[0], -n[1], -n[2]};
      store[slot].SetNormM(flipped);
    }
  }
  return 1;
}
