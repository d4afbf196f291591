#include "zel/algorithms/boundary.h"

#include <cstddef>

#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/mesh/edges.h"

namespace zel {
namespace {

constexpr int kNoEdge = -1;

/// Walks boundary edges forward and backward, remembering which have been used.
class BoundaryWalk {
 public:
  explicit BoundaryWalk(const HalfEdges& edges)
      : edges_(edges), used_(static_cast<std::size_t>(edges.count()), false) {}

  [[nodiscard]] bool startsChain(int edge) const {
    return edges_.partner(edge) == HalfEdges::kOpen && !used_[static_cast<std::size_t>(edge)];
  }

  BoundaryChain chainFrom(int edge) {
    const int first = firstOfChain(edge);
    BoundaryChain chain{{}, false};
    int last = first;
    for (int at = first; at != kNoEdge; at = edgeAfter(at)) {
      if (used_[static_cast<std::size_t>(at)]) {
        chain.isClosed = at == first;
        break;
      }
      used_[static_cast<std::size_t>(at)] = true;
      chain.nodes.push_back(edges_.origin(at));
      last = at;
    }
    if (!chain.isClosed) {
      chain.nodes.push_back(edges_.target(last));
    }
    return chain;
  }

 private:
  /// The given edge itself when its chain is closed.
  [[nodiscard]] int firstOfChain(int edge) const {
    int first = edge;
    for (int before = edgeBefore(first); before != kNoEdge; before = edgeBefore(first)) {
      if (before == edge) {
        return edge;
      }
      first = before;
    }
    return first;
  }

  [[nodiscard]] int edgeAfter(int edge) const {
    return turn(edges_.next(edge), [&](int across) { return edges_.next(across); });
  }

  [[nodiscard]] int edgeBefore(int edge) const {
    return turn(edges_.previous(edge), [&](int across) { return edges_.previous(across); });
  }

  /// Turns about a node from face to face until an open edge.
  template <class Step>
  [[nodiscard]] int turn(int edge, Step step) const {
    while (edges_.partner(edge) >= 0 && !edges_.isMixed(edge)) {
      edge = step(edges_.partner(edge));
    }
    return edges_.partner(edge) == HalfEdges::kOpen ? edge : kNoEdge;
  }

  const HalfEdges& edges_;
  std::vector<bool> used_;
};

}  // namespace

std::vector<BoundaryChain> boundaryChains(const HalfEdges& edges, const BoundaryOptions& options) {
  return tellingRefusedMemory([&] {
    BoundaryWalk walk(edges);
    ProgressSteps steps(options.progress, static_cast<std::size_t>(edges.count()));
    std::vector<BoundaryChain> chains;
    for (int edge = 0; edge < edges.count(); ++edge) {
      if (walk.startsChain(edge)) {
        chains.push_back(walk.chainFrom(edge));
      }
      steps.advance();
    }
    return chains;
  });
}

std::vector<BoundaryChain> boundaryChains(const Mesh& mesh, const BoundaryOptions& options) {
  return boundaryChains(HalfEdges(mesh), options);
}

}  // namespace zel
