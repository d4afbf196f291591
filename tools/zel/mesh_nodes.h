#pragma once

#include <vector>

#include "zel/zel.h"

namespace zel::program {

using Point = Float3;
using TextureCoord = Float2;

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

/// @return whether all three components are finite.
[[nodiscard]] bool isFinite(const Point& point);

}  // namespace zel::program
