#pragma once

/// @file
/// Which triangles of a plane layout lie on one another.

#include <array>
#include <vector>

#include "zel/core/api.h"

namespace zel {

struct Mesh;

/// A point of a plane.
using PlanePoint = std::array<double, 2>;
/// The corners of a triangle in a plane, in either winding.
using PlaneTriangle = std::array<PlanePoint, 3>;

/// Two triangles overlap when they cover a common area; touching edges and corners, and overlaps
/// thinner than a thousandth of the smaller triangle's size, do not count. Triangles without an
/// area, and those that are not finite, overlap nothing.
/// @return how many of the triangles overlap at least one other. Takes time n log n as long as few
///         parts of the layout lie deep inside the hulls of others.
/// @throws Error (kExhausted).
[[nodiscard]] ZEL_API int countOverlapping(std::vector<PlaneTriangle> triangles);

/// @return how many of the mesh's live triangles overlap in its texture layout; those without
///         three texture coordinates do not count. @throws Error (kExhausted).
[[nodiscard]] ZEL_API int countOverlapping(const Mesh& mesh);

}  // namespace zel
