#pragma once

#include <cstddef>
#include <vector>

#include "zel/zel.h"

namespace zel::program {

/// A mesh made small enough to be shown.
struct ThinnedMesh {
  MeshArrays mesh;         ///< points and corners; faces without a place in space are left out
  bool isThinned = false;  ///< whether nodes were put together
};

/// Puts the nodes of each cell of a grid together, as coarse a grid as `mostFaces` asks for, and
/// leaves out the faces that collapse. A mesh with no more faces keeps all its nodes and faces.
/// @param kept per node slot, whether it stays as it is; such nodes may make it more faces.
/// @throws std::bad_alloc.
[[nodiscard]] ThinnedMesh thinned(const Mesh& mesh, const std::vector<bool>& kept,
                                  std::size_t mostFaces);

}  // namespace zel::program
