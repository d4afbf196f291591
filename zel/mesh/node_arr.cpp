// The list of nodes: family operations, reading, extents.

#include "zel/containers/detail/rows.h"
#include "zel/containers/point3d_arr.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/index/node_index.h"
#include "zel/mesh/detail/points/extents.h"
#include "zel/mesh/node.h"

template class zel::SlotStore<NodeCL, zel::ElementPolicy>;
template class zel::IndexedSlots<NodeCL, zel::ElementPolicy, zel::NodeIndex>;

#define ZEL_ARR NodeArr
#define ZEL_SLOT NodeCL
#define ZEL_IN const NodeCL&
#define ZEL_OUT NodeCL*
#define ZEL_SLOTS nodes_
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_LAST_INDEX
#define ZEL_HAS_KEEPING_CLEAR
#define ZEL_HAS_ELEMENTS
#include "zel/containers/detail/family.inl"

namespace {

constexpr float kZeroPoint[3] = {0.0F, 0.0F, 0.0F};

}  // namespace

void NodeArr::GetPntM(int index, float* point) const { nodes_.at(index).GetPntM(point); }

void NodeArr::GetNormalM(int index, float* normal) const { nodes_.at(index).GetNormalM(normal); }

void NodeArr::GetOnePntM(int index, float* point) const {
  GetPntM(nodes_.holds(index) ? index : -1, point);
}

void NodeArr::SetNodeNormM(int index, const float* normal) {
  if (nodes_.exists(index)) {
    nodes_.changeUnindexed()[index].SetNormM(normal);
  }
}

void NodeArr::GetPntLstM(Point3DArr* out) const {
  out->IntialSizeM(nodes_.count());
  for (int slot = 0; slot < nodes_.count(); ++slot) {
    out->SetItemM(nodes_[slot].point(), slot);
  }
}

void NodeArr::GetMinXY(float* minX, float* minY) const {
  *minX = zel::kInfinity;
  *minY = zel::kInfinity;
  for (int slot = 0; slot < nodes_.count(); ++slot) {
    if (nodes_.isLive(slot)) {
      *minX = std::min(*minX, nodes_[slot].point()[0]);
      *minY = std::min(*minY, nodes_[slot].point()[1]);
    }
  }
}

void NodeArr::GetMaxMinM(const float* a1, const float* a2, const float* a3, float* r1, float* r2,
                         float* r3) const {
  const zel::Extents extents(a1, a2, a3, r1, r2, r3);
  const int first = nodes_.nextLive(-1);
  for (int slot = first; slot >= 0; slot = nodes_.nextLive(slot)) {
    extents.take(nodes_[slot].point(), slot == first);
  }
}

int NodeArr::GenerateVectorM(int i, int j, float* out) const {
  float from[3];
  float to[3];
  GetPntM(i, to);
  GetPntM(j, from);
  (zel::Vec3(to) - from).store(out);
  return 1;
}

int NodeArr::GeneratePositiveVectorM(int i, int j, float* out) const {
  GenerateVectorM(i, j, out);
  if (out[0] < 0) {
    (-zel::Vec3(out)).store(out);
  }
  return 1;
}

int NodeArr::IsOneLineM() const {
  const auto& store = nodes_.store();
  if (store.available() < 3) {
    return 1;
  }
  const int first = store.nextLive(-1);
  float line[3];
  int next = store.nextLive(first);
  while (next >= 0 &&
         (GeneratePositiveVectorM(first, next, line), slIsEqualPoint3D(line, kZeroPoint) == 1)) {
    next = store.nextLive(next);
  }
  if (next < 0) {
    return 1;
  }
  slNormalize(line);
  for (next = store.nextLive(next); next >= 0; next = store.nextLive(next)) {
    float other[3];
    GeneratePositiveVectorM(first, next, other);
    if (slIsEqualPoint3D(other, kZeroPoint) == 1) {
      continue;
    }
    slNormalize(other);
    if (slIsEqualPoint3D(line, other) == 0) {
      return 0;
    }
  }
  return 1;
}
