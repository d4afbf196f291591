// Curve elements against lines of constant x, and points carried along x.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/curves/touch_cur.h"

namespace {

using zel::kPi;
using zel::kTwoPi;
using namespace zel::test;

constexpr float kUntouched = -77.0F;

struct Crossings {
  Crossings(TouchCurD& c, float x) {
    std::fill_n(out[0], 9, kUntouched);
    EXPECT_EQ(slFindIntPnt(&c, x, out, &count), 1);
  }
  [[nodiscard]] float parameter(int i) const { return out[2][i]; }
  float out[3][3];
  int count = -1;
};

TouchCurD line(Float3 from, Float3 to, int type = 1) {
  TouchCurD c;
  slInitTouchCurD(&c);
  slSetLine(&c, type, from, to);
  return c;
}

/// A point of a circle of the zx plane.
Double3 onCircle(const float* centre, double radius, double angle) {
  return widen(centre) + radius * Double3{std::sin(angle), 0, std::cos(angle)};
}

TouchCurD arc(float cx, float cz, float radius, float startAng, float endAng) {
  const Float3 centre{cx, 5, cz};
  TouchCurD c;
  slInitTouchCurD(&c);
  slSetArc(&c, 156, 143, narrow(onCircle(centre, radius, startAng)), centre,
           narrow(onCircle(centre, radius, endAng)), radius, startAng, endAng);
  return c;
}

TEST(CutLine, endsOnTheLineComeBeforeACrossing) {
  const auto expectCrossing = [](TouchCurD c, float x, float parameter, Double3 point) {
    const Crossings found(c, x);
    EXPECT_EQ(found.count, 1);
    EXPECT_EQ(found.parameter(0), parameter);
    EXPECT_EQ(widen(found.out[0]), point);
  };
  expectCrossing(line({1, 2, 3}, {1.00005F, 4, 5}), 1, 0, {1, 2, 3});  // the start wins
  expectCrossing(line({0, 2, 3}, {1.00005F, 4, 5}), 1, 1, {1, 4, 5});  // x itself, not the end's
  // Between the ends there is no parameter, and y is the start's.
  expectCrossing(line({-1, 2, 3}, {1, 4, 7}), -0.5F, kUntouched, {-0.5, 2, 4});
}

TEST(CutLine, crossingNeedsAProductBelowTheToleranceAndALine) {
  const auto count = [](TouchCurD c) { return Crossings(c, 0).count; };
  EXPECT_EQ(count(line({-0.01F, 0, 0}, {0.0099F, 0, 1})), 0) << "0.01 on both sides is missed";
  EXPECT_EQ(count(line({-0.01F, 0, 0}, {0.0102F, 0, 1})), 1);
  EXPECT_EQ(count(line({1, 0, 0}, {2, 0, 1})), 0);
  for (const int type : {163, 164, 146, 154, 155, 158, 159}) {
    EXPECT_EQ(count(line({-1, 0, 0}, {1, 0, 0}, type)), 0) << type;
  }
}

/// Crossings of a densely sampled arc with x, each as an angle.
std::vector<double> sampledCrossings(const TouchCurD& c, double x) {
  constexpr int kSamples = 4000;
  std::vector<double> found;
  const double step = (double{c.endAng} - c.startAng) / kSamples;
  for (int i = 0; i < kSamples; ++i) {
    const double from = c.startAng + i * step;
    const double before = c.centre[0] + c.radius1 * std::sin(from) - x;
    const double behind = c.centre[0] + c.radius1 * std::sin(from + step) - x;
    if ((before < 0) != (behind < 0)) {
      found.push_back(from + step * before / (before - behind));
    }
  }
  return found;
}

TEST(CutArc, findsTheCrossingsOfASampledArc) {
  RandomGeometry random(71);
  int crossings = 0;
  for (int round = 0; round < 2000; ++round) {
    const float radius = random.number(0.5, 5), from = random.number(0, 6.28);
    TouchCurD c = arc(random.number(-5, 5), random.number(-5, 5), radius, from,
                      from + random.number(0.1, 6.2));
    const float aside = random.number(-1.2, 1.2), x = c.centre[0] + radius * aside;
    const float toAnEnd = std::min(std::fabs(c.startPnt[0] - x), std::fabs(c.endPnt[0] - x));
    if (std::fabs(std::fabs(aside) - 1) < 0.01F || toAnEnd < 0.01F) {
      continue;
    }
    const std::vector<double> expected = sampledCrossings(c, x);
    const Crossings found(c, x);
    ASSERT_EQ(found.count, static_cast<int>(expected.size())) << "round " << round;
    for (int i = 0; i < found.count; ++i) {
      ++crossings;
      const double angle = found.parameter(i);
      EXPECT_LT(apart(found.out[i], onCircle(c.centre, radius, angle)), 2e-4);
      EXPECT_NEAR(found.out[i][0], x, 1e-4);
      EXPECT_TRUE(std::any_of(expected.begin(), expected.end(),
                              [&](double sampled) { return std::fabs(sampled - angle) < 1e-3; }));
    }
  }
  EXPECT_GT(crossings, 1000);
}

TEST(CutArc, parametersAreTheTwoFloatsBehindTheTwoPoints) {
  TouchCurD c = arc(0, 0, 2, 0, kTwoPi);
  const Crossings found(c, 1);
  EXPECT_EQ(found.count, 2);
  EXPECT_NEAR(found.parameter(0), std::asin(0.5), 1e-6);
  EXPECT_EQ(bits(found.parameter(1)),
            bits(static_cast<float>(double{kPi} - (double{zel::kHalfPi} - std::acos(0.5)))));
  EXPECT_EQ(found.out[2][2], kUntouched);
  const Crossings left(c, -1);
  EXPECT_NEAR(left.parameter(0), std::numbers::pi + std::asin(0.5), 1e-6);
  EXPECT_NEAR(left.parameter(1), 2 * std::numbers::pi - std::asin(0.5), 1e-6);
}

TEST(CutArc, lineThroughTheCentreMeetsTheLibrarysQuarterTurns) {
  TouchCurD c = arc(3, 4, 2, 0, 3);
  const Crossings found(c, 3);
  EXPECT_EQ(found.count, 1);
  EXPECT_FLOAT_EQ(found.parameter(0), -7.549790e-08F) << "the library's half pi less the true one";
}

TEST(CutArc, endBelowTheStartGainsATurnInTheRecord) {
  TouchCurD c = arc(0, 0, 2, 6, 1), within = arc(0, 0, 2, 1, 0.99995F);
  const Crossings found(c, 0.5F);
  EXPECT_EQ(c.endAng, 1.0F + kTwoPi);
  EXPECT_EQ(found.count, 1);
  EXPECT_NEAR(found.parameter(0), std::asin(0.25) + 2 * std::numbers::pi, 1e-5)
      << "the increased angle";
  Crossings(within, 0.5F);
  EXPECT_EQ(within.endAng, 0.99995F) << "within the tolerance nothing is added";
}

TEST(CutArc, edgeOfTheCircleIsNotCrossedAndAnglesHaveTheToleranceToSpare) {
  const auto count = [](TouchCurD c, float x) { return Crossings(c, x).count; };
  const TouchCurD circle = arc(0, 0, 1, 0, kTwoPi);
  EXPECT_EQ(count(circle, 0.9999F), 2);
  EXPECT_EQ(count(circle, std::nextafter(0.9999F, 1.0F)), 0);
  EXPECT_EQ(count(circle, -0.99995F), 0);
  const float angle = std::asin(0.5F);
  EXPECT_EQ(count(arc(0, 0, 2, angle + 0.00005F, 2), 1), 1);
  EXPECT_EQ(count(arc(0, 0, 2, angle + 0.0002F, 2), 1), 0);
  EXPECT_EQ(count(arc(0, 0, 2, 0, angle - 0.00005F), 1), 1);
  EXPECT_EQ(count(arc(0, 0, 2, 0, angle - 0.0002F), 1), 0);
}

/// What is kept of a line on the side of (x, z) that the sense names, in a record of -1s before.
TouchCurD keptOf(const TouchCurD& c, float x, float z, int sense) {
  TouchCurD out = line({-1, -1, -1}, {-1, -1, -1}, 0);
  EXPECT_EQ(slZxIntCur(&c, x, z, sense, &out), 0);
  return out;
}

TEST(KeepLineAbove, strictCrossingKeepsThePartToItsEndWithoutItsY) {
  for (const int type : {1, 164}) {
    const TouchCurD out = keptOf(line({0, 9, 0}, {4, 9, 8}, type), 1, 1.5F, 1);
    EXPECT_EQ(out.type, type);
    EXPECT_EQ(widen(out.startPnt), (Double3{1, -1, 2}));
    EXPECT_EQ(widen(out.endPnt), (Double3{4, -1, 8}));
  }
  const TouchCurD out = keptOf(line({1.00005F, 9, 3}, {4, 9, 8}), 1, 0, 1);
  EXPECT_EQ(widen(out.startPnt), (Double3{1, -1, 3})) << "a start on x takes the given x";
}

TEST(KeepLineAbove, linesOnTheWrongSideOrOfOtherTypesLeaveTheOutput) {
  const auto isUntouched = [](const TouchCurD& c, float x, float z, int sense) {
    const TouchCurD out = keptOf(c, x, z, sense), untouched = line({-1, -1, -1}, {-1, -1, -1}, 0);
    return std::memcmp(&out, &untouched, sizeof out) == 0;
  };
  const TouchCurD c = line({0, 9, 0}, {4, 9, 8});
  EXPECT_TRUE(isUntouched(c, 1, 2, 1)) << "at z, not above";
  EXPECT_TRUE(isUntouched(c, 1, 1, -1));
  EXPECT_FALSE(isUntouched(c, 1, 3, -1));
  EXPECT_TRUE(isUntouched(c, 5, -9, 1)) << "no crossing";
  EXPECT_TRUE(isUntouched(c, 4, -9, 1)) << "the end on x is no crossing";
  EXPECT_FALSE(isUntouched(c, 0.00005F, -9, 1)) << "the start on x is";
  for (const int type : {163, 146, 156}) {
    EXPECT_TRUE(isUntouched(line({0, 9, 0}, {4, 9, 8}, type), 1, -9, 1));
  }
}

TEST(ProjectAlongX, keepsTheHeightAndDropsY) {
  randomRounds<RandomGeometry>(72, 1000, [&](RandomGeometry& random) {
    const Double3 a = random.point(9), b = random.point(9), p = random.point(9);
    if (std::fabs(a[2] - b[2]) < 0.1) {
      return;
    }
    Float3 out{};
    slProjToLineAlongXOnXZ(narrow(a), narrow(b), narrow(p), out);
    EXPECT_NEAR(out[2], p[2], 1e-3);
    EXPECT_EQ(out[1], 0.0F);
    EXPECT_NEAR(cross(widen(out) - a, b - a)[1], 0, 1e-2);
  });
}

TEST(ProjectAlongX, levelLinesGiveTheirNearerEndWithItsY) {
  Float3 out{};
  for (const float x : {0.0F, 4.9F, 5.0F, 20.0F}) {
    slProjToLineAlongXOnXZ(Float3{0, 1, 2}, Float3{10, 3, 2.0001F}, Float3{x, 0, 9}, out);
    EXPECT_EQ(out[1], x < 5 ? 1.0F : 3.0F) << "the second one when both are as near";
  }
}

}  // namespace
