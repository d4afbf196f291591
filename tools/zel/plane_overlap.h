#pragma once

#include <array>
#include <vector>

namespace zel::program {

using PlanePoint = std::array<double, 2>;
using PlaneTriangle = std::array<PlanePoint, 3>;

/// An upright rectangle; (0, 0) to (0, 0) round nothing.
struct PlaneBox {
  PlanePoint low{};
  PlanePoint high{};
};

[[nodiscard]] PlaneBox boxOf(const std::vector<PlaneTriangle>& triangles);

/// @return the area, negative for a clockwise triangle.
[[nodiscard]] double signedArea(const PlaneTriangle& triangle);

/// Whether two triangles cover a common area; touching edges and corners, and overlaps thinner
/// than a thousandth of the smaller triangle's size, do not count.
[[nodiscard]] bool overlap(const PlaneTriangle& a, const PlaneTriangle& b);

/// @return how many of the triangles overlap at least one other.
[[nodiscard]] int countOverlapping(const std::vector<PlaneTriangle>& triangles);

}  // namespace zel::program
