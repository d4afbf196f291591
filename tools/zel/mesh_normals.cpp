#include "tools/zel/mesh_normals.h"

#include <utility>
#include <vector>

namespace zel::program {

namespace {

/// A normal whose length is twice the face's area; a quad's comes from its diagonals.
template <std::size_t N>
Vector areaNormal(const NodeArr& nodes, const std::array<int, N>& corners) {
  std::array<Point, N> points{};
  for (std::size_t k = 0; k < N; ++k) {
    points[k] = pointOf(nodes, corners[k]);
  }
  constexpr std::size_t kFrom = N == 3 ? 0 : 1;
  return cross(vectorBetween(points[0], points[N - 2]),
               vectorBetween(points[kFrom], points[N - 1]));
}

/// Rounds to a unit vector; lengths far from 1 must not meet the library's absolute tolerance.
Point unit(const Vector& vector) {
  const double norm = length(vector);
  if (!(norm > 0)) {
    return {1, 0, 0};
  }
  return {static_cast<float>(vector[0] / norm), static_cast<float>(vector[1] / norm),
          static_cast<float>(vector[2] / norm)};
}

}  // namespace

void giveFaceNormals(Mesh& mesh) {
  forEachFace(mesh.triangles, [&](int slot, const auto& corners) {
    TriangleCL triangle = *std::as_const(mesh.triangles).GetItemPM(slot);
    triangle.SetNormM(unit(areaNormal(mesh.nodes, corners)).data());
    mesh.triangles.SetItemM(triangle, slot);
  });
  forEachFace(mesh.quads, [&](int slot, const auto& corners) {
    QuadCL quad = *std::as_const(mesh.quads).GetItemPM(slot);
    quad.SetNormM(unit(areaNormal(mesh.nodes, corners)).data());
    quad.SetNormTypeM(1);
    mesh.quads.SetItemM(quad, slot);
  });
}

void giveSmoothNodeNormals(Mesh& mesh) {
  std::vector<Vector> sums(static_cast<std::size_t>(mesh.nodes.GetBoundM()));
  std::vector<bool> used(sums.size());
  const auto add = [&](int, const auto& corners) {
    const Vector normal = areaNormal(mesh.nodes, corners);
    for (const int corner : corners) {
      const auto node = static_cast<std::size_t>(corner);
      used[node] = true;
      for (std::size_t k = 0; k < normal.size(); ++k) {
        sums[node][k] += normal[k];
      }
    }
  };
  forEachFace(mesh, add);
  for (std::size_t node = 0; node < sums.size(); ++node) {
    if (used[node]) {
      mesh.nodes.SetNodeNormM(static_cast<int>(node), unit(sums[node]).data());
    }
  }
}

void giveFlatNodeNormals(Mesh& mesh) {
  forEachFace(mesh.triangles, [&](int slot, const auto&) {
    mesh.nodes.ReGenNormalVectM(*std::as_const(mesh.triangles).GetItemPM(slot));
  });
  forEachFace(mesh.quads, [&](int slot, const auto&) {
    mesh.nodes.ReGenNormalVectM(*std::as_const(mesh.quads).GetItemPM(slot));
  });
}

}  // namespace zel::program
