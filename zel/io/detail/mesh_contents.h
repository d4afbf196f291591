#pragma once

/// @file
/// What a mesh holds, for the writers of formats that hold less.

#include <cstddef>
#include <vector>

#include "zel/mesh/mesh.h"

namespace zel {

/// Counts of the live parts of a mesh.
struct MeshContents {
  explicit MeshContents(const Mesh& mesh);

  std::size_t nodes = 0;
  std::size_t triangles = 0;
  std::size_t quads = 0;
  std::size_t nodeNormals = 0;    ///< nodes whose normal is not zero
  std::size_t faceNormals = 0;    ///< faces that have been given a normal
  std::size_t textureCoords = 0;  ///< corners that have one
  std::size_t looseNodes = 0;     ///< nodes that no face names
};

/// The live nodes in slot order and their numbers from 0.
struct NodeNumbers {
  explicit NodeNumbers(const NodeArr& nodes);
  std::vector<int> ofSlot;  ///< per slot; kNoIndex where no live node is
  int count = 0;
};

}  // namespace zel
