#pragma once

#include <array>
#include <cstddef>

#include "zel/algorithms/detail/double_vectors.h"
#include "zel/mesh/mesh.h"

namespace zel {

/// A normal whose length is twice the face's area; a quad's comes from its diagonals.
template <std::size_t kCorners>
Double3 areaNormal(const NodeCL* nodes, const std::array<int, kCorners>& corners) {
  const auto point = [&](std::size_t k) { return nodes[corners[k]].point(); };
  return cross(between(point(0), point(kCorners - 2)),
               between(point(kCorners == 3 ? 0 : 1), point(kCorners - 1)));
}

/// @return the unit vector; (1, 0, 0) where there is no direction.
inline Double3 unitVector(const Double3& vector) {
  const double norm = length(vector);
  return norm > 0 ? Double3{vector[0] / norm, vector[1] / norm, vector[2] / norm}
                  : Double3{1, 0, 0};
}

inline Float3 rounded(const Double3& v) {
  return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

/// Gives every live face its unit normal, where its corners are nodes. Does not fail.
void giveFaceNormals(Mesh& mesh);

}  // namespace zel
