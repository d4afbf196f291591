// Searches in the list of nodes.

#include <cmath>

#include "zel/containers/detail/indexed_slots_impl.h"
#include "zel/containers/int_arr.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/index/node_index.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace {

using zel::NodeSlots;

template <int kCount>
void takeNearestCorner(const NodeSlots& nodes, const zel::FaceRecord<kCount>& face, const float* p,
                       float* dist, int* idx) {
  for (const int corner : face.corners) {
    if (!nodes.exists(corner)) {
      continue;
    }
    const float distance = slDistance3(p, nodes[corner].point());
    if (distance < *dist) {
      *dist = distance;
      *idx = corner;
    }
  }
}

// Distance of a node to the one that an entry of an index list names; infinite without one.
float distanceToEntry(const NodeSlots& nodes, const float* p, const IntArr& lst, int position) {
  int node = zel::kNoIndex;
  lst.GetItemM(&node, position);
  return nodes.exists(node) ? slDistance3(p, nodes[node].point()) : zel::kInfinity;
}

}  // namespace

void NodeArr::GetMinPntIdxM(const float* p, const float* d1, const float* d2, int* idx) const {
  double minA = zel::kInfinity;
  double minB = zel::kInfinity;
  for (int slot = 0; slot < nodes_.count(); ++slot) {
    const zel::Vec3 v = zel::Vec3(nodes_[slot].point()) - p;
    const double a = std::fabs(zel::dot(v, d1));
    const double b = std::fabs(zel::dot(v, d2));
    if ((a < minA || std::fabs(minA - a) < zel::kTolerance) && b < minB) {
      *idx = slot;
      minA = a;
      minB = b;
    }
  }
}

int NodeArr::GetNearestNodeM(NodeCL& out, const float* p) const {
  const int nearest = zel::nearestNode(nodes_, p);
  out = nodes_[nearest == zel::kNoIndex ? 1 : nearest];
  return nearest;
}

int NodeArr::GetNearestNodeM(float* dist, int* idx, const QuadCL& quad, const float* p) const {
  takeNearestCorner(nodes_, quad.record(), p, dist, idx);
  return *idx;
}

int NodeArr::GetNearestNodeM(float* dist, int* idx, const TriangleCL& triangle,
                             const float* p) const {
  takeNearestCorner(nodes_, triangle.record(), p, dist, idx);
  return *idx;
}

void NodeArr::GetNearestNodeIdxM(const NodeCL& node, const IntArr& lst, int* pos) const {
  float current = distanceToEntry(nodes_, node.point(), lst, *pos);
  if (!(current < zel::kInfinity)) {
    return;
  }
  for (int next = *pos + 1; next < lst.GetBoundM(); ++next) {
    const float distance = distanceToEntry(nodes_, node.point(), lst, next);
    if (!(distance < current)) {
      return;
    }
    current = distance;
    *pos = next;
  }
}

int NodeArr::GetSelectedIdxM(const float* matrix, const float* p, float radius,
                             float* outPnt) const {
  const double limit = double{radius} * radius;
  double best = limit;
  int selected = -1;
  for (int slot = 0; slot < nodes_.count(); ++slot) {
    if (!nodes_.isLive(slot)) {
      continue;
    }
    float seen[3];
    slMatrix16MultiPoint3(matrix, nodes_[slot].point(), seen);
    const double dx = double{seen[0]} - p[0];
    const double dz = double{seen[2]} - p[2];
    const double s = dx * dx + dz * dz;
    if (!(s < limit)) {
      continue;
    }
    if (s < best) {
      best = s;
      selected = slot;
    } else if (s - best < zel::kTolerance && slDistance3(p, seen) < limit) {
      selected = slot;
    }
  }
  if (selected >= 0) {
    GetPntM(selected, outPnt);
  }
  return selected;
}
