#pragma once

/// @file
/// Welding a whole mesh within any tolerance.

#include <vector>

#include "zel/core/api.h"

class NodeArr;
class QuadArr;
class TriangleArr;

namespace zel {

/// What weldMesh() found and did.
struct WeldReport {
  /// Whether the mesh was welded; false when a live node's position is not finite or the
  /// tolerance is negative or not finite, and then nothing was changed.
  bool isDone;
  /// Slot of the first live node whose position is NaN or infinite; -2147483647 when there is none.
  int badNode;
  /// Per old node slot its new index; -2147483647 for slots that held no live node.
  std::vector<int> newIndexOf;
  int nodesMerged;     ///< live nodes that went into another
  int facesCollapsed;  ///< faces dropped because fewer than three corners were left
  int quadsNarrowed;   ///< quads that lost one corner and became triangles
  double largestMove;  ///< greatest distance from a merged node to the one it went into
};

/// Merges the live nodes that lie within a tolerance of each other.
///
/// Nodes are taken in index order. Each goes into the lowest-indexed node kept so far whose true
/// distance, computed in double precision, is at most `tolerance`; if there is none it is kept.
/// Only kept nodes attract others, so no node moves farther than the tolerance: of a chain of
/// nodes, each within reach of the next only, every other one stays, and which ones do depends
/// on the order of the nodes. Positions and normals of kept nodes do not change.
///
/// Afterwards the node list holds the kept nodes alone, in their old order. Corners are renumbered
/// (corners of faces that named no live node make the face collapse), collapsed and deleted faces
/// are dropped, the others keep their order, normal and normal type; quads that became triangles
/// follow the triangles.
/// @param tolerance a distance >= 0 in the unit of the mesh; 0 merges equal positions.
/// Expected time linear in nodes plus faces as long as few nodes lie within one tolerance.
[[nodiscard]] ZEL_API WeldReport weldMesh(NodeArr& nodes, TriangleArr& triangles, QuadArr& quads,
                                          double tolerance);

/// @return `fraction` of the diagonal of the box round the live nodes with finite positions.
[[nodiscard]] ZEL_API double relativeTolerance(const NodeArr& nodes, double fraction);

}  // namespace zel
