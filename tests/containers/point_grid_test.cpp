#include "zel/containers/detail/point_grid.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <vector>

namespace {

using Point = std::array<float, 3>;

constexpr double kReach = 1.01e-4;

/// The box test that AddPointM makes; NaN matches nothing.
bool isNear(const Point& a, float x, float y, float z) {
  const double tolerance = 0.0001F;
  return std::fabs(double{a[0]} - double{x}) < tolerance &&
         std::fabs(double{a[1]} - double{y}) < tolerance &&
         std::fabs(double{a[2]} - double{z}) < tolerance;
}

/// A grid beside a plain ordered map that is searched from the front.
struct GridAndModel {
  zel::PointGrid grid{kReach};
  std::map<int, Point> model;

  void insert(int slot, const Point& point) {
    ASSERT_TRUE(grid.insert(slot, point.data()));
    model[slot] = point;
  }
  void erase(int slot) {
    grid.erase(slot, model.at(slot).data());
    model.erase(slot);
  }
  [[nodiscard]] int lowest(const Point& query) const {
    return grid.lowestNear(query.data(),
                           [&](float x, float y, float z) { return isNear(query, x, y, z); });
  }
  [[nodiscard]] int lowestByWalk(const Point& query) const {
    for (const auto& [slot, point] : model) {
      if (isNear(query, point[0], point[1], point[2])) {
        return slot;
      }
    }
    return -1;
  }
};

/// Coordinates that crowd around multiples of `spacing`, closer than the tolerance or just not.
Point clusteredPoint(std::mt19937& random, float spacing, int steps) {
  static constexpr float kOffsets[] = {0, 0.00005F, -0.00005F, 0.0001F, 0.00011F, -0.00009F};
  Point point;
  for (float& coordinate : point) {
    const int step = static_cast<int>(random() % static_cast<unsigned>(steps)) - steps / 2;
    coordinate = static_cast<float>(step) * spacing + kOffsets[random() % std::size(kOffsets)];
  }
  return point;
}

TEST(PointGrid, answersAsAWalkDoesWhileSlotsComeAndGo) {
  std::mt19937 random(99);
  for (const float spacing : {0.0002F, 0.01F, 1.0F, 1000.0F}) {
    GridAndModel pair;
    for (int step = 0; step < 3000; ++step) {
      const int slot = static_cast<int>(random() % 400);
      if (pair.model.count(slot) == 1) {
        pair.erase(slot);
      }
      if (random() % 3 != 0) {
        ASSERT_NO_FATAL_FAILURE(pair.insert(slot, clusteredPoint(random, spacing, 5)));
      }
      const Point query = clusteredPoint(random, spacing, 5);
      ASSERT_EQ(pair.lowest(query), pair.lowestByWalk(query)) << spacing << " step " << step;
    }
  }
}

TEST(PointGrid, farAndUnorderedCoordinatesAreSafe) {
  const float infinity = std::numeric_limits<float>::infinity();
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float largest = std::numeric_limits<float>::max();
  GridAndModel pair;
  const std::vector<float> values{infinity, -infinity, nan,   largest,
                                  -largest, -1e18F,    1e12F, -0.0F};
  int slot = 0;
  for (const float x : values) {
    for (const float y : values) {
      ASSERT_NO_FATAL_FAILURE(pair.insert(slot++, {x, y, x}));
    }
  }
  for (const float x : values) {
    for (const float y : values) {
      const Point query{x, y, x};
      EXPECT_EQ(pair.lowest(query), pair.lowestByWalk(query)) << x << " " << y;
    }
  }
  while (slot > 0) {
    pair.erase(--slot);
  }
  EXPECT_EQ(pair.lowest({0, 0, 0}), -1);
}

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

TEST(PointGrid, aDenseHeapAfterAWideStartShrinksTheCells) {
  std::mt19937 random(12);
  GridAndModel pair;
  int slot = 0;
  for (; slot < 60; ++slot) {
    ASSERT_NO_FATAL_FAILURE(pair.insert(slot, clusteredPoint(random, 100.0F, 50)));
  }
  for (; slot < 6000; ++slot) {
    ASSERT_NO_FATAL_FAILURE(pair.insert(slot, clusteredPoint(random, 0.001F, 20)));
  }
  for (int i = 0; i < 300; ++i) {
    const Point query = clusteredPoint(random, 0.001F, 20);
    ASSERT_EQ(pair.lowest(query), pair.lowestByWalk(query));
  }
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
