// Texture coordinates: faces are unfolded into the plane, each beside the one it was reached from.

#include <algorithm>
#include <cmath>
#include <functional>
#include <new>
#include <queue>
#include <vector>

#include "zel/containers/int2d_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/core/constants.h"
#include "zel/core/memory.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/faces/directed_edges.h"
#include "zel/mesh/node.h"
#include "zel/mesh/triangle.h"

namespace {

using zel::Vec3;

// Working tags of the walk: how many of a face's edges have been tried.
constexpr signed char kTagOneEdgeTried = 37;
constexpr signed char kTagTwoEdgesTried = 38;

/// Edges in the order in which the walk tries them, and the tag a face bears from then on.
struct TriedEdge {
  int from;
  int to;
  signed char tag;
};
constexpr TriedEdge kTriedEdges[3] = {
    {0, 2, kTagOneEdgeTried}, {1, 0, kTagTwoEdgesTried}, {2, 1, zel::kTagNotAvailable}};

/// base + the coordinates of a vector along two axes.
void alongAxes(const float* base, Vec3 v, const float* x, const float* y, float* out) {
  out[0] = zel::roundToFloat(base[0] + zel::dot(v, x));
  out[1] = zel::roundToFloat(base[1] + zel::dot(v, y));
}

constexpr float kPlaneOrigin[2] = {0.0F, 0.0F};

/// So many have entries that an index can name.
constexpr int kMostFaces = 2147483647 / 3;

bool isGiven(const XYCoordSysD& cs) {
  return slFabs(cs.origin[0] - zel::kFloatMark) >= zel::kTolerance;
}

/// Whether the corners are nodes: slots below the bound, or such as plain lists leave beyond it.
bool hasNodes(const TriangleCL& face, const NodeArr& nodes) {
  int corners[3];
  face.GetTriangleM(corners);
  return std::all_of(corners, corners + 3, [&](int node) {
    const bool isBelowBound = node >= 0 && node < nodes.GetBoundM();
    return isBelowBound || nodes[node].IsAvailableM() != zel::kTagNotAvailable;
  });
}

/// Slots that have been visited and still have edges to try, or were never live; lowest first.
class PendingFaces {
 public:
  void add(int slot) { slots_.push(slot); }

  /// @return the lowest slot whose tag is neither "finished" nor "unvisited", or kNoIndex.
  int lowest(const TriangleCL* faces) {
    while (!slots_.empty()) {
      const char tag = faces[slots_.top()].IsAvailableM();
      if (tag != zel::kTagNotAvailable && tag != zel::kTagAvailable) {
        return slots_.top();
      }
      slots_.pop();
    }
    return zel::kNoIndex;
  }

 private:
  std::priority_queue<int, std::vector<int>, std::greater<>> slots_;
};

/// The rotation about node A that brings A's normal onto the z axis of a coordinate system.
void rotationOntoZ(const float* point, const float* normal, const XYCoordSysD& cs, float* matrix) {
  float z[3];
  float axis[3];
  zel::cross(cs.xAxis, cs.yAxis).store(z);
  slNormalize(z);
  zel::cross(normal, z).store(axis);
  float angle = 0.0F;
  if (slNormalize(axis) == 1) {
    angle = slCalAngleTwoVects(normal, z, axis);
  } else if (zel::dot(normal, z) < 0.0) {
    std::copy_n(cs.xAxis, 3, axis);
    angle = zel::kPi;
  }
  slGetRotateMatrix(point, axis, angle, matrix);
}

}  // namespace

/// The walk from face to face.
class TriangleArr::UnfoldWalk {
 public:
  UnfoldWalk(TriangleArr& list, Faces::Store& store, const NodeArr& nodes, Point2DArr* uv)
      : list_(list),
        store_(store),
        faces_(store.data()),
        nodes_(nodes),
        uv_(uv),
        edges_(faces_, store.bound(), nodes.GetLengthM()) {
    for (int slot = 0; slot < store.bound(); ++slot) {
      const char tag = faces_[slot].IsAvailableM();
      if (tag != zel::kTagNotAvailable && tag != zel::kTagAvailable) {
        pending_.add(slot);
      }
    }
  }

  /// @return as GetTexCoordM().
  int from(int current) {
    bool mustRestart = false;
    while (store_.available() > 0 && store_.holds(current)) {
      if (mustRestart) {
        current = pending_.lowest(faces_);
        if (current < 0) {
          return 0;
        }
      }
      int edge[2];
      const int next = tryEdges(current, edge);
      mustRestart = next < 0;
      if (next >= 0) {
        if (!hasNodes(faces_[next], nodes_)) {
          return 0;
        }
        list_.setTextureCoordM(current, next, edge, nullptr, nullptr, nullptr, nodes_, uv_);
        current = next;
      }
    }
    return 1;
  }

 private:
  /// Tries the edges of a face until one leads to an unvisited face.
  /// @param[out] edge its nodes, in the order in which that face has them.
  /// @return that face, or -1.
  int tryEdges(int current, int* edge) {
    TriangleCL& face = faces_[current];
    int corners[3];
    face.GetTriangleM(corners);
    for (const TriedEdge& tried : kTriedEdges) {
      edge[0] = corners[tried.from];
      edge[1] = corners[tried.to];
      const int next = unvisitedAlong(edge, current);
      if (face.IsAvailableM() == zel::kTagAvailable) {
        store_.setAvailable(store_.available() - 1);
      }
      const bool wasPending =
          face.IsAvailableM() == kTagOneEdgeTried || face.IsAvailableM() == kTagTwoEdgesTried;
      face.SetDeleteTagM(tried.tag);
      if (!wasPending) {
        pending_.add(current);
      }
      if (next >= 0) {
        return next;
      }
    }
    return -1;
  }

  // No face becomes unvisited again.
  [[nodiscard]] int unvisitedAlong(const int* edge, int skip) {
    using Verdict = zel::DirectedEdges::Verdict;
    int found = -1;
    edges_.firstAlong(edge[0], edge[1], [&](int slot) {
      if (faces_[slot].IsAvailableM() != zel::kTagAvailable) {
        return Verdict::kGone;
      }
      found = slot == skip ? -1 : slot;
      return slot == skip ? Verdict::kPassedOver : Verdict::kTaken;
    });
    return found;
  }

  TriangleArr& list_;
  Faces::Store& store_;
  TriangleCL* faces_;
  const NodeArr& nodes_;
  Point2DArr* uv_;
  zel::DirectedEdges edges_;
  PendingFaces pending_;
};

int TriangleArr::GetTexCoordM(const XYCoordSysD& cs, Point2DArr* uv, const NodeArr& nodes) {
  const int count = faces_.count();
  if (count == 0) {
    return 1;
  }
  if (count > kMostFaces) {
    return 0;
  }
  uv->AddSizeM(3 * count);
  const int seed = isGiven(cs) ? seedAlongAxis(cs, uv, nodes) : seedFirstFace(uv, nodes);
  if (seed < 0) {
    return 0;
  }
  try {
    return UnfoldWalk(*this, faces_.changeAll(), nodes, uv).from(seed);
  } catch (const std::bad_alloc&) {
    kwErrorMessage(zel::kOutOfMemory);
    return 0;
  }
}

int TriangleArr::seedFirstFace(Point2DArr* uv, const NodeArr& nodes) const {
  const TriangleCL& face = faces_[0];
  if (!hasNodes(face, nodes)) {
    return zel::kNoIndex;
  }
  int corners[3];
  float points[3][3];
  face.GetTriangleM(corners);
  for (int k = 0; k < 3; ++k) {
    nodes.GetPntM(corners[k], points[k]);
  }
  float normal[3];
  float u[3];
  float v[3];
  face.GetNormM(normal);
  slOthPlane(normal, u, v);
  for (int k = 0; k < 3; ++k) {
    float coordinates[2];
    alongAxes(kPlaneOrigin, Vec3(points[k]) - points[0], u, v, coordinates);
    uv->SetItemM(coordinates, k);
  }
  return 0;
}

int TriangleArr::seedAlongAxis(const XYCoordSysD& cs, Point2DArr* uv, const NodeArr& nodes) const {
  int node = zel::kNoIndex;
  nodes.GetMinPntIdxM(cs.origin, cs.yAxis, cs.xAxis, &node);
  Int2DArr around;
  if (node >= 0) {
    FindTriangleM(node, &around);
  }
  int best = zel::kNoIndex;
  FindTriangleByVectM(cs.yAxis, nodes, around, &best);
  if (best < 0) {
    return zel::kNoIndex;
  }
  int entry[2];  // face, corner
  around.GetItemM(entry, best);
  const int seed = entry[0];
  if (!hasNodes(faces_[seed], nodes)) {
    return zel::kNoIndex;
  }
  int corners[3];
  faces_[seed].GetTriangleM(corners);
  float points[3][3];  // from the seed node on, in the face's winding
  for (int k = 0; k < 3; ++k) {
    nodes.GetPntM(corners[(entry[1] + k) % 3], points[k]);
  }
  float normal[3];
  float matrix[16];
  nodes.GetNormalM(node, normal);
  rotationOntoZ(points[0], normal, cs, matrix);
  float base[2] = {0.0F, 0.0F};
  for (int k = 0; k < 3; ++k) {
    slMatrix16MultiPoint3(matrix, points[k]);
    float coordinates[2];
    alongAxes(base, Vec3(points[k]) - (k == 0 ? cs.origin : points[0]), cs.xAxis, cs.yAxis,
              coordinates);
    uv->SetItemM(coordinates, 3 * seed + (entry[1] + k) % 3);
    if (k == 0) {
      std::copy_n(coordinates, 2, base);
    }
  }
  return seed;
}

void TriangleArr::setTextureCoordM(int from, int to, const int* edge, const float* z,
                                   const float* x, const float* y, const NodeArr& nodes,
                                   Point2DArr* uv) {
  int known[2];
  for (int k = 0; k < 2; ++k) {
    known[k] = faces_[to].GetIdxM(edge[k]);
    float coordinates[2];
    uv->GetItemM(coordinates, 3 * from + faces_[from].GetIdxM(edge[k]));
    uv->SetItemM(coordinates, 3 * to + known[k]);
  }
  faces_[to].SetTexCoordM(to, known[0], known[1], z, x, y, nodes, uv);
}

void TriangleCL::SetTexCoordM(int t, int i, int j, const float* /*z*/, const float* /*x*/,
                              const float* /*y*/, const NodeArr& nodes, Point2DArr* uv) const {
  const bool isCorner = i >= 0 && i < 3 && j >= 0 && j < 3;
  if (!isCorner || t < 0 || t >= kMostFaces) {
    return;
  }
  const int k = (i + 1) % 3 == j ? 3 - i - j : 0;
  float points[3][3];
  for (int corner = 0; corner < 3; ++corner) {
    nodes.GetPntM(record_.corners[corner], points[corner]);
  }
  float toI[3];
  float toK[3];
  slVect(points[i], points[j], points[k], toI, toK);
  const double length = slNorm2(toK);
  const double angle = slCalAngleTwoVects(toI, toK, record_.normal);
  float atI[2];
  float atJ[2];
  uv->GetItemM(atI, 3 * t + i);
  uv->GetItemM(atJ, 3 * t + j);
  const float distance = slDistance2(atJ, atI);
  float along[2] = {1.0F, 0.0F};
  if (distance != 0.0F) {
    along[0] = zel::roundToFloat((double{atI[0]} - atJ[0]) / distance);
    along[1] = zel::roundToFloat((double{atI[1]} - atJ[1]) / distance);
  }
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  const float turned[2] = {zel::roundToFloat(cosine * along[0] - sine * along[1]),
                           zel::roundToFloat(cosine * along[1] + sine * along[0])};
  const float atK[2] = {zel::roundToFloat(atJ[0] + length * turned[0]),
                        zel::roundToFloat(atJ[1] + length * turned[1])};
  uv->SetItemM(atK, 3 * t + k);
}
