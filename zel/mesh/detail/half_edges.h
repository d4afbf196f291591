#pragma once

#include <cstddef>
#include <vector>

class QuadArr;
class TriangleArr;

namespace zel {

/// A live face of a mesh: a slot of the triangle list or of the quad list.
struct FaceRef {
  int slot;
  int corners;  // 3 or 4

  friend bool operator==(const FaceRef&, const FaceRef&) = default;
};

/// The directed edges of a mesh's live faces, each with the one that shares its two nodes.
///
/// Triangles come first, then quads, each in slot order; the edges of a face follow each other in
/// its winding. Faces with a corner outside 0 to nodeCount - 1 or with two equal corners have no
/// edges here. Built in time linear in nodes and faces.
class HalfEdges {
 public:
  /// Partner of an edge that belongs to one face only.
  static constexpr int kOpen = -1;
  /// Partner of an edge that belongs to three or more faces.
  static constexpr int kCrowded = -2;

  HalfEdges(const TriangleArr& triangles, const QuadArr& quads, int nodeCount);

  [[nodiscard]] int count() const { return static_cast<int>(origins_.size()); }
  [[nodiscard]] int faceCount() const { return static_cast<int>(faces_.size()); }
  [[nodiscard]] int nodeCount() const { return nodeCount_; }
  [[nodiscard]] const FaceRef& face(int face) const { return faces_[index(face)]; }
  /// @return the first edge of a face; the others follow.
  [[nodiscard]] int firstEdge(int face) const { return firstEdges_[index(face)]; }
  [[nodiscard]] int faceOf(int edge) const { return faceOf_[index(edge)]; }

  [[nodiscard]] int origin(int edge) const { return origins_[index(edge)]; }
  [[nodiscard]] int target(int edge) const { return origin(next(edge)); }
  /// @return the edge that follows in the face's winding.
  [[nodiscard]] int next(int edge) const;
  /// @return the edge of the face before this one.
  [[nodiscard]] int previous(int edge) const;
  /// @return the other face's edge, kOpen or kCrowded.
  [[nodiscard]] int partner(int edge) const { return partners_[index(edge)]; }
  /// @return whether the two faces at a paired edge run along it in the same direction, so that
  ///         one of them is wound against the other.
  [[nodiscard]] bool isMixed(int edge) const {
    return partner(edge) >= 0 && origin(partner(edge)) == origin(edge);
  }

 private:
  static std::size_t index(int i) { return static_cast<std::size_t>(i); }
  template <class Faces>
  void addFaces(const Faces& faces);
  void addFace(FaceRef face, const int* corners);
  void pairEdges();
  void pairWithin(std::vector<int>& group);

  int nodeCount_;
  std::vector<FaceRef> faces_;
  std::vector<int> firstEdges_;
  std::vector<int> origins_;
  std::vector<int> faceOf_;
  std::vector<int> partners_;
};

}  // namespace zel
