#pragma once

#include <string>

#include "tools/zel/mesh_document.h"

namespace zel::program {

/// How well an unfolding turned out.
struct UnfoldReport {
  int components = 0;            ///< pieces that were unfolded apart from each other
  int unfoldedFaces = 0;         ///< triangles that got coordinates
  int unreachedFaces = 0;        ///< triangles without area or with a missing node
  int flippedFaces = 0;          ///< triangles that came out clockwise
  int overlappingFaces = 0;      ///< triangles that cover a part of another of their component
  double meanLengthError = 0.0;  ///< of the edges, relative to their length in space
  double worstLengthError = 0.0;
};

/// Gives every corner of every triangle a texture coordinate by TriangleArr::GetTexCoordM(), each
/// component (faces joined across edges that both run along in opposite directions) on its own,
/// and lays the components out side by side in rows. Face normals are set; tags, nodes and corners
/// stay as they are. Quads get no coordinates.
UnfoldReport unfoldMesh(Mesh& mesh);

/// The layout as an SVG picture of outlined triangles, at most 1000 units wide.
[[nodiscard]] std::string unfoldedPicture(const Mesh& mesh);

}  // namespace zel::program
