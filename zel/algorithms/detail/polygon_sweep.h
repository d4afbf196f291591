#pragma once

#include <array>
#include <span>
#include <vector>

#include "zel/core/plain_types.h"

namespace zel {

/// Leaves out the coordinate along which the polygon's normal is largest, and swaps the two others
/// if need be, so that its inside lies to the left of its border. They keep their bits.
[[nodiscard]] std::vector<Float2> seenInPlane(std::span<const Float3> corners);

/// Cuts a polygon into points.size() - 2 triangles, see triangulatePolygon().
[[nodiscard]] std::vector<std::array<int, 3>> sweptTriangles(const std::vector<Float2>& points);

}  // namespace zel
