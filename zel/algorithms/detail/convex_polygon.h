#pragma once

#include <span>
#include <vector>

#include "zel/algorithms/overlap.h"

namespace zel {

/// The corners of a convex polygon, counterclockwise.
using ConvexPolygon = std::span<const PlanePoint>;

/// Andrew's monotone chain: A. M. Andrew, "Another efficient algorithm for convex hulls in two
/// dimensions", Information Processing Letters 9 (1979).
/// @param points any number of finite points, in any order.
/// @return the corners of their convex hull, counterclockwise from the leftmost.
[[nodiscard]] std::vector<PlanePoint> convexHull(std::vector<PlanePoint> points);

/// Whether a move of at most `depth` takes two convex polygons apart; touching ones are apart.
/// Takes time linear in their corners.
[[nodiscard]] bool areApart(ConvexPolygon a, ConvexPolygon b, double depth);

}  // namespace zel
