#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "zel/containers/point3d_arr.h"
#include "zel/geometry/geometry.h"

namespace {

class PointSet : public testing::Test {
 protected:
  void add(float x, float y, float z) {
    const float p[3] = {x, y, z};
    points_.AddItemM(p);
  }

  Point3DArr points_;
};

TEST_F(PointSet, planeFitRecoversANoisyPlaneOfAnyDirection) {
  std::mt19937 random(7);
  std::normal_distribution<float> noise(0.0F, 0.01F);
  std::uniform_real_distribution<float> uniform(-10.0F, 10.0F);
  for (int c = 0; c < 3; ++c) {
    points_.DelAllM();
    float expected[3] = {0.3F, -0.4F, 0.2F};
    expected[c] = 1.0F;
    slNormalize(expected);
    for (int i = 0; i < 2000; ++i) {
      float p[3] = {uniform(random), uniform(random), uniform(random)};
      const float d = -2.0F + noise(random);
      p[c] -= (p[0] * expected[0] + p[1] * expected[1] + p[2] * expected[2] + d) / expected[c];
      points_.AddItemM(p);
    }
    float normal[3];
    float d = 0.0F;
    ASSERT_EQ(points_.GenPlaneByLeastSquareM(expected, normal, &d), 1);
    for (int axis = 0; axis < 3; ++axis) {
      EXPECT_NEAR(normal[axis], expected[axis], 2e-4F) << "axis " << axis << " of " << c;
    }
    EXPECT_NEAR(d, -2.0F, 2e-3F);
  }
}

TEST_F(PointSet, planeFitLeavesOutputsWhenThePointsLieOnALine) {
  for (int i = 0; i < 5; ++i) {
    add(static_cast<float>(i), 0.0F, 2.0F);
  }
  const float up[3] = {0, 0, 1};
  float normal[3] = {7, 7, 7};
  float d = 7;
  EXPECT_EQ(points_.GenPlaneByLeastSquareM(up, normal, &d), 0);
  EXPECT_EQ(normal[0], 7.0F);
  EXPECT_EQ(d, 7.0F);
  double equations[12];
  points_.GenEquationGroupM(0, 1, 3, equations, equations + 9);  // there is no such axis
  EXPECT_EQ(std::count(equations, equations + 12, 0.0), 12);
  add(0.0F, 3.0F, 2.0F);
  EXPECT_EQ(points_.GenPlaneByLeastSquareM(up, normal, &d), 1);
  EXPECT_NEAR(normal[2], 1.0F, 1e-6F);
  EXPECT_NEAR(d, -2.0F, 1e-5F);
}

TEST_F(PointSet, shapeErrorDividesByTheCountNotItsRoot) {
  add(0, 0, 1);
  add(1, 0, 1);
  add(0, 1, 3);
  add(1, 1, 3);
  const float up[3] = {0, 0, 1};
  EXPECT_EQ(points_.GetShapeErrorToPlaneM(up, 0.0F), 0.5F);
  const float origin[3] = {0, 0, 0};
  const double distances[4] = {0.0, 1.0, 1.0, std::sqrt(2.0)};
  const double mean = (2.0 + std::sqrt(2.0)) / 4.0;
  double squares = 0.0;
  for (const double distance : distances) {
    squares += (distance - mean) * (distance - mean);
  }
  EXPECT_NEAR(points_.GetShapeErrorToLineM(origin, up), std::sqrt(squares) / 4.0, 1e-6);
}

TEST_F(PointSet, circleErrorIgnoresACommonOffset) {
  for (int i = 0; i < 12; ++i) {
    const double angle = i * 0.5;
    add(static_cast<float>(5.0 * std::cos(angle)), static_cast<float>(5.0 * std::sin(angle)), 0.0F);
  }
  const float centre[3] = {0, 0, 0};
  EXPECT_NEAR(points_.GetShapeErrorToCircleM(centre, 5.0F), 0.0F, 1e-6F);
  EXPECT_NEAR(points_.GetShapeErrorToCircleM(centre, 1.0F), 0.0F, 1e-6F);
}

TEST_F(PointSet, averagesSkipHolesAndDivideByTheAvailableCount) {
  add(1, 0, 0);
  add(100, 100, 100);
  add(3, 0, 4);
  points_.DelItemM(1);
  float centre[3];
  points_.GetBaryCenterM(centre);
  EXPECT_FLOAT_EQ(centre[0], 2.0F);
  EXPECT_FLOAT_EQ(centre[2], 2.0F);
  const float origin[3] = {0, 0, 0};
  const float along[3] = {1, 0, 0};
  EXPECT_FLOAT_EQ(points_.GetAverageDistToPntM(origin), 3.0F);
  EXPECT_FLOAT_EQ(points_.GetMaxLenToGivenPntM(origin), 5.0F);
  EXPECT_FLOAT_EQ(points_.GetAverageDistToLineM(origin, along), 2.0F);
}

// A stale count (points counted that are gone, or live ones not counted) only scales results.
TEST_F(PointSet, staleCountsReadNothingOutside) {
  for (int i = 0; i < 20; ++i) {
    add(static_cast<float>(i), 1.0F, 2.0F);
  }
  Point3DArr other;
  points_.AppendPntsM(other);
  points_.CancelLastItemM();
  const float up[3] = {0, 0, 1};
  EXPECT_TRUE(std::isfinite(points_.GetShapeErrorToPlaneM(up, 0.0F)));
  float m[3];
  points_.GetBaryCenterM(m);
  EXPECT_TRUE(std::isfinite(m[0]));
}

TEST_F(PointSet, emptySetAnswersZero) {
  const float v[3] = {0, 0, 1};
  float centre[3] = {5, 5, 5};
  points_.GetBaryCenterM(centre);
  EXPECT_EQ(centre[1], 0.0F);
  EXPECT_EQ(points_.GetShapeErrorToLineM(v, v), 0.0F);
  EXPECT_EQ(points_.GetShapeErrorToCircleM(v, 1.0F), 0.0F);
  EXPECT_EQ(points_.GetAverageDistToLineM(v, v), 0.0F);
  EXPECT_EQ(points_.GetMaxLenToGivenPntM(v), 0.0F);
  float untouched[2] = {8, 8};
  points_.GetMaxMinM(v, v, v, untouched, untouched, untouched);
  EXPECT_EQ(untouched[0], 8.0F);
}

TEST_F(PointSet, movesTouchLivePointsOnly) {
  add(1, 2, 3);
  add(9, 9, 9);
  add(4, 5, 6);
  points_.DelItemM(1);
  const float origin[3] = {0, 0, 1};
  const float up[3] = {0, 0, 1};
  points_.ProjectPntsToPlaneM(origin, up);
  const XYCoordSysD frame{{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
  points_.TransToLocalCoordSysM(frame);
  const float expected[2][3] = {{2, 0, 1}, {5, -3, 1}};
  for (int i = 0; i < 2; ++i) {
    float p[3];
    points_.GetItemM(p, 2 * i);
    EXPECT_TRUE(std::equal(p, p + 3, expected[i])) << p[0] << ' ' << p[1] << ' ' << p[2];
  }
  EXPECT_EQ(points_.IsPntAvailableM(1), 30);
}

TEST_F(PointSet, extentsAlongThreeDirections) {
  add(1, 2, 3);
  add(-4, 0, 8);
  add(0, 7, -1);
  const float x[3] = {1, 0, 0};
  const float y[3] = {0, 1, 0};
  const float diagonal[3] = {1, 1, 1};
  float rx[2];
  float ry[2];
  float rd[2];
  points_.GetMaxMinM(x, y, diagonal, rx, ry, rd);
  EXPECT_EQ(rx[0], -4.0F);
  EXPECT_EQ(rx[1], 1.0F);
  EXPECT_EQ(ry[0], 0.0F);
  EXPECT_EQ(ry[1], 7.0F);
  EXPECT_EQ(rd[0], 4.0F);
  EXPECT_EQ(rd[1], 6.0F);
}

}  // namespace
