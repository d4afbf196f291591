#include "zel/geometry/planes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "geometry/random_geometry.h"
#include "zel/core/constants.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

constexpr float kO[3]{0, 0, 0}, kX[3]{1, 0, 0}, kY[3]{0, 1, 0}, kZ[3]{0, 0, 1};

TEST(Planes, equationHoldsForItsPoints) {
  RandomGeometry random(71);
  for (int repeat = 0; repeat < 5000; ++repeat) {
    const Double3 p0 = random.point(10), p1 = random.point(10), p2 = random.point(10);
    const Double3 normal = unit(cross(p1 - p0, p2 - p0));
    if (norm(cross(unit(p1 - p0), unit(p2 - p0))) < 0.05) {
      continue;
    }
    float n[3], d = 0;
    ASSERT_EQ(slGetPlaneEquation(narrow(p0).data(), narrow(p1).data(), narrow(p2).data(), n, &d),
              1);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(n[i], normal[i], 2e-6);
    }
    const Double3 p = random.point(10);
    const double height = dot(p - p0, normal);
    float foot[3];
    EXPECT_NEAR(slProjectPntToPlane(n, d, narrow(p).data(), foot), height, 3e-5);
    EXPECT_NEAR(norm(widen(foot) - (p - height * normal)), 0, 5e-5);
    EXPECT_NEAR(slGetPntPlaneDist(n, d, narrow(p).data()), std::abs(height), 1.5e-4);
    EXPECT_NEAR(slGetPlaneEquation(narrow(p1).data(), n), d, 3e-5);
  }
}

TEST(Planes, knownPlaneIsExact) {
  const float p0[3]{0, 0, 5}, p1[3]{1, 0, 5}, p2[3]{0, 1, 5}, p[3]{3, 3, 7};
  float n[3], d;
  EXPECT_EQ(slGetPlaneEquation(p0, p1, p2, n, &d), 1);
  EXPECT_EQ(n[2], 1.0F);
  EXPECT_EQ(d, -5.0F);
  EXPECT_EQ(slGetPntPlaneDist(n, -5.0F, p), 2.0F);
  const float near[3]{1, 1, 5.0001F};  // in float a little more than 0.0001 off
  EXPECT_GT(slGetPntPlaneDist(n, -5.0F, near), kTolerance);
  const float nearer[3]{1, 1, 5.00009F};
  EXPECT_EQ(slGetPntPlaneDist(n, -5.0F, nearer), 0.0F);
  float foot[3];
  EXPECT_NE(slProjectPntToPlane(n, -5.0F, nearer, foot), 0.0F);
}

TEST(Planes, degenerateTrianglesLeaveWhatTheyPromise) {
  float n[3]{7, 7, 7}, d = 7;
  const float close[3]{0.000099999F, 0, 0};
  EXPECT_EQ(slGetPlaneEquation(kO, close, kY, n, &d), 0);
  EXPECT_EQ(n[0] + n[1] + n[2] + d, 28.0F);
  const float two[3]{2, 0.0001F, 0};  // sine 0.00005
  EXPECT_EQ(slPlaneNormal(kO, kX, two, n), 0);
  EXPECT_EQ(n[2], 0.0001F);  // the cross product itself
  const float oblique[3]{2, 0.0003F, 0};
  EXPECT_EQ(slPlaneNormal(kO, kX, oblique, n), 1);
  EXPECT_EQ(n[2], 1.0F);
}

TEST(Planes, fourthPointIsOnlyTestedAgainstAProperPlane) {
  const float flat[3]{3, 4, 0.0004F}, off[3]{3, 4, 0.0006F}, two[3]{2, 0, 0};
  float n[3];
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, kY, flat, n), 1);
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, kY, off, n), 0);
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, kY, kO, n), 1);
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, two, kZ, n), 1);
  EXPECT_EQ(n[1], -1.0F);
  EXPECT_EQ(slGetPlaneFourPnt(kO, kX, two, two, n), 0);
}

TEST(Planes, bisectorKeepsItsNormalUnnormalised) {
  const float a[3]{1, 2, 3}, b[3]{5, 2, 1};
  PlaneD plane;
  EXPECT_EQ(slGetAveragePlane(a, b, &plane), 1);
  EXPECT_EQ(plane.point[0], 3.0F);
  EXPECT_EQ(plane.normal[0], -4.0F);
  EXPECT_EQ(plane.normal[2], 2.0F);
}

TEST(Planes, pointsGoIntoAFrame) {
  const XYCoordSysD cs{{1, 1, 1}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}};
  float p[3]{5, 3, 4};
  slTransPntToPlane(p, cs);
  EXPECT_EQ(p[0], 2.0F);
  EXPECT_EQ(p[1], 3.0F);
  EXPECT_EQ(p[2], 0.0F);
  float v[3]{5, 3, 4};
  slTransVectToPlane(v, kZ, kX);
  EXPECT_EQ(v[0], 4.0F);
  EXPECT_EQ(v[1], 5.0F);
  EXPECT_EQ(v[2], 0.0F);
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
  RandomGeometry random(72);
  for (int repeat = 0; repeat < 2000; ++repeat) {
    const Double3 origin = random.point(5), u = random.direction(), v = random.direction();
    if (norm(cross(u, v)) < 0.3) {
      continue;
    }
    std::vector<Double3> points{origin};
    for (int i = 0; i < 6; ++i) {
      const double angle = 0.4 * i + random.number(0, 0.2);
      points.push_back(origin + 4.0 * std::cos(angle) * u + 4.0 * std::sin(angle) * v);
    }
    float n[3];
    EXPECT_EQ(judge(points, n), 2);
    EXPECT_NEAR(std::abs(dot(widen(n), unit(cross(u, v)))), 1, 1e-5);
    points[5] = points[5] + 0.05 * unit(cross(u, v));
    EXPECT_EQ(judge(points, n), 3);
  }
}

TEST(Planes, scanSkipsPointsAtTheBase) {
  const float points[4][3]{{0.00005F, 0, 0}, {0, 2, 0}, {0, -3, 0}, {5, 0, 0}};
  float v[3], n[3];
  int next = -2;
  EXPECT_EQ(slGetVectBtPntsNZero(kO, 4, points, &next, v), 1);
  EXPECT_EQ(next, 2);
  EXPECT_EQ(v[1], 1.0F);
  EXPECT_EQ(slGetNormNZero(kO, v, 4, points, &next, n), 1);
  EXPECT_EQ(next, 4);
  EXPECT_EQ(n[2], -1.0F);
  EXPECT_EQ(slGetNormNZero(kO, v, 4, points, &next, n), 0);
  EXPECT_EQ(slGetVectBtPntsNZero(kO, 4, points, &next, v), 0);
}

TEST(Planes, pointAtExactlyTheToleranceIsAccepted) {
  // The length lies a hair above and rounds to the tolerance itself, which normalising refuses.
  const float point[1][3]{{0, kTolerance, 2.5e-8F}};
  float v[3];
  int next = 0;
  EXPECT_EQ(slGetVectBtPntsNZero(kO, 1, point, &next, v), 1);
  EXPECT_EQ(v[0], 1.0F);
}

}  // namespace
