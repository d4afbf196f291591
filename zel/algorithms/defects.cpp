#include "zel/algorithms/defects.h"

#include <algorithm>
#include <cstddef>

#include "zel/algorithms/detail/components.h"
#include "zel/algorithms/detail/double_vectors.h"
#include "zel/algorithms/detail/face_sets.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/mesh/detail/faces/face_corners.h"
#include "zel/mesh/mesh.h"

namespace zel {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

class DefectSearch {
 public:
  DefectSearch(const Mesh& mesh, const DefectOptions& options)
      : nodes_(mesh.nodes.getCurrentItemPrtConstM()),
        nodeCount_(std::max(mesh.nodes.GetBoundM(), 0)),
        isListing_(options.list),
        isUsed_(at(nodeCount_), false),
        edges_(mesh) {
    ProgressSteps faces(options.progress, facesOf(mesh), 0.0, 0.4);
    inspectFaces<3>(mesh.triangles, faces);
    inspectFaces<4>(mesh.quads, faces);
    inspectNodes();
    ProgressSteps edges(options.progress, at(edges_.count()), 0.4, 1.0);
    inspectEdges(edges);
    inspectComponents();
  }

  [[nodiscard]] Defects found() && { return std::move(found_); }

 private:
  static std::size_t facesOf(const Mesh& mesh) {
    return at(std::max(mesh.triangles.GetAvailableNumM(), 0)) +
           at(std::max(mesh.quads.GetAvailableNumM(), 0));
  }

  template <class Item>
  void note(int& count, std::vector<Item>& list, const Item& item) {
    ++count;
    if (isListing_) {
      list.push_back(item);
    }
  }
  void noteEdge(int& count, std::vector<DefectLists::Edge>& list, int edge) {
    note(count, list, {edges_.origin(edge), edges_.target(edge)});
  }

  [[nodiscard]] bool isLiveNode(int node) const {
    return node >= 0 && node < nodeCount_ && isLive(nodes_[node]);
  }

  template <std::size_t kCorners, class Faces>
  void inspectFaces(const Faces& faces, ProgressSteps& steps) {
    FaceSets<kCorners> sets(at(std::max(faces.GetAvailableNumM(), 0)));
    forEachFace(faces, [&](int slot, const std::array<int, kCorners>& corners) {
      const FaceRef face{slot, static_cast<int>(kCorners)};
      typename FaceSets<kCorners>::Search search;
      sets.lookAhead(corners.data(), search);
      inspectCorners(face, corners.data());
      const int before = sets.count();
      if (sets.findOrAdd(search) != before) {
        note(found_.duplicateFaces, found_.lists.duplicateFaces, face);
      }
      steps.advance();
    });
  }

  void inspectCorners(const FaceRef& face, const int* corners) {
    bool isSound = true;
    for (int k = 0; k < face.corners; ++k) {
      isSound = isLiveNode(corners[k]) && isSound;
      if (corners[k] >= 0 && corners[k] < nodeCount_) {
        isUsed_[at(corners[k])] = true;
      }
    }
    if (!isSound) {
      note(found_.danglingFaces, found_.lists.danglingFaces, face);
    } else if (hasRepeatedCorner(corners, face.corners) || hasNoArea(corners, face.corners)) {
      note(found_.degenerateFaces, found_.lists.degenerateFaces, face);
    }
  }

  /// Newell's area vector is zero: all corners on one line or in one place.
  [[nodiscard]] bool hasNoArea(const int* corners, int count) const {
    Double3 area{};
    const float* origin = nodes_[corners[0]].point();
    for (int i = 2; i < count; ++i) {
      const Double3 part = cross(between(origin, nodes_[corners[i - 1]].point()),
                                 between(origin, nodes_[corners[i]].point()));
      for (std::size_t axis = 0; axis < 3; ++axis) {
        area[axis] += part[axis];
      }
    }
    return area == Double3{};
  }

  void inspectNodes() {
    for (int node = 0; node < nodeCount_; ++node) {
      if (!isLive(nodes_[node])) {
        continue;
      }
      if (!isFinitePoint(nodes_[node].point())) {
        note(found_.nonFiniteNodes, found_.lists.nonFiniteNodes, node);
      }
      if (!isUsed_[at(node)]) {
        note(found_.unusedNodes, found_.lists.unusedNodes, node);
      }
    }
  }

  /// Corners about a node that share an edge there belong to one fan; more fans than one make a
  /// bow tie.
  void inspectEdges(ProgressSteps& steps) {
    DisjointSets corners(edges_.count());
    std::vector<int> fans(at(nodeCount_), 0);
    for (int edge = 0; edge < edges_.count(); ++edge) {
      ++fans[at(edges_.origin(edge))];
    }
    for (int edge = 0; edge < edges_.count(); ++edge) {
      steps.advance();
      if (!edges_.isFirst(edge)) {
        continue;
      }
      if (edges_.partner(edge) == HalfEdges::kOpen) {
        noteEdge(found_.openEdges, found_.lists.openEdges, edge);
      } else if (edges_.partner(edge) == HalfEdges::kCrowded) {
        noteEdge(found_.crowdedEdges, found_.lists.crowdedEdges, edge);
      } else if (edges_.isMixed(edge)) {
        noteEdge(found_.mixedEdges, found_.lists.mixedEdges, edge);
      }
      for (int other = edges_.nextAlong(edge); other != edge; other = edges_.nextAlong(other)) {
        for (const int node : {edges_.origin(edge), edges_.target(edge)}) {
          fans[at(node)] -= corners.join(cornerAt(edge, node), cornerAt(other, node)) ? 1 : 0;
        }
      }
    }
    for (int node = 0; node < nodeCount_; ++node) {
      if (fans[at(node)] > 1) {
        note(found_.bowTieNodes, found_.lists.bowTieNodes, node);
      }
    }
  }

  /// The corner of the edge's face at one of the edge's two nodes, named by the edge leaving it.
  [[nodiscard]] int cornerAt(int edge, int node) const {
    return edges_.origin(edge) == node ? edge : edges_.next(edge);
  }

  void inspectComponents() {
    const FaceComponents components = componentsOf(edges_);
    found_.components = components.count();
    const std::vector<bool> isInsideOut = insideOut(edges_, components, nodes_);
    for (std::size_t component = 0; component < isInsideOut.size(); ++component) {
      if (isInsideOut[component]) {
        note(found_.insideOutComponents, found_.lists.insideOutComponents,
             edges_.face(components.firstFaceOf[component]));
      }
    }
  }

  const NodeCL* nodes_;
  int nodeCount_;
  bool isListing_;
  std::vector<bool> isUsed_;
  HalfEdges edges_;
  Defects found_;
};

}  // namespace

bool Defects::any() const {
  return openEdges > 0 || crowdedEdges > 0 || mixedEdges > 0 || bowTieNodes > 0 ||
         duplicateFaces > 0 || degenerateFaces > 0 || danglingFaces > 0 || unusedNodes > 0 ||
         nonFiniteNodes > 0 || insideOutComponents > 0;
}

Defects findDefects(const Mesh& mesh, const DefectOptions& options) {
  return tellingRefusedMemory([&] { return DefectSearch(mesh, options).found(); });
}

}  // namespace zel
