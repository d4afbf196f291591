#include "tools/zel/mesh_nodes.h"

#include <algorithm>
#include <cmath>

namespace zel::program {

NodeNumbering::NodeNumbering(const NodeArr& nodes)
    : numbers(static_cast<std::size_t>(nodes.GetBoundM()), kNoIndex) {
  for (int slot = 0; slot < nodes.GetBoundM(); ++slot) {
    if (isLive(*nodes.GetItemPM(slot))) {
      numbers[static_cast<std::size_t>(slot)] = static_cast<int>(slots.size());
      slots.push_back(slot);
    }
  }
}

Point pointOf(const NodeArr& nodes, int slot) {
  Point point{};
  nodes.GetPntM(slot, point.data());
  return point;
}

Point normalOf(const NodeArr& nodes, int slot) {
  Point normal{};
  nodes.GetNormalM(slot, normal.data());
  return normal;
}

bool isFinite(const Point& point) {
  return std::ranges::all_of(point, [](float x) { return std::isfinite(x); });
}

}  // namespace zel::program
