#pragma once

/// @file
/// Cutting quads and polygons into triangles.

#include <array>
#include <span>
#include <vector>

#include "zel/core/api.h"
#include "zel/core/plain_types.h"
#include "zel/core/progress.h"

namespace zel {

struct Mesh;

/// How triangulate() works.
struct TriangulateOptions {
  bool faceMap = false;  ///< whether the report says which quad each new triangle comes from
  Progress progress{};   ///< told of the work done
  int threads = 0;       ///< at most so many; 0: one per core. Results do not depend on it
};

/// What triangulate() did.
struct TriangulateReport {
  int quadsCut = 0;         ///< live quads that became two triangles each
  int firstTriangle = 0;    ///< slot of the first new triangle; the others follow
  std::vector<int> quadOf;  ///< per new triangle the old slot of its quad, when asked for
};

/// Cuts every live quad along the better diagonal: the one inside it, and of two such the shorter
/// one, on a tie that between its first and third corner. The new triangles follow the old ones,
/// in the order of the quads, with the normal, normal type and texture coordinates of their quad;
/// the list of quads is empty then. Slots of triangles stay. Linear in the quads.
/// @throws Error code kExhausted or kCancelled, and the mesh is as before.
ZEL_API TriangulateReport triangulate(Mesh& mesh, const TriangulateOptions& options = {});

/// Cuts a polygon, convex or not, into triangles.
///
/// The polygon is seen along the axis nearest to its normal; what lies to the left of its border
/// there is its inside. Signs are computed exactly. Polygons of four corners are cut as quads are.
/// A polygon whose border touches itself (a hole joined to it by an edge walked twice) is cut
/// rightly where its inside is clear; one that crosses itself gives some triangles.
/// @param corners any number of points, the last joined to the first, in either winding.
/// @return always corners.size() - 2 triangles of corner numbers, none for fewer than three
///         corners; wound like the polygon, every edge of it in exactly one. Triangles without an
///         area arise only where corners lie on a line or in one place.
/// @throws Error (kExhausted).
/// Plane sweep after S. Hertel and K. Mehlhorn, "Fast triangulation of simple polygons", 1983, in
/// time n log n.
[[nodiscard]] ZEL_API std::vector<std::array<int, 3>> triangulatePolygon(
    std::span<const Float3> corners);

}  // namespace zel
