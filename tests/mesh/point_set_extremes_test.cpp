#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include "zel/containers/point3d_arr.h"
#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace {

using Generator = std::mt19937;

Point3DArr pointsFrom(int count, const std::function<void(float*)>& next) {
  Point3DArr points;
  for (int i = 0; i < count; ++i) {
    float p[3];
    next(p);
    points.AddItemM(p);
  }
  return points;
}

struct Pair {
  float value;
  int a;
  int b;
};

/// The plain walk over all pairs.
Pair walk(const Point3DArr& points, int start, int k) {
  std::vector<int> taken;
  for (int i = start; i < points.GetBoundM() && (k < 0 || static_cast<int>(taken.size()) < k);
       ++i) {
    if (points.IsPntAvailableM(i) == 31) {
      taken.push_back(i);
    }
  }
  const auto* store = points.getCurrentItemPrtConstM();
  Pair best{0.0F, zel::kNoIndex, zel::kNoIndex};
  for (std::size_t i = 0; i < taken.size(); ++i) {
    for (std::size_t j = i + 1; j < taken.size(); ++j) {
      const float value = slSquareDistance3(store[taken[i]], store[taken[j]]);
      if (value > best.value) {
        best = {value, taken[i], taken[j]};
      }
    }
  }
  return best;
}

void expectLikeWalk(const Point3DArr& points, int start, int k, const char* what) {
  Pair found{};
  found.value = points.GetFarthestTwoPointsM(start, k, &found.a, &found.b);
  const Pair expected = walk(points, start, k);
  EXPECT_EQ(found.value, expected.value) << what;
  EXPECT_EQ(found.a, expected.a) << what;
  EXPECT_EQ(found.b, expected.b) << what;
}

TEST(FarthestTwoPoints, agreesWithTheWalkOnManyShapes) {
  Generator random(20240817);
  std::normal_distribution<float> normal;
  std::uniform_int_distribution<int> lattice(0, 6);
  const auto onSphere = [&](float* p) {
    float length = 0.0F;
    for (int axis = 0; axis < 3; ++axis) {
      p[axis] = normal(random);
      length += p[axis] * p[axis];
    }
    for (int axis = 0; axis < 3; ++axis) {
      p[axis] = 100.0F + 7.0F * p[axis] / std::sqrt(length);
    }
  };
  const auto inBlob = [&](float* p) {
    for (int axis = 0; axis < 3; ++axis) {
      p[axis] = normal(random);
    }
  };
  // Lattices and lines are full of ties, of which the first pair must win.
  const auto onLattice = [&](float* p) {
    for (int axis = 0; axis < 3; ++axis) {
      p[axis] = static_cast<float>(lattice(random));
    }
  };
  const auto onLine = [&](float* p) {
    p[0] = p[1] = static_cast<float>(lattice(random));
    p[2] = 0.0F;
  };
  for (const int count : {0, 1, 2, 63, 64, 65, 700, 1200}) {
    expectLikeWalk(pointsFrom(count, onSphere), 0, -1, "sphere");
    expectLikeWalk(pointsFrom(count, inBlob), 0, -1, "blob");
    expectLikeWalk(pointsFrom(count, onLattice), 0, -1, "lattice");
    expectLikeWalk(pointsFrom(count, onLine), 0, -1, "line");
  }
}

TEST(FarthestTwoPoints, honoursStartCountAndHoles) {
  Generator random(5);
  std::uniform_real_distribution<float> uniform(-1.0F, 1.0F);
  Point3DArr points = pointsFrom(400, [&](float* p) {
    for (int axis = 0; axis < 3; ++axis) {
      p[axis] = uniform(random);
    }
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
  const float kNan = std::numeric_limits<float>::quiet_NaN();
  const float kInf = std::numeric_limits<float>::infinity();
  int next = 0;
  const Point3DArr equal = pointsFrom(500, [](float* p) { p[0] = p[1] = p[2] = 3.0F; });
  int a = 0;
  int b = 0;
  EXPECT_EQ(equal.GetFarthestTwoPointsM(0, -1, &a, &b), 0.0F);
  EXPECT_EQ(a, -2147483647);
  EXPECT_EQ(b, -2147483647);
  const Point3DArr strange = pointsFrom(200, [&](float* p) {
    p[0] = static_cast<float>(next % 13);
    p[1] = next % 17 == 3 ? kNan : 1.0F;
    p[2] = next == 150 ? kInf : static_cast<float>(next % 5);
    ++next;
  });
  expectLikeWalk(strange, 0, -1, "NaN and infinity");
  expectLikeWalk(strange, 0, 100, "NaN");
  const Point3DArr huge = pointsFrom(100, [&](float* p) {
    p[0] = (next++ % 2 == 0 ? 1e38F : -1e17F);
    p[1] = p[2] = 0.0F;
  });
  expectLikeWalk(huge, 0, -1, "overflow");
}

TEST(FarthestPoint, firstInScanOrderWinsTies) {
  Point3DArr points;
  const float corners[5][3] = {{0, 0, 5}, {3, 4, 0}, {-3, 4, 0}, {0, 0, 5}, {0, 2, -5}};
  for (const auto& corner : corners) {
    points.AddItemM(corner);
  }
  const float up[3] = {0, 0, 1};
  const float origin[3] = {0, 0, 0};
  int at = 0;
  EXPECT_EQ(points.GetFarthestPntToPlaneM(up, 0.0F, 0, -1, &at), 5.0F);
  EXPECT_EQ(at, 0);
  EXPECT_EQ(points.GetFarthestPntToPlaneM(up, 0.0F, 1, 2, &at), 0.0F);
  EXPECT_EQ(at, -2147483647);
  EXPECT_EQ(points.GetFarthestPntToLineM(origin, up, 0, -1, &at), 25.0F);
  EXPECT_EQ(at, 1);
}

// The second argument of the line measures is a point of the line, as everywhere where a line is
// given by two points.
TEST(FarthestPoint, lineDirectionIsTakenAsAPointOfTheLine) {
  Point3DArr points;
  const float p[3] = {0, 0, 1};
  points.AddItemM(p);
  const float from[3] = {1, 0, 0};
  const float to[3] = {2, 0, 0};
  int at = 0;
  EXPECT_NEAR(points.GetFarthestPntToLineM(from, to, 0, -1, &at), 1.0F, 1e-6F);
  const float offAxis[3] = {1, 1, 0};  // as a direction it would give another line
  EXPECT_NEAR(points.GetFarthestPntToLineM(from, offAxis, 0, -1, &at), 2.0F, 1e-6F);
}

}  // namespace
