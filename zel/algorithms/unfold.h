#pragma once

/// @file
/// Unfolding a mesh into the plane.

#include <string>

#include "zel/core/api.h"
#include "zel/core/progress.h"

namespace zel {

struct Mesh;

/// How unfold() works.
struct UnfoldOptions {
  Progress progress{};  ///< told of the work done
  int threads = 0;      ///< at most so many; 0: one per core. Results do not depend on it
};

/// How well an unfolding turned out.
struct UnfoldReport {
  int components = 0;             ///< pieces that were unfolded apart from each other
  int unfoldedFaces = 0;          ///< triangles that got coordinates
  int unreachedFaces = 0;         ///< triangles with a missing, repeated or not finite corner
  int flippedFaces = 0;           ///< triangles that came out clockwise
  int overlappingFaces = 0;       ///< triangles that cover a part of another of their component
  double meanLengthError = 0.0;   ///< of the edges, relative to their length in space
  double worstLengthError = 0.0;  ///< as meanLengthError
};

/// Gives every corner of every triangle a texture coordinate by TriangleArr::GetTexCoordM(), each
/// component (faces joined across edges that both run along in opposite directions) on its own and
/// whatever its size, and lays the components out side by side in rows. Unit normals of faces are
/// set; tags, nodes and corners stay as they are. Quads get no coordinates. Takes time n log n in
/// the number of triangles.
/// @throws Error code kExhausted or kCancelled, and the mesh is as before.
ZEL_API UnfoldReport unfold(Mesh& mesh, const UnfoldOptions& options = {});

/// @return the texture layout of the triangles as an SVG picture of outlined triangles, at most
///         1000 units wide. @throws Error (kExhausted).
[[nodiscard]] ZEL_API std::string unfoldedPicture(const Mesh& mesh);

}  // namespace zel
