#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>

#include "geometry/geometry_values.h"

namespace zel::test {

/// What the int parameters of a function mean.
enum class Ints {
  kCounts,  ///< counts and indices, up to 8
  kCodes    ///< the codes of curve elements and directions
};

/// Material for the arguments of one call, whatever its signature: argument i takes its numbers
/// from row i. A block holds up to 21 points, or a matrix and points.
struct Scene {
  static constexpr std::size_t kRows = 14;

  std::array<std::array<float, 64>, kRows> blocks;
  std::array<float, kRows> numbers;
  std::array<int, kRows> counts;
  std::array<int, kRows> codes;

  [[nodiscard]] const std::array<int, kRows>& ints(Ints kind) const {
    return kind == Ints::kCounts ? counts : codes;
  }
};

/// Makes scenes by turns: anything, unit vectors, motions, noisy arcs, hostile numbers, and points
/// of a lattice, as they are or turned and scaled, on which things meet, touch and coincide.
class SceneMaker {
 public:
  explicit SceneMaker(unsigned seed) : random_(seed) {}

  Scene next() {
    constexpr int kCodes[]{0, 1, 55, 143, 144, 146, 147, 154, 155, 156, 158, 159, 163, 164};
    const int kind = turn_++ % 8;
    scale_ = kind % 2 == 0 ? 1.0F : random_.number(0.3, 3.0);
    motion_ = randomMotion(random_, pick(2) == 0 ? 0.0 : 2.0);
    Scene scene;
    for (std::size_t row = 0; row < Scene::kRows; ++row) {
      scene.numbers[row] = number(kind);
      scene.counts[row] = pick(10) - 1;
      scene.codes[row] = kCodes[pick(std::size(kCodes))];
      fill(scene.blocks[row], kind);
    }
    return scene;
  }

 private:
  using Block = std::array<float, 64>;

  int pick(std::size_t choices) {
    return static_cast<int>(random_.number(0, 0.999 * static_cast<double>(choices)));
  }

  float number(int kind) {
    if (kind == 4) {
      return hostileNumber();
    }
    return kind >= 5 ? scale_ * static_cast<float>(pick(4)) : random_.number(-7, 7);
  }

  float hostileNumber() {
    constexpr float kHuge = std::numeric_limits<float>::max();
    constexpr float kPicks[]{NAN,   INFINITY, -INFINITY, kHuge, -kHuge, 1e-40F, 0.0F,
                             -0.0F, 0.0001F,  1e18F,     1e20F, -1e18F, 1.0F,   0.0F};
    const int choice = pick(2 * std::size(kPicks));
    return choice < 14 ? kPicks[choice] : random_.number(-3, 3);
  }

  void fill(Block& block, int kind) {
    const bool isMotion = kind == 2;
    const bool isDirection = pick(5) < 2;
    const Matrix motion = isMotion ? randomMotion(random_, 3) : Matrix{};
    std::copy(motion.begin(), motion.end(), block.begin());
    for (std::size_t i = isMotion ? motion.size() : 0; i < block.size(); i += 3) {
      const Float3 p = point(kind, isDirection);
      std::copy_n(p.begin(), std::min(block.size() - i, p.size()), &block[i]);
    }
    if (kind == 6) {  // pairs instead of triples
      for (float& value : block) {
        value = scale_ * static_cast<float>(pick(4) - 1);
      }
    }
  }

  Float3 point(int kind, bool isDirection) {
    switch (kind) {
      case 1:
        return narrow(random_.direction());
      case 3:
        return narrow((5 + random_.number(-0.1, 0.1)) * flatDirection(random_.number(0, 2)));
      case 4:
        return {hostileNumber(), hostileNumber(), hostileNumber()};
      case 5:
      case 7:
        return latticePoint(kind == 7, isDirection);
      default:
        return narrow(random_.point(3));
    }
  }

  Float3 latticePoint(bool isMoved, bool isDirection) {
    Double3 p{};
    if (isDirection) {
      p[static_cast<std::size_t>(pick(3))] = pick(2) == 0 ? 1 : -1;
      return isMoved ? turned(motion_, p) : narrow(p);
    }
    for (double& coordinate : p) {
      coordinate = pick(4) - 1;
    }
    return isMoved ? moved(motion_, scale_ * p) : narrow(scale_ * p);
  }

  RandomGeometry random_;
  int turn_ = 0;
  float scale_ = 1.0F;
  Matrix motion_{};
};

}  // namespace zel::test
