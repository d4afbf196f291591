#include "tools/zel/mesh_document.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace zel::program {

namespace {

/// Appends by `add` and returns the new slot. The library answers exhaustion by leaving the array
/// as it was; the program must not go on then.
template <class Elements, class Add>
int append(Elements& elements, Add add) {
  const int slot = elements.GetBoundM();
  add();
  if (elements.GetBoundM() != slot + 1) {
    throw std::bad_alloc();
  }
  return slot;
}

}  // namespace

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

int appendNode(MeshDocument& mesh, const Point& point, const Point& normal) {
  NodeCL node(kTagAvailable);
  node.SetNodeM(point.data(), normal.data());
  return append(mesh.nodes, [&] { mesh.nodes.AddItemM(node); });
}

int appendTriangle(MeshDocument& mesh, const std::array<int, 3>& corners) {
  TriangleCL triangle(kTagAvailable);
  triangle.SetTriangleM(corners.data());
  return append(mesh.triangles, [&] { mesh.triangles.AddItemM(triangle); });
}

int appendQuad(MeshDocument& mesh, const std::array<int, 4>& corners) {
  QuadCL quad(kTagAvailable);
  quad.SetQuadM(corners.data());
  return append(mesh.quads, [&] { mesh.quads.MergeQuadLstM(quad); });
}

void setTextureCoord(MeshDocument& mesh, int triangle, int corner, const TextureCoord& coord) {
  mesh.textureCoords.SetItemM(coord.data(), 3 * triangle + corner);
}

bool textureCoordOf(const Point2DArr& coords, int triangle, int corner, TextureCoord& coord) {
  coords.GetItemM(coord.data(), 3 * triangle + corner);
  return coord[0] > kLiveNearMark;
}

}  // namespace zel::program
