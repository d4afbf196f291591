#include "zel/mesh/defects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

#include "zel/core/constants.h"
#include "zel/mesh/detail/face_corners.h"
#include "zel/mesh/detail/half_edges.h"
#include "zel/mesh/node.h"

namespace zel {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// Sets that grow together; `find` names the set of a member.
class DisjointSets {
 public:
  explicit DisjointSets(int count) : parents_(at(count)) {
    std::iota(parents_.begin(), parents_.end(), 0);
  }
  int find(int i) {
    while (parents_[at(i)] != i) {
      parents_[at(i)] = parents_[at(parents_[at(i)])];
      i = parents_[at(i)];
    }
    return i;
  }
  /// @return whether the two sets were different.
  bool join(int a, int b) {
    a = find(a);
    b = find(b);
    parents_[at(std::max(a, b))] = std::min(a, b);
    return a != b;
  }

 private:
  std::vector<int> parents_;
};

class DefectSearch {
 public:
  DefectSearch(const NodeArr& nodes, const TriangleArr& triangles, const QuadArr& quads)
      : nodes_(nodes.getCurrentItemPrtConstM()),
        nodeCount_(std::max(nodes.GetBoundM(), 0)),
        isUsed_(at(nodeCount_), false),
        edges_(triangles, quads, nodeCount_) {
    inspectFaces(triangles);
    inspectFaces(quads);
    countDuplicates();
    countNodes();
    countEdges();
    countFans();
  }

  [[nodiscard]] const MeshDefects& found() const { return found_; }

 private:
  [[nodiscard]] bool isLiveNode(int node) const {
    return node >= 0 && node < nodeCount_ && nodes_[node].IsAvailableM() == kTagAvailable;
  }

  template <class Faces>
  void inspectFaces(const Faces& faces) {
    forEachLiveFace(faces, [&](int /*slot*/, const auto& /*face*/, const auto& corners) {
      constexpr int kCorners = FaceKind<Faces>::kCorners;
      for (const int node : corners) {
        if (node >= 0 && node < nodeCount_) {
          isUsed_[at(node)] = true;
        }
      }
      if (!std::all_of(corners, corners + kCorners, [&](int node) { return isLiveNode(node); })) {
        ++found_.danglingFaces;
      } else if (hasRepeatedCorner(corners, kCorners) || hasNoArea(corners, kCorners)) {
        ++found_.degenerateFaces;
      }
      std::array<int, 4> key{corners[0], corners[1], corners[2],
                             kCorners == 4 ? corners[3] : kNoIndex};
      std::sort(key.begin(), key.end());
      cornerSets_.push_back(key);
    });
  }

  /// Newell's area vector is zero: all corners on one line or in one place.
  [[nodiscard]] bool hasNoArea(const int* corners, int count) const {
    double area[3] = {0.0, 0.0, 0.0};
    float origin[3];
    nodes_[corners[0]].GetPntM(origin);
    for (int i = 0; i < count; ++i) {
      double a[3];
      double b[3];
      offsetOf(corners[i], origin, a);
      offsetOf(corners[(i + 1) % count], origin, b);
      for (std::size_t axis = 0; axis < 3; ++axis) {
        area[axis] += a[(axis + 1) % 3] * b[(axis + 2) % 3] - a[(axis + 2) % 3] * b[(axis + 1) % 3];
      }
    }
    return area[0] == 0.0 && area[1] == 0.0 && area[2] == 0.0;
  }

  void offsetOf(int node, const float* origin, double* out) const {
    float p[3];
    nodes_[node].GetPntM(p);
    for (int axis = 0; axis < 3; ++axis) {
      out[axis] = static_cast<double>(p[axis]) - origin[axis];
    }
  }

  void countDuplicates() {
    std::sort(cornerSets_.begin(), cornerSets_.end());
    for (std::size_t i = 1; i < cornerSets_.size(); ++i) {
      found_.duplicateFaces += cornerSets_[i] == cornerSets_[i - 1] ? 1 : 0;
    }
  }

  void countNodes() {
    for (int node = 0; node < nodeCount_; ++node) {
      if (!isLiveNode(node)) {
        continue;
      }
      float p[3];
      nodes_[node].GetPntM(p);
      const bool isFinite = std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
      found_.nonFiniteNodes += isFinite ? 0 : 1;
      found_.unusedNodes += isUsed_[at(node)] ? 0 : 1;
    }
  }

  void countEdges() {
    std::vector<std::pair<int, int>> crowded;
    for (int edge = 0; edge < edges_.count(); ++edge) {
      const int partner = edges_.partner(edge);
      if (partner == HalfEdges::kOpen) {
        ++found_.openEdges;
      } else if (partner == HalfEdges::kCrowded) {
        crowded.push_back(std::minmax({edges_.origin(edge), edges_.target(edge)}));
      } else if (edge < partner && edges_.isMixed(edge)) {
        ++found_.mixedEdges;
      }
    }
    std::sort(crowded.begin(), crowded.end());
    const auto last = std::unique(crowded.begin(), crowded.end());
    found_.crowdedEdges = static_cast<int>(last - crowded.begin());
    crowded_.assign(crowded.begin(), last);
  }

  /// Corners about a node that share an edge there belong to one fan; more fans than one make a
  /// bow tie. Joining faces instead of corners gives the components.
  void countFans() {
    DisjointSets corners(edges_.count());
    DisjointSets faces(edges_.faceCount());
    std::vector<int> fans(at(nodeCount_), 0);
    for (int edge = 0; edge < edges_.count(); ++edge) {
      ++fans[at(edges_.origin(edge))];
    }
    found_.components = edges_.faceCount();
    const auto join = [&](int edge, int other) {
      found_.components -= faces.join(edges_.faceOf(edge), edges_.faceOf(other)) ? 1 : 0;
      for (const int node : {edges_.origin(edge), edges_.target(edge)}) {
        fans[at(node)] -= corners.join(cornerAt(edge, node), cornerAt(other, node)) ? 1 : 0;
      }
    };
    std::vector<int> firstAtCrowded(crowded_.size(), -1);
    for (int edge = 0; edge < edges_.count(); ++edge) {
      if (edges_.partner(edge) > edge) {
        join(edge, edges_.partner(edge));
      } else if (edges_.partner(edge) == HalfEdges::kCrowded) {
        int& first = firstAtCrowded[crowdedIndex(edge)];
        first = first < 0 ? edge : first;
        join(first, edge);
      }
    }
    found_.bowTieNodes = static_cast<int>(
        std::count_if(fans.begin(), fans.end(), [](int count) { return count > 1; }));
  }

  /// The corner of the edge's face at one of the edge's two nodes, named by the edge leaving it.
  [[nodiscard]] int cornerAt(int edge, int node) const {
    return edges_.origin(edge) == node ? edge : edges_.next(edge);
  }

  [[nodiscard]] std::size_t crowdedIndex(int edge) const {
    const std::pair<int, int> key = std::minmax({edges_.origin(edge), edges_.target(edge)});
    return static_cast<std::size_t>(std::lower_bound(crowded_.begin(), crowded_.end(), key) -
                                    crowded_.begin());
  }

  const NodeCL* nodes_;
  int nodeCount_;
  std::vector<bool> isUsed_;
  HalfEdges edges_;
  std::vector<std::array<int, 4>> cornerSets_;
  std::vector<std::pair<int, int>> crowded_;
  MeshDefects found_{};
};

}  // namespace

bool MeshDefects::any() const {
  return openEdges > 0 || crowdedEdges > 0 || mixedEdges > 0 || bowTieNodes > 0 ||
         duplicateFaces > 0 || degenerateFaces > 0 || danglingFaces > 0 || unusedNodes > 0 ||
         nonFiniteNodes > 0;
}

MeshDefects findDefects(const NodeArr& nodes, const TriangleArr& triangles, const QuadArr& quads) {
  return DefectSearch(nodes, triangles, quads).found();
}

}  // namespace zel
