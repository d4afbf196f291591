#include "zel/mesh/compaction.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "zel/core/constants.h"
#include "zel/mesh/detail/face_corners.h"
#include "zel/mesh/detail/face_record_ops.h"
#include "zel/mesh/node.h"

namespace zel {
namespace {

/// Copies the live slots of a list to a new one and puts that in its place.
template <class Element, class List>
SlotMaps keepLive(List& list) {
  const int bound = std::max(list.GetBoundM(), 0);
  const Element* store = std::as_const(list).getCurrentItemPrtConstM();
  SlotMaps maps;
  maps.newOf.assign(static_cast<std::size_t>(bound), kNoIndex);
  for (int slot = 0; slot < bound; ++slot) {
    if (store[slot].IsAvailableM() == kTagAvailable) {
      maps.newOf[static_cast<std::size_t>(slot)] = static_cast<int>(maps.oldOf.size());
      maps.oldOf.push_back(slot);
    }
  }
  List kept(static_cast<int>(maps.oldOf.size()));
  for (const int slot : maps.oldOf) {
    kept.AddItemM(store[slot]);
  }
  list = std::move(kept);
  return maps;
}

int mapped(const std::vector<int>& newOf, int node) {
  const bool isKnown = node >= 0 && static_cast<std::size_t>(node) < newOf.size();
  return isKnown ? newOf[static_cast<std::size_t>(node)] : kNoIndex;
}

/// Asks for the memory that renumber() will look at for a face.
template <class Kind>
void prefetch(const typename Kind::Face& face, const std::vector<int>& newOf) {
  int corners[Kind::kCorners];
  Kind::read(face, corners);
  for (const int node : corners) {
    __builtin_prefetch(newOf.data() + (static_cast<std::size_t>(node) < newOf.size() ? node : 0));
  }
}

/// Renumbers the corners of every slot and deletes the live faces that lose one.
template <class Faces>
void renumber(Faces& faces, const std::vector<int>& newOf) {
  using Kind = FaceKind<Faces>;
  for (int slot = faces.GetBoundM() - 1; slot >= 0; --slot) {
    if (slot >= kFacesAhead) {
      prefetch<Kind>(std::as_const(faces).ElementAtM(slot - kFacesAhead), newOf);
    }
    typename Kind::Face face;
    int corners[Kind::kCorners];
    faces.GetItemM(&face, slot);
    Kind::read(face, corners);
    for (int& corner : corners) {
      corner = mapped(newOf, corner);
    }
    Kind::write(face, corners);
    faces.SetItemM(face, slot);
    if (std::find(corners, corners + Kind::kCorners, kNoIndex) != corners + Kind::kCorners &&
        face.IsAvailableM() == kTagAvailable) {
      faces.DelItemM(slot);
    }
  }
}

}  // namespace

SlotMaps compactNodes(NodeArr& nodes, TriangleArr& triangles, QuadArr& quads) {
  SlotMaps maps = keepLive<NodeCL>(nodes);
  renumber(triangles, maps.newOf);
  renumber(quads, maps.newOf);
  return maps;
}

int deleteUnusedNodes(NodeArr& nodes, const TriangleArr& triangles, const QuadArr& quads) {
  const int bound = std::max(nodes.GetBoundM(), 0);
  std::vector<bool> isUsed(static_cast<std::size_t>(bound), false);
  const auto markAll = [&](const auto& faces) {
    forEachLiveFace(faces, [&](int /*slot*/, const auto& /*face*/, const auto& corners) {
      for (const int node : corners) {
        if (node >= 0 && node < bound) {
          isUsed[static_cast<std::size_t>(node)] = true;
        }
      }
    });
  };
  markAll(triangles);
  markAll(quads);
  int deleted = 0;
  for (int slot = bound - 1; slot >= 0; --slot) {
    if (!isUsed[static_cast<std::size_t>(slot)] &&
        std::as_const(nodes).ElementAtM(slot).IsAvailableM() == kTagAvailable) {
      nodes.DelItemM(slot);
      ++deleted;
    }
  }
  return deleted;
}

SlotMaps compactFaces(TriangleArr& triangles) { return keepLive<TriangleCL>(triangles); }

SlotMaps compactFaces(QuadArr& quads) { return keepLive<QuadCL>(quads); }

}  // namespace zel
