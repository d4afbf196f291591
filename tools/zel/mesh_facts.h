#pragma once

#include "tools/zel/mesh_document.h"

namespace zel::program {

/// What `zel info` tells about a mesh. Lengths are in the unit of the points.
struct MeshFacts {
  bool hasBounds = false;  ///< whether any node has finite coordinates
  Point lowest{};          ///< over the live nodes with finite coordinates
  Point highest{};
  double area = 0;  ///< a quad counts as its triangles 0-1-2 and 0-2-3
  bool hasNodeNormals = false;
  bool hasTextureCoords = false;

  int edges = 0;
  double shortestEdge = 0, meanEdge = 0, longestEdge = 0;
  int boundaryLoops = 0;   ///< closed runs of boundary edges
  int boundaryChains = 0;  ///< runs of boundary edges that do not close
  MeshDefects defects{};   ///< edge counts and components among them

  /// Closed: there are faces, and every edge has exactly two.
  [[nodiscard]] bool isClosed() const {
    return edges > 0 && defects.openEdges == 0 && defects.crowdedEdges == 0;
  }
  [[nodiscard]] bool isOriented() const { return defects.mixedEdges == 0; }
};

/// Time grows as n log n in the number of faces.
[[nodiscard]] MeshFacts gatherFacts(const MeshDocument& mesh);

}  // namespace zel::program
