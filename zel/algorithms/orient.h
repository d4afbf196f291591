#pragma once

/// @file
/// Which way the faces of a mesh look.

#include "zel/core/api.h"
#include "zel/core/progress.h"

namespace zel {

struct Mesh;

/// How orient() works.
struct OrientOptions {
  /// Whether components that are closed, and wound consistently by then, are turned so that their
  /// faces look outward: their signed volume becomes positive. So a cavity looks outward too.
  bool outward = false;
  Progress progress{};  ///< told of the work done
  int threads = 0;      ///< at most so many; 0: one per core. Results do not depend on it
};

/// What orient() found and did.
struct OrientReport {
  int components = 0;        ///< sets of faces joined by edges of exactly two faces
  int facesReversed = 0;     ///< faces whose winding and normal were turned round
  int twistedSeams = 0;      ///< edges at which no winding agrees (a Moebius strip has one or more)
  int componentsTurned = 0;  ///< components that looked inward and were turned as a whole
};

/// Gives neighbouring faces the same winding, component by component.
///
/// Faces are neighbours when they share an edge of exactly two live faces. In each component the
/// winding that the greater number of its faces has is kept, on a tie that of its first face
/// (triangles before quads, by slot), unless it is turned outward. A reversed face has its second
/// and last corner swapped, with their texture coordinates, and its normal negated; normal type
/// and delete tag stay, and so do the normals of the nodes. Where a component cannot be wound
/// consistently, the faces follow their order of discovery from its first face, breadth first.
/// Faces with a corner that is no node, or with two equal corners, are left alone. Linear in nodes
/// plus faces.
/// @throws Error code kExhausted or kCancelled, and the mesh is as before.
ZEL_API OrientReport orient(Mesh& mesh, const OrientOptions& options = {});

/// Turns every live face round as orient() does, and negates the normals of the live nodes.
/// @throws Error code kExhausted, and the mesh is as before.
ZEL_API void reverse(Mesh& mesh);

}  // namespace zel
