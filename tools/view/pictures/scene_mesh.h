#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace zel::view {

using Vector3 = std::array<float, 3>;

/// A face ready to be drawn.
struct SceneFace {
  TriangleCL triangle;     ///< corners are node slots; the normal is that of its plane
  std::uint8_t realEdges;  ///< bit k: the side from corner k to the next is an edge of the mesh
};

/// A mesh made ready for drawing: centred and scaled into the unit sphere, quads cut in two.
///
/// Left out are deleted elements, and faces that name nodes which are missing, deleted or not
/// finite.
struct SceneMesh {
  /// @param textureCoords entry 3 t + k belongs to corner k of triangle slot t; may be empty.
  SceneMesh(const NodeArr& nodes, const TriangleArr& triangles, const QuadArr& quads,
            const Point2DArr& textureCoords);

  [[nodiscard]] Vector3 point(int node) const;
  /// The points of `shownNodes`, which is what a camera should frame.
  [[nodiscard]] std::vector<Vector3> shownPoints() const;

  Point3DArr points;  ///< by node slot
  std::vector<SceneFace> faces;
  /// Entry 3 f + k belongs to corner k of face f, (0, 0) for faces that have none; empty when the
  /// whole mesh has none.
  std::vector<std::array<float, 2>> textureCoords;
  /// What is to be seen: the nodes of all faces, or every node when there is no face.
  std::vector<int> shownNodes;
  /// Unit normals by node slot; zero where the mesh has none.
  std::vector<Vector3> nodeNormals;

  // What the mesh holds, drawable or not.
  int nodeCount = 0;
  int triangleCount = 0;
  int quadCount = 0;
};

}  // namespace zel::view
