#pragma once

#include <array>
#include <initializer_list>

#include "zel/zel.h"

namespace zel::test {

using Point = std::array<float, 3>;

inline NodeCL nodeAt(const Point& point, char tag = 31) {
  NodeCL node(tag);
  node.SetPntM(point.data());
  return node;
}

inline NodeArr nodesAt(std::initializer_list<Point> points) {
  NodeArr nodes;
  for (const Point& point : points) {
    nodes.AddItemM(nodeAt(point));
  }
  return nodes;
}

inline TriangleCL triangleOf(int a, int b, int c, char tag = 31) {
  TriangleCL triangle(tag);
  triangle.SetTriangleM(a, b, c);
  return triangle;
}

inline TriangleArr trianglesOf(std::initializer_list<std::array<int, 3>> faces) {
  TriangleArr triangles;
  for (const auto& face : faces) {
    triangles.AddItemM(triangleOf(face[0], face[1], face[2]));
  }
  return triangles;
}

inline QuadCL quadOf(int a, int b, int c, int d) {
  QuadCL quad(char{31});
  quad.SetQuadM(a, b, c, d);
  return quad;
}

inline std::array<int, 3> cornersOf(const TriangleArr& triangles, int slot) {
  std::array<int, 3> corners;
  triangles[slot].GetTriangleM(corners.data());
  return corners;
}

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

}  // namespace zel::test
