#pragma once

/// @file
/// All boundary loops of a mesh at once.

#include <vector>

#include "zel/core/api.h"
#include "zel/core/progress.h"

namespace zel {

class HalfEdges;
struct Mesh;

/// A run of boundary edges: each joins one node to the next.
struct BoundaryChain {
  /// Nodes in the direction in which the faces beside them run. A closed chain does not repeat its
  /// first node.
  std::vector<int> nodes;
  /// Whether the last node is joined to the first.
  bool isClosed;
};

/// How boundaryChains() works.
struct BoundaryOptions {
  Progress progress{};  ///< told of the work done
  int threads = 0;      ///< at most so many; 0: one per core. Results do not depend on it
};

/// Finds every boundary edge (an edge of exactly one live face) and joins them to chains.
///
/// From an edge the chain goes on by turning about its end node from face to face until the next
/// boundary edge, so that loops which meet in one node stay apart. A chain is open when this turn
/// meets an edge of three or more faces or a face wound the other way. Faces with a corner that is
/// no node, or with two equal corners, are left out.
/// @return the chains, ordered by the first boundary edge of each in the order of triangles, then
///         quads, by slot. Linear in nodes plus faces.
/// @throws Error code kExhausted, kCancelled.
[[nodiscard]] ZEL_API std::vector<BoundaryChain> boundaryChains(
    const Mesh& mesh, const BoundaryOptions& options = {});
/// As above, for edges that have been paired already.
[[nodiscard]] ZEL_API std::vector<BoundaryChain> boundaryChains(
    const HalfEdges& edges, const BoundaryOptions& options = {});

}  // namespace zel
