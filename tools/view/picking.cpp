#include "tools/view/picking.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <set>
#include <vector>

namespace zel::view {
namespace {

// A place nearer to a corner than this share of the face's shortest side means the node.
constexpr float kNodeShare = 0.25F;
// Of the scene's radius: so near a ray must pass a lone point.
constexpr float kPointReach = 0.03F;
constexpr std::size_t kMostListed = 12;

std::string placeText(const std::array<double, 3>& place) {
  std::array<char, 96> text{};
  std::snprintf(text.data(), text.size(), "(%.6g, %.6g, %.6g)", place[0], place[1], place[2]);
  return text.data();
}

template <class Numbers>
std::string listText(const Numbers& numbers) {
  std::string text;
  std::size_t listed = 0;
  for (const auto& number : numbers) {
    if (listed++ == kMostListed) {
      return text + ", ...";
    }
    text += (text.empty() ? "" : ", ") + std::string(number);
  }
  return text.empty() ? "none" : text;
}

std::string nameOf(const SceneFace& face) {
  return (face.isQuad ? "quad " : "triangle ") + std::to_string(face.slot);
}

bool isSameFace(const SceneFace& a, const SceneFace& b) {
  return a.isQuad == b.isQuad && a.slot == b.slot;
}

std::vector<Edge> edgesOfFace(const SceneFace& face) {
  const std::array<int, 3> corners = cornersOf(face);
  std::vector<Edge> edges;
  for (std::size_t k = 0; k < 3; ++k) {
    if ((face.realEdges >> k & 1) != 0) {
      const auto [low, high] = std::minmax(corners[k], corners[(k + 1) % 3]);
      edges.push_back({low, high});
    }
  }
  return edges;
}

}  // namespace

Picker::Picker(const SceneMesh& scene) : scene_(scene), tree_(scene.facePoints()) {}

std::optional<Picked> Picker::pick(const Ray& ray) const {
  if (scene_.faces.empty()) {
    return pickPoint(ray);
  }
  const auto hit = tree_.nearest(ray.origin, ray.direction);
  if (!hit) {
    return std::nullopt;
  }
  const Vector3 place = plus(ray.origin, ray.direction, hit->distance);
  const std::array<int, 3> corners = cornersOf(scene_.faces[hit->triangle]);
  float shortest = std::numeric_limits<float>::infinity();
  float nearest = shortest;
  int node = corners[0];
  for (std::size_t k = 0; k < 3; ++k) {
    const Vector3 corner = scene_.point(corners[k]);
    shortest = std::min(shortest, length(minus(corner, scene_.point(corners[(k + 1) % 3]))));
    if (length(minus(corner, place)) < nearest) {
      nearest = length(minus(corner, place));
      node = corners[k];
    }
  }
  Picked picked =
      nearest < kNodeShare * shortest ? describeNode(node) : describeFace(hit->triangle, place);
  picked.place = place;
  return picked;
}

std::optional<Picked> Picker::pickPoint(const Ray& ray) const {
  float nearest = kPointReach;
  std::optional<int> found;
  const Vector3 along = unit(ray.direction);
  for (const int node : scene_.shownNodes) {
    const float distance = length(cross(minus(scene_.point(node), ray.origin), along));
    if (distance < nearest) {
      nearest = distance;
      found = node;
    }
  }
  return found ? std::optional(describeNode(*found)) : std::nullopt;
}

Picked Picker::describeNode(int node) const {
  std::set<int> neighbours;
  for (const SceneFace& face : scene_.faces) {
    for (const auto& [a, b] : edgesOfFace(face)) {
      if (a == node || b == node) {
        neighbours.insert(a == node ? b : a);
      }
    }
  }
  std::vector<std::string> names;
  for (const int neighbour : neighbours) {
    names.push_back(std::to_string(neighbour));
  }
  const Vector3 place = scene_.point(node);
  return {{std::nullopt, node},
          place,
          "node " + std::to_string(node) + " at " + placeText(scene_.inMesh(place)) +
              ", neighbours " + listText(names)};
}

Picked Picker::describeFace(std::uint32_t face, const Vector3& place) const {
  const SceneFace& picked = scene_.faces[face];
  std::set<Edge> edges;
  std::vector<int> corners;
  for (std::uint32_t f = face - std::min(face, 1U);
       f < std::min<std::size_t>(scene_.faces.size(), std::size_t{face} + 2); ++f) {
    if (isSameFace(scene_.faces[f], picked)) {
      for (const int corner : cornersOf(scene_.faces[f])) {
        if (std::find(corners.begin(), corners.end(), corner) == corners.end()) {
          corners.push_back(corner);
        }
      }
      for (const Edge& edge : edgesOfFace(scene_.faces[f])) {
        edges.insert(edge);
      }
    }
  }
  std::vector<std::string> nodes;
  for (const int corner : corners) {
    nodes.push_back(std::to_string(corner));
  }
  std::vector<std::string> neighbours;
  for (const SceneFace& other : scene_.faces) {
    const std::vector<Edge> sides = edgesOfFace(other);
    if (!isSameFace(other, picked) && std::any_of(sides.begin(), sides.end(), [&](const Edge& e) {
          return edges.count(e) > 0;
        })) {
      neighbours.push_back(nameOf(other));
    }
  }
  return {{face, std::nullopt},
          place,
          nameOf(picked) + " of nodes " + listText(nodes) + " at " +
              placeText(scene_.inMesh(place)) + ", beside " + listText(neighbours)};
}

}  // namespace zel::view
