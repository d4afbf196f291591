#include "zel/geometry/planes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

constexpr Float3 kO{0, 0, 0}, kX{1, 0, 0}, kY{0, 1, 0}, kZ{0, 0, 1};

TEST(Planes, equationHoldsForItsPoints) {
  randomRounds<RandomGeometry>(71, 5000, [&](RandomGeometry& random) {
    const Double3 p0 = random.point(10), p1 = random.point(10), p2 = random.point(10);
    const Double3 normal = unit(cross(p1 - p0, p2 - p0)), p = random.point(10);
    if (norm(cross(unit(p1 - p0), unit(p2 - p0))) < 0.05) {
      return;
    }
    float n[3], d = 0, foot[3];
    ASSERT_EQ(slGetPlaneEquation(narrow(p0), narrow(p1), narrow(p2), n, &d), 1);
    EXPECT_LT(apart(n, normal), 3e-6);
    EXPECT_NEAR(slGetPlaneEquation(narrow(p1), n), d, 3e-5);
    const double height = dot(p - p0, normal);
    EXPECT_NEAR(slProjectPntToPlane(n, d, narrow(p), foot), height, 3e-5);
    EXPECT_LT(apart(foot, p - height * normal), 5e-5);
    EXPECT_NEAR(slGetPntPlaneDist(n, d, narrow(p)), std::abs(height), 1.5e-4);
  });
}

TEST(Planes, distanceIsZeroUpToTheTolerance) {
  const Float3 nearer{1, 1, 5.00009F}, near{1, 1, 5.0001F};  // in float a little more than it says
  float foot[3];
  EXPECT_EQ(slGetPntPlaneDist(kZ, -5.0F, nearer), 0.0F);
  EXPECT_GT(slGetPntPlaneDist(kZ, -5.0F, near), kTolerance);
  EXPECT_EQ(slGetPntPlaneDist(kZ, -5.0F, Float3{3, 3, 7}), 2.0F);
  EXPECT_NE(slProjectPntToPlane(kZ, -5.0F, nearer, foot), 0.0F);
}

TEST(Planes, degenerateTrianglesLeaveWhatTheyPromise) {
  Float3 n{7, 7, 7};
  float d = 7;
  EXPECT_EQ(slGetPlaneEquation(kO, Float3{0.000099999F, 0, 0}, kY, n, &d), 0);
  EXPECT_EQ(n, (Float3{7, 7, 7}));
  EXPECT_EQ(d, 7.0F);
  EXPECT_EQ(slPlaneNormal(kO, kX, Float3{2, 0.0001F, 0}, n), 0);  // sine 0.00005
  EXPECT_EQ(n[2], 0.0001F) << "the cross product itself";
  EXPECT_EQ(slPlaneNormal(kO, kX, Float3{2, 0.0003F, 0}, n), 1);
  EXPECT_EQ(n, kZ);
}

TEST(Planes, fourthPointIsOnlyTestedAgainstAProperPlane) {
  const Float3 flat{3, 4, 0.0004F}, off{3, 4, 0.0006F}, two{2, 0, 0};
  float n[3];
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, kY, flat, n), 1);
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, kY, off, n), 0);
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, kY, kO, n), 1);
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, two, kZ, n), 1);
  EXPECT_EQ(n[1], -1.0F);
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, two, two, n), 0);
}

TEST(Planes, bisectorKeepsItsNormalUnnormalised) {
  PlaneD plane;
  EXPECT_EQ(slGetAveragePlane(Float3{1, 2, 3}, Float3{5, 2, 1}, &plane), 1);
  EXPECT_EQ(widen(plane.point), (Double3{3, 2, 2}));
  EXPECT_EQ(widen(plane.normal), (Double3{-4, 0, 2}));
}

TEST(Planes, pointsGoIntoAFrame) {
  const XYCoordSysD cs{{1, 1, 1}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}};
  Float3 p{5, 3, 4}, v{5, 3, 4};
  slTransPntToPlane(p, cs);
  EXPECT_EQ(p, (Float3{2, 3, 0}));
  slTransVectToPlane(v, kZ, kX);
  EXPECT_EQ(v, (Float3{4, 5, 0}));
}

int judge(const std::vector<Double3>& points, float n[3]) {
  std::vector<Float3> floats;
  std::transform(points.begin(), points.end(), std::back_inserter(floats), narrow);
  return slJudgePntCoPlane(static_cast<int>(floats.size()),
                           reinterpret_cast<const float(*)[3]>(floats.data()), n);
}

TEST(Planes, coplanarityNamesItsFourCases) {
  float n[3]{};
  EXPECT_EQ(slJudgePntCoPlane(0, nullptr, n), 4);
  EXPECT_EQ(judge({{1, 1, 1}, {1, 1, 1}, {1, 1, 1.00005}}, n), 4);
  EXPECT_EQ(judge({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {2, 1, 1}}, n), 5);
  EXPECT_EQ(judge({{0, 0, 0}, {1, 0, 0}, {-3, 0, 0}, {2, 0, 0}}, n), 5);
  EXPECT_EQ(judge({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 3, 0}, {-1, -1, 0}}, n), 2);
  EXPECT_EQ(n[2], 1.0F);
  EXPECT_EQ(judge({{0, 0, 0}, {1, 0, 0}, {0, 3, 0}, {4, 4, 0.01}}, n), 3);
}

TEST(Planes, randomPolygonsAreJudgedAsTheyWereMade) {
  randomRounds<RandomGeometry>(72, 2000, [&](RandomGeometry& random) {
    const auto [u, v, normal] = random.obliqueDirections(0.3);
    const Double3 origin = random.point(5);
    std::vector<Double3> points{origin};
    for (int i = 0; i < 6; ++i) {
      const double angle = 0.4 * i + random.number(0, 0.2);
      points.push_back(origin + 4.0 * std::cos(angle) * u + 4.0 * std::sin(angle) * v);
    }
    float n[3];
    EXPECT_EQ(judge(points, n), 2);
    EXPECT_NEAR(std::abs(dot(widen(n), normal)), 1, 1e-5);
    points[5] = points[5] + 0.05 * normal;
    EXPECT_EQ(judge(points, n), 3);
  });
}

TEST(Planes, scanSkipsPointsAtTheBase) {
  const float points[4][3]{{0.00005F, 0, 0}, {0, 2, 0}, {0, -3, 0}, {5, 0, 0}};
  Float3 v, n;
  int next = -2;
  EXPECT_EQ(slGetVectBtPntsNZero(kO, 4, points, &next, v), 1);
  EXPECT_EQ(next, 2);
  EXPECT_EQ(v, kY);
  EXPECT_EQ(slGetNormNZero(kO, v, 4, points, &next, n), 1);
  EXPECT_EQ(next, 4);
  EXPECT_EQ(n[2], -1.0F);
  EXPECT_EQ(slGetNormNZero(kO, v, 4, points, &next, n), 0);
  EXPECT_EQ(slGetVectBtPntsNZero(kO, 4, points, &next, v), 0);
  // A length that lies a hair above the tolerance rounds to it, and normalising refuses it.
  const float hair[1][3]{{0, kTolerance, 2.5e-8F}};
  next = 0;
  EXPECT_EQ(slGetVectBtPntsNZero(kO, 1, hair, &next, v), 1);
  EXPECT_EQ(v, kX);
}

}  // namespace
