#pragma once

/// @file
/// What is wrong with a mesh, class by class.

#include "zel/core/api.h"

class NodeArr;
class QuadArr;
class TriangleArr;

namespace zel {

/// Counts over the live nodes and faces of a mesh. All defects zero: a closed, consistently wound
/// surface without blemish.
struct MeshDefects {
  int openEdges;        ///< edges of one face
  int crowdedEdges;     ///< edges of three or more faces
  int mixedEdges;       ///< edges whose two faces run along them in the same direction
  int bowTieNodes;      ///< nodes at which the faces form more than one fan
  int duplicateFaces;   ///< faces whose set of corners an earlier face has
  int degenerateFaces;  ///< faces with two equal corners, or with no area
  int danglingFaces;    ///< faces with a corner that is no live node
  int unusedNodes;      ///< nodes that no face uses
  int nonFiniteNodes;   ///< nodes with a NaN or infinite coordinate
  int components;       ///< sets of faces joined by shared edges; not a defect

  /// @return whether any defect was found.
  [[nodiscard]] ZEL_API bool any() const;
};

/// Counts the defects of a mesh, in the time that sorting its faces takes.
[[nodiscard]] ZEL_API MeshDefects findDefects(const NodeArr& nodes, const TriangleArr& triangles,
                                              const QuadArr& quads);

}  // namespace zel
