#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "support/meshes.h"
#include "zel/containers/point3d_arr.h"
#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace {

using namespace zel::test;
using PointOfIndex = std::function<Point(int)>;

Point3DArr pointsFrom(int count, const PointOfIndex& point) {
  Point3DArr points;
  for (int i = 0; i < count; ++i) {
    points.AddItemM(point(i).data());
  }
  return points;
}

using ValueAndPair = std::tuple<float, int, int>;

/// The plain walk over all pairs.
ValueAndPair walk(const Point3DArr& points, int start, int k) {
  std::vector<int> taken;
  for (int i = start; i < points.GetBoundM() && (k < 0 || static_cast<int>(taken.size()) < k);
       ++i) {
    if (points.IsPntAvailableM(i) == 31) {
      taken.push_back(i);
    }
  }
  const auto* store = points.getCurrentItemPrtConstM();
  ValueAndPair best{0.0F, zel::kNoIndex, zel::kNoIndex};
  for (std::size_t i = 0; i < taken.size(); ++i) {
    for (std::size_t j = i + 1; j < taken.size(); ++j) {
      const float value = slSquareDistance3(store[taken[i]], store[taken[j]]);
      if (value > std::get<0>(best)) {
        best = {value, taken[i], taken[j]};
      }
    }
  }
  return best;
}

void expectLikeWalk(const Point3DArr& points, int start, int k, const char* what) {
  int a = 0;
  int b = 0;
  const float value = points.GetFarthestTwoPointsM(start, k, &a, &b);
  EXPECT_EQ(ValueAndPair(value, a, b), walk(points, start, k)) << what;
}

TEST(FarthestTwoPoints, agreesWithTheWalkOnManyShapes) {
  std::mt19937 random(20240817);
  std::normal_distribution<float> normal;
  std::uniform_int_distribution<int> lattice(0, 6);
  const auto inBlob = [&](int) { return Point{normal(random), normal(random), normal(random)}; };
  const auto onSphere = [&](int i) {
    Point p = inBlob(i);
    const float length = std::hypot(p[0], p[1], p[2]);
    for (float& x : p) {
      x = 100.0F + 7.0F * x / length;
    }
    return p;
  };
  // Lattices and lines are full of ties, of which the first pair must win.
  const auto whole = [&] { return static_cast<float>(lattice(random)); };
  const auto onLattice = [&](int) { return Point{whole(), whole(), whole()}; };
  const auto onLine = [&](int) {
    const float x = whole();
    return Point{x, x, 0.0F};
  };
  const std::pair<const char*, PointOfIndex> shapes[] = {
      {"sphere", onSphere}, {"blob", inBlob}, {"lattice", onLattice}, {"line", onLine}};
  for (const int count : {0, 1, 2, 63, 64, 65, 700, 1200}) {
    for (const auto& [name, shape] : shapes) {
      expectLikeWalk(pointsFrom(count, shape), 0, -1, name);
    }
  }
}

TEST(FarthestTwoPoints, firstOfInfiniteDistancesWins) {
  std::mt19937 random(20240818);
  std::normal_distribution<float> normal;
  std::uniform_int_distribution<int> lattice(0, 6);
  const auto whole = [&] { return static_cast<float>(lattice(random)); };
  // Squared distances from 3.4e38 on are infinite: of a few pairs, of most, of late ones only.
  const auto scaled = [&](float scale) {
    return [&, scale](int) {
      return Point{normal(random), scale * normal(random), 0.1F * scale * whole()};
    };
  };
  const auto farAtLast = [&](int i) {
    return Point{normal(random), i % 97 > 80 ? 5e18F * normal(random) : normal(random), 0.0F};
  };
  // A common infinite coordinate makes a distance that is not a number.
  const auto infinite = [&](int i) {
    const float rare[]{INFINITY, -INFINITY, NAN, 3e38F, -3e38F};
    const auto number = [&] { return i % 5 != 0 ? normal(random) : rare[lattice(random) % 5]; };
    return Point{i % 3 == 0 ? INFINITY : 1.0F, number(), i % 2 == 0 ? number() : INFINITY};
  };
  const auto allInfinite = [&](int i) { return Point{INFINITY, whole(), i % 100 == 99 ? NAN : 1}; };
  const std::pair<const char*, PointOfIndex> shapes[] = {{"few", scaled(4e18F)},
                                                         {"most", scaled(1e30F)},
                                                         {"far at last", farAtLast},
                                                         {"infinite", infinite},
                                                         {"all infinite", allInfinite}};
  for (int round = 0; round < 60; ++round) {
    for (const auto& [name, shape] : shapes) {
      expectLikeWalk(pointsFrom(5 * round + 10, shape), 0, -1, name);
    }
  }
}

TEST(FarthestTwoPoints, honoursStartCountAndHoles) {
  std::mt19937 random(5);
  std::uniform_real_distribution<float> uniform(-1.0F, 1.0F);
  Point3DArr points = pointsFrom(400, [&](int) {
    return Point{uniform(random), uniform(random), uniform(random)};
  });
  for (int i = 0; i < 400; i += 7) {
    points.DelItemM(i);
  }
  expectLikeWalk(points, 0, -1, "all");
  expectLikeWalk(points, 50, 120, "a part");
  expectLikeWalk(points, 380, 1000, "the end");
  expectLikeWalk(points, 0, 0, "none");
}

TEST(FarthestTwoPoints, equalAndStrangePointsAreHarmless) {
  const Point3DArr equal = pointsFrom(500, [](int) { return Point{3, 3, 3}; });
  int a = 0;
  int b = 0;
  EXPECT_EQ(equal.GetFarthestTwoPointsM(0, -1, &a, &b), 0.0F);
  EXPECT_EQ(a, -2147483647);
  EXPECT_EQ(b, -2147483647);
  const Point3DArr strange = pointsFrom(200, [](int i) {
    return Point{static_cast<float>(i % 13), i % 17 == 3 ? NAN : 1.0F,
                 i == 150 ? INFINITY : static_cast<float>(i % 5)};
  });
  expectLikeWalk(strange, 0, -1, "NaN and infinity");
  expectLikeWalk(strange, 0, 100, "NaN");
  const Point3DArr huge = pointsFrom(100, [](int i) {
    return Point{i % 2 == 0 ? 1e38F : -1e17F, 0, 0};
  });
  expectLikeWalk(huge, 0, -1, "overflow");
}

TEST(FarthestPoint, firstInScanOrderWinsTies) {
  const Point3DArr points = pointsOf({{0, 0, 5}, {3, 4, 0}, {-3, 4, 0}, {0, 0, 5}, {0, 2, -5}});
  int at = 0;
  EXPECT_EQ(points.GetFarthestPntToPlaneM(kUp, 0.0F, 0, -1, &at), 5.0F);
  EXPECT_EQ(at, 0);
  EXPECT_EQ(points.GetFarthestPntToPlaneM(kUp, 0.0F, 1, 2, &at), 0.0F);
  EXPECT_EQ(at, -2147483647);
  EXPECT_EQ(points.GetFarthestPntToLineM(kOrigin, kUp, 0, -1, &at), 25.0F);
  EXPECT_EQ(at, 1);
}

// The second argument of the line measures is a point of the line, as everywhere where a line is
// given by two points.
TEST(FarthestPoint, lineDirectionIsTakenAsAPointOfTheLine) {
  const Point3DArr points = pointsOf({{0, 0, 1}});
  const float from[3] = {1, 0, 0};
  const float to[3] = {2, 0, 0};
  int at = 0;
  EXPECT_NEAR(points.GetFarthestPntToLineM(from, to, 0, -1, &at), 1.0F, 1e-6F);
  const float offAxis[3] = {1, 1, 0};  // as a direction it would give another line
  EXPECT_NEAR(points.GetFarthestPntToLineM(from, offAxis, 0, -1, &at), 2.0F, 1e-6F);
}

}  // namespace
