#include "tools/view/pictures/scene_lines.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <utility>

namespace zel::view {
namespace {

// Faces that meet at more than 40 degrees are meant to show an edge.
const float kCosCrease = std::cos(0.69813170F);

constexpr double kNormalShare = 0.8;       // of the mean edge
constexpr double kShortestNormal = 0.004;  // of the scene's radius
constexpr double kLongestNormal = 0.12;

std::uint64_t edgeKey(int a, int b) {
  const auto [low, high] = std::minmax(a, b);
  return static_cast<std::uint64_t>(low) << 32 | static_cast<std::uint32_t>(high);
}

float degreesBetween(const SceneFace& a, const SceneFace& b) {
  const float cosine = std::clamp(dot(normalOf(a), normalOf(b)), -1.0F, 1.0F);
  return std::acos(cosine) * static_cast<float>(180 / std::numbers::pi);
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
  struct Side {
    std::uint64_t edge;
    std::uint32_t face;
  };
  std::vector<Side> sides;
  sides.reserve(3 * scene.faces.size());
  for (std::uint32_t f = 0; f < scene.faces.size(); ++f) {
    const std::array<int, 3> corners = cornersOf(scene.faces[f]);
    for (std::size_t k = 0; k < 3; ++k) {
      if ((scene.faces[f].realEdges >> k & 1) != 0) {
        sides.push_back({edgeKey(corners[k], corners[(k + 1) % 3]), f});
      }
    }
  }
  std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) {
    return std::pair(a.edge, a.face) < std::pair(b.edge, b.face);
  });
  EdgeLists lists;
  for (std::size_t first = 0; first < sides.size();) {
    std::size_t last = first + 1;
    while (last < sides.size() && sides[last].edge == sides[first].edge) {
      ++last;
    }
    const Edge edge{static_cast<int>(sides[first].edge >> 32),
                    static_cast<int>(sides[first].edge & 0xFFFFFFFF)};
    lists.all.push_back(edge);
    lists.bends.push_back(last - first == 2 ? degreesBetween(scene.faces[sides[first].face],
                                                             scene.faces[sides[first + 1].face])
                                            : 180);
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
        centre = plus(centre, scene.point(corner), 1.0F / 3);
      }
      normals.push_back({centre, normalOf(face)});
    }
  }
  return normals;
}

float normalLength(const SceneMesh& scene, const std::vector<Edge>& edges) {
  double sum = 0;
  for (const Edge& edge : edges) {
    sum += static_cast<double>(length(minus(scene.point(edge[1]), scene.point(edge[0]))));
  }
  const double mean = edges.empty() ? kLongestNormal : sum / static_cast<double>(edges.size());
  return static_cast<float>(std::clamp(mean * kNormalShare, kShortestNormal, kLongestNormal));
}

float areaOf(const SceneMesh& scene, const SceneFace& face) {
  const auto [a, b, c] = cornersOf(face);
  const Vector3 origin = scene.point(a);
  return length(cross(minus(scene.point(b), origin), minus(scene.point(c), origin))) / 2;
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
          sum = plus(sum, normal, areas[other]);
        }
      }
      normals.push_back(unit(sum, own));
    }
  }
  return normals;
}

}  // namespace zel::view
