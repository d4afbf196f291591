#pragma once

#include <array>
#include <cmath>
#include <vector>

#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace zel::test {

/// The three lists of a mesh.
struct Mesh {
  NodeArr nodes;
  TriangleArr triangles;
  QuadArr quads;

  int addNode(float x, float y, float z = 0.0F) {
    const float point[3] = {x, y, z};
    NodeCL node(char{31});
    node.SetPntM(point);
    return nodes.AddItemM(node);
  }
  void addTriangle(int a, int b, int c) {
    TriangleCL face(char{31});
    face.SetTriangleM(a, b, c);
    triangles.AddItemM(face);
  }
  void addQuad(int a, int b, int c, int d) {
    QuadCL face(char{31});
    face.SetQuadM(a, b, c, d);
    quads.AddItemM(face);
  }
  [[nodiscard]] std::array<int, 3> corners(int slot) const {
    std::array<int, 3> indices{};
    TriangleCL face;
    triangles.GetItemM(&face, slot);
    face.GetTriangleM(indices.data());
    return indices;
  }
  [[nodiscard]] std::array<float, 3> point(int slot) const {
    std::array<float, 3> p{};
    nodes.GetPntM(slot, p.data());
    return p;
  }
};

/// A regular tetrahedron's four faces, wound outward.
inline Mesh makeTetrahedron() {
  Mesh mesh;
  mesh.addNode(1, 1, 1);
  mesh.addNode(1, -1, -1);
  mesh.addNode(-1, 1, -1);
  mesh.addNode(-1, -1, 1);
  mesh.addTriangle(0, 1, 2);
  mesh.addTriangle(0, 2, 3);
  mesh.addTriangle(0, 3, 1);
  mesh.addTriangle(1, 3, 2);
  return mesh;
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
    const auto corners = mesh.corners(slot);
    const auto a = mesh.point(corners[0]);
    const auto b = mesh.point(corners[1]);
    const auto c = mesh.point(corners[2]);
    std::array<double, 3> normal{};
    double square = 0.0;
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t l = (k + 1) % 3;
      const std::size_t m = (k + 2) % 3;
      normal[k] = (static_cast<double>(b[l]) - a[l]) * (static_cast<double>(c[m]) - a[m]) -
                  (static_cast<double>(b[m]) - a[m]) * (static_cast<double>(c[l]) - a[l]);
      square += normal[k] * normal[k];
    }
    const double length = std::sqrt(square);
    float unit[3];
    for (std::size_t k = 0; k < 3; ++k) {
      unit[k] = static_cast<float>(normal[k] / length);
    }
    TriangleCL face;
    mesh.triangles.GetItemM(&face, slot);
    face.SetNormM(unit);
    mesh.triangles.SetItemM(face, slot);
  }
}

}  // namespace zel::test
