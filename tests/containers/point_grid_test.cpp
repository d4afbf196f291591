#include "zel/containers/detail/point_grid.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>

#include "zel/containers/detail/point_index.h"

namespace {

using zel::PointGrid;
using Point = PointGrid::Point;

constexpr double kReach = zel::NearByAxis::kReach;

TEST(PointGrid, cellsFollowTheSpacing) {
  std::mt19937 random(8);
  PointGrid coarse(kReach);
  PointGrid fine(kReach);
  coarse.start(0, {});
  fine.start(0, {});
  std::uniform_real_distribution<float> unit(0, 1);
  for (int slot = 0; slot < 20000; ++slot) {
    const Point point{unit(random), unit(random), 0};
    const Point wide{point[0] * 1000, point[1] * 1000, 0};
    fine.insert(slot, point.data());
    coarse.insert(slot, wide.data());
  }
  EXPECT_NEAR(coarse.cellSize() / fine.cellSize(), 1000, 700);
  EXPECT_LT(fine.cellSize() * fine.cellSize() * 20000, 16);
}

/// A grid beside a map that is walked.
class GridBesideMap {
 public:
  explicit GridBesideMap(unsigned seed) : random_(seed), grid_(kReach) { grid_.start(0, {}); }

  /// @param spread,step  points lie on a lattice of this step, so wide.
  void run(int steps, float spread, float step) {
    for (int k = 0; k < steps; ++k) {
      const Point p = point(spread, step);
      if (const auto slot = static_cast<int>(random_() % 900); slots_.count(slot) == 0) {
        grid_.insert(slot, p.data());
        slots_[slot] = p;
      } else if (random_() % 3 == 0) {
        grid_.erase(slot, slots_[slot].data());
        slots_.erase(slot);
      }
      ASSERT_EQ(grid_.lowestNear(p.data(), zel::NearByAxis()), walk(p)) << k;
      ASSERT_TRUE(k % 16 != 0 || grid_.validate()) << k;
      ASSERT_EQ(grid_.size(), slots_.size());
    }
    for (const auto& [slot, p] : slots_) {
      ASSERT_TRUE(grid_.holds(slot, p.data()));
    }
  }

 private:
  Point point(float spread, float step) {
    Point p;
    for (float& x : p) {
      x = static_cast<float>(static_cast<int>(random_() % 2000) - 1000) * step;
      x = std::fmod(x, spread);
    }
    return p;
  }
  [[nodiscard]] int walk(const Point& p) const {
    for (const auto& [slot, q] : slots_) {
      if (zel::NearByAxis::isNear(q.data(), p.data())) {
        return slot;
      }
    }
    return -1;
  }

  std::mt19937 random_;
  PointGrid grid_;
  std::map<int, Point> slots_;
};

// Spread out, on a lattice about as wide as the tolerance, thousands in one cell, at few places,
// and so far out that neighbouring floats lie farther apart than the cells.
TEST(PointGrid, answersAsAWalkHoweverPointsCrowd) {
  const std::array<std::array<float, 2>, 8> kKinds{{{10, 0.01F},
                                                    {0.01F, 0.00011F},
                                                    {0.0002F, 1e-7F},
                                                    {0.0004F, 0.00005F},
                                                    {1e-6F, 1e-9F},
                                                    {3, 1},
                                                    {1e12F, 1.7e9F},
                                                    {3e38F, 2e35F}}};
  for (unsigned kind = 0; kind < kKinds.size(); ++kind) {
    SCOPED_TRACE(kind);
    GridBesideMap(kind).run(3000, kKinds[kind][0], kKinds[kind][1]);
  }
  GridBesideMap mixed(99);
  for (unsigned kind = 0; kind < kKinds.size(); ++kind) {
    mixed.run(700, kKinds[kind][0], kKinds[kind][1]);
  }
}

}  // namespace
