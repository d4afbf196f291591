#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "zel/algorithms/detail/disjoint_sets.h"
#include "zel/core/plain_types.h"
#include "zel/mesh/edges.h"
#include "zel/mesh/mesh.h"

namespace zel {

/// The sets of faces that shared edges join, numbered in the order of their first faces.
struct FaceComponents {
  std::vector<int> of;           ///< per face of the half-edges its component
  std::vector<int> firstFaceOf;  ///< per component

  [[nodiscard]] int count() const { return static_cast<int>(firstFaceOf.size()); }
};

/// Numbers the sets of a grouping of the faces.
[[nodiscard]] FaceComponents numbered(DisjointSets& sets, int faceCount);

/// @param joins asked about the first edge between every two nodes: whether all faces along it
///              belong together.
template <class Joins>
[[nodiscard]] FaceComponents componentsOf(const HalfEdges& edges, Joins joins) {
  DisjointSets sets(edges.faceCount());
  for (int edge = 0; edge < edges.count(); ++edge) {
    if (edges.isFirst(edge) && joins(edge)) {
      for (int other = edges.nextAlong(edge); other != edge; other = edges.nextAlong(other)) {
        sets.join(edges.faceOf(edge), edges.faceOf(other));
      }
    }
  }
  return numbered(sets, edges.faceCount());
}

/// @return the components when every shared edge joins.
[[nodiscard]] FaceComponents componentsOf(const HalfEdges& edges);

/// Six times the signed volumes of cones from one apex, and how sure their sum is.
class VolumeSum {
 public:
  /// Adds the cone to the triangle a, b, c, or takes it away when the face is reversed.
  void add(const Double3& apex, const float* a, const float* b, const float* c, bool isReversed);
  [[nodiscard]] double volume() const { return sum_ / 6.0; }
  /// @return whether the volume is below zero by more than its rounding.
  [[nodiscard]] bool isNegative() const { return sum_ < -1e-12 * magnitude_; }

 private:
  double sum_ = 0.0;
  double magnitude_ = 0.0;
};

/// Adds the cones to a face of the half-edges, a quad as its triangles 0-1-2 and 0-2-3.
void addFace(VolumeSum& sum, const Double3& apex, const HalfEdges& edges, int face,
             const NodeCL* nodes, bool isReversed = false);

/// @return per component whether it is closed, consistently wound and inside out: its signed
///         volume is negative.
[[nodiscard]] std::vector<bool> insideOut(const HalfEdges& edges, const FaceComponents& components,
                                          const NodeCL* nodes);

}  // namespace zel
