#pragma once

#include <random>
#include <string>
#include <type_traits>

#include "containers/array_kinds.h"
#include "mesh_samples.h"
#include "zel/containers/kw_string_arr.h"

namespace zel::test {

using Random = std::mt19937;

template <class Number>
Number any(Random& random) {
  if constexpr (std::is_floating_point_v<Number>) {
    return std::uniform_real_distribution<Number>(-1e6F, 1e6F)(random);
  } else {
    return static_cast<Number>(random());
  }
}

template <class Array>
void add(Random& random, Array* array) {
  typename Kind<Array>::Item item;
  for (auto& component : item) {
    component = any<typename Kind<Array>::Component>(random);
  }
  array->AddItemM(in<Array>(item));
}
inline void add(Random& random, KwStringArr* texts) {
  texts->AddByCompM(std::to_string(random()).c_str());
}
inline void add(Random& random, NodeArr* nodes) {
  nodes->AddItemM(node(any<float>(random), any<float>(random), any<float>(random)));
}
inline void add(Random& random, TriangleArr* faces) {
  faces->AddItemM(triangle(any<int>(random), any<int>(random), any<int>(random)));
}
inline void add(Random& random, QuadArr* faces) {
  faces->AddItemM(quad(any<int>(random), any<int>(random), any<int>(random), any<int>(random)));
}

/// Adds `count` random elements and deletes some of them, but not the last.
template <class Array>
void fill(Random& random, Array* array, int count) {
  for (int i = 0; i < count; ++i) {
    add(random, array);
  }
  for (int i = 0; i + 1 < count; i += 1 + static_cast<int>(random() % 7U)) {
    array->DelItemM(i);
  }
}

/// A valid file cut off or altered in a few places.
inline std::string damaged(Random& random, std::string bytes) {
  if (random() % 2U == 0) {
    bytes.resize(random() % bytes.size());
  }
  for (auto i = random() % 4U; i > 0 && !bytes.empty(); --i) {
    bytes[random() % bytes.size()] = "0123456789-,.e \n\xFF"[random() % 17U];
  }
  return bytes;
}

}  // namespace zel::test
