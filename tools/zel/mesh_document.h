#pragma once

#include <array>
#include <vector>

#include "zel/zel.h"

namespace zel::program {

/// A mesh as the program holds it: everything a `.zel` document carries.
///
/// Faces name nodes by their slot. Deleted slots stay where they are and are not part of the mesh.
struct MeshDocument {
  NodeArr nodes;
  TriangleArr triangles;
  QuadArr quads;
  /// Entry 3 * t + k belongs to corner k of triangle t; empty when the mesh has none.
  Point2DArr textureCoords;
};

using Point = std::array<float, 3>;
/// A difference of points, in double precision so that nothing is lost before the last step.
using Vector = std::array<double, 3>;
using TextureCoord = std::array<float, 2>;

/// @return whether the element is part of the mesh.
[[nodiscard]] inline bool isLive(const KwBaseCL& element) {
  return element.IsAvailableM() == kTagAvailable;
}

/// Nodes that are part of the mesh, and how a compacted list numbers them.
struct NodeNumbering {
  explicit NodeNumbering(const NodeArr& nodes);
  std::vector<int> slots;    ///< slot of each live node, ascending
  std::vector<int> numbers;  ///< per slot: its place in `slots`, or kNoIndex
};

/// @return the point of a node slot.
[[nodiscard]] Point pointOf(const NodeArr& nodes, int slot);
/// @return the normal of a node slot.
[[nodiscard]] Point normalOf(const NodeArr& nodes, int slot);

/// b - a.
[[nodiscard]] Vector vectorBetween(const Point& a, const Point& b);
[[nodiscard]] Vector cross(const Vector& u, const Vector& v);
/// @return the length; NaN when a component is NaN.
[[nodiscard]] double length(const Vector& v);
/// @return the distance of two points; NaN when a coordinate is NaN.
[[nodiscard]] double distance(const Point& a, const Point& b);

/// @return whether all three components are finite.
[[nodiscard]] bool isFinite(const Point& point);

/// Appends a live node without looking for an equal one. @return its slot.
int appendNode(MeshDocument& mesh, const Point& point, const Point& normal = {});
/// Appends a live triangle without a normal and without looking for an equal one. @return its slot.
int appendTriangle(MeshDocument& mesh, const std::array<int, 3>& corners);
/// Appends a live quad without a normal. @return its slot.
int appendQuad(MeshDocument& mesh, const std::array<int, 4>& corners);
/// Gives corner `corner` of triangle `triangle` a texture coordinate.
void setTextureCoord(MeshDocument& mesh, int triangle, int corner, const TextureCoord& coord);
/// @return whether that corner has a texture coordinate; it is stored in `coord`.
bool textureCoordOf(const Point2DArr& coords, int triangle, int corner, TextureCoord& coord);

/// The node slots of a face.
[[nodiscard]] inline std::array<int, 3> cornersOf(const TriangleCL& triangle) {
  std::array<int, 3> corners{};
  triangle.GetTriangleM(corners.data());
  return corners;
}
[[nodiscard]] inline std::array<int, 4> cornersOf(const QuadCL& quad) {
  std::array<int, 4> corners{};
  quad.GetQuadM(corners.data());
  return corners;
}

/// Calls `visit(slot, corners)` for each live face of one list; `corners` is a std::array of 3 or
/// 4 node slots.
template <class Faces, class Visit>
void forEachFace(const Faces& faces, Visit visit) {
  for (int slot = 0; slot < faces.GetBoundM(); ++slot) {
    const auto& face = *faces.GetItemPM(slot);
    if (isLive(face)) {
      visit(slot, cornersOf(face));
    }
  }
}

/// Calls `visit(slot, corners)` for each live triangle, then for each live quad.
template <class Visit>
void forEachFace(const MeshDocument& mesh, Visit visit) {
  forEachFace(mesh.triangles, visit);
  forEachFace(mesh.quads, visit);
}

}  // namespace zel::program
