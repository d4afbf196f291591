#pragma once

/// @file
/// What is wrong with a mesh, class by class.

#include <array>
#include <vector>

#include "zel/core/api.h"
#include "zel/core/progress.h"
#include "zel/mesh/edges.h"

namespace zel {

struct Mesh;

/// How findDefects() works.
struct DefectOptions {
  bool list = false;    ///< whether to list what is concerned, not only to count it
  Progress progress{};  ///< told of the work done
  int threads = 0;      ///< at most so many; 0: one per core. Results do not depend on it
};

/// The edges, nodes and faces that are concerned, class by class as Defects has them.
struct DefectLists {
  /// The two nodes of an edge, in the direction in which the first face runs along it.
  using Edge = std::array<int, 2>;

  std::vector<Edge> openEdges;               ///< with one face
  std::vector<Edge> crowdedEdges;            ///< with more than two faces
  std::vector<Edge> mixedEdges;              ///< that two faces run along the same way
  std::vector<int> bowTieNodes;              ///< ascending
  std::vector<FaceRef> duplicateFaces;       ///< without the first ones; triangles first, by slot
  std::vector<FaceRef> degenerateFaces;      ///< triangles first, by slot
  std::vector<FaceRef> danglingFaces;        ///< triangles first, by slot
  std::vector<int> unusedNodes;              ///< ascending
  std::vector<int> nonFiniteNodes;           ///< ascending
  std::vector<FaceRef> insideOutComponents;  ///< the first face of each
};

/// Counts over the live nodes and faces of a mesh. All defects zero: a closed, consistently wound
/// surface without blemish.
struct Defects {
  int openEdges = 0;            ///< edges of one face
  int crowdedEdges = 0;         ///< edges of three or more faces
  int mixedEdges = 0;           ///< edges whose two faces run along them in the same direction
  int bowTieNodes = 0;          ///< nodes at which the faces form more than one fan
  int duplicateFaces = 0;       ///< faces whose corners, in whatever order, an earlier face has
  int degenerateFaces = 0;      ///< faces with two equal corners, or with no area
  int danglingFaces = 0;        ///< faces with a corner that is no live node
  int unusedNodes = 0;          ///< nodes that no face uses
  int nonFiniteNodes = 0;       ///< nodes with a NaN or infinite coordinate
  int insideOutComponents = 0;  ///< closed, consistently wound components whose faces look inward
  int components = 0;           ///< sets of faces joined by shared edges; not a defect
  DefectLists lists;            ///< what is concerned; empty unless asked for

  /// @return whether any defect was found.
  [[nodiscard]] ZEL_API bool any() const;
};

/// Finds the defects of a mesh, in time linear in nodes and faces.
/// @throws Error code kExhausted, kCancelled.
[[nodiscard]] ZEL_API Defects findDefects(const Mesh& mesh, const DefectOptions& options = {});

}  // namespace zel
