#include "zel/containers/detail/point_grid.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace {

using Point = std::array<float, 3>;

constexpr double kReach = 1.01e-4;

TEST(PointGrid, cellsFollowTheSpacing) {
  std::mt19937 random(8);
  zel::PointGrid coarse(kReach);
  zel::PointGrid fine(kReach);
  std::uniform_real_distribution<float> unit(0, 1);
  for (int slot = 0; slot < 20000; ++slot) {
    const Point point{unit(random), unit(random), 0};
    const Point wide{point[0] * 1000, point[1] * 1000, 0};
    ASSERT_TRUE(fine.insert(slot, point.data()));
    ASSERT_TRUE(coarse.insert(slot, wide.data()));
  }
  EXPECT_NEAR(coarse.cellSize() / fine.cellSize(), 1000, 500);
  EXPECT_LT(fine.cellSize() * fine.cellSize() * 20000, 8);
}

TEST(PointGrid, tellsWhenTooManyPointsCoincide) {
  zel::PointGrid grid(kReach);
  const Point point{1, 2, 3};
  int slot = 0;
  while (slot < 100000 && grid.insert(slot, point.data())) {
    ++slot;
  }
  EXPECT_GT(slot, 200);
  EXPECT_LT(slot, 1000);
}

}  // namespace
