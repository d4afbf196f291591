#pragma once

#include <string>
#include <vector>

#include "tools/zel/mesh_document.h"

namespace zel::program {

/// How two meshes differ, live elements compared in slot order.
struct MeshDifference {
  /// One line per kind of difference, empty when the meshes are the same.
  std::vector<std::string> findings;
  /// Largest distance between two points of the same number.
  double largestMove = 0;
};

/// Compares two meshes to the last bit: points, faces, face normals and their type; node normals
/// and texture coordinates when both meshes have some.
[[nodiscard]] MeshDifference compareExactly(const Mesh& a, const Mesh& b);

/// Compares two meshes with points allowed to lie up to `tolerance` apart. Faces must name the
/// same nodes; normals and texture coordinates play no part.
[[nodiscard]] MeshDifference compareWithin(const Mesh& a, const Mesh& b, double tolerance);

}  // namespace zel::program
