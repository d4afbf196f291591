#pragma once

#include <random>

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

// Fills an array with `count` random elements, some of them deleted.
using Random = std::mt19937;

inline float anyFloat(Random& random) {
  return std::uniform_real_distribution<float>(-1e3F, 1e3F)(random);
}
inline int anyInt(Random& random) { return static_cast<int>(random() % 100000U); }

inline void add(Random& random, NodeArr* nodes) {
  nodes->AddItemM(node(anyFloat(random), anyFloat(random), anyFloat(random)));
}
inline void add(Random& random, TriangleArr* faces) {
  faces->AddItemM(triangle(anyInt(random), anyInt(random), anyInt(random)));
}
inline void add(Random& random, QuadArr* faces) {
  faces->AddItemM(quad(anyInt(random), anyInt(random), anyInt(random), anyInt(random)));
}

template <class Array>
void fill(Random& random, Array* array, int count) {
  for (int i = 0; i < count; ++i) {
    add(random, array);
  }
  for (int i = 0; i + 1 < count; i += 1 + static_cast<int>(random() % 7U)) {
    array->DelItemM(i);
  }
}

}  // namespace zel::test
