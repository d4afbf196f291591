#include "zel/geometry/scalars.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <random>

#include "support/bits.h"
#include "zel/core/constants.h"

namespace {

using zel::kHalfPi;
using zel::kPi;
using zel::kTolerance;
using zel::kTwoPi;

constexpr float kAbove = 0.000100000005F;  // the next floats on both sides of the tolerance
constexpr float kBelow = 0.00009999999F;
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

TEST(Scalars, deadBandEndsJustAboveTheTolerance) {
  ASSERT_EQ(kAbove, std::nextafter(kTolerance, 1.0F));
  ASSERT_EQ(kBelow, std::nextafter(kTolerance, 0.0F));
  for (const float inside : {0.0F, kBelow, kTolerance, -kTolerance, kNaN}) {
    EXPECT_EQ(slFabs(inside), 0.0F) << inside;
  }
  EXPECT_EQ(slFabs(kAbove), kAbove);
  EXPECT_EQ(slFabs(-kAbove), kAbove);
  EXPECT_EQ(slFabs(1e-8), 0.0);
  EXPECT_EQ(slFabs(-1.0000001e-8), 1.0000001e-8);
  EXPECT_EQ(slFabs(-kInf), kInf);
}

TEST(Scalars, signSharesTheDeadBandAndCallsNanNegative) {
  EXPECT_EQ(slSign(kTolerance), 0);
  EXPECT_EQ(slSign(kAbove), 1);
  EXPECT_EQ(slSign(-kTolerance), 0);
  EXPECT_EQ(slSign(-kAbove), -1);
  EXPECT_EQ(slSign(kNaN), -1);
}

TEST(Scalars, rootIsZeroBelowTheFineTolerance) {
  EXPECT_EQ(slSqrt(5e-9), 0.0);
  EXPECT_EQ(slSqrt(std::nextafter(1e-8, 0.0)), 0.0);
  EXPECT_DOUBLE_EQ(slSqrt(1e-8), 1e-4);
  EXPECT_EQ(slSqrt(-4.0), 0.0);
  EXPECT_EQ(slSqrt(kNaN), 0.0);
  EXPECT_EQ(slSqrt(6.25), 2.5);
}

TEST(Scalars, arcsSnapAtTheEndsOfTheirRange) {
  const double bound = 0.9999000000025262;
  EXPECT_EQ(slAcos(1.00001), 0.0);
  EXPECT_EQ(slAcos(-0.99995), kPi);
  EXPECT_NEAR(slAcos(bound), 0.0141425, 1e-6);
  EXPECT_EQ(slAcos(std::nextafter(bound, 1.0)), 0.0);
  EXPECT_EQ(slAsin(2.0), kHalfPi);
  EXPECT_EQ(slAsin(-0.99991), -static_cast<double>(kHalfPi));
  EXPECT_NEAR(slAsin(-0.5), -0.52359877, 1e-8);
}

TEST(Scalars, arcTangentForgetsTheQuadrant) {
  EXPECT_EQ(slAtan(0.0, -5.0), kHalfPi);
  EXPECT_EQ(slAtan(0.00009, -5.0), kHalfPi);
  EXPECT_NEAR(slAtan(-1.0, -1.0), 0.78539816, 1e-8);
  EXPECT_NEAR(slAtan(-1.0, 1.0), -0.78539816, 1e-8);
}

TEST(Scalars, tangentIsInfiniteOnlyAtPlusHalfPi) {
  EXPECT_EQ(slTan(kHalfPi), 9.999999843067494e+17);
  EXPECT_EQ(slTan(kHalfPi + 0.00009), 9.999999843067494e+17);
  EXPECT_NEAR(slTan(-static_cast<double>(kHalfPi)), -13245401.6, 1.0);
  EXPECT_EQ(slTan(0.00009), 0.0);
  EXPECT_DOUBLE_EQ(slTan(7.0), std::tan(7.0 - 2.0 * kPi));
  for (const double noAngle : {static_cast<double>(kInf), -static_cast<double>(kInf)}) {
    EXPECT_EQ(slTan(noAngle), 0.0);
  }
  EXPECT_EQ(slTan(kNaN), 0.0);
  EXPECT_TRUE(std::isfinite(slTan(1e300)));
}

TEST(Scalars, tangentReducesAsRepeatedSubtractionWould) {
  std::mt19937 random(41);
  std::uniform_real_distribution<double> angle(-4000.0, 4000.0);
  for (int i = 0; i < 3000; ++i) {
    const double x = i % 10 == 0 ? (i / 10 - 150) * static_cast<double>(kPi) : angle(random);
    double reduced = x;
    while (std::abs(reduced) > kPi) {
      reduced += reduced <= 0.0 ? kPi : -static_cast<double>(kPi);
    }
    EXPECT_EQ(slTan(x), slTan(reduced)) << x;
  }
}

TEST(Scalars, cosineAndSineSnapToTheAxes) {
  EXPECT_EQ(slCos(kHalfPi), 0.0F);
  EXPECT_EQ(slCos(0.0F), 1.0F);
  EXPECT_EQ(slCos(0.0141F), 1.0F);
  EXPECT_LT(slCos(0.0142F), 1.0F);
  EXPECT_EQ(slCos(kPi), -1.0F);
  EXPECT_EQ(slSin(kPi), 0.0F);
  EXPECT_EQ(slSin(-kHalfPi), -1.0F);
  EXPECT_NEAR(slSin(0.5F), 0.47942554F, 1e-7F);
}

TEST(Scalars, roundingCutsHalvesTowardZeroForNegatives) {
  EXPECT_EQ(slRound(2.5F), 3);
  EXPECT_EQ(slRound(-2.5F), -2);
  EXPECT_EQ(slRound(-2.7F), -2);
  EXPECT_EQ(slRound(-0.7F), 0);
  EXPECT_EQ(slRound(0.49999997F), 0);
  for (const float unfit : {1e10F, -1e10F, kInf, -kInf, kNaN}) {
    EXPECT_EQ(slRound(unfit), INT_MIN);
  }
}

TEST(Scalars, twoDecimalsAreCutOff) {
  EXPECT_EQ(slKeepTwoDecimal(1.239F), 1.23F);
  EXPECT_EQ(slKeepTwoDecimal(-1.239F), -1.23F);
  EXPECT_EQ(slKeepTwoDecimal(0.29F), 0.29F);
  EXPECT_EQ(slKeepTwoDecimal(0.0F), 0.0F);
  EXPECT_EQ(slKeepTwoDecimal(kNaN), slKeepTwoDecimal(kInf));
}

TEST(Scalars, remainderKeepsWholeTurns) {
  EXPECT_EQ(slMod(720.0F, 360.0F), 360.0F);
  EXPECT_EQ(slMod(0.0F, 360.0F), 0.0F);
  EXPECT_EQ(slMod(-90.0F, 360.0F), 270.0F);
  EXPECT_EQ(slMod(-360.0F, 360.0F), 360.0F);
  EXPECT_NEAR(slMod(-359.999F, 360.0F), 0.00100851F, 1e-8F);
  EXPECT_NEAR(slMod(400.0F, 360.0F), 40.0F, 1e-4F);
  EXPECT_NEAR(slMod(0.01F, 360.0F), 0.01F, 1e-8F);
  EXPECT_NEAR(slMod(-0.01F, 360.0F), -0.01F, 1e-8F);
  EXPECT_TRUE(std::isnan(slMod(1.0F, 0.0F)));
}

TEST(Scalars, fittingTestsTheUpperBoundFirst) {
  int v = 5;
  EXPECT_EQ(slFitI(&v, 0, 3), 3);
  EXPECT_EQ(v, 3);
  v = 5;
  EXPECT_EQ(slFitI(&v, 8, 3), 3);
  v = -5;
  EXPECT_EQ(slFitI(&v, 0, 3), 0);
  EXPECT_EQ(slMaxI2(-1, 4) + slMinI2(-1, 4), 3);
}

TEST(Scalars, ratioOfAnEmptyRangeIsOne) {
  EXPECT_EQ(slGetRatio(2.0, 4.0, 3.0), 0.5);
  EXPECT_EQ(slGetRatio(2.0, 2.00009, 7.0), 1.0);
  EXPECT_EQ(slGetRatio(4.0, 2.0, 6.0), -1.0);
}

TEST(Scalars, anglesConvertBothWays) {
  EXPECT_EQ(slAngleToRadian(180.0F), kPi);
  EXPECT_NEAR(slRadianToAngle(kHalfPi), 90.0F, 1e-5F);
  for (float degrees = -720.0F; degrees <= 720.0F; degrees += 7.0F) {
    EXPECT_NEAR(slRadianToAngle(slAngleToRadian(degrees)), degrees, 2e-4F);
  }
}

TEST(Scalars, mirroringWrapsOnceOnly) {
  const auto mirrored = [](float a) {
    EXPECT_EQ(slMirrorAngleAboutVerticalAxis(&a), 1);
    return a;
  };
  EXPECT_EQ(mirrored(0.0F), kPi);
  EXPECT_NEAR(mirrored(1.0F), kPi - 1.0F, 1e-6F);
  EXPECT_NEAR(mirrored(4.0F), 3.0F * kPi - 4.0F, 1e-6F);
  EXPECT_NEAR(mirrored(-1.0F), kPi + 1.0F, 1e-6F);
  EXPECT_EQ(mirrored(kTwoPi), kPi);
  EXPECT_NEAR(mirrored(20.0F), 5.0F * kPi - 20.0F, 1e-5F);
  EXPECT_EQ(mirrored(kPi), 0.0F);
}

}  // namespace
