// NaN, infinities and the ends of the float range end in a result.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "zel/curves/touch_cur.h"

namespace {

constexpr float kExtremes[]{NAN,  INFINITY, -INFINITY, 3.4e38F, -3.4e38F, 1e-45F,
                            0.0F, -0.0F,    1.0F,      1e18F,   -1e18F,   0.0001F};

class Extremes {
 public:
  float number() { return kExtremes[random_() % std::size(kExtremes)]; }
  void fill(float* values, int count) {
    for (int i = 0; i < count; ++i) {
      values[i] = number();
    }
  }
  TouchCurD record() {
    constexpr int kTypes[]{1, 163, 164, 146, 154, 155, 156, 157, 158, 159, 0, -2147483647};
    TouchCurD c;
    c.type = kTypes[random_() % std::size(kTypes)];
    c.direction = 143 + static_cast<int>(random_() % 2);
    for (float* field : {c.centre, c.startPnt, c.endPnt, c.auxPnt1, c.auxPnt2}) {
      fill(field, 3);
    }
    c.radius1 = number();
    c.radius2 = number();
    c.startAng = number();
    c.endAng = number();
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
    float p[3], q[3], out[3];
    any.fill(p, 3);
    any.fill(q, 3);
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
    float v[12], out[3][3], x = 0, y = 0, r = 0;
    any.fill(v, 12);
    EXPECT_TRUE(isZeroOrOne(slCalArcCent(143, v[0], v[1], v[2], v[3], v[4], &x, &y)));
    EXPECT_TRUE(isZeroOrOne(slCalArcCentRadius(144, v[0], v[1], v[2], v[3], v[4], &r, &x, &y)));
    EXPECT_TRUE(isZeroOrOne(slCalArcRadiusPnt(143, v[0], v[1], v[2], v[3], v[4], &r, &x, &y)));
    slGetArcAng2(v[0], v[1], v[2], v[3], v[4]);
    slGetDirectAngleToZ(round % 2, v, v + 3);
    slProjToLineAlongXOnXZ(v, v + 3, v + 6, out[0]);
    TouchCurD c = any.record();
    int count = -1;
    EXPECT_EQ(slFindIntPnt(&c, v[0], out, &count), 1);
    EXPECT_TRUE(count >= 0 && count <= 2);
    EXPECT_EQ(slZxIntCur(&c, v[0], v[1], -1, &c), 0);
    if (slGetTangentCircle(v, v + 3, v + 6, v + 9, any.number(), out[0], out[1], out[2]) == 1) {
      EXPECT_TRUE(std::isfinite(out[0][0]) && std::isfinite(out[1][1]) && std::isfinite(out[2][2]));
    }
  }
}

TEST(CurveExtremes, notANumberFallsToTheStatedOtherwise) {
  float r = -7;
  float x = -7;
  float y = -7;
  EXPECT_EQ(slCalArcCent(143, 0, 0, 2, 0, NAN, &x, &y), 0) << "|NaN| counts as 0";
  EXPECT_EQ(slCalArcCent(143, NAN, 0, 2, 0, 1, &x, &y), 1) << "a chord of no length";
  EXPECT_TRUE(std::isnan(x));
  EXPECT_EQ(slCalArcRadiusPnt(143, NAN, 0, 2, 0, 1, &r, &x, &y), 0);
  EXPECT_NEAR(slGetArcAng2(0, 0, 0.5F, NAN, 1), 5 * std::numbers::pi / 3, 1e-6)
      << "mirrored unless above";
}

}  // namespace
