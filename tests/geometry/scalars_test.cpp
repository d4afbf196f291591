#include "zel/geometry/scalars.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <random>
#include <utility>

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

/// Checks a function at some arguments against the value beside each, exactly.
template <class X, class Y>
void expectValues(Y (*f)(X), std::initializer_list<std::pair<X, Y>> values) {
  for (const auto& [x, expected] : values) {
    EXPECT_EQ(f(x), expected) << "at " << x;
  }
}

TEST(Scalars, deadBandEndsJustAboveTheTolerance) {
  ASSERT_EQ(kAbove, std::nextafter(kTolerance, 1.0F));
  ASSERT_EQ(kBelow, std::nextafter(kTolerance, 0.0F));
  expectValues<float>(slFabs, {{0.0F, 0.0F},
                               {kBelow, 0.0F},
                               {kTolerance, 0.0F},
                               {-kTolerance, 0.0F},
                               {kNaN, 0.0F},
                               {kAbove, kAbove},
                               {-kAbove, kAbove},
                               {-kInf, kInf}});
  expectValues<double>(slFabs, {{1e-8, 0.0}, {-1.0000001e-8, 1.0000001e-8}});
  expectValues(slSign, {{kTolerance, 0}, {kAbove, 1}, {-kTolerance, 0}, {-kAbove, -1}, {kNaN, -1}});
}

TEST(Scalars, rootIsZeroBelowTheFineTolerance) {
  expectValues(slSqrt,
               {{5e-9, 0}, {std::nextafter(1e-8, 0.0), 0}, {-4, 0}, {kNaN, 0}, {6.25, 2.5}});
  EXPECT_DOUBLE_EQ(slSqrt(1e-8), 1e-4);
}

TEST(Scalars, arcsSnapAtTheEndsOfTheirRange) {
  const double bound = 0.9999000000025262;
  expectValues(slAcos, {{1.00001, 0}, {-0.99995, kPi}, {std::nextafter(bound, 1.0), 0}});
  EXPECT_NEAR(slAcos(bound), 0.0141425, 1e-6);
  expectValues(slAsin, {{2.0, kHalfPi}, {-0.99991, -kHalfPi}});
  EXPECT_NEAR(slAsin(-0.5), -0.52359877, 1e-8);
}

TEST(Scalars, arcTangentForgetsTheQuadrant) {
  EXPECT_EQ(slAtan(0.0, -5.0), kHalfPi);
  EXPECT_EQ(slAtan(0.00009, -5.0), kHalfPi);
  EXPECT_NEAR(slAtan(-1.0, -1.0), 0.78539816, 1e-8);
  EXPECT_NEAR(slAtan(-1.0, 1.0), -0.78539816, 1e-8);
}

TEST(Scalars, tangentIsInfiniteOnlyAtPlusHalfPi) {
  constexpr double kInfinite = 9.999999843067494e+17;
  expectValues(slTan, {{kHalfPi, kInfinite},
                       {kHalfPi + 0.00009, kInfinite},
                       {0.00009, 0},
                       {kInf, 0},
                       {-kInf, 0},
                       {kNaN, 0}});
  EXPECT_NEAR(slTan(-static_cast<double>(kHalfPi)), -13245401.6, 1.0);
  EXPECT_DOUBLE_EQ(slTan(7.0), std::tan(7.0 - 2.0 * kPi));
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
  expectValues(slCos, {{kHalfPi, 0}, {0, 1}, {0.0141F, 1}, {kPi, -1}});
  EXPECT_LT(slCos(0.0142F), 1.0F);
  expectValues(slSin, {{kPi, 0}, {-kHalfPi, -1}});
  EXPECT_NEAR(slSin(0.5F), 0.47942554F, 1e-7F);
}

TEST(Scalars, roundingAndCuttingGoTowardZeroForNegatives) {
  expectValues(slRound, {{2.5F, 3}, {-2.5F, -2}, {-2.7F, -2}, {-0.7F, 0}, {0.49999997F, 0}});
  for (const float unfit : {1e10F, -1e10F, kInf, -kInf, kNaN}) {
    EXPECT_EQ(slRound(unfit), INT_MIN);
  }
  expectValues(slKeepTwoDecimal, {{1.239F, 1.23F}, {-1.239F, -1.23F}, {0.29F, 0.29F}, {0, 0}});
  EXPECT_EQ(slKeepTwoDecimal(kNaN), slKeepTwoDecimal(kInf));
}

TEST(Scalars, remainderKeepsWholeTurns) {
  const auto ofATurn = [](float degrees) { return slMod(degrees, 360.0F); };
  expectValues<float, float>(ofATurn, {{720, 360}, {0, 0}, {-90, 270}, {-360, 360}});
  EXPECT_NEAR(ofATurn(-359.999F), 0.00100851F, 1e-8F);
  EXPECT_NEAR(ofATurn(400.0F), 40.0F, 1e-4F);
  EXPECT_NEAR(ofATurn(0.01F), 0.01F, 1e-8F);
  EXPECT_NEAR(ofATurn(-0.01F), -0.01F, 1e-8F);
  EXPECT_TRUE(std::isnan(slMod(1.0F, 0.0F)));
}

TEST(Scalars, fittingTestsTheUpperBoundFirst) {
  int v = 5;
  EXPECT_EQ(slFitI(&v, 0, 3), 3);
  EXPECT_EQ(v, 3);
  v = 2;
  EXPECT_EQ(slFitI(&v, 0, 3), 2);
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
  for (float degrees = -720.0F; degrees <= 720.0F; degrees += 7.0F) {
    EXPECT_NEAR(slRadianToAngle(slAngleToRadian(degrees)), degrees, 2e-4F);
  }
}

TEST(Scalars, mirroringWrapsOnceOnly) {
  const auto mirrored = [](float a) {
    EXPECT_EQ(slMirrorAngleAboutVerticalAxis(&a), 1);
    return a;
  };
  expectValues<float, float>(mirrored, {{0, kPi}, {kTwoPi, kPi}, {kPi, 0}});
  EXPECT_NEAR(mirrored(1.0F), kPi - 1.0F, 1e-6F);
  EXPECT_NEAR(mirrored(4.0F), 3.0F * kPi - 4.0F, 1e-6F);
  EXPECT_NEAR(mirrored(-1.0F), kPi + 1.0F, 1e-6F);
  EXPECT_NEAR(mirrored(20.0F), 5.0F * kPi - 20.0F, 1e-5F);
}

}  // namespace
