#pragma once

#include <array>
#include <cmath>
#include <initializer_list>

#include "support/array_values.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/core/constants.h"
#include "zel/geometry/planes.h"
#include "zel/geometry/records.h"
#include "zel/mesh/mesh.h"

namespace zel::test {

using Point = std::array<float, 3>;
using Corners = std::array<int, 3>;

inline constexpr float kOrigin[3] = {0, 0, 0};
inline constexpr float kAlongX[3] = {1, 0, 0};
inline constexpr float kAlongY[3] = {0, 1, 0};
inline constexpr float kUp[3] = {0, 0, 1};

inline NodeCL nodeAt(const Point& point, char tag = 31) {
  NodeCL node(tag);
  node.SetPntM(point.data());
  return node;
}
inline TriangleCL triangleOf(int a, int b, int c, char tag = 31) {
  TriangleCL triangle(tag);
  triangle.SetTriangleM(a, b, c);
  return triangle;
}
inline QuadCL quadOf(int a, int b, int c, int d) {
  QuadCL quad(char{31});
  quad.SetQuadM(a, b, c, d);
  return quad;
}

inline NodeArr nodesAt(std::initializer_list<Point> points) {
  NodeArr nodes;
  for (const Point& point : points) {
    nodes.AddItemM(nodeAt(point));
  }
  return nodes;
}
inline Point3DArr pointsOf(std::initializer_list<Point> places) {
  return arrayOf<Point3DArr>(places);
}
inline TriangleArr trianglesOf(std::initializer_list<Corners> faces) {
  TriangleArr triangles;
  for (const auto& [a, b, c] : faces) {
    triangles.AddItemM(triangleOf(a, b, c));
  }
  return triangles;
}
inline QuadArr quadsOf(std::initializer_list<std::array<int, 4>> faces) {
  QuadArr quads;
  for (const auto& [a, b, c, d] : faces) {
    quads.AddItemM(quadOf(a, b, c, d));
  }
  return quads;
}

inline IntArr intsOf(std::initializer_list<int> values) { return arrayOf<IntArr>(values); }

inline Point pointOf(const NodeArr& nodes, int slot) {
  Point point;
  nodes.GetPntM(slot, point.data());
  return point;
}
inline Point normalOf(const NodeArr& nodes, int slot) {
  Point normal;
  nodes.GetNormalM(slot, normal.data());
  return normal;
}
inline Corners cornersOf(const TriangleArr& triangles, int slot) {
  Corners corners;
  triangles[slot].GetTriangleM(corners.data());
  return corners;
}
inline double distance(const Point& a, const Point& b) {
  return std::hypot(double{a[0]} - b[0], double{a[1]} - b[1], double{a[2]} - b[2]);
}
/// The coordinate system that tells an unfolding to begin anywhere.
inline XYCoordSysD noSystem() {
  XYCoordSysD system{};
  system.origin[0] = kFloatMark;
  return system;
}
/// The delete tag of a slot, read without handing the slot out.
template <class List>
int tagOf(const List& list, int slot) {
  return list[slot].IsAvailableM();
}

/// A mesh with short forms of what tests do all the time.
struct Mesh : zel::Mesh {
  Mesh() = default;
  Mesh(const NodeArr& n, const TriangleArr& t, const QuadArr& q = {}) {
    nodes = n;
    triangles = t;
    quads = q;
  }
  int addNode(float x, float y, float z = 0.0F) { return zel::Mesh::addNode({x, y, z}); }
  int addTriangle(int a, int b, int c) { return zel::Mesh::addTriangle({a, b, c}); }
  int addQuad(int a, int b, int c, int d) { return zel::Mesh::addQuad({a, b, c, d}); }
  [[nodiscard]] Corners corners(int slot) const { return cornersOf(triangles, slot); }
  [[nodiscard]] Point point(int slot) const { return pointOf(nodes, slot); }
};

/// A regular tetrahedron's four faces, wound outward.
inline Mesh makeTetrahedron() {
  return {nodesAt({{1, 1, 1}, {1, -1, -1}, {-1, 1, -1}, {-1, -1, 1}}),
          trianglesOf({{0, 1, 2}, {0, 2, 3}, {0, 3, 1}, {1, 3, 2}})};
}

/// A grid of columns x rows square cells, each cut into two triangles, with height(x, y); nodes
/// are row-major, columns + 1 to a row.
template <class Height>
Mesh makeGrid(int columns, int rows, Height height) {
  Mesh mesh;
  for (int row = 0; row <= rows; ++row) {
    for (int column = 0; column <= columns; ++column) {
      const auto x = static_cast<float>(column);
      const auto y = static_cast<float>(row);
      mesh.addNode(x, y, height(x, y));
    }
  }
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const int a = row * (columns + 1) + column;
      const int d = a + columns + 1;
      mesh.addTriangle(a, a + 1, d + 1);
      mesh.addTriangle(a, d + 1, d);
    }
  }
  return mesh;
}

inline Mesh makeFlatGrid(int columns, int rows) {
  return makeGrid(columns, rows, [](float, float) { return 0.0F; });
}

/// Gives every triangle its unit normal.
inline void setFaceNormals(Mesh& mesh) {
  for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
    const auto [a, b, c] = mesh.corners(slot);
    Point normal;
    slPlaneNormal(mesh.point(a).data(), mesh.point(b).data(), mesh.point(c).data(), normal.data());
    TriangleCL face;
    mesh.triangles.GetItemM(&face, slot);
    face.SetNormM(normal.data());
    mesh.triangles.SetItemM(face, slot);
  }
}

}  // namespace zel::test
