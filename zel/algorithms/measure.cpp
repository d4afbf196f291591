#include "zel/algorithms/measure.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "zel/algorithms/boundary.h"
#include "zel/algorithms/detail/components.h"
#include "zel/algorithms/detail/double_vectors.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/progress_steps.h"

namespace zel {
namespace {

Double3 middleOf(const Bounds& bounds) {
  Double3 middle{};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    middle[axis] = (double{bounds.low[axis]} + bounds.high[axis]) / 2;
  }
  return middle;
}

/// Sums over the faces and edges of a mesh.
class Measurement {
 public:
  Measurement(const Mesh& mesh, const HalfEdges& edges)
      : nodes_(mesh.nodes.getCurrentItemPrtConstM()), edges_(edges) {
    measures_.bounds = boundsOf(mesh);
    measures_.shortestEdge = std::numeric_limits<double>::infinity();
  }

  void addEdge(int edge) {
    if (!edges_.isFirst(edge)) {
      return;
    }
    ++measures_.edges;
    measures_.openEdges += edges_.partner(edge) == HalfEdges::kOpen ? 1 : 0;
    measures_.crowdedEdges += edges_.partner(edge) == HalfEdges::kCrowded ? 1 : 0;
    measures_.mixedEdges += edges_.isMixed(edge) ? 1 : 0;
    const double length = distanceBetween(point(edge), nodes_[edges_.target(edge)].point());
    lengths_ += length;
    measures_.shortestEdge = std::min(measures_.shortestEdge, length);
    measures_.longestEdge = std::max(measures_.longestEdge, length);
  }

  void addFace(int face) {
    const int first = edges_.firstEdge(face);
    const Double3 apex = middleOf(measures_.bounds);
    zel::addFace(volume_, apex, edges_, face, nodes_);
    const float* a = point(first);
    for (int k = 2; k < edges_.face(face).corners; ++k) {
      const float* b = point(first + k - 1);
      const float* c = point(first + k);
      const double area = length(cross(between(a, b), between(a, c))) / 2;
      measures_.area += area;
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const double middle = (double{a[axis]} + b[axis] + c[axis]) / 3;
        measures_.centroid[axis] += area * (middle - apex[axis]);
      }
    }
  }

  Measures finished() {
    const Double3 apex = middleOf(measures_.bounds);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      double& centre = measures_.centroid[axis];
      centre = measures_.area > 0 ? apex[axis] + centre / measures_.area : 0.0;
    }
    measures_.signedVolume = volume_.volume();
    measures_.meanEdge = measures_.edges > 0 ? lengths_ / measures_.edges : 0.0;
    measures_.shortestEdge = measures_.edges > 0 ? measures_.shortestEdge : 0.0;
    measures_.components = componentsOf(edges_).count();
    for (const BoundaryChain& chain : boundaryChains(edges_)) {
      ++(chain.isClosed ? measures_.boundaryLoops : measures_.boundaryChains);
    }
    return measures_;
  }

 private:
  [[nodiscard]] const float* point(int edge) const { return nodes_[edges_.origin(edge)].point(); }

  const NodeCL* nodes_;
  const HalfEdges& edges_;
  Measures measures_;
  VolumeSum volume_;
  double lengths_ = 0.0;
};

}  // namespace

double Bounds::diagonal() const { return distanceBetween(low.data(), high.data()); }

void Bounds::extendTo(const float* point) {
  if (!isFinitePoint(point)) {
    return;
  }
  for (std::size_t axis = 0; axis < 3; ++axis) {
    low[axis] = isEmpty ? point[axis] : std::min(low[axis], point[axis]);
    high[axis] = isEmpty ? point[axis] : std::max(high[axis], point[axis]);
  }
  isEmpty = false;
}

Bounds boundsOf(const Mesh& mesh) {
  Bounds bounds;
  const NodeCL* nodes = mesh.nodes.getCurrentItemPrtConstM();
  for (int slot = 0; slot < mesh.nodes.GetBoundM(); ++slot) {
    if (isLive(nodes[slot])) {
      bounds.extendTo(nodes[slot].point());
    }
  }
  return bounds;
}

double shortestEdgeOf(const Mesh& mesh) {
  double shortest = std::numeric_limits<double>::infinity();
  const NodeCL* nodes = mesh.nodes.getCurrentItemPrtConstM();
  const auto isNode = [&](int node) { return node >= 0 && node < mesh.nodes.GetBoundM(); };
  forEachFace(mesh, [&](int /*slot*/, const auto& corners) {
    if (std::ranges::all_of(corners, isNode)) {
      for (std::size_t k = 0; k < corners.size(); ++k) {
        const int next = corners[(k + 1) % corners.size()];
        shortest = corners[k] == next
                       ? shortest
                       : std::min(shortest,
                                  distanceBetween(nodes[corners[k]].point(), nodes[next].point()));
      }
    }
  });
  return std::isfinite(shortest) ? shortest : 0.0;
}

Measures measure(const Mesh& mesh, const MeasureOptions& options) {
  return tellingRefusedMemory([&] {
    const HalfEdges edges(mesh);
    Measurement measurement(mesh, edges);
    ProgressSteps steps(options.progress, static_cast<std::size_t>(edges.count()));
    for (int face = 0; face < edges.faceCount(); ++face) {
      measurement.addFace(face);
      for (int k = 0; k < edges.face(face).corners; ++k) {
        measurement.addEdge(edges.firstEdge(face) + k);
        steps.advance();
      }
    }
    return measurement.finished();
  });
}

}  // namespace zel
