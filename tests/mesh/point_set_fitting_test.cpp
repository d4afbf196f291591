#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include "support/meshes.h"
#include "zel/containers/point3d_arr.h"
#include "zel/geometry/geometry.h"

namespace {

using namespace zel::test;

TEST(PointSet, planeFitRecoversANoisyPlaneOfAnyDirection) {
  std::mt19937 random(7);
  std::normal_distribution<float> noise(0.0F, 0.01F);
  std::uniform_real_distribution<float> uniform(-10.0F, 10.0F);
  for (int c = 0; c < 3; ++c) {
    Point3DArr points;
    float expected[3] = {0.3F, -0.4F, 0.2F};
    expected[c] = 1.0F;
    slNormalize(expected);
    for (int i = 0; i < 2000; ++i) {
      float p[3] = {uniform(random), uniform(random), uniform(random)};
      const float d = -2.0F + noise(random);
      p[c] -= (p[0] * expected[0] + p[1] * expected[1] + p[2] * expected[2] + d) / expected[c];
      points.AddItemM(p);
    }
    float normal[3];
    float d = 0.0F;
    ASSERT_EQ(points.GenPlaneByLeastSquareM(expected, normal, &d), 1);
    for (int axis = 0; axis < 3; ++axis) {
      EXPECT_NEAR(normal[axis], expected[axis], 2e-4F) << "axis " << axis << " of " << c;
    }
    EXPECT_NEAR(d, -2.0F, 2e-3F);
  }
}

TEST(PointSet, planeFitLeavesOutputsWhenThePointsLieOnALine) {
  Point3DArr points = pointsOf({{0, 0, 2}, {1, 0, 2}, {2, 0, 2}, {4, 0, 2}});
  float normal[3] = {7, 7, 7};
  float d = 7;
  EXPECT_EQ(points.GenPlaneByLeastSquareM(kUp, normal, &d), 0);
  EXPECT_EQ(normal[0], 7.0F);
  EXPECT_EQ(d, 7.0F);
  double equations[12];
  points.GenEquationGroupM(0, 1, 3, equations, equations + 9);  // there is no such axis
  EXPECT_EQ(std::count(equations, equations + 12, 0.0), 12);
  points.AddItemM(Point{0, 3, 2}.data());
  EXPECT_EQ(points.GenPlaneByLeastSquareM(kUp, normal, &d), 1);
  EXPECT_NEAR(normal[2], 1.0F, 1e-6F);
  EXPECT_NEAR(d, -2.0F, 1e-5F);
}

TEST(PointSet, shapeErrorDividesByTheCountNotItsRoot) {
  const Point3DArr points = pointsOf({{0, 0, 1}, {1, 0, 1}, {0, 1, 3}, {1, 1, 3}});
  EXPECT_EQ(points.GetShapeErrorToPlaneM(kUp, 0.0F), 0.5F);
  const double distances[4] = {0.0, 1.0, 1.0, std::sqrt(2.0)};
  const double mean = (2.0 + std::sqrt(2.0)) / 4.0;
  double squares = 0.0;
  for (const double distance : distances) {
    squares += (distance - mean) * (distance - mean);
  }
  EXPECT_NEAR(points.GetShapeErrorToLineM(kOrigin, kUp), std::sqrt(squares) / 4.0, 1e-6);
}

TEST(PointSet, circleErrorIgnoresACommonOffset) {
  const Point3DArr points = pointsOf({{5, 0, 0}, {3, 4, 0}, {-4, 3, 0}, {0, -5, 0}});
  EXPECT_NEAR(points.GetShapeErrorToCircleM(kOrigin, 5.0F), 0.0F, 1e-6F);
  EXPECT_NEAR(points.GetShapeErrorToCircleM(kOrigin, 1.0F), 0.0F, 1e-6F);
}

TEST(PointSet, averagesSkipHolesAndDivideByTheAvailableCount) {
  Point3DArr points = pointsOf({{1, 0, 0}, {100, 100, 100}, {3, 0, 4}});
  points.DelItemM(1);
  float centre[3];
  points.GetBaryCenterM(centre);
  EXPECT_FLOAT_EQ(centre[0], 2.0F);
  EXPECT_FLOAT_EQ(centre[2], 2.0F);
  EXPECT_FLOAT_EQ(points.GetAverageDistToPntM(kOrigin), 3.0F);
  EXPECT_FLOAT_EQ(points.GetMaxLenToGivenPntM(kOrigin), 5.0F);
  EXPECT_FLOAT_EQ(points.GetAverageDistToLineM(kOrigin, kAlongX), 2.0F);
}

// A stale count (points counted that are gone, or live ones not counted) only scales results.
TEST(PointSet, staleCountsReadNothingOutside) {
  Point3DArr points = pointsOf({{0, 1, 2}, {1, 1, 2}, {2, 1, 2}, {3, 1, 2}, {4, 1, 2}});
  Point3DArr other;
  points.AppendPntsM(other);
  points.CancelLastItemM();
  EXPECT_TRUE(std::isfinite(points.GetShapeErrorToPlaneM(kUp, 0.0F)));
  float m[3];
  points.GetBaryCenterM(m);
  EXPECT_TRUE(std::isfinite(m[0]));
}

TEST(PointSet, emptySetAnswersZero) {
  const Point3DArr points;
  float centre[3] = {5, 5, 5};
  points.GetBaryCenterM(centre);
  EXPECT_EQ(centre[1], 0.0F);
  EXPECT_EQ(points.GetShapeErrorToLineM(kUp, kUp), 0.0F);
  EXPECT_EQ(points.GetShapeErrorToCircleM(kUp, 1.0F), 0.0F);
  EXPECT_EQ(points.GetAverageDistToLineM(kUp, kUp), 0.0F);
  EXPECT_EQ(points.GetMaxLenToGivenPntM(kUp), 0.0F);
  float untouched[2] = {8, 8};
  points.GetMaxMinM(kUp, kUp, kUp, untouched, untouched, untouched);
  EXPECT_EQ(untouched[0], 8.0F);
}

TEST(PointSet, movesTouchLivePointsOnly) {
  Point3DArr points = pointsOf({{1, 2, 3}, {9, 9, 9}, {4, 5, 6}});
  points.DelItemM(1);
  const float offCentre[3] = {0, 0, 1};
  points.ProjectPntsToPlaneM(offCentre, kUp);
  const XYCoordSysD frame{{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
  points.TransToLocalCoordSysM(frame);
  const float expected[2][3] = {{2, 0, 1}, {5, -3, 1}};
  for (int i = 0; i < 2; ++i) {
    float p[3];
    points.GetItemM(p, 2 * i);
    EXPECT_TRUE(std::equal(p, p + 3, expected[i])) << p[0] << ' ' << p[1] << ' ' << p[2];
  }
  EXPECT_EQ(points.IsPntAvailableM(1), 30);
}

TEST(PointSet, extentsAlongThreeDirections) {
  const Point3DArr points = pointsOf({{1, 2, 3}, {-4, 0, 8}, {0, 7, -1}});
  const float diagonal[3] = {1, 1, 1};
  using Range = std::array<float, 2>;
  Range r[3];
  points.GetMaxMinM(kAlongX, kAlongY, diagonal, r[0].data(), r[1].data(), r[2].data());
  EXPECT_EQ(r[0], (Range{-4, 1}));
  EXPECT_EQ(r[1], (Range{0, 7}));
  EXPECT_EQ(r[2], (Range{4, 6}));
}

}  // namespace
