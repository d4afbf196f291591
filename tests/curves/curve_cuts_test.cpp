// Curve elements against lines of constant x, and points carried along x.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <numbers>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "zel/core/constants.h"
#include "zel/curves/touch_cur.h"

namespace {

using zel::kPi;
using zel::kTwoPi;
using zel::test::bits;
using zel::test::Float3;
using zel::test::RandomGeometry;

constexpr float kUntouched = -77.0F;

struct Crossings {
  Crossings(TouchCurD& c, float x) {
    for (auto& row : out) {
      for (float& value : row) {
        value = kUntouched;
      }
    }
    EXPECT_EQ(slFindIntPnt(&c, x, out, &count), 1);
  }
  [[nodiscard]] float parameter(int i) const { return out[2][i]; }
  float out[3][3]{};
  int count = -1;
};

TouchCurD line(Float3 from, Float3 to, int type = 1) {
  TouchCurD c;
  slInitTouchCurD(&c);
  slSetLine(&c, type, from.data(), to.data());
  return c;
}

TouchCurD arc(float cx, float cz, float radius, float startAng, float endAng) {
  const float centre[]{cx, 5, cz};
  TouchCurD c;
  slInitTouchCurD(&c);
  slSetArc(&c, 156, 143, centre, centre, centre, radius, startAng, endAng);
  return c;
}

TEST(CutLine, endsOnTheLineComeBeforeACrossing) {
  TouchCurD c = line({1, 2, 3}, {1.00005F, 4, 5});
  const Crossings both(c, 1);
  EXPECT_EQ(both.count, 1);
  EXPECT_EQ(both.parameter(0), 0.0F) << "the start wins";
  EXPECT_EQ(both.out[0][2], 3.0F);

  c = line({0, 2, 3}, {1.00005F, 4, 5});
  const Crossings end(c, 1);
  EXPECT_EQ(end.parameter(0), 1.0F);
  EXPECT_EQ(end.out[0][0], 1.0F) << "x itself, not the end's";
  EXPECT_EQ(end.out[0][1], 4.0F);

  c = line({0, 2, 3}, {2, 4, 7});
  const Crossings between(c, 0.5F);
  EXPECT_EQ(between.count, 1);
  EXPECT_EQ(between.parameter(0), kUntouched) << "no parameter between the ends";
  EXPECT_EQ(between.out[0][1], 2.0F) << "the start's y";
  EXPECT_EQ(between.out[0][2], 4.0F);
}

TEST(CutLine, crossingNeedsAProductBelowTheTolerance) {
  TouchCurD c = line({-0.01F, 0, 0}, {0.0099F, 0, 1});
  EXPECT_EQ(Crossings(c, 0).count, 0) << "a crossing of 0.01 on both sides is missed";
  c = line({-0.01F, 0, 0}, {0.0102F, 0, 1});
  EXPECT_EQ(Crossings(c, 0).count, 1);
  c = line({1, 0, 0}, {2, 0, 1});
  EXPECT_EQ(Crossings(c, 0).count, 0);
}

TEST(CutLine, otherElementsHaveNoCrossing) {
  for (const int type : {163, 164, 146, 154, 155, 158, 159}) {
    TouchCurD c = line({-1, 0, 0}, {1, 0, 0}, type);
    EXPECT_EQ(Crossings(c, 0).count, 0) << type;
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
    const float radius = static_cast<float>(random.number(0.5, 5));
    const float from = static_cast<float>(random.number(0, 6.28));
    TouchCurD c =
        arc(static_cast<float>(random.number(-5, 5)), static_cast<float>(random.number(-5, 5)),
            radius, from, from + static_cast<float>(random.number(0.1, 6.2)));
    const float x = c.centre[0] + radius * static_cast<float>(random.number(-1.2, 1.2));
    const double part = std::fabs(x - c.centre[0]) / radius;
    const double atStart = c.centre[0] + radius * std::sin(c.startAng) - x;
    const double atEnd = c.centre[0] + radius * std::sin(c.endAng) - x;
    if (std::fabs(part - 1) < 0.01 || std::fabs(atStart) < 0.01 || std::fabs(atEnd) < 0.01) {
      continue;
    }
    const std::vector<double> expected = sampledCrossings(c, x);
    const Crossings found(c, x);
    ASSERT_EQ(found.count, static_cast<int>(expected.size())) << "round " << round;
    for (int i = 0; i < found.count; ++i) {
      ++crossings;
      EXPECT_NEAR(found.out[i][0], x, 1e-4);
      EXPECT_EQ(found.out[i][1], 5.0F);
      double nearest = 9;
      for (const double angle : expected) {
        nearest = std::min(nearest, std::fabs(angle - found.parameter(i)));
      }
      EXPECT_LT(nearest, 1e-3);
      EXPECT_NEAR(found.out[i][2], c.centre[2] + radius * std::cos(found.parameter(i)), 1e-4);
    }
  }
  EXPECT_GT(crossings, 1000);
}

TEST(CutArc, parametersAreTheTwoFloatsBehindTheTwoPoints) {
  TouchCurD c = arc(0, 0, 2, 0, kTwoPi);
  const Crossings found(c, 1);
  EXPECT_EQ(found.count, 2);
  EXPECT_NEAR(found.parameter(0), std::asin(0.5), 1e-6);
  EXPECT_NEAR(found.parameter(1), std::numbers::pi - std::asin(0.5), 1e-6);
  EXPECT_EQ(found.out[2][2], kUntouched);
  EXPECT_EQ(bits(found.parameter(1)),
            bits(static_cast<float>(double{kPi} - (double{zel::kHalfPi} - std::acos(0.5)))));
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
  TouchCurD c = arc(0, 0, 2, 6, 1);
  const Crossings found(c, 0.5F);
  EXPECT_EQ(c.endAng, 1.0F + kTwoPi);
  EXPECT_EQ(found.count, 1);
  EXPECT_NEAR(found.parameter(0), std::asin(0.25) + 2 * std::numbers::pi, 1e-5)
      << "the increased angle";
  TouchCurD within = arc(0, 0, 2, 1, 0.99995F);
  Crossings(within, 0.5F);
  EXPECT_EQ(within.endAng, 0.99995F) << "within the tolerance nothing is added";
}

TEST(CutArc, edgeOfTheCircleIsNotCrossed) {
  TouchCurD c = arc(0, 0, 1, 0, kTwoPi);
  EXPECT_EQ(Crossings(c, 0.9999F).count, 2);
  EXPECT_EQ(Crossings(c, std::nextafter(0.9999F, 1.0F)).count, 0);
  EXPECT_EQ(Crossings(c, -0.99995F).count, 0);
  EXPECT_EQ(Crossings(c, 1.5F).count, 0);
}

TEST(CutArc, anglesHaveTheToleranceToSpare) {
  const float angle = std::asin(0.5F);
  TouchCurD c = arc(0, 0, 2, angle + 0.00005F, 2);
  EXPECT_EQ(Crossings(c, 1).count, 1);
  c = arc(0, 0, 2, angle + 0.0002F, 2);
  EXPECT_EQ(Crossings(c, 1).count, 0);
}

/// An arc of the zx plane filled from the ends of `c` in the direction of travel.
TouchCurD refilled(const TouchCurD& c, int direction) {
  Float3 from, to;
  slGetStartPnt(&c, from.data());
  slGetCurveEndPnt(&c, to.data());
  TouchCurD filled;
  slInitTouchCurD(&filled);
  filled.type = 156;
  filled.direction = direction;
  slSetArcPara(&filled, from.data(), to.data(), c.centre, c.radius1);
  return filled;
}

TEST(CutArc, mirroredArcRefilledFromItsEndsHasMirroredCrossings) {
  RandomGeometry random(73);
  int crossings = 0;
  for (int round = 0; round < 2000; ++round) {
    TouchCurD c = arc(1, 2, 3, static_cast<float>(random.number(0.1, 2.9)), 0);
    c.endAng = static_cast<float>(random.number(3.3, 6.1));
    const float angles[]{c.startAng, c.endAng};
    for (float* p : {c.startPnt, c.endPnt}) {
      const float angle = angles[p == c.endPnt];
      p[0] = c.centre[0] + 3 * std::sin(angle);
      p[2] = c.centre[2] + 3 * std::cos(angle);
    }
    c.type = 146;
    c.direction = round % 2 == 0 ? 143 : 144;
    TouchCurD original = refilled(c, c.direction);
    TouchCurD image = c;
    const float axis[]{0, 0, 0.5F};
    slTouchCurDMirror(&image, axis, 0);
    image = refilled(image, c.direction);
    const float x = static_cast<float>(random.number(-1.9, 3.9));
    const Crossings before(original, x);
    const Crossings after(image, x);
    ASSERT_EQ(before.count, after.count) << "round " << round;
    float sum = 0;
    for (int i = 0; i < before.count; ++i, ++crossings) {
      sum += before.out[i][2] + after.out[i][2];
    }
    EXPECT_NEAR(sum, static_cast<float>(before.count), 1e-4);
  }
  EXPECT_GT(crossings, 2000);
}

TEST(KeepLineAbove, strictCrossingKeepsThePartToItsEnd) {
  for (const int type : {1, 164}) {
    const TouchCurD c = line({0, 9, 0}, {4, 9, 8}, type);
    TouchCurD out = line({-1, -1, -1}, {-1, -1, -1}, 0);
    EXPECT_EQ(slZxIntCur(&c, 1, 1.5F, 1, &out), 0);
    EXPECT_EQ(out.type, type);
    EXPECT_EQ(out.startPnt[0], 1.0F);
    EXPECT_EQ(out.startPnt[2], 2.0F);
    EXPECT_EQ(out.endPnt[0], 4.0F);
    EXPECT_EQ(out.endPnt[2], 8.0F);
    EXPECT_EQ(out.startPnt[1], -1.0F) << "y is not written";
    EXPECT_EQ(out.endPnt[1], -1.0F);
  }
}

TEST(KeepLineAbove, linesOnTheWrongSideOrOfOtherTypesLeaveTheOutput) {
  const TouchCurD untouched = line({-1, -1, -1}, {-1, -1, -1}, 0);
  const auto isUntouched = [&](const TouchCurD& c, float x, float z, int sense) {
    TouchCurD out = untouched;
    EXPECT_EQ(slZxIntCur(&c, x, z, sense, &out), 0);
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

TEST(KeepLineAbove, startOnXIsKeptWithTheGivenX) {
  const TouchCurD c = line({1.00005F, 9, 3}, {4, 9, 8});
  TouchCurD out = line({-1, -1, -1}, {-1, -1, -1}, 0);
  slZxIntCur(&c, 1, 0, 1, &out);
  EXPECT_EQ(out.startPnt[0], 1.0F);
  EXPECT_EQ(out.startPnt[2], 3.0F);
}

TEST(ProjectAlongX, keepsTheHeightAndDropsY) {
  RandomGeometry random(72);
  for (int round = 0; round < 1000; ++round) {
    const Float3 a = zel::test::narrow(random.point(9));
    const Float3 b = zel::test::narrow(random.point(9));
    const Float3 p = zel::test::narrow(random.point(9));
    if (std::fabs(a[2] - b[2]) < 0.1F) {
      continue;
    }
    Float3 out{};
    slProjToLineAlongXOnXZ(a.data(), b.data(), p.data(), out.data());
    EXPECT_NEAR(out[2], p[2], 1e-3);
    EXPECT_EQ(out[1], 0.0F);
    const double cross =
        (double{out[0]} - a[0]) * (b[2] - a[2]) - (double{out[2]} - a[2]) * (b[0] - a[0]);
    EXPECT_NEAR(cross, 0, 1e-2);
  }
}

TEST(ProjectAlongX, levelLinesGiveTheirNearerEndWithItsY) {
  const float a[]{0, 1, 2};
  const float b[]{10, 3, 2.0001F};
  Float3 out{};
  for (const float x : {0.0F, 4.9F, 5.0F, 20.0F}) {
    const float p[]{x, 0, 9};
    slProjToLineAlongXOnXZ(a, b, p, out.data());
    EXPECT_EQ(out[1], x < 5 ? 1.0F : 3.0F) << "the second one when both are as near";
  }
}

}  // namespace
