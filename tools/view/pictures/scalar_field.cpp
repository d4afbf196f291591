#include "tools/view/pictures/scalar_field.h"

#include <algorithm>
#include <cmath>

#include "tools/view/pictures/scene_lines.h"

namespace zel::view {
namespace {

// The colours called viridis (S. van der Walt, N. Smith, 2015; public domain), at equal distances.
constexpr std::array<Colour, 10> kScale{{{68, 1, 84},
                                         {72, 40, 120},
                                         {62, 74, 137},
                                         {49, 104, 142},
                                         {38, 130, 142},
                                         {31, 158, 137},
                                         {53, 183, 121},
                                         {109, 205, 89},
                                         {180, 222, 44},
                                         {253, 231, 37}}};
constexpr double kTail = 0.02;          // share of values that may lie beyond either end
constexpr double kWorstStretch = 1000;  // what has collapsed

void setRange(ScalarField& field) {
  std::vector<float> sorted = field.corners;
  if (sorted.empty()) {
    return;
  }
  const auto at = [&sorted](double share) {
    const auto place = static_cast<std::ptrdiff_t>(share * static_cast<double>(sorted.size() - 1));
    std::nth_element(sorted.begin(), sorted.begin() + place, sorted.end());
    return sorted[static_cast<std::size_t>(place)];
  };
  field.low = at(kTail);
  field.high = at(1 - kTail);
}

std::vector<float> edgeLengths(const SceneMesh& scene) {
  std::vector<double> sums(scene.nodeNormals.size());
  std::vector<int> counts(sums.size());
  for (const auto& [a, b] : edgesOf(scene).all) {
    const float size = length(minus(scene.point(a), scene.point(b)));
    for (const int node : {a, b}) {
      sums[static_cast<std::size_t>(node)] += static_cast<double>(size);
      ++counts[static_cast<std::size_t>(node)];
    }
  }
  std::vector<float> corners;
  for (const SceneFace& face : scene.faces) {
    for (const int corner : cornersOf(face)) {
      const auto node = static_cast<std::size_t>(corner);
      corners.push_back(static_cast<float>(scene.radius * sums[node] / std::max(counts[node], 1)));
    }
  }
  return corners;
}

// Halves of a quad count together, and so each has the whole quad's area.
std::vector<float> faceAreas(const SceneMesh& scene) {
  std::vector<float> areas;
  for (const SceneFace& face : scene.faces) {
    areas.push_back(areaOf(scene, face));
  }
  const auto square = static_cast<float>(scene.radius * scene.radius);
  std::vector<float> corners;
  for (std::size_t f = 0; f < areas.size(); ++f) {
    float area = areas[f];
    for (const std::size_t other : {f - 1, f + 1}) {
      if (scene.faces[f].isQuad && other < areas.size() && scene.faces[other].isQuad &&
          scene.faces[other].slot == scene.faces[f].slot) {
        area += areas[other];
      }
    }
    corners.insert(corners.end(), 3, area * square);
  }
  return corners;
}

struct Scales {
  double wide = 0;    // s1
  double narrow = 0;  // s2
  double area = 0;    // on the texture
};

Scales scalesOf(const SceneMesh& scene, std::size_t face) {
  const auto [a, b, c] = cornersOf(scene.faces[face]);
  const auto* uv = &scene.textureCoords[3 * face];
  const double u1 = static_cast<double>(uv[1][0]) - static_cast<double>(uv[0][0]);
  const double v1 = static_cast<double>(uv[1][1]) - static_cast<double>(uv[0][1]);
  const double u2 = static_cast<double>(uv[2][0]) - static_cast<double>(uv[0][0]);
  const double v2 = static_cast<double>(uv[2][1]) - static_cast<double>(uv[0][1]);
  const double twice = u1 * v2 - u2 * v1;
  if (twice == 0) {
    return {};
  }
  const Vector3 p = minus(scene.point(b), scene.point(a));
  const Vector3 q = minus(scene.point(c), scene.point(a));
  double uu = 0;
  double uv2 = 0;
  double vv = 0;
  for (std::size_t k = 0; k < 3; ++k) {
    const double alongU = (static_cast<double>(p[k]) * v2 - static_cast<double>(q[k]) * v1) / twice;
    const double alongV = (static_cast<double>(q[k]) * u1 - static_cast<double>(p[k]) * u2) / twice;
    uu += alongU * alongU;
    uv2 += alongU * alongV;
    vv += alongV * alongV;
  }
  const double spread = std::hypot(uu - vv, 2 * uv2);
  return {std::sqrt((uu + vv + spread) / 2), std::sqrt(std::max(uu + vv - spread, 0.0) / 2),
          std::abs(twice) / 2};
}

std::vector<float> stretches(const SceneMesh& scene) {
  std::vector<Scales> scales;
  double onTexture = 0;
  double onMesh = 0;
  for (std::size_t f = 0; f < scene.faces.size() && !scene.textureCoords.empty(); ++f) {
    scales.push_back(scalesOf(scene, f));
    if (scales.back().area > 0) {
      onTexture += scales.back().area;
      onMesh += static_cast<double>(areaOf(scene, scene.faces[f]));
    }
  }
  const double mean = onTexture > 0 ? std::sqrt(onMesh / onTexture) : 1;
  std::vector<float> corners;
  for (const Scales& scale : scales) {
    const double worst = scale.narrow > 0 && mean > 0
                             ? std::max(scale.wide / mean, mean / scale.narrow)
                             : kWorstStretch;
    corners.insert(corners.end(), 3, static_cast<float>(std::min(worst, kWorstStretch)));
  }
  return corners;
}

}  // namespace

float ScalarField::shareOf(float value) const {
  return high > low ? std::clamp((value - low) / (high - low), 0.0F, 1.0F) : 0.5F;
}

ScalarField scalarsOf(const SceneMesh& scene, Colouring colouring) {
  ScalarField field;
  switch (colouring) {
    case Colouring::kOwn:
      return field;
    case Colouring::kEdgeLength:
      field = {"edge length", edgeLengths(scene)};
      break;
    case Colouring::kFaceArea:
      field = {"face area", faceAreas(scene)};
      break;
    case Colouring::kStretch:
      field = {"texture stretch", stretches(scene)};
      break;
  }
  setRange(field);
  return field;
}

Colour colourOfShare(float share) {
  const float place = std::clamp(share, 0.0F, 1.0F) * static_cast<float>(kScale.size() - 1);
  const std::size_t below = std::min(static_cast<std::size_t>(place), kScale.size() - 2);
  const float part = place - static_cast<float>(below);
  const auto mixed = [part](std::uint8_t a, std::uint8_t b) {
    return static_cast<std::uint8_t>(
        std::lround(static_cast<float>(a) + part * static_cast<float>(b - a)));
  };
  const Colour& a = kScale[below];
  const Colour& b = kScale[below + 1];
  return {mixed(a.red, b.red), mixed(a.green, b.green), mixed(a.blue, b.blue), 255};
}

}  // namespace zel::view
