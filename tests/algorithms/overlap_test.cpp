#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

#include "zel/algorithms/detail/plane_triangle.h"

namespace {

using zel::countOverlapping;
using zel::overlap;
using zel::PlanePoint;
using zel::PlaneTriangle;
using zel::signedArea;

using Layout = std::vector<PlaneTriangle>;

int countByPairs(const Layout& layout) {
  std::vector<bool> isCovered(layout.size(), false);
  for (std::size_t i = 0; i < layout.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (signedArea(layout[i]) != 0.0 && signedArea(layout[j]) != 0.0 &&
          overlap(layout[i], layout[j])) {
        isCovered[i] = true;
        isCovered[j] = true;
      }
    }
  }
  return static_cast<int>(std::count(isCovered.begin(), isCovered.end(), true));
}

/// Needles about the origin that together make `turns` turns.
Layout fanOf(int needles, double turns) {
  const auto rim = [&](int i) {
    const double angle = 2.0 * std::numbers::pi * turns * i / needles;
    // As the layout stores its coordinates.
    return PlanePoint{static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
  };
  Layout fan;
  for (int i = 0; i < needles; ++i) {
    fan.push_back({PlanePoint{0.0, 0.0}, rim(i), rim(i + 1)});
  }
  return fan;
}

/// Triangles of some width and length at random places; on a coarse raster many touch, lie on one
/// another or have no area.
Layout scatterOf(std::mt19937& random, int count, double length, double width, bool isRaster) {
  std::uniform_real_distribution<double> place(0.0, 1.0);
  Layout scatter;
  for (int i = 0; i < count; ++i) {
    const PlanePoint at{place(random), place(random)};
    const double angle = 2.0 * std::numbers::pi * place(random);
    const PlanePoint along{std::cos(angle), std::sin(angle)};
    PlaneTriangle triangle{at, at, at};
    for (std::size_t axis = 0; axis < 2; ++axis) {
      triangle[1][axis] += length * along[axis];
      triangle[2][axis] += width * (axis == 0 ? -along[1] : along[0]);
    }
    for (PlanePoint& corner : triangle) {
      for (double& value : corner) {
        value = isRaster ? std::round(8.0 * value) : value;
      }
    }
    if (i % 2 == 0) {
      std::swap(triangle[0], triangle[1]);
    }
    scatter.push_back(triangle);
  }
  return scatter;
}

TEST(PlaneOverlap, countsLikeTheWalkOverAllPairs) {
  std::mt19937 random(7);
  for (const int count : {1, 2, 5, 40, 300}) {
    for (const double length : {0.01, 0.1, 0.7}) {
      for (const double width : {1e-4, 0.01, 0.1}) {
        for (const bool isRaster : {false, true}) {
          const Layout layout = scatterOf(random, count, length, width, isRaster);
          ASSERT_EQ(countOverlapping(layout), countByPairs(layout))
              << count << " " << length << " " << width << " " << isRaster;
        }
      }
    }
  }
}

TEST(PlaneOverlap, aFanOfNeedlesOverlapsOnlyWhereItPassesAFullTurn) {
  EXPECT_EQ(countOverlapping(fanOf(20000, 1.0)), 0);
  EXPECT_EQ(countOverlapping(fanOf(20000, 0.3)), 0);
  const Layout wound = fanOf(300, 1.4);
  EXPECT_EQ(countOverlapping(wound), countByPairs(wound));
  EXPECT_GT(countOverlapping(wound), 150);
}

TEST(PlaneOverlap, theThinnerPartOfALayoutSaysWhatCounts) {
  // Long teeth of two widths, each against its own mirror image, which it enters by `thickness`.
  constexpr double kLength = 4000.0;
  const auto combs = [&](double thickness) {
    Layout layout;
    for (int i = 0; i < 40; ++i) {
      const double x = 22.0 * i;
      const double width = i < 20 ? 1.0 : 20.0;
      layout.push_back({PlanePoint{x, 0}, PlanePoint{x + width, 0}, PlanePoint{x, kLength}});
      layout.push_back({PlanePoint{x, thickness}, PlanePoint{x + width, thickness},
                        PlanePoint{x, thickness - kLength}});
    }
    return layout;
  };
  EXPECT_EQ(countOverlapping(combs(0.04)), 0);  // a narrow tooth asks for 0.045
  EXPECT_EQ(countOverlapping(combs(0.1)), 40);  // a wide one for 0.2
  EXPECT_EQ(countOverlapping(combs(0.3)), 80);
}

TEST(PlaneOverlap, onlyCommonAreaThickEnoughCounts) {
  const PlaneTriangle one{PlanePoint{0, 0}, PlanePoint{1, 0}, PlanePoint{0, 1}};
  const auto moved = [&](double x, double y) {
    PlaneTriangle triangle = one;
    for (PlanePoint& corner : triangle) {
      corner[0] += x;
      corner[1] += y;
    }
    return triangle;
  };
  EXPECT_EQ(countOverlapping(Layout{}), 0);
  EXPECT_EQ(countOverlapping({one}), 0);
  EXPECT_EQ(countOverlapping({one, one, one}), 3);
  EXPECT_EQ(countOverlapping({one, moved(1, 0), moved(0, 1), moved(-1, 0)}), 0);
  EXPECT_EQ(countOverlapping({one, moved(0.9995, 0)}), 0);
  EXPECT_EQ(countOverlapping({one, moved(0.99, 0), moved(5, 5)}), 2);
  const double inf = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(countOverlapping({one, {one[0], one[0], one[1]}, moved(nan, 0), moved(0, inf)}), 0);
}

}  // namespace
