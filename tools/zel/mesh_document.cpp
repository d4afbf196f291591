#include "tools/zel/mesh_document.h"

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

Vector vectorBetween(const Point& a, const Point& b) {
  return {double{b[0]} - a[0], double{b[1]} - a[1], double{b[2]} - a[2]};
}

Vector cross(const Vector& u, const Vector& v) {
  return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}

// Not std::hypot(): it may answer 0 for a component that is no number, and differences of floats
// cannot overflow a double when squared.
double length(const Vector& v) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

double distance(const Point& a, const Point& b) { return length(vectorBetween(a, b)); }

bool isFinite(const Point& point) {
  return std::ranges::all_of(point, [](float x) { return std::isfinite(x); });
}

}  // namespace zel::program
