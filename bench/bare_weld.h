#pragma once

// The practical limit of a weld: a spatial hash and a hash of corner sets over flat arrays, which
// sees the whole soup at once and fetches ahead. It knows the size of the result and the spacing
// of the mesh beforehand. Merges each corner with the lowest node nearer than the tolerance.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "soup.h"

namespace zel::bench {

class BareWeld {
 public:
  explicit BareWeld(const Soup& soup)
      : soup_(soup),
        perCell_(1.0 / soup.spacing),
        nodeTable_(std::bit_ceil(soup.corners.size() / 3)),
        faceTable_(2 * std::bit_ceil(soup.corners.size() / 3)) {}

  void run() {
    const std::size_t faces = soup_.corners.size() / 3;
    constexpr std::size_t kBlock = 32;
    std::array<std::array<int, 3>, kBlock> corners;
    for (std::size_t first = 0; first < faces; first += kBlock) {
      const std::size_t count = std::min(kBlock, faces - first);
      for (std::size_t k = 0; k < 3 * count; ++k) {
        const auto& ahead = soup_.corners[std::min(3 * (first + kBlock) + k, 3 * faces - 1)];
        __builtin_prefetch(&nodeTable_[nodeHome(cell(ahead[0]), cell(ahead[1]), cell(ahead[2]))]);
      }
      for (std::size_t k = 0; k < 3 * count; ++k) {
        corners[k / 3][k % 3] = mergeNode(soup_.corners[3 * first + k]);
      }
      for (std::size_t k = 0; k < count; ++k) {
        __builtin_prefetch(&faceTable_[faceHome(sorted(corners[k]))]);
      }
      for (std::size_t k = 0; k < count; ++k) {
        mergeFace(corners[k]);
      }
    }
  }

  [[nodiscard]] std::size_t nodeCount() const { return x_.size(); }
  [[nodiscard]] std::size_t faceCount() const { return faces_.size(); }

 private:
  struct NodeEntry {
    float x, y, z;
    int node = -1;
  };
  static constexpr float kSquare = 9.999999e-9F;

  [[nodiscard]] std::int64_t cell(double x) const {
    return static_cast<std::int64_t>(std::floor(x * perCell_));
  }
  [[nodiscard]] std::size_t nodeHome(std::int64_t x, std::int64_t y, std::int64_t z) const {
    std::uint64_t h = static_cast<std::uint64_t>(x) * 0x9E3779B97F4A7C15U +
                      static_cast<std::uint64_t>(y) * 0xC2B2AE3D27D4EB4FU +
                      static_cast<std::uint64_t>(z) * 0x165667B19E3779F9U;
    h = (h ^ (h >> 29)) * 0xD6E8FEB86659FD93U;
    return static_cast<std::size_t>(h >> 20) & (nodeTable_.size() - 1);
  }

  int mergeNode(const std::array<float, 3>& p) {
    constexpr double kReach = 1.01e-4;
    std::int64_t low[3];
    std::int64_t high[3];
    for (std::size_t k = 0; k < 3; ++k) {
      low[k] = cell(p[k] - kReach);
      high[k] = cell(p[k] + kReach);
    }
    int found = INT32_MAX;
    for (std::int64_t i = low[0]; i <= high[0]; ++i) {
      for (std::int64_t j = low[1]; j <= high[1]; ++j) {
        for (std::int64_t k = low[2]; k <= high[2]; ++k) {
          found = std::min(found, lowestNear(nodeHome(i, j, k), p));
        }
      }
    }
    return found == INT32_MAX ? addNode(p) : found;
  }
  [[nodiscard]] int lowestNear(std::size_t home, const std::array<float, 3>& p) const {
    int lowest = INT32_MAX;
    for (std::size_t i = home; nodeTable_[i].node >= 0; i = (i + 1) & (nodeTable_.size() - 1)) {
      const NodeEntry& entry = nodeTable_[i];
      const double dx = double{entry.x} - p[0];
      const double dy = double{entry.y} - p[1];
      const double dz = double{entry.z} - p[2];
      if (static_cast<float>(dx * dx + dy * dy + dz * dz) < kSquare) {
        lowest = std::min(lowest, entry.node);
      }
    }
    return lowest;
  }
  int addNode(const std::array<float, 3>& p) {
    std::size_t i = nodeHome(cell(p[0]), cell(p[1]), cell(p[2]));
    while (nodeTable_[i].node >= 0) {
      i = (i + 1) & (nodeTable_.size() - 1);
    }
    const int node = static_cast<int>(x_.size());
    nodeTable_[i] = {p[0], p[1], p[2], node};
    x_.push_back(p[0]);
    y_.push_back(p[1]);
    z_.push_back(p[2]);
    return node;
  }

  static std::array<int, 3> sorted(std::array<int, 3> face) {
    std::sort(face.begin(), face.end());
    return face;
  }
  [[nodiscard]] std::size_t faceHome(const std::array<int, 3>& key) const {
    std::uint64_t h =
        (static_cast<std::uint64_t>(key[0]) << 32 | static_cast<std::uint32_t>(key[1])) *
        0x9E3779B97F4A7C15U;
    h = ((h ^ (h >> 32)) + static_cast<std::uint64_t>(key[2])) * 0xD6E8FEB86659FD93U;
    return static_cast<std::size_t>(h >> 20) & (faceTable_.size() - 1);
  }
  void mergeFace(const std::array<int, 3>& face) {
    const auto key = sorted(face);
    if (key[0] == key[1] || key[1] == key[2]) {
      return;
    }
    std::size_t i = faceHome(key);
    for (; faceTable_[i] >= 0; i = (i + 1) & (faceTable_.size() - 1)) {
      if (sorted(faces_[static_cast<std::size_t>(faceTable_[i])]) == key) {
        return;
      }
    }
    faceTable_[i] = static_cast<int>(faces_.size());
    faces_.push_back(face);
  }

  struct FaceSlot {
    int face = -1;
    operator int() const { return face; }
    FaceSlot& operator=(int value) {
      face = value;
      return *this;
    }
  };

  const Soup& soup_;
  double perCell_;
  std::vector<NodeEntry> nodeTable_;
  std::vector<float> x_, y_, z_;
  std::vector<FaceSlot> faceTable_;
  std::vector<std::array<int, 3>> faces_;
};

}  // namespace zel::bench
