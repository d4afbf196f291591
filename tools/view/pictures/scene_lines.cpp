#include "tools/view/pictures/scene_lines.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zel::view {
namespace {

// Faces that meet at more than 40 degrees are meant to show an edge.
const float kCosCrease = std::cos(0.69813170F);

constexpr double kNormalShare = 0.8;       // of the mean edge
constexpr double kShortestNormal = 0.004;  // of the scene's radius
constexpr double kLongestNormal = 0.12;

std::array<int, 3> cornersOf(const SceneFace& face) {
  std::array<int, 3> corners{};
  face.triangle.GetTriangleM(corners.data());
  return corners;
}

std::uint64_t edgeKey(int a, int b) {
  const auto [low, high] = std::minmax(a, b);
  return static_cast<std::uint64_t>(low) << 32 | static_cast<std::uint32_t>(high);
}

Vector3 normalOf(const SceneFace& face) {
  Vector3 normal{};
  face.triangle.GetNormM(normal.data());
  return normal;
}

float dot(const Vector3& a, const Vector3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

float areaOf(const SceneMesh& scene, const SceneFace& face) {
  const std::array<int, 3> corners = cornersOf(face);
  const Vector3 a = scene.point(corners[0]);
  const Vector3 b = scene.point(corners[1]);
  const Vector3 c = scene.point(corners[2]);
  const Vector3 u{b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  const Vector3 v{c[0] - a[0], c[1] - a[1], c[2] - a[2]};
  const float square = dot(u, u) * dot(v, v) - dot(u, v) * dot(u, v);
  return std::sqrt(std::max(square, 0.0F)) / 2;
}

// The faces around each node: those of node n stand from starts[n] to starts[n + 1].
struct FacesAround {
  explicit FacesAround(const SceneMesh& scene)
      : starts(scene.nodeNormals.size() + 1), faces(3 * scene.faces.size()) {
    for (const SceneFace& face : scene.faces) {
      for (const int corner : cornersOf(face)) {
        ++starts[static_cast<std::size_t>(corner) + 1];
      }
    }
    for (std::size_t node = 1; node < starts.size(); ++node) {
      starts[node] += starts[node - 1];
    }
    std::vector<std::size_t> next(starts.begin(), starts.end() - 1);
    for (std::size_t f = 0; f < scene.faces.size(); ++f) {
      for (const int corner : cornersOf(scene.faces[f])) {
        faces[next[static_cast<std::size_t>(corner)]++] = static_cast<std::uint32_t>(f);
      }
    }
  }

  std::vector<std::size_t> starts;
  std::vector<std::uint32_t> faces;
};

}  // namespace

EdgeLists edgesOf(const SceneMesh& scene) {
  std::vector<std::uint64_t> keys;
  keys.reserve(3 * scene.faces.size());
  for (const SceneFace& face : scene.faces) {
    const std::array<int, 3> corners = cornersOf(face);
    for (std::size_t k = 0; k < 3; ++k) {
      if ((face.realEdges >> k & 1) != 0) {
        keys.push_back(edgeKey(corners[k], corners[(k + 1) % 3]));
      }
    }
  }
  std::sort(keys.begin(), keys.end());
  EdgeLists lists;
  for (std::size_t first = 0; first < keys.size();) {
    std::size_t last = first + 1;
    while (last < keys.size() && keys[last] == keys[first]) {
      ++last;
    }
    const Edge edge{static_cast<int>(keys[first] >> 32),
                    static_cast<int>(keys[first] & 0xFFFFFFFF)};
    lists.all.push_back(edge);
    if (last - first == 1) {
      lists.boundary.push_back(edge);
    }
    first = last;
  }
  return lists;
}

std::vector<PlacedNormal> normalsOf(const SceneMesh& scene) {
  std::vector<PlacedNormal> normals;
  for (const int node : scene.shownNodes) {
    const Vector3& normal = scene.nodeNormals[static_cast<std::size_t>(node)];
    if (normal != Vector3{}) {
      normals.push_back({scene.point(node), normal});
    }
  }
  if (normals.empty()) {
    for (const SceneFace& face : scene.faces) {
      Vector3 centre{};
      for (const int corner : cornersOf(face)) {
        const Vector3 point = scene.point(corner);
        for (std::size_t k = 0; k < 3; ++k) {
          centre[k] += point[k] / 3;
        }
      }
      normals.push_back({centre, normalOf(face)});
    }
  }
  return normals;
}

float normalLength(const SceneMesh& scene, const std::vector<Edge>& edges) {
  double sum = 0;
  for (const Edge& edge : edges) {
    const Vector3 a = scene.point(edge[0]);
    const Vector3 b = scene.point(edge[1]);
    sum += static_cast<double>(std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]));
  }
  const double mean = edges.empty() ? kLongestNormal : sum / static_cast<double>(edges.size());
  return static_cast<float>(std::clamp(mean * kNormalShare, kShortestNormal, kLongestNormal));
}

std::vector<Vector3> cornerNormals(const SceneMesh& scene) {
  const FacesAround around(scene);
  std::vector<float> areas;
  areas.reserve(scene.faces.size());
  for (const SceneFace& face : scene.faces) {
    areas.push_back(areaOf(scene, face));
  }
  std::vector<Vector3> normals;
  normals.reserve(3 * scene.faces.size());
  for (const SceneFace& face : scene.faces) {
    const Vector3 own = normalOf(face);
    for (const int corner : cornersOf(face)) {
      Vector3 sum{};
      const auto node = static_cast<std::size_t>(corner);
      for (std::size_t i = around.starts[node]; i < around.starts[node + 1]; ++i) {
        const std::size_t other = around.faces[i];
        const Vector3 normal = normalOf(scene.faces[other]);
        if (dot(normal, own) > kCosCrease) {
          for (std::size_t k = 0; k < 3; ++k) {
            sum[k] += areas[other] * normal[k];
          }
        }
      }
      const float length = std::hypot(sum[0], sum[1], sum[2]);
      normals.push_back(length > 0 ? Vector3{sum[0] / length, sum[1] / length, sum[2] / length}
                                   : own);
    }
  }
  return normals;
}

}  // namespace zel::view
