#pragma once

/// @file
/// The mesh of the second storey: nodes, triangles, quads and their texture coordinates as one
/// value.

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "zel/containers/point2d_arr.h"
#include "zel/core/api.h"
#include "zel/core/constants.h"
#include "zel/core/plain_types.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace zel {

/// A mesh as flat arrays that somebody else owns. Corners count nodes from 0.
struct MeshSpans {
  std::span<const float> points;       ///< x, y, z per node
  std::span<const int> triangles;      ///< three nodes per triangle, in winding order
  std::span<const int> quads;          ///< four nodes per quad, in winding order
  std::span<const float> nodeNormals;  ///< x, y, z per node, or empty
  /// u, v per corner of the triangles (six numbers a triangle), or empty.
  std::span<const float> triangleTexture;
  /// u, v per corner of the quads (eight numbers a quad), or empty.
  std::span<const float> quadTexture;
};

/// A mesh as flat arrays of its own, laid out as MeshSpans has it.
struct MeshArrays {
  std::vector<float> points;           ///< x, y, z per node
  std::vector<int> triangles;          ///< three nodes per triangle
  std::vector<int> quads;              ///< four nodes per quad
  std::vector<float> nodeNormals;      ///< x, y, z per node; empty when no node has a normal
  std::vector<float> triangleTexture;  ///< u, v per corner; empty when no corner has any
  std::vector<float> quadTexture;      ///< u, v per corner; empty when no corner has any

  /// @return views of these arrays, valid as long as they do not change.
  [[nodiscard]] ZEL_API MeshSpans spans() const;
};

/// A surface mesh. A value: copies are deep, moves take constant time.
///
/// The lists are those of the classic interface, so both storeys work on one thing: faces name
/// nodes by their slot, and deleted slots stay where they are without being part of the mesh until
/// compact() squeezes them out. A `const Mesh` may be read from several threads at once.
struct Mesh {
  NodeArr nodes;          ///< the points, with their normals
  TriangleArr triangles;  ///< faces of three corners
  QuadArr quads;          ///< faces of four corners
  /// Entry 3 * t + k belongs to corner k of triangle slot t; a hole where a corner has none.
  Point2DArr triangleTexture;
  /// Entry 4 * q + k belongs to corner k of quad slot q; a hole where a corner has none.
  Point2DArr quadTexture;

  Mesh() = default;
  /// Builds a mesh whose node i is point i. Takes time and memory in step with the arrays.
  /// @throws Error code kArgument when a length is no multiple of its row, a list of normals or
  ///         texture coordinates does not match its elements, or a corner names no node;
  ///         kExhausted when memory is refused.
  ZEL_API explicit Mesh(const MeshSpans& arrays);

  /// @return dense copies of the live elements in slot order, the corners renumbered to match. The
  ///         mesh stays as it is. A corner without a texture coordinate gets (0, 0) where others
  ///         have some. @throws Error code kArgument when a live face names no live node;
  ///         kExhausted.
  [[nodiscard]] ZEL_API MeshArrays arrays() const;

  /// @name Views
  /// Row i is slot i, below the bound of its list, deleted or not: exactly the elements when
  /// isCompact(). Valid until the list changes.
  /// @{
  [[nodiscard]] ZEL_API StridedRows<float, 3> points() const;           ///< per node slot
  [[nodiscard]] ZEL_API StridedRows<float, 3> nodeNormals() const;      ///< per node slot
  [[nodiscard]] ZEL_API StridedRows<int, 3> triangleCorners() const;    ///< per triangle slot
  [[nodiscard]] ZEL_API StridedRows<float, 3> triangleNormals() const;  ///< per triangle slot
  [[nodiscard]] ZEL_API StridedRows<int, 4> quadCorners() const;        ///< per quad slot
  [[nodiscard]] ZEL_API StridedRows<float, 3> quadNormals() const;      ///< per quad slot
  /// @}

  /// @return whether no slot below the bounds is deleted or fresh.
  [[nodiscard]] ZEL_API bool isCompact() const;
  /// @return an empty text when everything holds that algorithms take for granted (counts agree
  ///         with the tags, live faces name live nodes, there are no more texture coordinates
  ///         than corners), else what does not, with the slot concerned.
  [[nodiscard]] ZEL_API std::string validate() const;

  /// Appends a live node without looking for an equal one. @return its slot.
  /// @throws Error (kExhausted); so do the other two.
  ZEL_API int addNode(const Float3& point, const Float3& normal = {});
  /// Appends a live triangle without a normal and without looking for an equal one. @return its
  /// slot.
  ZEL_API int addTriangle(const std::array<int, 3>& corners);
  /// Appends a live quad without a normal. @return its slot.
  ZEL_API int addQuad(const std::array<int, 4>& corners);
};

/// @return whether an element is part of its mesh: neither fresh nor deleted.
[[nodiscard]] inline bool isLive(const KwBaseCL& element) {
  return element.IsAvailableM() == kTagAvailable;
}

/// @return the node slots of a face, in winding order.
[[nodiscard]] inline std::array<int, 3> cornersOf(const TriangleCL& triangle) {
  return std::to_array(triangle.record().corners);
}
/// @return the nodes of a quad, in winding order.
[[nodiscard]] inline std::array<int, 4> cornersOf(const QuadCL& quad) {
  return std::to_array(quad.record().corners);
}

/// @return the texture coordinate of one corner; false and `coord` untouched when it has none.
/// @param coords of the face's list. @param corner counts the corners of the whole list.
[[nodiscard]] ZEL_API bool textureCoordOf(const Point2DArr& coords, int corner, Float2& coord);
/// Gives a corner a texture coordinate. @throws Error (kExhausted).
ZEL_API void setTextureCoord(Point2DArr& coords, int corner, const Float2& coord);

/// Calls `visit(slot, corners)` for each live face of one list in slot order; `corners` is a
/// std::array of 3 or 4 node slots.
template <class Faces, class Visit>
void forEachFace(const Faces& faces, Visit visit) {
  const auto* store = faces.getCurrentItemPrtConstM();
  for (int slot = 0; slot < faces.GetBoundM(); ++slot) {
    if (isLive(store[slot])) {
      visit(slot, cornersOf(store[slot]));
    }
  }
}

/// Calls `visit(slot, corners)` for each live triangle, then for each live quad.
template <class Visit>
void forEachFace(const Mesh& mesh, Visit visit) {
  forEachFace(mesh.triangles, visit);
  forEachFace(mesh.quads, visit);
}

}  // namespace zel
