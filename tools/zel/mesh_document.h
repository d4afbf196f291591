#pragma once

#include <array>
#include <vector>

#include "zel/zel.h"

namespace zel::program {

using Point = std::array<float, 3>;
/// A difference of points, in double precision so that nothing is lost before the last step.
using Vector = std::array<double, 3>;
using TextureCoord = std::array<float, 2>;

/// Nodes that are part of the mesh, and how a compacted list numbers them.
struct NodeNumbering {
  explicit NodeNumbering(const NodeArr& nodes);
  std::vector<int> slots;    ///< slot of each live node, ascending
  std::vector<int> numbers;  ///< per slot: its place in `slots`, or kNoIndex
};

/// @return the point of a node slot.
[[nodiscard]] Point pointOf(const NodeArr& nodes, int slot);
/// @return the normal of a node slot.
[[nodiscard]] Point normalOf(const NodeArr& nodes, int slot);

/// b - a.
[[nodiscard]] Vector vectorBetween(const Point& a, const Point& b);
[[nodiscard]] Vector cross(const Vector& u, const Vector& v);
/// @return the length; NaN when a component is NaN.
[[nodiscard]] double length(const Vector& v);
/// @return the distance of two points; NaN when a coordinate is NaN.
[[nodiscard]] double distance(const Point& a, const Point& b);

/// @return whether all three components are finite.
[[nodiscard]] bool isFinite(const Point& point);

}  // namespace zel::program
