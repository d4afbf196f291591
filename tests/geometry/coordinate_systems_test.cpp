#include "zel/geometry/coordinate_systems.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geometry/random_geometry.h"
#include "support/random_rounds.h"

namespace {

using namespace zel::test;  // NOLINT

constexpr Float3 kOrigin{0, 0, 0};

void expectRightHanded(const XYCoordSysD& cs) {
  const Double3 x = widen(cs.xAxis), y = widen(cs.yAxis), z = widen(cs.zAxis);
  EXPECT_NEAR(norm(x), 1, 1e-6);
  EXPECT_NEAR(norm(y), 1, 1e-6);
  EXPECT_LT(norm(cross(x, y) - z), 1e-6);
}

TEST(CoordinateSystems, threePointsSpanARightHandedFrame) {
  randomRounds<RandomGeometry>(121, 3000, [&](RandomGeometry& random) {
    const Double3 o = random.point(5), p = random.point(5), q = random.point(5);
    const Double3 n = cross(p - o, q - o);
    if (norm(n) < 0.5) {
      return;
    }
    XYCoordSysD cs, same;
    ASSERT_EQ(slGenXYCoordSys(narrow(o), narrow(p), narrow(q), &cs), 1);
    expectRightHanded(cs);
    EXPECT_EQ(widen(cs.origin), o);
    EXPECT_LT(apart(cs.xAxis, unit(p - o)), 1e-6);
    EXPECT_GT(dot(q - o, widen(cs.yAxis)), 0);
    EXPECT_NEAR(dot(q - o, widen(cs.zAxis)), 0, 1e-5);
    ASSERT_EQ(slGenXYCoordSysByNormal(narrow(o), narrow(p), narrow(unit(n)), &same), 1);
    expectRightHanded(same);
    EXPECT_LT(apart(same.yAxis, widen(cs.yAxis)), 1e-5);
  });
}

TEST(CoordinateSystems, degeneratePointsLeaveTheFrameAlone) {
  const Float3 p{2, 0, 0}, close{0, 0.00009F, 0}, onLine{5, 0, 0};
  const Float3 slightly{5, 0.0004F, 0}, enough{5, 0.0006F, 0};
  XYCoordSysD cs{};
  EXPECT_EQ(slGenXYCoordSys(kOrigin, p, close, &cs), 0);
  EXPECT_EQ(slGenXYCoordSys(kOrigin, close, p, &cs), 0);
  EXPECT_EQ(slGenXYCoordSys(kOrigin, p, onLine, &cs), 0);
  EXPECT_EQ(slGenXYCoordSys(kOrigin, p, slightly, &cs), 0);
  EXPECT_EQ(cs.xAxis[0], 0.0F);
  EXPECT_EQ(slGenXYCoordSys(kOrigin, p, enough, &cs), 1);
  EXPECT_EQ(cs.yAxis[1], 1.0F);
  cs = {};
  const Float3 up{0, 0, 1}, oblique{1, 0, 0.0002F}, level{1, 0, 0.0001F};
  EXPECT_EQ(slGenXYCoordSysByNormal(kOrigin, oblique, up, &cs), 3);
  EXPECT_EQ(cs.xAxis[0], 0.0F);
  EXPECT_EQ(slGenXYCoordSysByNormal(kOrigin, level, up, &cs), 1);
  EXPECT_EQ(cs.zAxis[2], 1.0F);
}

TEST(CoordinateSystems, shortSidesTakeTheirAxesFromElsewhere) {
  const Float3 o{1, 2, 3}, n{0, 0.6F, 0.8F}, p{0, 0.009F, 0}, q{-0.009F, 0, 0};
  XYCoordSysD cs;
  EXPECT_EQ(slGenXYCoordSysByNormal(o, o, n, &cs), 1);
  expectRightHanded(cs);
  EXPECT_EQ(widen(cs.xAxis), (Double3{1, 0, 0})) << "a point on the origin: from the normal";
  EXPECT_EQ(widen(cs.origin), widen(o));
  EXPECT_EQ(slGenXYCoordSys(kOrigin, p, q, &cs), 1);
  EXPECT_EQ(widen(cs.zAxis), (Double3{1, 0, 0})) << "a cross product too short to normalise";
}

}  // namespace
