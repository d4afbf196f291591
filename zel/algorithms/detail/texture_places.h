#pragma once

#include <cstddef>
#include <vector>

#include "zel/algorithms/overlap.h"
#include "zel/mesh/mesh.h"

namespace zel {

/// @return where the live triangles lie that have a texture coordinate at every corner.
inline std::vector<PlaneTriangle> texturePlacesOf(const Mesh& mesh) {
  std::vector<PlaneTriangle> places;
  forEachFace(mesh.triangles, [&](int slot, const std::array<int, 3>& /*corners*/) {
    PlaneTriangle place{};
    bool isPlaced = true;
    for (int k = 0; k < 3; ++k) {
      Float2 coord{};
      isPlaced = textureCoordOf(mesh.triangleTexture, 3 * slot + k, coord) && isPlaced;
      place[static_cast<std::size_t>(k)] = {coord[0], coord[1]};
    }
    if (isPlaced) {
      places.push_back(place);
    }
  });
  return places;
}

}  // namespace zel
