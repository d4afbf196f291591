#include "tools/view/pictures/scene_mesh.h"

#include <algorithm>
#include <cmath>

namespace zel::view {
namespace {

constexpr std::uint8_t kAllEdges = 0b111;
// Of a quad's halves (0, 1, 2) and (0, 2, 3) one side each is the cut.
constexpr std::uint8_t kFirstHalf = 0b011;
constexpr std::uint8_t kSecondHalf = 0b110;

// In radii of the scene: nodes that no face uses have a place when they are not farther away.
constexpr float kFarthest = 8;

bool isFinite(const Vector3& v) {
  return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
}

// The unit normal of the plane through three points, (0, 0, 0) when they are in line.
Vector3 planeNormal(const Vector3& a, const Vector3& b, const Vector3& c) {
  std::array<double, 3> u{};
  std::array<double, 3> v{};
  for (std::size_t k = 0; k < 3; ++k) {
    u[k] = static_cast<double>(b[k]) - static_cast<double>(a[k]);
    v[k] = static_cast<double>(c[k]) - static_cast<double>(a[k]);
  }
  const std::array<double, 3> n{u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                                u[0] * v[1] - u[1] * v[0]};
  const double length = std::hypot(n[0], n[1], n[2]);
  if (!(length > 0)) {
    return {};
  }
  return {static_cast<float>(n[0] / length), static_cast<float>(n[1] / length),
          static_cast<float>(n[2] / length)};
}

// Builds a SceneMesh step by step.
class Assembly {
 public:
  Assembly(SceneMesh& scene, const NodeArr& nodes) : scene_(scene), nodes_(nodes) {
    const auto slots = static_cast<std::size_t>(std::max(nodes.GetBoundM(), 0));
    usable_.resize(slots);
    shown_.resize(slots);
    scene_.nodeNormals.resize(slots);
    for (std::size_t slot = 0; slot < slots; ++slot) {
      const NodeCL& node = nodes.ElementAtM(static_cast<int>(slot));
      if (isLive(node)) {
        ++scene_.nodeCount;
        usable_[slot] = isFinite(originalPoint(static_cast<int>(slot)));
        readNormal(node, scene_.nodeNormals[slot]);
      }
    }
  }

  // Corners are kept as given until the points are placed.
  bool addFace(int a, int b, int c, SceneFace face) {
    for (const int corner : {a, b, c}) {
      if (!isUsable(corner)) {
        return false;
      }
    }
    face.triangle = TriangleCL(kTagAvailable);
    face.triangle.SetTriangleM(a, b, c);
    for (const int corner : {a, b, c}) {
      shown_[static_cast<std::size_t>(corner)] = 1;
    }
    scene_.faces.push_back(face);
    return true;
  }

  bool addQuad(const std::array<int, 4>& corners, int slot) {
    if (!std::all_of(corners.begin(), corners.end(), [this](int c) { return isUsable(c); })) {
      return false;
    }
    return addFace(corners[0], corners[1], corners[2], {{}, kFirstHalf, true, slot}) &&
           addFace(corners[0], corners[2], corners[3], {{}, kSecondHalf, true, slot});
  }

  void placePoints() {
    if (scene_.faces.empty()) {
      shown_ = usable_;
    }
    for (std::size_t slot = 0; slot < shown_.size(); ++slot) {
      if (shown_[slot] != 0) {
        scene_.shownNodes.push_back(static_cast<int>(slot));
      }
    }
    measure();
    scene_.points.InitialSizeM(static_cast<int>(shown_.size()));
    for (std::size_t slot = 0; slot < usable_.size(); ++slot) {
      const Vector3 place = usable_[slot] != 0 ? placeOf(static_cast<int>(slot)) : Vector3{};
      if (shown_[slot] != 0 || (usable_[slot] != 0 && length(place) <= kFarthest)) {
        scene_.points.SetItemM(place.data(), static_cast<int>(slot));
      }
    }
  }

  void giveFaceNormals() {
    for (SceneFace& face : scene_.faces) {
      const auto [a, b, c] = cornersOf(face);
      const Vector3 normal = planeNormal(scene_.point(a), scene_.point(b), scene_.point(c));
      face.triangle.SetNormM(normal.data());
    }
  }

 private:
  [[nodiscard]] bool isUsable(int slot) const {
    return slot >= 0 && static_cast<std::size_t>(slot) < usable_.size() &&
           usable_[static_cast<std::size_t>(slot)] != 0;
  }

  [[nodiscard]] Vector3 originalPoint(int slot) const {
    Vector3 point{};
    nodes_.ElementAtM(slot).GetPntM(point.data());
    return point;
  }

  [[nodiscard]] Vector3 placeOf(int slot) const {
    const Vector3 original = originalPoint(slot);
    Vector3 place{};
    for (std::size_t k = 0; k < 3; ++k) {
      place[k] =
          static_cast<float>((static_cast<double>(original[k]) - scene_.centre[k]) / scene_.radius);
    }
    return place;
  }

  static void readNormal(const NodeCL& node, Vector3& normal) {
    Vector3 stored{};
    node.GetNormalM(stored.data());
    const float length = std::hypot(stored[0], stored[1], stored[2]);
    if (isFinite(stored) && std::isfinite(length) && length > 0) {
      normal = {stored[0] / length, stored[1] / length, stored[2] / length};
    }
  }

  // Centre of the bounding box, and the radius of the shown nodes about it.
  void measure() {
    if (scene_.shownNodes.empty()) {
      return;
    }
    Vector3 low = originalPoint(scene_.shownNodes.front());
    Vector3 high = low;
    for (const int slot : scene_.shownNodes) {
      const Vector3 point = originalPoint(slot);
      for (std::size_t k = 0; k < 3; ++k) {
        low[k] = std::min(low[k], point[k]);
        high[k] = std::max(high[k], point[k]);
      }
    }
    for (std::size_t k = 0; k < 3; ++k) {
      scene_.centre[k] = (static_cast<double>(low[k]) + static_cast<double>(high[k])) / 2;
    }
    double radius = 0;
    for (const int slot : scene_.shownNodes) {
      const Vector3 point = originalPoint(slot);
      radius = std::max(radius, std::hypot(static_cast<double>(point[0]) - scene_.centre[0],
                                           static_cast<double>(point[1]) - scene_.centre[1],
                                           static_cast<double>(point[2]) - scene_.centre[2]));
    }
    scene_.radius = radius > 0 ? radius : 1;
  }

  SceneMesh& scene_;
  const NodeArr& nodes_;
  std::vector<char> usable_;  // live and finite
  std::vector<char> shown_;
};

// Those of three corners, counted through the whole list.
void copyTextureCoords(SceneMesh& scene, const Point2DArr& coords,
                       const std::array<int, 3>& corners) {
  for (const int corner : corners) {
    Float2 coord{};
    const bool isSet =
        textureCoordOf(coords, corner, coord) && std::isfinite(coord[0]) && std::isfinite(coord[1]);
    scene.textureCoords.push_back(isSet ? coord : Float2{});
  }
}

}  // namespace

SceneMesh::SceneMesh(const Mesh& mesh)
    : SceneMesh(mesh.nodes, mesh.triangles, mesh.quads, mesh.triangleTexture, mesh.quadTexture) {}

SceneMesh::SceneMesh(const NodeArr& nodes, const TriangleArr& triangles, const QuadArr& quads,
                     const Point2DArr& triangleTexture, const Point2DArr& quadTexture) {
  Assembly assembly(*this, nodes);
  const bool isTextured =
      triangleTexture.GetAvailableNumM() > 0 || quadTexture.GetAvailableNumM() > 0;
  forEachFace(triangles, [&](int slot, const std::array<int, 3>& corners) {
    ++triangleCount;
    if (assembly.addFace(corners[0], corners[1], corners[2], {{}, kAllEdges, false, slot}) &&
        isTextured) {
      copyTextureCoords(*this, triangleTexture, {3 * slot, 3 * slot + 1, 3 * slot + 2});
    }
  });
  forEachFace(quads, [&](int slot, const std::array<int, 4>& corners) {
    ++quadCount;
    if (assembly.addQuad(corners, slot) && isTextured) {
      const int first = 4 * slot;
      copyTextureCoords(*this, quadTexture, {first, first + 1, first + 2});
      copyTextureCoords(*this, quadTexture, {first, first + 2, first + 3});
    }
  });
  assembly.placePoints();
  assembly.giveFaceNormals();
}

Vector3 SceneMesh::point(int node) const {
  Vector3 point{};
  points.GetItemM(point.data(), node);
  return point;
}

std::vector<TrianglePoints> SceneMesh::facePoints() const {
  std::vector<TrianglePoints> triangles;
  triangles.reserve(faces.size());
  for (const SceneFace& face : faces) {
    const auto [a, b, c] = cornersOf(face);
    triangles.push_back({point(a), point(b), point(c)});
  }
  return triangles;
}

std::array<double, 3> SceneMesh::inMesh(const Vector3& place) const {
  std::array<double, 3> original{};
  for (std::size_t k = 0; k < 3; ++k) {
    original[k] = centre[k] + radius * static_cast<double>(place[k]);
  }
  return original;
}

std::vector<Vector3> SceneMesh::shownPoints() const {
  std::vector<Vector3> shown;
  shown.reserve(shownNodes.size());
  for (const int node : shownNodes) {
    shown.push_back(point(node));
  }
  return shown;
}

}  // namespace zel::view
