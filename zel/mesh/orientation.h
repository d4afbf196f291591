#pragma once

/// @file
/// Consistent winding of a mesh's faces.

#include "zel/core/api.h"

class QuadArr;
class TriangleArr;

namespace zel {

/// What orientConsistently() found and did.
struct OrientationReport {
  int components;     ///< sets of faces joined by edges of exactly two faces
  int facesReversed;  ///< faces whose winding and normal were turned round
  int twistedSeams;   ///< edges at which no winding agrees (a Moebius strip has one or more)
};

/// Gives neighbouring faces the same winding, component by component.
///
/// Faces are neighbours when they share an edge of exactly two live faces. In each component the
/// winding that the greater number of its faces has is kept, on a tie that of its first face
/// (triangles before quads, by slot). A reversed face has its second and last corner swapped and
/// its normal negated; normal type and delete tag stay. Where a component cannot be wound
/// consistently, the faces follow their order of discovery from its first face, breadth first.
/// @param nodeCount nodes 0 to nodeCount - 1 exist; faces with other corners, or with two equal
///                  corners, are left alone.
/// Linear in nodes plus faces.
ZEL_API OrientationReport orientConsistently(TriangleArr& triangles, QuadArr& quads, int nodeCount);

}  // namespace zel
