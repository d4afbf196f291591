#pragma once

/// @file
/// How two meshes differ.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "zel/core/api.h"
#include "zel/core/progress.h"

namespace zel {

struct Mesh;

/// How compare() works.
struct CompareOptions {
  /// How far apart two points of the same number may lie, in the unit of the meshes; normals and
  /// texture coordinates play no part then. Empty: everything is compared to the last bit.
  std::optional<double> tolerance{};
  Progress progress{};  ///< told of the work done
  int threads = 0;      ///< at most so many; 0: one per core. Results do not depend on it
};

/// How many elements of one kind differ.
struct Mismatch {
  int count = 0;   ///< of those that differ
  int first = -1;  ///< number of the first among the live elements, from 0; -1: none differs
};

/// How two meshes differ. Live elements are compared in slot order, so that slots which hold none
/// make no difference.
struct MeshDifference {
  std::array<int, 2> nodes{};      ///< live ones of either mesh
  std::array<int, 2> triangles{};  ///< as nodes
  std::array<int, 2> quads{};      ///< as nodes
  // When the numbers agree:
  Mismatch points;           ///< by node
  Mismatch triangleCorners;  ///< by triangle
  Mismatch quadCorners;      ///< by quad
  Mismatch nodeNormals;      ///< when both meshes have some
  Mismatch triangleNormals;  ///< where both faces were given one
  Mismatch quadNormals;      ///< as triangleNormals
  Mismatch triangleTexture;  ///< by face, when both meshes have some
  Mismatch quadTexture;      ///< as triangleTexture
  double largestMove = 0.0;  ///< greatest distance between two points of the same number

  /// @return whether the meshes differ.
  [[nodiscard]] ZEL_API bool any() const;
  /// @return one line per kind of difference.
  [[nodiscard]] ZEL_API std::vector<std::string> texts() const;
};

/// Compares two meshes: points, corners, face normals and their type, node normals and texture
/// coordinates. Linear in nodes plus faces.
/// @throws Error code kExhausted, kCancelled; kArgument when the tolerance is negative or NaN.
[[nodiscard]] ZEL_API MeshDifference compare(const Mesh& a, const Mesh& b,
                                             const CompareOptions& options = {});

}  // namespace zel
