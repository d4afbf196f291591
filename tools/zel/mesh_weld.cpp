#include "tools/zel/mesh_weld.h"

#include <algorithm>
#include <utility>

#include "tools/zel/progress.h"

namespace zel::program {

namespace {

/// A corner on a deleted node counts as collapsed too: its face has nothing to stand on.
template <std::size_t N>
bool hasEqualNeighbours(const std::array<int, N>& corners) {
  bool found = false;
  for (std::size_t k = 0; k < N; ++k) {
    found = found || corners[k] == kNoIndex || corners[k] == corners[(k + 1) % N];
  }
  return found;
}

void moveTextureCoords(const Point2DArr& from, int oldSlot, MeshDocument& to, int newSlot) {
  TextureCoord coord{};
  for (int corner = 0; corner < 3; ++corner) {
    if (textureCoordOf(from, oldSlot, corner, coord)) {
      setTextureCoord(to, newSlot, corner, coord);
    }
  }
}

class Welder {
 public:
  Welder(const MeshDocument& mesh, Steps& steps) : old_(mesh), steps_(steps) {}

  WeldedMesh weld() {
    mergeNodes();
    mergeTriangles();
    moveQuads();
    return std::move(welded_);
  }

 private:
  void mergeNodes() {
    const NodeArr& nodes = old_.nodes;
    welded_.newSlots.assign(static_cast<std::size_t>(nodes.GetBoundM()), kNoIndex);
    for (int slot = 0; slot < nodes.GetBoundM(); ++slot) {
      if (isLive(*nodes.GetItemPM(slot))) {
        welded_.mesh.nodes.MergeNodeLstM(*nodes.GetItemPM(slot),
                                         &welded_.newSlots[static_cast<std::size_t>(slot)]);
      }
      steps_.advance();
    }
  }

  void mergeTriangles() {
    const TriangleArr& triangles = old_.triangles;
    for (int slot = 0; slot < triangles.GetBoundM(); ++slot) {
      steps_.advance();
      TriangleCL triangle = *triangles.GetItemPM(slot);
      if (!isLive(triangle)) {
        continue;
      }
      std::array<int, 3> corners = cornersOf(triangle);
      rename(corners);
      triangle.SetTriangleM(corners.data());
      if (addTriangle(triangle, corners)) {
        moveTextureCoords(old_.textureCoords, slot, welded_.mesh,
                          welded_.mesh.triangles.GetBoundM() - 1);
      }
    }
  }

  /// @return whether the triangle was new.
  bool addTriangle(const TriangleCL& triangle, const std::array<int, 3>& corners) {
    if (hasEqualNeighbours(corners)) {
      ++welded_.collapsedFaces;
      return false;
    }
    const bool added = welded_.mesh.triangles.MergeTriangleLstM(triangle) == 1;
    welded_.repeatedFaces += added ? 0 : 1;
    return added;
  }

  void moveQuads() {
    const QuadArr& quads = old_.quads;
    for (int slot = 0; slot < quads.GetBoundM(); ++slot) {
      steps_.advance();
      QuadCL quad = *quads.GetItemPM(slot);
      if (!isLive(quad)) {
        continue;
      }
      std::array<int, 4> corners = cornersOf(quad);
      rename(corners);
      if (!hasEqualNeighbours(corners) && corners[0] != corners[2] && corners[1] != corners[3]) {
        quad.SetQuadM(corners.data());
        welded_.mesh.quads.MergeQuadLstM(quad);
      } else {
        shrinkToTriangle(corners);
      }
    }
  }

  void shrinkToTriangle(std::array<int, 4> corners) {
    const auto end = std::unique(corners.begin(), corners.end());
    const auto count = end - corners.begin() - (*(end - 1) == corners[0] ? 1 : 0);
    const std::array<int, 3> kept = {corners[0], corners[1], corners[2]};
    if (count != 3) {
      ++welded_.collapsedFaces;
      return;
    }
    TriangleCL triangle(kTagAvailable);
    triangle.SetTriangleM(kept[0], kept[1], kept[2]);
    addTriangle(triangle, kept);
  }

  template <std::size_t N>
  void rename(std::array<int, N>& corners) const {
    for (int& corner : corners) {
      corner = welded_.newSlots[static_cast<std::size_t>(corner)];
    }
  }

  const MeshDocument& old_;
  Steps& steps_;
  WeldedMesh welded_;
};

}  // namespace

WeldedMesh weldByMerging(const MeshDocument& mesh, const std::string& name,
                         const Console& console) {
  Steps steps(mesh.nodes.GetBoundM() + mesh.triangles.GetBoundM() + mesh.quads.GetBoundM());
  const Progress progress(console, "welding " + name, [&] { return steps.fraction(); });
  return Welder(mesh, steps).weld();
}

WeldReport weldWithin(MeshDocument& mesh, double tolerance) {
  const TriangleArr before = mesh.triangles;
  WeldReport report = weldMesh(mesh.nodes, mesh.triangles, mesh.quads, tolerance);
  const Point2DArr coords = std::exchange(mesh.textureCoords, {});
  if (!report.isDone || coords.GetBoundM() == 0) {
    mesh.textureCoords = coords;
    return report;
  }
  // The triangles that stay keep their order, and a triangle stays when its corners stay apart.
  int newSlot = 0;
  forEachFace(before, [&](int oldSlot, std::array<int, 3> corners) {
    for (int& corner : corners) {
      corner = corner < 0 ? kNoIndex : report.newIndexOf[static_cast<std::size_t>(corner)];
    }
    if (!hasEqualNeighbours(corners)) {
      moveTextureCoords(coords, oldSlot, mesh, newSlot++);
    }
  });
  return report;
}

}  // namespace zel::program
