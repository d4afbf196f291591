#include "zel/algorithms/compact.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "zel/algorithms/detail/texture_transfer.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/prefetch.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/mesh/detail/checked_lists.h"
#include "zel/mesh/mesh.h"

namespace zel {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// @param isKept whether a live element stays.
template <class List, class IsKept>
SlotMaps mapsOf(const List& list, IsKept isKept) {
  const auto* store = list.getCurrentItemPrtConstM();
  SlotMaps maps;
  maps.newOf.assign(at(std::max(list.GetBoundM(), 0)), kNoIndex);
  maps.oldOf.reserve(at(std::max(list.GetAvailableNumM(), 0)));
  for (int slot = 0; slot < list.GetBoundM(); ++slot) {
    if (isLive(store[slot]) && isKept(slot, store[slot])) {
      maps.newOf[at(slot)] = static_cast<int>(maps.oldOf.size());
      maps.oldOf.push_back(slot);
    }
  }
  return maps;
}

TriangleCL withCorners(TriangleCL face, const std::array<int, 3>& corners) {
  face.SetTriangleM(corners.data());
  return face;
}
QuadCL withCorners(QuadCL face, const std::array<int, 4>& corners) {
  face.SetQuadM(corners.data());
  return face;
}

/// The kept faces of a list with their corners renumbered, and their texture coordinates.
template <class Faces>
std::pair<Faces, Point2DArr> keptFaces(const Faces& faces, const Point2DArr& texture,
                                       const SlotMaps& maps, const std::vector<int>& newNodeOf,
                                       ProgressSteps& steps) {
  const auto* store = faces.getCurrentItemPrtConstM();
  const int count = static_cast<int>(maps.oldOf.size());
  constexpr int kAhead = 16;
  constexpr int kCorners = std::tuple_size_v<decltype(cornersOf(*store))>;
  auto kept = listWithRoomFor<Faces>(count);
  TextureTransfer coords(texture.GetBoundM() > 0, kCorners * count);
  for (int slot = 0; slot < count; ++slot) {
    if (slot + kAhead < count) {
      for (const int node : cornersOf(store[maps.oldOf[at(slot + kAhead)]])) {
        prefetch(&newNodeOf[at(node)]);
      }
    }
    const int old = maps.oldOf[at(slot)];
    auto corners = cornersOf(store[old]);
    for (int k = 0; k < kCorners; ++k) {
      corners[at(k)] = newNodeOf[at(corners[at(k)])];
      if (coords.isNeeded()) {
        coords.move(texture, kCorners * old + k, kCorners * slot + k);
      }
    }
    append(kept, withCorners(store[old], corners));
    steps.advance();
  }
  return {std::move(kept), std::move(coords).taken()};
}

}  // namespace

CompactReport compact(Mesh& mesh, const CompactOptions& options) {
  return tellingRefusedMemory([&] {
    CompactReport report;
    const NodeCL* nodes = mesh.nodes.getCurrentItemPrtConstM();
    const auto isLiveNode = [&](int node) {
      return node >= 0 && node < mesh.nodes.GetBoundM() && isLive(nodes[node]);
    };
    std::vector<bool> isUsed(at(options.dropUnusedNodes ? mesh.nodes.GetBoundM() : 0), false);
    const auto isKept = [&](int /*slot*/, const auto& face) {
      const auto corners = cornersOf(face);
      const bool isSound = std::ranges::all_of(corners, isLiveNode);
      report.danglingFaces += isSound ? 0 : 1;
      for (std::size_t k = 0; isSound && options.dropUnusedNodes && k < corners.size(); ++k) {
        isUsed[at(corners[k])] = true;
      }
      return isSound;
    };
    report.triangles = mapsOf(mesh.triangles, isKept);
    report.quads = mapsOf(mesh.quads, isKept);
    report.nodes = mapsOf(mesh.nodes, [&](int slot, const NodeCL& /*node*/) {
      return !options.dropUnusedNodes || isUsed[at(slot)];
    });
    ProgressSteps steps(
        options.progress,
        report.nodes.oldOf.size() + report.triangles.oldOf.size() + report.quads.oldOf.size());
    auto kept = listWithRoomFor<NodeArr>(static_cast<int>(report.nodes.oldOf.size()));
    for (const int slot : report.nodes.oldOf) {
      append(kept, nodes[slot]);
      steps.advance();
    }
    auto [triangles, triangleTexture] = keptFaces(mesh.triangles, mesh.triangleTexture,
                                                  report.triangles, report.nodes.newOf, steps);
    auto [quads, quadTexture] =
        keptFaces(mesh.quads, mesh.quadTexture, report.quads, report.nodes.newOf, steps);
    mesh.nodes = std::move(kept);
    mesh.triangles = std::move(triangles);
    mesh.quads = std::move(quads);
    mesh.triangleTexture = std::move(triangleTexture);
    mesh.quadTexture = std::move(quadTexture);
    return report;
  });
}

}  // namespace zel
