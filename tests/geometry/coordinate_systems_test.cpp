#include "zel/geometry/coordinate_systems.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geometry/random_geometry.h"
#include "zel/core/constants.h"

namespace {

using namespace zel::test;  // NOLINT

void expectRightHanded(const XYCoordSysD& cs) {
  const Double3 x = widen(cs.xAxis), y = widen(cs.yAxis), z = widen(cs.zAxis);
  EXPECT_NEAR(norm(x), 1, 1e-6);
  EXPECT_NEAR(norm(y), 1, 1e-6);
  EXPECT_LT(norm(cross(x, y) - z), 1e-6);
}

TEST(CoordinateSystems, threePointsSpanARightHandedFrame) {
  RandomGeometry random(121);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 o = random.point(5), p = random.point(5), q = random.point(5);
    if (norm(cross(p - o, q - o)) < 0.5) {
      continue;
    }
    XYCoordSysD cs;
    ASSERT_EQ(slGenXYCoordSys(narrow(o).data(), narrow(p).data(), narrow(q).data(), &cs), 1);
    expectRightHanded(cs);
    EXPECT_EQ(widen(cs.origin), o);
    EXPECT_LT(norm(widen(cs.xAxis) - unit(p - o)), 1e-6);
    EXPECT_GT(dot(q - o, widen(cs.yAxis)), 0);
    EXPECT_NEAR(dot(q - o, widen(cs.zAxis)), 0, 1e-5);
    const Double3 n = unit(cross(p - o, q - o));
    XYCoordSysD same;
    ASSERT_EQ(slGenXYCoordSysByNormal(narrow(o).data(), narrow(p).data(), narrow(n).data(), &same),
              1);
    expectRightHanded(same);
    EXPECT_LT(norm(widen(same.yAxis) - widen(cs.yAxis)), 1e-5);
  }
}

TEST(CoordinateSystems, degeneratePointsLeaveTheFrameAlone) {
  const float o[3]{0, 0, 0}, p[3]{2, 0, 0}, close[3]{0, 0.00009F, 0}, onLine[3]{5, 0, 0};
  const float slightly[3]{5, 0.0004F, 0}, enough[3]{5, 0.0006F, 0}, up[3]{0, 0, 1};
  XYCoordSysD cs{};
  EXPECT_EQ(slGenXYCoordSys(o, p, close, &cs), 0);
  EXPECT_EQ(slGenXYCoordSys(o, close, p, &cs), 0);
  EXPECT_EQ(slGenXYCoordSys(o, p, onLine, &cs), 0);
  EXPECT_EQ(slGenXYCoordSys(o, p, slightly, &cs), 0);
  EXPECT_EQ(cs.xAxis[0], 0.0F);
  EXPECT_EQ(slGenXYCoordSys(o, p, enough, &cs), 1);
  EXPECT_EQ(cs.yAxis[1], 1.0F);
  cs = {};
  const float oblique[3]{1, 0, 0.0002F}, level[3]{1, 0, 0.0001F};
  EXPECT_EQ(slGenXYCoordSysByNormal(o, oblique, up, &cs), 3);
  EXPECT_EQ(cs.xAxis[0], 0.0F);
  EXPECT_EQ(slGenXYCoordSysByNormal(o, level, up, &cs), 1);
  EXPECT_EQ(cs.zAxis[2], 1.0F);
}

TEST(CoordinateSystems, pointOnTheOriginTakesAxesFromTheNormal) {
  const float o[3]{1, 2, 3}, n[3]{0, 0.6F, 0.8F};
  XYCoordSysD cs;
  EXPECT_EQ(slGenXYCoordSysByNormal(o, o, n, &cs), 1);
  expectRightHanded(cs);
  EXPECT_EQ(widen(cs.xAxis), (Double3{1, 0, 0}));
  EXPECT_EQ(widen(cs.origin), (Double3{1, 2, 3}));
}

TEST(CoordinateSystems, sidesOfAHundredthFallBackToTheFirstAxis) {
  const float o[3]{0, 0, 0}, p[3]{0, 0.009F, 0}, q[3]{-0.009F, 0, 0};
  XYCoordSysD cs;
  EXPECT_EQ(slGenXYCoordSys(o, p, q, &cs), 1);
  EXPECT_EQ(widen(cs.zAxis), (Double3{1, 0, 0})) << "the cross product is too short to normalise";
}

}  // namespace
