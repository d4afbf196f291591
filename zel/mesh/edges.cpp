#include "zel/mesh/edges.h"

#include <algorithm>

#include "zel/core/detail/memory_errors.h"
#include "zel/mesh/detail/faces/face_corners.h"
#include "zel/mesh/mesh.h"

namespace zel {

HalfEdges::HalfEdges(const Mesh& mesh)
    : HalfEdges(mesh.triangles, mesh.quads, mesh.nodes.GetBoundM()) {}

HalfEdges::HalfEdges(const TriangleArr& triangles, const QuadArr& quads, int nodeCount)
    : nodeCount_(std::max(nodeCount, 0)) {
  tellingRefusedMemory([&] {
    const std::size_t triangleCount = index(std::max(triangles.GetBoundM(), 0));
    const std::size_t quadCount = index(std::max(quads.GetBoundM(), 0));
    faces_.reserve(triangleCount + quadCount);
    firstEdges_.reserve(triangleCount + quadCount);
    origins_.reserve(3 * triangleCount + 4 * quadCount);
    faceOf_.reserve(3 * triangleCount + 4 * quadCount);
    addFaces(triangles);
    addFaces(quads);
    pairEdges();
  });
}

template <class Faces>
void HalfEdges::addFaces(const Faces& faces) {
  forEachFace(faces, [&](int slot, const auto& corners) {
    addFace({slot, static_cast<int>(corners.size())}, corners.data());
  });
}

void HalfEdges::addFace(FaceRef face, const int* corners) {
  const bool isRegular = std::all_of(corners, corners + face.corners,
                                     [&](int node) { return node >= 0 && node < nodeCount_; }) &&
                         !hasRepeatedCorner(corners, face.corners);
  if (!isRegular) {
    return;
  }
  firstEdges_.push_back(count());
  origins_.insert(origins_.end(), corners, corners + face.corners);
  faceOf_.insert(faceOf_.end(), index(face.corners), faceCount());
  faces_.push_back(face);
}

int HalfEdges::next(int edge) const {
  const int face = faceOf(edge);
  const int first = firstEdge(face);
  return edge + 1 == first + faces_[index(face)].corners ? first : edge + 1;
}

int HalfEdges::previous(int edge) const {
  const int face = faceOf(edge);
  const int first = firstEdge(face);
  return edge == first ? first + faces_[index(face)].corners - 1 : edge - 1;
}

// Edges are grouped by their lower node; within a group, those with the same upper node belong
// together.
void HalfEdges::pairEdges() {
  struct Entry {
    int upper;
    int edge;
    auto operator<=>(const Entry&) const = default;
  };
  const auto forEachEdge = [&](auto visit) {
    for (int edge = count() - 1; edge >= 0; --edge) {
      const auto [lower, upper] = std::minmax(origins_[index(edge)], origins_[index(next(edge))]);
      visit(edge, lower, upper);
    }
  };
  std::vector<int> starts(index(nodeCount_) + 1, 0);
  forEachEdge([&](int /*edge*/, int lower, int /*upper*/) { ++starts[index(lower)]; });
  int end = 0;
  for (int& start : starts) {
    end += start;
    start = end;
  }
  std::vector<Entry> entries(origins_.size());
  forEachEdge([&](int edge, int lower, int upper) {
    entries[index(--starts[index(lower)])] = {upper, edge};
  });
  links_.assign(origins_.size(), kOpen);
  for (std::size_t node = 0; node + 1 < starts.size(); ++node) {
    std::sort(entries.begin() + starts[node], entries.begin() + starts[node + 1]);
    const std::size_t groupEnd = index(starts[node + 1]);
    for (std::size_t first = index(starts[node]); first < groupEnd;) {
      std::size_t last = first;
      while (last + 1 < groupEnd && entries[last + 1].upper == entries[first].upper) {
        ++last;
      }
      for (std::size_t k = first; last > first && k <= last; ++k) {
        const int before = entries[k == first ? last : k - 1].edge;
        links_[index(entries[k].edge)] = last == first + 1 ? before : kCrowded - before;
      }
      first = last + 1;
    }
  }
}

}  // namespace zel
