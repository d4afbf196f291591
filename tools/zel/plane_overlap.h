#pragma once

#include <vector>

#include "tools/zel/plane_triangle.h"

namespace zel::program {

/// @return how many of the triangles overlap at least one other; those without an area, and those
///         that are not finite, overlap nothing.
[[nodiscard]] int countOverlapping(std::vector<PlaneTriangle> triangles);

}  // namespace zel::program
