#pragma once

/// @file
/// The edges of a mesh and how they pair: what lies beside a face, and where the mesh ends.

#include <cstddef>
#include <vector>

#include "zel/core/api.h"

class QuadArr;
class TriangleArr;

namespace zel {

struct Mesh;

/// A face of a mesh: a slot of the triangle list or of the quad list.
struct FaceRef {
  int slot;     ///< in its list
  int corners;  ///< 3: of the triangles; 4: of the quads

  /// Whether both name the same face.
  friend bool operator==(const FaceRef&, const FaceRef&) = default;
};

/// The directed edges of a mesh's live faces, each with those that share its two nodes. A picture
/// of the mesh at the moment of construction.
///
/// Triangles come first, then quads, each in slot order; the edges of a face follow each other in
/// its winding, and so do their numbers. Faces with a corner outside 0 to nodeCount() - 1 or with
/// two equal corners have no edges here. All numbers passed in must be in range; nothing is
/// checked. Building takes time linear in nodes and faces and about 24 bytes per edge.
class ZEL_API HalfEdges {
 public:
  /// Partner of an edge that belongs to one face only.
  static constexpr int kOpen = -1;
  /// Partner of an edge that belongs to three or more faces.
  static constexpr int kCrowded = -2;

  /// @throws Error (kExhausted).
  explicit HalfEdges(const Mesh& mesh);
  /// @param nodeCount nodes 0 to nodeCount - 1 exist. @throws Error (kExhausted).
  HalfEdges(const TriangleArr& triangles, const QuadArr& quads, int nodeCount);

  /// @return the number of directed edges: three or four to a face.
  [[nodiscard]] int count() const { return static_cast<int>(origins_.size()); }
  /// @return the number of faces that have edges here.
  [[nodiscard]] int faceCount() const { return static_cast<int>(faces_.size()); }
  /// @return one more than the highest node that a face may have.
  [[nodiscard]] int nodeCount() const { return nodeCount_; }
  /// @return where a face lies in the mesh.
  [[nodiscard]] const FaceRef& face(int face) const { return faces_[index(face)]; }
  /// @return the first edge of a face; the others follow.
  [[nodiscard]] int firstEdge(int face) const { return firstEdges_[index(face)]; }
  /// @return the face to which an edge belongs.
  [[nodiscard]] int faceOf(int edge) const { return faceOf_[index(edge)]; }

  /// @return the node from which the edge runs, in the face's winding.
  [[nodiscard]] int origin(int edge) const { return origins_[index(edge)]; }
  /// @return the node to which it runs.
  [[nodiscard]] int target(int edge) const { return origin(next(edge)); }
  /// @return the edge that follows in the face's winding.
  [[nodiscard]] int next(int edge) const;
  /// @return the edge of the face before this one.
  [[nodiscard]] int previous(int edge) const;
  /// @return the other face's edge, kOpen or kCrowded.
  [[nodiscard]] int partner(int edge) const {
    return links_[index(edge)] < kCrowded ? kCrowded : links_[index(edge)];
  }
  /// @return whether the two faces at a paired edge run along it in the same direction, so that
  ///         one of them is wound against the other.
  [[nodiscard]] bool isMixed(int edge) const {
    return partner(edge) >= 0 && origin(partner(edge)) == origin(edge);
  }
  /// @return the next edge between the same two nodes; following it leads round all of them, back
  ///         to the edge itself.
  [[nodiscard]] int nextAlong(int edge) const {
    const int link = links_[index(edge)];
    return link >= 0 ? link : (link == kOpen ? edge : kCrowded - link);
  }
  /// @return whether the edge is the lowest-numbered one between its two nodes: exactly one is.
  [[nodiscard]] bool isFirst(int edge) const { return nextAlong(edge) >= edge; }

 private:
  static std::size_t index(int i) { return static_cast<std::size_t>(i); }
  template <class Faces>
  void addFaces(const Faces& faces);
  void addFace(FaceRef face, const int* corners);
  void pairEdges();

  int nodeCount_;
  std::vector<FaceRef> faces_;
  std::vector<int> firstEdges_;
  std::vector<int> origins_;
  std::vector<int> faceOf_;
  /// The partner, kOpen, or kCrowded minus the next lower edge between the same two nodes (of the
  /// lowest: the highest).
  std::vector<int> links_;
};

}  // namespace zel
