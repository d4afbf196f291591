// NaN, infinities and the ends of the float range end in a result.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "geometry/random_geometry.h"
#include "zel/curves/touch_cur.h"

namespace {

using zel::test::Float3;

class Extremes {
 public:
  float number() {
    constexpr float kExtremes[]{NAN,  INFINITY, -INFINITY, 3.4e38F, -3.4e38F, 1e-45F,
                                0.0F, -0.0F,    1.0F,      1e18F,   -1e18F,   0.0001F};
    return kExtremes[random_() % std::size(kExtremes)];
  }
  Float3 point() { return {number(), number(), number()}; }
  TouchCurD record() {
    constexpr int kTypes[]{1, 163, 164, 146, 154, 155, 156, 157, 158, 159, 0, -2147483647};
    TouchCurD c;
    slSetArc(&c, kTypes[random_() % std::size(kTypes)], 143 + static_cast<int>(random_() % 2),
             point(), point(), point(), number(), number(), number());
    c.radius2 = number();
    std::copy_n(point().data(), 3, c.auxPnt1);
    std::copy_n(point().data(), 3, c.auxPnt2);
    return c;
  }

 private:
  std::mt19937 random_{81};
};

bool isZeroOrOne(int result) { return result == 0 || result == 1; }

TEST(CurveExtremes, recordsAreEditedWithoutHarm) {
  Extremes any;
  for (int round = 0; round < 20000; ++round) {
    TouchCurD c = any.record();
    Float3 p = any.point(), q = any.point(), out;
    EXPECT_TRUE(isZeroOrOne(slSetStartPnt(&c, p)));
    EXPECT_TRUE(isZeroOrOne(slSetEndPnt(&c, q)));
    EXPECT_TRUE(isZeroOrOne(slTouchCurTransCoord(&c, 55, p, q, out)));
    EXPECT_EQ(slTouchCurDMirror(&c, p, 0), 0);
    slTouchCurDOffset(any.number(), p, &c);
    slTouchCurDMove(p, &c);
    EXPECT_TRUE(isZeroOrOne(slCalCirPnt(p, any.number(), q)));
    EXPECT_TRUE(isZeroOrOne(slSetArcPara(&c, p, q, out, any.number())));
  }
}

TEST(CurveExtremes, arcsAndCutsEndInAResult) {
  Extremes any;
  for (int round = 0; round < 20000; ++round) {
    const Float3 a = any.point(), b = any.point(), p = any.point(), q = any.point();
    float out[3][3], x = 0, y = 0, r = 0;
    EXPECT_TRUE(isZeroOrOne(slCalArcCent(143, a[0], a[1], b[0], b[1], p[0], &x, &y)));
    EXPECT_TRUE(isZeroOrOne(slCalArcCentRadius(144, a[0], a[1], b[0], b[1], p[0], &r, &x, &y)));
    EXPECT_TRUE(isZeroOrOne(slCalArcRadiusPnt(143, a[0], a[1], b[0], b[1], p[0], &r, &x, &y)));
    slGetArcAng2(a[0], a[1], b[0], b[1], p[0]);
    slGetDirectAngleToZ(round % 2, a, b);
    slProjToLineAlongXOnXZ(a, b, p, out[0]);
    TouchCurD c = any.record();
    int count = -1;
    EXPECT_EQ(slFindIntPnt(&c, a[0], out, &count), 1);
    EXPECT_TRUE(count >= 0 && count <= 2);
    EXPECT_EQ(slZxIntCur(&c, a[0], a[1], -1, &c), 0);
    if (slGetTangentCircle(a, b, p, q, any.number(), out[0], out[1], out[2]) == 1) {
      EXPECT_TRUE(std::isfinite(out[0][0]) && std::isfinite(out[1][1]) && std::isfinite(out[2][2]));
    }
  }
}

TEST(CurveExtremes, notANumberFallsToTheStatedOtherwise) {
  float r = -7, x = -7, y = -7;
  EXPECT_EQ(slCalArcCent(143, 0, 0, 2, 0, NAN, &x, &y), 0) << "|NaN| counts as 0";
  EXPECT_EQ(slCalArcCent(143, NAN, 0, 2, 0, 1, &x, &y), 1) << "a chord of no length";
  EXPECT_TRUE(std::isnan(x));
  EXPECT_EQ(slCalArcRadiusPnt(143, NAN, 0, 2, 0, 1, &r, &x, &y), 0);
  EXPECT_NEAR(slGetArcAng2(0, 0, 0.5F, NAN, 1), 5 * std::numbers::pi / 3, 1e-6)
      << "mirrored unless above";
}

}  // namespace
