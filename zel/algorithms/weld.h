#pragma once

/// @file
/// Making one node of nodes in the same place.

#include <vector>

#include "zel/algorithms/tolerance.h"
#include "zel/core/api.h"
#include "zel/core/progress.h"
#include "zel/mesh/edges.h"

namespace zel {

/// How weld() works.
struct WeldOptions {
  /// How far a node may move to become another.
  Tolerance tolerance = kDefaultTolerance;
  /// Whether faces stay whose set of corners an earlier face has, in whatever winding.
  bool keepRepeated = false;
  /// Whether faces stay of which fewer than three different corners are left. Such a face then
  /// names a node twice; these faces are never taken for repeated ones.
  bool keepCollapsed = false;
  /// Whether the report says where each face was before.
  bool faceMaps = false;
  Progress progress{};  ///< told of the work done
  int threads = 0;      ///< at most so many; 0: one per core. Results do not depend on it
};

/// What weld() found and did.
struct WeldReport {
  double toleranceUsed = 0.0;   ///< the distance, in the unit of the mesh
  std::vector<int> newIndexOf;  ///< per old node slot its new one; -2147483647 for one not live
  int nodesMerged = 0;          ///< live nodes that went into another
  double largestMove = 0.0;     ///< greatest distance from a merged node to the one it went into
  int facesCollapsed = 0;  ///< faces of which fewer than three different corners were left, or with
                           ///< a corner that was no live node
  int facesRepeated = 0;   ///< further faces with the corners of an earlier one
  int quadsNarrowed = 0;   ///< quads that lost one corner and became triangles, dropped ones too
  std::vector<FaceRef> triangleOrigins;  ///< per new triangle the old face, when asked for
  std::vector<int> quadOrigins;          ///< per new quad its old slot, when asked for
};

/// Merges the live nodes that lie within a tolerance of each other.
///
/// Nodes are taken in index order. Each goes into the lowest-indexed node kept so far whose true
/// distance, computed in double precision, is at most the tolerance; if there is none it is kept.
/// Only kept nodes attract others, so no node moves farther than the tolerance: of a chain of
/// nodes, each within reach of the next only, every other one stays, and which ones do depends
/// on the order of the nodes. Positions and normals of kept nodes do not change.
///
/// Afterwards the node list holds the kept nodes alone, in their old order, and the face lists the
/// kept faces alone. Collapsed and repeated faces are dropped unless the options keep them; faces
/// with a corner that is no live node always are. The others keep their order, normal, normal
/// type and texture coordinates; quads that became triangles follow the triangles. Of repeated
/// faces the first stays: triangles come before quads that became triangles.
/// @return what happened; the mesh is welded.
/// @throws Error, and the mesh is as before: code kUnreadable when a live node's position is not
///         finite; kArgument when the tolerance is negative or not finite; kExhausted, kCancelled.
/// Expected time linear in nodes plus faces as long as few nodes lie within one tolerance.
ZEL_API WeldReport weld(Mesh& mesh, const WeldOptions& options = {});

}  // namespace zel
