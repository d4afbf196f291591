#pragma once

/// @file
/// Normals of faces and nodes from the faces' corners.

#include "zel/core/api.h"
#include "zel/core/progress.h"

namespace zel {

struct Mesh;

/// How a node's normal comes from those of its faces.
enum class NormalWeight {
  kArea,   ///< their mean, weighted by area
  kAngle,  ///< their mean, weighted by the angle at the node: no matter how a face is cut up
  kFlat,   ///< that of the last face, quads coming after triangles
};

/// How giveNormals() works.
struct NormalOptions {
  NormalWeight weight = NormalWeight::kArea;  ///< of the faces around a node
  Progress progress{};                        ///< told of the work done
  int threads = 0;  ///< at most so many; 0: one per core. Results do not depend on it
};

/// Gives every live face its unit normal, seen from the side from which the corners run
/// counter-clockwise (normal type 1; of a quad that of its diagonals), and every node that a face
/// uses a unit normal from those of its faces. Where there is no direction, for want of area, the
/// normal is (1, 0, 0), as slNormalize() has it; but no size is too small. Nodes without a face
/// keep their normal, and so do faces with a corner that is no node. Linear in nodes plus faces.
/// @throws Error code kExhausted or kCancelled, and the mesh is as before.
ZEL_API void giveNormals(Mesh& mesh, const NormalOptions& options = {});

}  // namespace zel
