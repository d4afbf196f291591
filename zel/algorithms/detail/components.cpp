#include "zel/algorithms/detail/components.h"

#include <cmath>

#include "zel/algorithms/detail/double_vectors.h"

namespace zel {

FaceComponents numbered(DisjointSets& sets, int faceCount) {
  FaceComponents components;
  components.of.resize(static_cast<std::size_t>(faceCount));
  for (int face = 0; face < faceCount; ++face) {
    const int first = sets.find(face);
    int& number = components.of[static_cast<std::size_t>(face)];
    number = first == face ? components.count() : components.of[static_cast<std::size_t>(first)];
    if (first == face) {
      components.firstFaceOf.push_back(face);
    }
  }
  return components;
}

FaceComponents componentsOf(const HalfEdges& edges) {
  return componentsOf(edges, [](int /*edge*/) { return true; });
}

void VolumeSum::add(const Double3& apex, const float* a, const float* b, const float* c,
                    bool isReversed) {
  const auto from = [&](const float* p) {
    return Double3{p[0] - apex[0], p[1] - apex[1], p[2] - apex[2]};
  };
  const double volume = dot(from(a), cross(from(b), from(c)));
  sum_ += isReversed ? -volume : volume;
  magnitude_ += std::fabs(volume);
}

void addFace(VolumeSum& sum, const Double3& apex, const HalfEdges& edges, int face,
             const NodeCL* nodes, bool isReversed) {
  const int first = edges.firstEdge(face);
  const auto corner = [&](int k) { return nodes[edges.origin(first + k)].point(); };
  for (int k = 2; k < edges.face(face).corners; ++k) {
    sum.add(apex, corner(0), corner(k - 1), corner(k), isReversed);
  }
}

std::vector<bool> insideOut(const HalfEdges& edges, const FaceComponents& components,
                            const NodeCL* nodes) {
  const auto size = static_cast<std::size_t>(components.count());
  std::vector<bool> isSolid(size, true);
  std::vector<VolumeSum> volumes(size);
  const auto componentOf = [&](int face) {
    return static_cast<std::size_t>(components.of[static_cast<std::size_t>(face)]);
  };
  for (int edge = 0; edge < edges.count(); ++edge) {
    if (edges.partner(edge) < 0 || edges.isMixed(edge)) {
      isSolid[componentOf(edges.faceOf(edge))] = false;
    }
  }
  for (int face = 0; face < edges.faceCount(); ++face) {
    const std::size_t component = componentOf(face);
    if (isSolid[component]) {
      // Near the faces, where the cones are small.
      const int first = edges.firstEdge(components.firstFaceOf[component]);
      const float* apex = nodes[edges.origin(first)].point();
      addFace(volumes[component], {apex[0], apex[1], apex[2]}, edges, face, nodes);
    }
  }
  for (std::size_t component = 0; component < size; ++component) {
    isSolid[component] = isSolid[component] && volumes[component].isNegative();
  }
  return isSolid;
}

}  // namespace zel
