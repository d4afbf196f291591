#pragma once

#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace zel::test {

inline NodeCL node(float x, float y, float z, char tag = 31) {
  NodeCL made(tag);
  const float point[] = {x, y, z};
  const float normal[] = {0, 0, 1};
  made.SetNodeM(point, normal);
  return made;
}

inline TriangleCL triangle(int a, int b, int c) {
  TriangleCL made;
  const int corners[] = {a, b, c};
  const float normal[] = {0, -1, 0.5F};
  made.ModifyM(corners, normal);
  return made;
}

inline QuadCL quad(int a, int b, int c, int d) {
  QuadCL made;
  const int corners[] = {a, b, c, d};
  const float normal[] = {0, -1, 0.5F};
  made.ModifyM(corners);
  made.SetNormM(normal);
  return made;
}

/// An array of these elements, one by one added.
template <class Array, class... Elements>
Array arrayWith(const Elements&... elements) {
  Array array;
  (array.AddItemM(elements), ...);
  return array;
}

}  // namespace zel::test
