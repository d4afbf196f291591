#include "tools/view/pictures/occlusion.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>
#include <system_error>
#include <thread>
#include <unordered_map>

#include "tools/view/pictures/scene_lines.h"
#include "tools/view/pictures/triangle_tree.h"

namespace zel::view {
namespace {

constexpr int kDirections = 96;      // over the whole sphere
constexpr float kReach = 1.6F;       // of the rays, in radii of the scene
constexpr float kLift = 1e-3F;       // a ray begins so far off the surface
constexpr float kGroundGap = 2e-3F;  // between the ground and the lowest point
constexpr std::size_t kBlock = 256;  // places that a thread takes at a time
constexpr std::size_t kMostPlaces = 24'000;
constexpr int kSmoothings = 3;
constexpr int kShadowBlurs = 2;
// Where the shadow begins to fade out, as a share of its reach.
constexpr float kFadeFrom = 0.55F;

// Directions spread evenly over the sphere: a Fibonacci lattice.
std::vector<Vector3> sphereDirections() {
  std::vector<Vector3> directions;
  const double turn = std::numbers::pi * (3 - std::sqrt(5.0));
  for (int i = 0; i < kDirections; ++i) {
    const double z = 1 - (2.0 * i + 1) / kDirections;
    const double r = std::sqrt(1 - z * z);
    directions.push_back({static_cast<float>(r * std::cos(turn * i)),
                          static_cast<float>(r * std::sin(turn * i)), static_cast<float>(z)});
  }
  return directions;
}

// Runs work(i) for all i below count on several threads.
void inParallel(std::size_t count, unsigned threads, const std::atomic<bool>* cancel,
                const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> next{0};
  const auto serve = [&] {
    for (std::size_t first = next.fetch_add(kBlock); first < count;
         first = next.fetch_add(kBlock)) {
      for (std::size_t i = first; i < std::min(first + kBlock, count); ++i) {
        if (cancel != nullptr && *cancel) {
          return;
        }
        work(i);
      }
    }
  };
  const unsigned wanted =
      threads != 0 ? threads : std::max(std::thread::hardware_concurrency(), 1U);
  std::vector<std::thread> helpers;
  try {
    while (helpers.size() + 1 < wanted) {
      helpers.emplace_back(serve);
    }
  } catch (const std::system_error&) {
    // The others do the work.
  }
  serve();
  for (std::thread& helper : helpers) {
    helper.join();
  }
}

// A quarter of the sky counts little when what hides it is far.
float hiding(const TriangleTree& tree, const Vector3& from, const Vector3& direction) {
  const auto hit = tree.nearest(from, direction, 0, kReach);
  if (!hit) {
    return 0;
  }
  const float share = hit->distance / kReach;
  return 1 - share * share;
}

Openness measure(const TriangleTree& tree, const std::vector<Vector3>& directions,
                 const Surface::Sample& sample, bool bothSides) {
  Openness open;
  for (const float side : {1.0F, -1.0F}) {
    if (side < 0 && !bothSides) {
      break;
    }
    // A little inward as well, or the walls at a corner would hide all from one another.
    const Vector3 from =
        plus(plus(sample.point, sample.inward, 0.02F), sample.normal, side * kLift);
    float sky = 0;
    float hidden = 0;
    for (const Vector3& direction : directions) {
      const float weight = side * dot(direction, sample.normal);
      if (weight > 0.02F) {
        sky += weight;
        hidden += weight * hiding(tree, from, direction);
      }
    }
    const float value = sky > 0 ? 1 - hidden / sky : 1;
    (side > 0 ? open.front : open.back) = value;
  }
  return open;
}

// Samples that lie together and look the same way, so that one measurement serves them all.
struct Groups {
  std::vector<std::uint32_t> ofSample;
  std::vector<std::uint32_t> first;  // a sample of each group
};

Groups groupsOf(const Surface& surface) {
  Groups groups;
  const std::size_t count = surface.samples.size();
  if (count <= kMostPlaces) {
    for (std::size_t i = 0; i < count; ++i) {
      groups.ofSample.push_back(static_cast<std::uint32_t>(i));
    }
    groups.first = groups.ofSample;
    return groups;
  }
  // Finer cells than needed first: their number depends on the shape.
  for (float cell = 1.0F / 128;; cell *= 1.3F) {
    groups = {};
    std::unordered_map<std::uint64_t, std::uint32_t> places;
    for (std::size_t i = 0; i < count; ++i) {
      const Surface::Sample& sample = surface.samples[i];
      std::uint64_t key = 0;
      for (std::size_t k = 0; k < 3; ++k) {
        const auto place = static_cast<std::uint64_t>(std::floor((sample.point[k] + 1.01F) / cell));
        const std::uint64_t side = sample.normal[k] > 0.4F ? 2 : sample.normal[k] < -0.4F ? 1 : 0;
        key = key << 16 | place << 2 | side;
      }
      const auto [entry, isNew] =
          places.try_emplace(key, static_cast<std::uint32_t>(groups.first.size()));
      if (isNew) {
        groups.first.push_back(static_cast<std::uint32_t>(i));
      }
      groups.ofSample.push_back(entry->second);
    }
    if (groups.first.size() <= kMostPlaces) {
      return groups;
    }
  }
}

// Each sample becomes the mean of itself and those that share a triangle with it.
void smoothen(const Surface& surface, std::vector<Openness>& values) {
  std::vector<Openness> sums(values.size(), Openness{0, 0});
  std::vector<float> counts(values.size());
  for (std::size_t c = 0; c < surface.corners.size(); c += 3) {
    for (std::size_t k = 0; k < 3; ++k) {
      const std::uint32_t own = surface.corners[c + k].sample;
      for (std::size_t other = 0; other < 3; ++other) {
        sums[own].front += values[surface.corners[c + other].sample].front;
        sums[own].back += values[surface.corners[c + other].sample].back;
      }
      counts[own] += 3;
    }
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (counts[i] > 0) {
      values[i] = {sums[i].front / counts[i], sums[i].back / counts[i]};
    }
  }
}

bool hasBoundary(const SceneMesh& scene) { return !edgesOf(scene).boundary.empty(); }

// How dark the ground is at a place: what of the sky above it the scene hides from it.
float darknessAt(const TriangleTree& tree, const std::vector<Vector3>& directions,
                 const Vector3& from, std::size_t axis) {
  float sky = 0;
  float hidden = 0;
  for (const Vector3& direction : directions) {
    if (direction[axis] > 0.02F) {
      sky += direction[axis];
      hidden += direction[axis] * hiding(tree, from, direction);
    }
  }
  const float away = std::hypot(from[(axis + 1) % 3], from[(axis + 2) % 3]) / GroundShadow::kReach;
  const float fade = std::clamp((1 - away) / (1 - kFadeFrom), 0.0F, 1.0F);
  return hidden / sky * fade * fade * (3 - 2 * fade);
}

// Takes the stripes out that so few directions leave: binomial weights along one way of the grid.
void blur(std::vector<float>& darkness, std::size_t step) {
  const std::vector<float> before = darkness;
  for (std::size_t i = step; i + step < before.size(); ++i) {
    darkness[i] = (before[i - step] + 2 * before[i] + before[i + step]) / 4;
  }
}

}  // namespace

float groundLevel(const SceneMesh& scene, UpAxis up) {
  float lowest = scene.shownNodes.empty() ? 0 : 1;
  for (const int node : scene.shownNodes) {
    lowest = std::min(lowest, scene.point(node)[axisOf(up)]);
  }
  return lowest - kGroundGap;
}

Vector3 GroundShadow::at(int column, int row, UpAxis up) const {
  constexpr float kStep = 2 * kReach / (kSide - 1);
  const float x = static_cast<float>(column) * kStep - kReach;
  const float y = static_cast<float>(row) * kStep - kReach;
  return up == UpAxis::kZ ? Vector3{x, y, height} : Vector3{x, height, -y};
}

Occlusion measureOcclusion(const SceneMesh& scene, const Surface& surface, UpAxis up,
                           unsigned threads, const std::atomic<bool>* cancel) {
  Occlusion result;
  if (scene.faces.empty()) {
    return result;
  }
  const TriangleTree tree(scene.facePoints());
  const std::vector<Vector3> directions = sphereDirections();
  const bool bothSides = hasBoundary(scene);
  const Groups groups = groupsOf(surface);
  std::vector<Openness> measured(groups.first.size());
  inParallel(measured.size(), threads, cancel, [&](std::size_t group) {
    measured[group] = measure(tree, directions, surface.samples[groups.first[group]], bothSides);
  });
  for (const std::uint32_t group : groups.ofSample) {
    result.samples.push_back(measured[group]);
  }
  if (measured.size() < result.samples.size()) {
    for (int pass = 0; pass < kSmoothings; ++pass) {
      smoothen(surface, result.samples);
    }
  }
  result.shadow.height = groundLevel(scene, up);
  result.shadow.darkness.resize(std::size_t{GroundShadow::kSide} * GroundShadow::kSide);
  std::vector<float>& darkness = result.shadow.darkness;
  inParallel(darkness.size(), threads, cancel, [&](std::size_t place) {
    const auto column = static_cast<int>(place % GroundShadow::kSide);
    const auto row = static_cast<int>(place / GroundShadow::kSide);
    darkness[place] = darknessAt(tree, directions, result.shadow.at(column, row, up), axisOf(up));
  });
  for (int pass = 0; pass < kShadowBlurs; ++pass) {
    blur(darkness, 1);
    blur(darkness, GroundShadow::kSide);
  }
  return cancel != nullptr && *cancel ? Occlusion{} : result;
}

}  // namespace zel::view
