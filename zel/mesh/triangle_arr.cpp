// The list of triangles: family operations and searches.

#include <cmath>

#include "zel/containers/detail/rows.h"
#include "zel/containers/int2d_arr.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/mesh/detail/faces/face_list_ops.h"
#include "zel/mesh/node.h"
#include "zel/mesh/triangle.h"

template class zel::SlotStore<TriangleCL, zel::ElementPolicy>;
template class zel::IndexedSlots<TriangleCL, zel::ElementPolicy, zel::FaceIndex<TriangleCL>>;

#define ZEL_ARR TriangleArr
#define ZEL_SLOT TriangleCL
#define ZEL_IN const TriangleCL&
#define ZEL_OUT TriangleCL*
#define ZEL_SLOTS faces_
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_LAST_INDEX
#define ZEL_HAS_KEEPING_CLEAR
#define ZEL_HAS_ELEMENTS
#include "zel/containers/detail/family.inl"

int TriangleArr::FindTriangleM(const int* indices) const {
  int last = -1;
  zel::anyFaceWithin(faces_, indices, [&](int slot) {
    last = std::max(last, slot);
    return false;
  });
  return last;
}

int TriangleArr::FindTriangleM(const int* indices, int* at) const {
  int first = faces_.count();
  zel::anyFaceWithin(faces_, indices, [&](int slot) {
    if (faces_[slot].FindTriangleM(indices) == 1) {
      first = std::min(first, slot);
    }
    return false;
  });
  if (first == faces_.count()) {
    return 0;
  }
  *at = first;
  return 1;
}

void TriangleArr::FindTriangleM(int n, Int2DArr* out) const {
  const zel::Candidates candidates = zel::facesAround(faces_, n);
  for (int k = 0; k < candidates.size(); ++k) {
    const int pair[2] = {candidates[k], zel::cornerOf(faces_[candidates[k]].record(), n)};
    if (pair[1] != zel::kNoIndex) {
      out->AddItemM(pair);
    }
  }
}

namespace {

// |edge . dir| for the unit edge between two corners of a face.
double edgeAlong(const NodeArr& nodes, const zel::FaceRecord<3>& face, int from, int to,
                 const float* dir) {
  float a[3];
  float b[3];
  float edge[3];
  nodes.GetPntM(face.corners[from], a);
  nodes.GetPntM(face.corners[to], b);
  slGetNormalVectBtPnts(a, b, edge);
  return std::fabs(zel::dot(edge, dir));
}

// The ends of the two edges that leave each corner, in the order in which they are tried.
constexpr int kEdgeEnds[3][2] = {{1, 2}, {0, 2}, {1, 0}};

}  // namespace

void TriangleArr::FindTriangleByVectM(const float* dir, const NodeArr& nodes, const Int2DArr& cand,
                                      int* best) const {
  double smallest = zel::kInfinity;
  for (int k = 0; k < cand.GetBoundM(); ++k) {
    int pair[2];
    cand.GetItemM(pair, k);
    if (!faces_.holds(pair[0]) || pair[1] < 0 || pair[1] > 2) {
      continue;
    }
    const auto& face = faces_[pair[0]].record();
    for (const int end : kEdgeEnds[pair[1]]) {
      const double along = edgeAlong(nodes, face, pair[1], end, dir);
      if (along < smallest) {
        smallest = along;
        *best = k;
        break;
      }
    }
  }
}

int TriangleArr::getFirstValidIdxM() const { return zel::firstOddTag(faces_); }

int TriangleArr::GetOneNeighbourPntM(int n) const { return zel::cornerAfter(faces_, n); }

void TriangleArr::ResetNormalTypeM() {
  zel::changeEveryNormal(faces_, [](auto& face) { face.normalType = 0; });
}

void TriangleArr::TransByMatrixM(const float* matrix) {
  zel::changeEveryNormal(faces_, [=](auto& face) { zel::turnNormal(face, matrix); });
}

void TriangleArr::NegativeNormalVectM() {
  zel::changeEveryNormal(faces_, [](auto& face) { zel::negateNormal(face); });
}

void TriangleArr::GetMajorNormM(float* out) const {
  const float* reference = faces_[0].record().normal;
  const float* opposite = reference;
  int along = 1;
  int against = 0;
  const int bound = faces_.available() < 3 ? 0 : faces_.count();
  for (int slot = 1; slot < bound; ++slot) {
    const float* normal = faces_[slot].record().normal;
    if (zel::dot(reference, normal) >= 0) {
      ++along;
    } else if (++against == 1) {
      opposite = normal;
    }
  }
  std::copy_n(along < against ? opposite : reference, 3, out);
}
