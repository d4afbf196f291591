#include "tools/view/pictures/surface.h"

#include <algorithm>

#include "tools/view/pictures/scene_lines.h"

namespace zel::view {
namespace {

// Sides longer than this share of the scene's radius are halved again and again, as long as the
// whole stays small.
constexpr float kLongestSide = 0.09F;
constexpr int kMostHalvings = 5;
constexpr std::size_t kMostTriangles = 60'000;
// Normals that differ by less than half a degree belong to one sample.
constexpr float kSameNormal = 0.99996F;

float longestSide(const SceneMesh& scene, const std::array<int, 3>& corners) {
  float longest = 0;
  for (std::size_t k = 0; k < 3; ++k) {
    longest = std::max(longest,
                       length(minus(scene.point(corners[k]), scene.point(corners[(k + 1) % 3]))));
  }
  return longest;
}

// How often each face's sides are halved.
std::vector<int> halvingsOf(const SceneMesh& scene) {
  std::vector<float> sides;
  for (const SceneFace& face : scene.faces) {
    sides.push_back(longestSide(scene, cornersOf(face)));
  }
  std::vector<int> halvings(sides.size());
  for (float target = kLongestSide; sides.size() < kMostTriangles; target *= 2) {
    std::size_t triangles = 0;
    for (std::size_t f = 0; f < sides.size(); ++f) {
      halvings[f] = 0;
      for (float side = sides[f]; side > target && halvings[f] < kMostHalvings; side /= 2) {
        ++halvings[f];
      }
      triangles += std::size_t{1} << 2 * halvings[f];
    }
    if (triangles <= kMostTriangles) {
      break;
    }
  }
  return halvings;
}

// Builds a Surface face by face.
class Cutting {
 public:
  Cutting(Surface& surface, const SceneMesh& scene)
      : surface_(surface), scene_(scene), normals_(cornerNormals(scene)) {
    samplesOfNode_.resize(scene.nodeNormals.size(), kNone);
  }

  void add(std::size_t face, int halvings) {
    corners_ = cornersOf(scene_.faces[face]);
    face_ = face;
    for (std::size_t k = 0; k < 3; ++k) {
      points_[k] = scene_.point(corners_[k]);
    }
    const int parts = 1 << halvings;
    std::vector<Surface::Corner> above;
    for (int row = 0; row <= parts; ++row) {
      std::vector<Surface::Corner> line;
      for (int column = 0; column <= row; ++column) {
        line.push_back(cornerAt(row, column, parts));
      }
      for (std::size_t i = 0; i < above.size(); ++i) {
        addTriangle(above[i], line[i], line[i + 1]);
        if (i + 1 < above.size()) {
          addTriangle(above[i], line[i + 1], above[i + 1]);
        }
      }
      above = std::move(line);
    }
  }

 private:
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  void addTriangle(const Surface::Corner& a, const Surface::Corner& b, const Surface::Corner& c) {
    surface_.corners.insert(surface_.corners.end(), {a, b, c});
    surface_.faces.push_back(static_cast<std::uint32_t>(face_));
  }

  // Row 0 is the first corner; in the last row run the second to the third.
  Surface::Corner cornerAt(int row, int column, int parts) {
    const float third = static_cast<float>(column) / static_cast<float>(parts);
    const float second = static_cast<float>(row - column) / static_cast<float>(parts);
    const float first = static_cast<float>(parts - row) / static_cast<float>(parts);
    for (std::size_t k = 0; k < 3; ++k) {
      if ((k == 0 ? first : k == 1 ? second : third) == 1) {
        return {sampleAtNode(k), {first, second}};
      }
    }
    Vector3 point{};
    Vector3 normal{};
    for (std::size_t k = 0; k < 3; ++k) {
      const float share = k == 0 ? first : k == 1 ? second : third;
      point = plus(point, points_[k], share);
      normal = plus(normal, normals_[3 * face_ + k], share);
    }
    return {addSample(point, unit(normal, normals_[3 * face_])), {first, second}};
  }

  std::uint32_t addSample(const Vector3& point, const Vector3& normal) {
    Vector3 middle{};
    for (const Vector3& corner : points_) {
      middle = plus(middle, corner, 1.0F / 3);
    }
    surface_.samples.push_back({point, normal, minus(middle, point)});
    return static_cast<std::uint32_t>(surface_.samples.size() - 1);
  }

  // The samples of a node are chained.
  std::uint32_t sampleAtNode(std::size_t corner) {
    const Vector3& normal = normals_[3 * face_ + corner];
    std::uint32_t& first = samplesOfNode_[static_cast<std::size_t>(corners_[corner])];
    for (std::uint32_t sample = first; sample != kNone; sample = next_[sample]) {
      if (dot(surface_.samples[sample].normal, normal) >= kSameNormal) {
        return sample;
      }
    }
    const std::uint32_t sample = addSample(points_[corner], normal);
    next_.resize(surface_.samples.size(), kNone);
    next_[sample] = first;
    first = sample;
    return sample;
  }

  Surface& surface_;
  const SceneMesh& scene_;
  std::vector<Vector3> normals_;              // three a face
  std::vector<std::uint32_t> samplesOfNode_;  // the latest of each node
  std::vector<std::uint32_t> next_;           // by sample: the one before it at the same node
  std::size_t face_ = 0;
  std::array<int, 3> corners_{};
  std::array<Vector3, 3> points_{};
};

}  // namespace

Surface::Surface(const SceneMesh& scene) {
  const std::vector<int> halvings = halvingsOf(scene);
  Cutting cutting(*this, scene);
  for (std::size_t face = 0; face < scene.faces.size(); ++face) {
    cutting.add(face, halvings[face]);
  }
}

}  // namespace zel::view
