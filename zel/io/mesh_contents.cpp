#include "zel/io/detail/mesh_contents.h"

#include <algorithm>

namespace zel {

namespace {

bool isZero(const float* v) { return v[0] == 0 && v[1] == 0 && v[2] == 0; }

std::size_t coordsOf(const Point2DArr& coords, int firstCorner, std::size_t corners) {
  std::size_t count = 0;
  Float2 coord{};
  for (std::size_t k = 0; k < corners; ++k) {
    count += textureCoordOf(coords, firstCorner + static_cast<int>(k), coord) ? 1U : 0U;
  }
  return count;
}

}  // namespace

MeshContents::MeshContents(const Mesh& mesh) {
  std::vector<bool> isUsed(static_cast<std::size_t>(std::max(mesh.nodes.GetBoundM(), 0)));
  const auto look = [&](const auto& faces, const Point2DArr& coords, std::size_t& count) {
    forEachFace(faces, [&](int slot, const auto& corners) {
      ++count;
      faceNormals += faces.getCurrentItemPrtConstM()[slot].record().normalType != 0 ? 1U : 0U;
      textureCoords += coordsOf(coords, slot * static_cast<int>(corners.size()), corners.size());
      for (const int node : corners) {
        isUsed[static_cast<std::size_t>(node)] = true;
      }
    });
  };
  look(mesh.triangles, mesh.triangleTexture, triangles);
  look(mesh.quads, mesh.quadTexture, quads);
  const NodeCL* store = mesh.nodes.getCurrentItemPrtConstM();
  for (std::size_t slot = 0; slot < isUsed.size(); ++slot) {
    if (isLive(store[slot])) {
      ++nodes;
      nodeNormals += isZero(store[slot].normal()) ? 0U : 1U;
      looseNodes += isUsed[slot] ? 0U : 1U;
    }
  }
}

NodeNumbers::NodeNumbers(const NodeArr& nodes)
    : ofSlot(static_cast<std::size_t>(std::max(nodes.GetBoundM(), 0)), kNoIndex) {
  const NodeCL* store = nodes.getCurrentItemPrtConstM();
  for (std::size_t slot = 0; slot < ofSlot.size(); ++slot) {
    if (isLive(store[slot])) {
      ofSlot[slot] = count++;
    }
  }
}

}  // namespace zel
