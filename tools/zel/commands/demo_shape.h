#pragma once

#include "tools/zel/mesh_nodes.h"

namespace zel::program {

/// The demo's input: a fluted tube along a trefoil knot, cut open so that it has two ends, as a
/// soup of loose triangles.
struct DemoSoup {
  Mesh mesh;  ///< three nodes of its own for every triangle
  /// What welding must find, known from how the tube is made.
  int nodes = 0;
  int triangles = 0;
  int boundaryEdges = 0;
  int repeated = 0;   ///< triangles that were put in a second time, turned or mirrored
  int collapsed = 0;  ///< triangles put in that have two corners in one place
};

/// Half the side of the cube within which each point is scattered. Two copies of one vertex are at
/// most 2 * sqrt(3) times this apart, which stays below the merge tolerance of 0.0001.
inline constexpr double kScatter = 2.5e-5;

/// @param triangles about how many triangles the tube shall have; at least 1,000 are made.
///        The same number gives the same soup everywhere.
[[nodiscard]] DemoSoup makeDemoSoup(int triangles);

}  // namespace zel::program
