// Arcs from chords and angles, against plane geometry in double
// precision and against the stated formulas written out.

#include "zel/curves/arcs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "zel/core/constants.h"
#include "zel/curves/touch_cur.h"

namespace {

using zel::kHalfPi;
using zel::kPi;
using zel::kTwoPi;
using namespace zel::test;

struct Point2 {
  double x, y;
};

double distanceOf(Point2 a, Point2 b) { return std::hypot(a.x - b.x, a.y - b.y); }

/// p turned about `centre`, counter-clockwise.
Point2 turned(Point2 p, Point2 centre, double angle) {
  const double dx = p.x - centre.x;
  const double dy = p.y - centre.y;
  return {centre.x + dx * std::cos(angle) - dy * std::sin(angle),
          centre.y + dx * std::sin(angle) + dy * std::cos(angle)};
}

void expectNear(Point2 a, Point2 b, double tolerance) { EXPECT_LT(distanceOf(a, b), tolerance); }

/// Random chords of a length that is no special case.
struct Chord {
  explicit Chord(RandomGeometry& random)
      : x1(value(random)), y1(value(random)), x2(value(random)), y2(value(random)) {}
  static float value(RandomGeometry& random) { return static_cast<float>(random.number(-9, 9)); }
  [[nodiscard]] Point2 first() const { return {x1, y1}; }
  [[nodiscard]] Point2 second() const { return {x2, y2}; }
  [[nodiscard]] double length() const { return distanceOf(first(), second()); }
  /// Positive when p lies to the left.
  [[nodiscard]] double side(Point2 p) const {
    return (double{x2} - x1) * (p.y - y1) - (double{y2} - y1) * (p.x - x1);
  }
  float x1, y1, x2, y2;
};

TEST(ArcCentre, liesOnTheSideThatSenseAndRadiusChoose) {
  RandomGeometry random(61);
  for (int round = 0; round < 4000; ++round) {
    const Chord chord(random);
    const int dir = round % 2 == 0 ? 143 : 144;
    const float r = static_cast<float>(chord.length() * random.number(0.55, 3.0)) *
                    (round % 4 < 2 ? 1.0F : -1.0F);
    float cx = 0;
    float cy = 0;
    ASSERT_EQ(slCalArcCent(dir, chord.x1, chord.y1, chord.x2, chord.y2, r, &cx, &cy), 1);
    EXPECT_NEAR(distanceOf(chord.first(), {cx, cy}), std::fabs(r), 2e-5 * std::fabs(r) + 2e-6);
    EXPECT_NEAR(distanceOf(chord.second(), {cx, cy}), std::fabs(r), 2e-5 * std::fabs(r) + 2e-6);
    const bool left = (dir == 143) == (r > 0);
    EXPECT_EQ(chord.side({cx, cy}) > 0, left);
  }
}

TEST(ArcCentre, pointsTooFarApartOrCoincident) {
  float cx = -7;
  float cy = -7;
  EXPECT_EQ(slCalArcCent(143, 0, 0, 2, 0, 0.9F, &cx, &cy), 0);
  EXPECT_EQ(cx, -7.0F) << "untouched";
  EXPECT_EQ(slCalArcCent(143, 0, 0, 2, 0, 1.0F, &cx, &cy), 1);
  EXPECT_EQ(cx, 1.0F);
  EXPECT_EQ(cy, 0.0F);
  EXPECT_EQ(slCalArcCent(143, 0, 0, 2, 0, 0.99995F, &cx, &cy), 1) << "within the tolerance";
  EXPECT_EQ(slCalArcCent(143, 5, 6, 5, 6.0001F, -2.0F, &cx, &cy), 1);
  EXPECT_EQ(cx, 3.0F);
  EXPECT_EQ(cy, 6.0F);
  EXPECT_EQ(slCalArcCent(143, 5, 6, 5, 6, 0.0F, &cx, &cy), 1);
  EXPECT_EQ(cx, 5.0F);
}

TEST(ArcCentreRadius, turnsTheFirstPointIntoTheSecond) {
  RandomGeometry random(62);
  for (int round = 0; round < 4000; ++round) {
    const Chord chord(random);
    const int dir = round % 2 == 0 ? 143 : 144;
    const double angle = random.number(0.05, 6.2) * (round % 4 < 2 ? 1 : -1);
    float r = 0;
    float cx = 0;
    float cy = 0;
    ASSERT_EQ(slCalArcCentRadius(dir, chord.x1, chord.y1, chord.x2, chord.y2,
                                 static_cast<float>(angle), &r, &cx, &cy),
              1);
    const double turn = dir == 143 ? std::fabs(angle) : -std::fabs(angle);
    expectNear(turned(chord.first(), {cx, cy}, turn), chord.second(), 3e-5 * (1 + std::fabs(r)));
    EXPECT_EQ(r < 0, angle < 0);
    EXPECT_NEAR(std::fabs(r), distanceOf(chord.first(), {cx, cy}), 3e-5 * std::fabs(r));
  }
}

TEST(ArcCentreRadius, halfCircleCentresOnTheChord) {
  float r = -7;
  float cx = -7;
  float cy = -7;
  EXPECT_EQ(slCalArcCentRadius(143, 0, 0, 2, 0, kPi, &r, &cx, &cy), 1);
  EXPECT_EQ(r, 1.0F);
  EXPECT_EQ(cx, 1.0F);
  EXPECT_NEAR(cy, 0.0F, 1e-7);
  r = -7;
  for (const float angle : {0.0F, 0.0002F, -0.0002F, kTwoPi, NAN}) {
    EXPECT_EQ(slCalArcCentRadius(143, 0, 0, 2, 0, angle, &r, &cx, &cy), 0) << angle;
  }
  EXPECT_EQ(slCalArcCentRadius(143, 0, 0, 0.0002F, 0, 1.0F, &r, &cx, &cy), 0);
  EXPECT_EQ(r, -7.0F) << "untouched";
}

TEST(ArcRadiusPoint, turnsTheFirstPointAboutTheSecond) {
  RandomGeometry random(63);
  for (int round = 0; round < 4000; ++round) {
    const Chord chord(random);
    const int dir = round % 2 == 0 ? 143 : 144;
    const double angle = random.number(0.05, 6.2) * (round % 4 < 2 ? 1 : -1);
    float len = 0;
    float px = 0;
    float py = 0;
    ASSERT_EQ(slCalArcRadiusPnt(dir, chord.x1, chord.y1, chord.x2, chord.y2,
                                static_cast<float>(angle), &len, &px, &py),
              1);
    EXPECT_NEAR(len, chord.length(), 2e-6 * chord.length());
    const double turn = dir == 143 ? std::fabs(angle) : -std::fabs(angle);
    expectNear({px, py}, turned(chord.first(), chord.second(), turn), 3e-5);
  }
}

TEST(ArcRadiusPoint, smallAnglesKeepThePointAndShortChordsGiveNothing) {
  float len = -7;
  float px = -7;
  float py = -7;
  EXPECT_EQ(slCalArcRadiusPnt(143, 1, 2, 1.00005F, 2, 1.0F, &len, &px, &py), 0);
  EXPECT_EQ(len, -7.0F);
  EXPECT_EQ(slCalArcRadiusPnt(143, 1, 2, 4, 6, 0.0002F, &len, &px, &py), 1);
  EXPECT_EQ(len, 5.0F);
  EXPECT_EQ(px, 1.0F);
  EXPECT_EQ(py, 2.0F);
}

TEST(ArcFormulas, areEvaluatedInDoubleAndRoundedWhereStated) {
  RandomGeometry random(64);
  for (int round = 0; round < 3000; ++round) {
    const Chord c(random);
    const float angle = static_cast<float>(random.number(0.1, 6.1));
    const double s = round % 2 == 0 ? 1.0 : -1.0;
    const float a = static_cast<float>((double{c.y1} - c.y2) * s);
    const float b = static_cast<float>((double{c.x2} - c.x1) * s);
    const float h = static_cast<float>(std::sqrt(double{a} * a + double{b} * b) * 0.5);
    const float t = static_cast<float>(std::sin(angle * 0.5));
    const double bigR = double{h} / t;
    const double ua = a * 0.5 / h;
    float r = 0;
    float cx = 0;
    float cy = 0;
    slCalArcCentRadius(s > 0 ? 143 : 144, c.x1, c.y1, c.x2, c.y2, angle, &r, &cx, &cy);
    EXPECT_EQ(bits(r), bits(static_cast<float>(bigR)));
    EXPECT_EQ(bits(cx), bits(static_cast<float>(bigR * ua * std::cos(angle * 0.5) +
                                                (double{c.x1} + c.x2) * 0.5)));

    const double half = std::sqrt(double{a} * a + double{b} * b) * 0.5;
    const float radius = static_cast<float>(half * 1.5);
    const double k = std::sqrt(double{radius} * radius - half * half) / half * 0.5;
    slCalArcCent(s > 0 ? 143 : 144, c.x1, c.y1, c.x2, c.y2, radius, &cx, &cy);
    EXPECT_EQ(bits(cy), bits(static_cast<float>((double{c.y1} + c.y2) * 0.5 + k * b)));

    const double dx = double{c.x2} - c.x1;
    const double dy = double{c.y2} - c.y1;
    const float length = static_cast<float>(std::sqrt(dx * dx + dy * dy));
    const double sn = static_cast<float>(std::sin(angle * 0.5) * length);
    const double cs = static_cast<float>(std::cos(angle * 0.5) * length);
    const double t1 = s < 0 ? (cs * c.y1 - cs * c.y2 - sn * c.x1 + sn * c.x2) / length / length
                            : (dy * cs - sn * c.x1 + sn * c.x2) / length / length;
    const double w = s < 0 ? t1 * cs - c.y1 + c.y2 : c.y2 - (t1 * cs + c.y1);
    const float u = static_cast<float>(w / sn);
    float len = 0;
    slCalArcRadiusPnt(s > 0 ? 143 : 144, c.x1, c.y1, c.x2, c.y2, angle, &len, &cx, &cy);
    EXPECT_EQ(bits(cx), bits(static_cast<float>(c.x1 + 2 * t1 * sn)));
    EXPECT_EQ(bits(cy), bits(static_cast<float>(c.y1 + 2 * u * sn)));
  }
}

TEST(ArcAngle, runsFromTheFirstAxisTowardTheSecond) {
  for (int degrees = 2; degrees < 359; ++degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const float p[]{static_cast<float>(3 + 2 * std::cos(angle)),
                    static_cast<float>(4 + 2 * std::sin(angle))};
    EXPECT_NEAR(slGetArcAng2(3, 4, p[0], p[1], 2), angle, 3e-5) << degrees;
  }
  EXPECT_FLOAT_EQ(slGetArcAng2(0, 0, 0, -1, 1), 4.712389F);
}

TEST(ArcAngle, snapsNearTheFirstAxis) {
  EXPECT_EQ(slGetArcAng2(0, 0, 1, 0.01F, 1), 0.0F);
  EXPECT_EQ(bits(slGetArcAng2(0, 0, 1, -0.01F, 1)), bits(kTwoPi)) << "a full turn, not 0";
  EXPECT_EQ(bits(slGetArcAng2(0, 0, -1, 0.01F, 1)), bits(kPi));
  EXPECT_EQ(slGetArcAng2(0, 0, 5, 1, 1), 0.0F) << "beyond the circle";
  EXPECT_NEAR(slGetArcAng2(0, 0, 0.5F, 0.8660254F, -1), 4 * std::numbers::pi / 3, 1e-6)
      << "a negative radius turns both axes round";
}

TEST(DirectionToZ, isMeasuredInThePlaneOfTheMode) {
  RandomGeometry random(65);
  for (int round = 0; round < 1000; ++round) {
    const double angle = random.number(0.05, 3.0) + (round % 2 == 0 ? 0 : 3.2);
    const Double3 a = random.point(5);
    const Double3 inXz = a + 3.0 * Double3{std::sin(angle), 0, std::cos(angle)};
    const Double3 inYz = a + 3.0 * Double3{0, -std::sin(angle), std::cos(angle)};
    EXPECT_NEAR(slGetDirectAngleToZ(1, narrow(a).data(), narrow(inXz).data()), angle, 1e-4);
    EXPECT_NEAR(slGetDirectAngleToZ(0, narrow(a).data(), narrow(inYz).data()), angle, 1e-4);
  }
  const float p[]{1, 2, 3};
  EXPECT_FLOAT_EQ(slGetDirectAngleToZ(1, p, p), kHalfPi) << "no direction counts as +x";
}

}  // namespace
