#include "zel/geometry/tubes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/containers/point3d_arr.h"

namespace {

using namespace zel::test;  // NOLINT

/// The tube fitted to some points: its centre in x and y, its radius and the code.
struct Tube {
  explicit Tube(const Point3DArr& pts) : result(slGenVerticalTube(pts, centre, &radius)) {}

  float centre[3]{8, 8, 0};
  float radius = 8;
  int result;
};

Point3DArr arrayOf(const std::vector<Double3>& points) {
  Point3DArr pts;
  for (const Double3& p : points) {
    pts.AddItemM(narrow(p));
  }
  return pts;
}

double squaredErrors(const std::vector<Double3>& points, double x, double y, double r) {
  double sum = 0;
  for (const Double3& p : points) {
    sum += std::pow(std::hypot(p[0] - x, p[1] - y) - r, 2);
  }
  return sum;
}

TEST(Tubes, noisyCylinderIsRecoveredByLeastSquares) {
  randomRounds<RandomGeometry>(171, 200, [&](RandomGeometry& random) {
    const Double3 axis = random.flatPoint(100);
    const double r = random.number(0.5, 20), noise = 0.01 * r, sweep = random.number(2, 6.28);
    std::vector<Double3> points;
    for (int k = 0; k < 300; ++k) {
      const double reach = r + random.number(-noise, noise);
      const Double3 p = axis + reach * flatDirection(random.number(0, sweep));
      points.push_back(widen(narrow(p + Double3{0, 0, random.number(-50, 50)})));
    }
    const Tube tube(arrayOf(points));
    ASSERT_EQ(tube.result, 1);
    EXPECT_LT(apart(tube.centre, axis), 0.02 * r);
    EXPECT_NEAR(tube.radius, r, 0.02 * r);
    const double x = tube.centre[0], y = tube.centre[1], best = tube.radius, step = 1e-3 * r;
    const double least = squaredErrors(points, x, y, best);
    for (const double side : {-step, step}) {
      EXPECT_LT(least, squaredErrors(points, x + side, y, best));
      EXPECT_LT(least, squaredErrors(points, x, y + side, best));
      EXPECT_LT(least, squaredErrors(points, x, y, best + side));
      EXPECT_LT(least, squaredErrors(points, x + side, y + side, best + side));
    }
  });
}

TEST(Tubes, shortNoisyArcIsNotPulledInward) {
  // The algebraic fit alone is known to come out too small here.
  RandomGeometry random(172);
  double mean = 0;
  for (int repeat = 0; repeat < 100; ++repeat) {
    std::vector<Double3> points;
    for (int k = 0; k < 400; ++k) {
      points.push_back((10 + random.number(-0.5, 0.5)) * flatDirection(random.number(-0.5, 0.5)));
    }
    mean += Tube(arrayOf(points)).radius / 100;
  }
  EXPECT_NEAR(mean, 10, 0.3);
}

TEST(Tubes, circlesThatMissThePointsAreRefused) {
  // Short noisy arcs: the best circles are nearly lines, of radii up to 1e15.
  RandomGeometry random(173);
  int refused = 0;
  for (int repeat = 0; repeat < 4000; ++repeat) {
    const double sweep = random.number(0.05, 0.6), noise = random.number(0, 0.06);
    const Double3 axis = random.flatPoint(5);
    std::vector<Double3> points;
    for (int k = 0; k < 3 + repeat % 20; ++k) {
      const double reach = 1 + random.number(-noise, noise);
      points.push_back(widen(narrow(axis + reach * flatDirection(random.number(0, sweep)))));
    }
    double low[2]{1e9, 1e9}, high[2]{-1e9, -1e9};
    for (const Double3& p : points) {
      for (const std::size_t i : {0U, 1U}) {
        low[i] = std::fmin(low[i], p[i]);
        high[i] = std::fmax(high[i], p[i]);
      }
    }
    const double extent = std::fmax(high[0] - low[0], high[1] - low[1]);
    const Tube tube(arrayOf(points));
    refused += tube.result == 0 ? 1 : 0;
    if (tube.result == 0) {
      EXPECT_EQ(tube.centre[0] + tube.centre[1] + tube.radius, 24.0F);
      continue;
    }
    EXPECT_LE(tube.radius, 1.0001e4 * extent);
    const double squares = squaredErrors(points, tube.centre[0], tube.centre[1], tube.radius);
    EXPECT_LE(std::sqrt(squares / static_cast<double>(points.size())), 0.1001 * extent);
  }
  EXPECT_GT(refused, 10);
  EXPECT_LT(refused, 1000) << "most are tubes";
}

TEST(Tubes, threePointsGiveTheirCircleAndHolesDoNotCount) {
  Point3DArr pts = arrayOf({{1, 0, 5}, {0, 1, 6}, {77, 3, 1}, {-1, 0, 7}});
  pts.DelItemM(2);
  const Tube tube(pts);
  EXPECT_EQ(tube.result, 1);
  EXPECT_LT(apart(tube.centre, {0, 0, 0}), 1e-6);
  EXPECT_NEAR(tube.radius, 1, 1e-6);
}

TEST(Tubes, pointsWithoutACircleLeaveTheOutputsAlone) {
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<std::vector<Double3>> cases{
      {},
      {{1, 2, 3}},
      {{1, 2, 3}, {4, 5, 6}},
      {{1, 2, 3}, {1, 2, 9}, {1, 2, -4}, {1, 2, 0}},
      {{0, 0, 0}, {1, 1, 3}, {2, 2, 9}, {5, 5, 1}},
      {{1000, 1000, 0}, {1001, 1000.00006, 0}, {1002, 1000, 0}},
      {{0, 0, 0}, {0.00005, 0, 0}, {0, 0.00005, 0}},
      {{0, 0, 0}, {infinity, 0, 0}, {0, 1, 0}},
      {{0, 0, 0}, {1, NAN, 0}, {0, 1, 0}},
  };
  for (const auto& points : cases) {
    const Tube tube(arrayOf(points));
    EXPECT_EQ(tube.result, 0) << points.size();
    EXPECT_EQ(tube.centre[0] + tube.centre[1] + tube.radius, 24.0F);
  }
}

TEST(Tubes, hugeAndTinyTubesKeepTheirDigits) {
  for (const double r : {1e17, 1e6, 1e-3}) {
    const Tube tube(arrayOf({{r, 0, 0}, {0, r, 0}, {-r, 0, 0}, {0, -r, 0}}));
    ASSERT_EQ(tube.result, 1);
    EXPECT_NEAR(tube.radius / r, 1, 1e-6);
    EXPECT_NEAR(tube.centre[0] / r, 0, 1e-6);
  }
}

}  // namespace
