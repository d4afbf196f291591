#pragma once

#include <vector>

#include "zel/algorithms/detail/convex_polygon.h"

namespace zel {

/// An upright rectangle; (0, 0) to (0, 0) round nothing.
struct PlaneBox {
  PlanePoint low{};
  PlanePoint high{};

  void extendTo(const PlanePoint& point);
};

[[nodiscard]] PlaneBox boxOf(const std::vector<PlaneTriangle>& triangles);

/// @return the area, negative for a clockwise triangle.
[[nodiscard]] double signedArea(const PlaneTriangle& triangle);

/// @return how thick the overlap of two triangles has to be to count when the smaller one is
///         `triangle`: a thousandth of its size.
[[nodiscard]] double leastOverlap(const PlaneTriangle& triangle);

/// Whether two triangles cover a common area; touching edges and corners, and overlaps thinner
/// than a thousandth of the smaller triangle's size, do not count.
[[nodiscard]] bool overlap(const PlaneTriangle& a, const PlaneTriangle& b);

}  // namespace zel
