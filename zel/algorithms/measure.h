#pragma once

/// @file
/// The size of a mesh in every sense.

#include "zel/core/api.h"
#include "zel/core/plain_types.h"
#include "zel/core/progress.h"

namespace zel {

struct Mesh;

/// An upright box.
struct Bounds {
  Float3 low{};         ///< smallest coordinates; zero when empty
  Float3 high{};        ///< largest coordinates; zero when empty
  bool isEmpty = true;  ///< whether there is nothing inside

  /// @return the length of the diagonal; 0 when empty.
  [[nodiscard]] ZEL_API double diagonal() const;
  /// Widens the box by a point (three numbers). One with a NaN or infinite coordinate changes
  /// nothing.
  ZEL_API void extendTo(const float* point);
};

/// @return the bounds of the live nodes with finite coordinates, in linear time.
[[nodiscard]] ZEL_API Bounds boundsOf(const Mesh& mesh);

/// @return the length of the shortest edge of the live faces, in linear time; 0 when there is no
///         edge. Faces with a corner that is no node are left out.
[[nodiscard]] ZEL_API double shortestEdgeOf(const Mesh& mesh);

/// How measure() works.
struct MeasureOptions {
  Progress progress{};  ///< told of the work done
  int threads = 0;      ///< at most so many; 0: one per core. Results do not depend on it
};

/// Lengths in the unit of the points. Faces with a corner that is no node, or with two equal
/// corners, are left out of everything.
struct Measures {
  Bounds bounds;    ///< of the nodes
  double area = 0;  ///< a quad counts as its triangles 0-1-2 and 0-2-3
  double signedVolume =
      0;               ///< inside a closed mesh: positive when its faces are wound outward.
                       ///< Of an open one, the cones from the middle of the bounds to its faces
  Double3 centroid{};  ///< of the surface; zero when there is no area

  int edges = 0;            ///< each counted once
  double shortestEdge = 0;  ///< 0 when there is no edge
  double meanEdge = 0;      ///< as shortestEdge
  double longestEdge = 0;   ///< as shortestEdge
  int openEdges = 0;        ///< edges of one face
  int crowdedEdges = 0;     ///< edges of three or more faces
  int mixedEdges = 0;       ///< edges whose two faces are wound against each other
  int boundaryLoops = 0;    ///< closed runs of open edges
  int boundaryChains = 0;   ///< runs of open edges that do not close
  int components = 0;       ///< sets of faces joined by shared edges

  /// @return whether there are edges and each has exactly two faces.
  [[nodiscard]] bool isClosed() const { return edges > 0 && openEdges == 0 && crowdedEdges == 0; }
  /// @return whether no two neighbours are wound against each other.
  [[nodiscard]] bool isOriented() const { return mixedEdges == 0; }
};

/// Measures a mesh, in time linear in nodes and faces.
/// @throws Error code kExhausted, kCancelled.
[[nodiscard]] ZEL_API Measures measure(const Mesh& mesh, const MeasureOptions& options = {});

}  // namespace zel
