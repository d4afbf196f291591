#include "zel/mesh/detail/half_edges.h"

#include <algorithm>

#include "zel/mesh/detail/face_corners.h"

namespace zel {
HalfEdges::HalfEdges(const TriangleArr& triangles, const QuadArr& quads, int nodeCount)
    : nodeCount_(std::max(nodeCount, 0)) {
  const auto expected =
      index(std::max(triangles.GetBoundM(), 0)) * 3 + index(std::max(quads.GetBoundM(), 0)) * 4;
  origins_.reserve(expected);
  faceOf_.reserve(expected);
  addFaces(triangles);
  addFaces(quads);
  pairEdges();
}

template <class Faces>
void HalfEdges::addFaces(const Faces& faces) {
  forEachLiveFace(faces, [&](int slot, const auto& /*face*/, const int* corners) {
    addFace({slot, FaceKind<Faces>::kCorners}, corners);
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
  const auto lowerNode = [&](int edge) { return std::min(origin(edge), target(edge)); };
  std::vector<int> starts(index(nodeCount_) + 1, 0);
  for (int edge = 0; edge < count(); ++edge) {
    ++starts[index(lowerNode(edge))];
  }
  int end = 0;
  for (int& start : starts) {
    end += start;
    start = end;
  }
  std::vector<int> grouped(origins_.size());
  for (int edge = count() - 1; edge >= 0; --edge) {
    grouped[index(--starts[index(lowerNode(edge))])] = edge;
  }
  partners_.assign(origins_.size(), kOpen);
  std::vector<int> group;
  for (int node = 0; node < nodeCount_; ++node) {
    group.assign(grouped.begin() + starts[index(node)], grouped.begin() + starts[index(node) + 1]);
    pairWithin(group);
  }
}

void HalfEdges::pairWithin(std::vector<int>& group) {
  const auto upperNode = [&](int edge) { return std::max(origin(edge), target(edge)); };
  std::sort(group.begin(), group.end(), [&](int a, int b) { return upperNode(a) < upperNode(b); });
  for (std::size_t first = 0; first < group.size();) {
    std::size_t end = first + 1;
    while (end < group.size() && upperNode(group[end]) == upperNode(group[first])) {
      ++end;
    }
    if (end - first == 2) {
      partners_[index(group[first])] = group[first + 1];
      partners_[index(group[first + 1])] = group[first];
    } else if (end - first > 2) {
      for (std::size_t i = first; i < end; ++i) {
        partners_[index(group[i])] = kCrowded;
      }
    }
    first = end;
  }
}

}  // namespace zel
