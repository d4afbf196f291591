#pragma once

/// @file
/// All boundary loops of a mesh at once.

#include <vector>

#include "zel/core/api.h"

class NodeArr;
class QuadArr;
class TriangleArr;

namespace zel {

/// A run of boundary edges: each joins one node to the next.
struct BoundaryChain {
  /// Nodes in the direction in which the faces beside them run. A closed chain does not repeat its
  /// first node.
  std::vector<int> nodes;
  /// Whether the last node is joined to the first.
  bool isClosed;
};

/// Finds every boundary edge (an edge of exactly one live face) and joins them to chains.
///
/// From an edge the chain goes on by turning about its end node from face to face until the next
/// boundary edge, so that loops which meet in one node stay apart. A chain is open when this turn
/// meets an edge of three or more faces or a face wound the other way.
/// @param nodeCount nodes 0 to nodeCount - 1 exist; faces with other corners, or with two equal
///                  corners, are left out.
/// @return the chains, ordered by the first boundary edge of each in the order of triangles, then
///         quads, by slot. Linear in nodes plus faces.
[[nodiscard]] ZEL_API std::vector<BoundaryChain> boundaryChains(const TriangleArr& triangles,
                                                                const QuadArr& quads,
                                                                int nodeCount);

}  // namespace zel
