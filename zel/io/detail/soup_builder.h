#pragma once

/// @file
/// A mesh out of triangles that bring their own points.

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "zel/mesh/detail/points/kept_points.h"
#include "zel/mesh/mesh.h"

namespace zel {

/// A triangle as STL has it, in the byte order of most machines.
struct Facet {
  float normal[3];  ///< zero: not given
  float points[3][3];
};
static_assert(sizeof(Facet) == 48);

/// Builds a mesh of facets, each with three nodes of its own, or welded as they come: a node then
/// goes into the first kept one within a distance, and faces that collapse so are left as they are.
class SoupBuilder {
 public:
  /// @param weldDistance how near nodes are welded; nothing: not at all.
  /// @param expected how many facets to make room for.
  SoupBuilder(std::optional<double> weldDistance, std::size_t expected);

  /// @throws Error (kExhausted).
  void add(std::span<const Facet> facets);
  [[nodiscard]] Mesh& mesh() { return mesh_; }

 private:
  static constexpr std::size_t kBlock = 16;

  void addSoup(const Facet& facet);
  void addWelded(std::span<const Facet> facets);
  void addTriangle(const Facet& facet, const std::array<int, 3>& corners);

  Mesh mesh_;
  std::optional<KeptPoints> kept_;
  std::array<KeptPoints::Search, 3 * kBlock> searches_;
};

}  // namespace zel
