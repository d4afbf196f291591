#pragma once

#include <array>
#include <vector>

#include "tools/view/pictures/scene_mesh.h"

namespace zel::view {

/// Two node slots, the lower one first.
using Edge = std::array<int, 2>;

/// The edges of a scene.
struct EdgeLists {
  std::vector<Edge> all;       ///< each once; the cuts through quads are no edges
  std::vector<Edge> boundary;  ///< those of exactly one face
  /// By edge: degrees between the planes of its two faces; 180 when it has not two.
  std::vector<float> bends;
};

/// Collects the edges, in time n log n.
[[nodiscard]] EdgeLists edgesOf(const SceneMesh& scene);

/// A place and the unit normal there.
struct PlacedNormal {
  Vector3 foot;
  Vector3 normal;
};

/// The normals that the nodes bear; when none bears one, those of the faces, at their centres.
[[nodiscard]] std::vector<PlacedNormal> normalsOf(const SceneMesh& scene);

/// Length of the lines that show normals: a share of the mean edge, within sensible limits.
[[nodiscard]] float normalLength(const SceneMesh& scene, const std::vector<Edge>& edges);

/// The area of a face, in the scene's unit.
[[nodiscard]] float areaOf(const SceneMesh& scene, const SceneFace& face);

/// The normals that make smooth surfaces look smooth. Entry 3 f + k is the mean, weighted by area,
/// of those faces around corner k's node that turn away from face f by less than a crease.
[[nodiscard]] std::vector<Vector3> cornerNormals(const SceneMesh& scene);

}  // namespace zel::view
