#pragma once

#include "support/meshes.h"
#include "zel/containers/point2d_arr.h"

namespace zel::test {

/// A mesh with texture coordinates.
struct Shape : Mesh {
  Point2DArr textureCoords{};
};

/// A cube from -1 to 1 of six quads; `open` leaves out the top (y = 1).
inline Shape makeCube(bool open = false) {
  Shape cube;
  for (int corner = 0; corner < 8; ++corner) {
    cube.addNode((corner & 1) != 0 ? 1.0F : -1.0F, (corner & 2) != 0 ? 1.0F : -1.0F,
                 (corner & 4) != 0 ? 1.0F : -1.0F);
  }
  // Front (z = 1), back, right (x = 1), left, bottom.
  cube.quads = quadsOf({{4, 5, 7, 6}, {0, 2, 3, 1}, {1, 3, 7, 5}, {0, 4, 6, 2}, {0, 1, 5, 4}});
  if (!open) {
    cube.addQuad(2, 6, 7, 3);
  }
  return cube;
}

/// A ridge along y that falls by 15 degrees on either side, its left half before the right one.
inline Shape makeRoof() {
  const float fall = std::tan(0.2618F);
  return {{nodesAt({{0, -1, 0}, {0, 1, 0}, {-1, 0, -fall}, {1, 0, -fall}}),
           trianglesOf({{0, 1, 2}, {1, 0, 3}})}};
}

}  // namespace zel::test
