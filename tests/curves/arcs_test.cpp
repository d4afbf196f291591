// Arcs from chords and angles, against plane geometry in double
// precision and against the stated formulas written out.

#include "zel/curves/arcs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/curves/touch_cur.h"

namespace {

using zel::kHalfPi;
using zel::kPi;
using zel::kTwoPi;
using namespace zel::test;

/// p turned about the centre in the xy plane, counter-clockwise.
Double3 turned(Double3 p, Double3 centre, double angle) {
  const Double3 d = p - centre, left{-d[1], d[0], 0};
  return centre + std::cos(angle) * d + std::sin(angle) * left;
}

/// What a call makes of a chord: a code, a length and a point, each -7 where none was written.
struct Found {
  bool operator==(const Found&) const = default;
  int code;
  float length = -7, x = -7, y = -7;
};

void PrintTo(const Found& f, std::ostream* out) {
  *out << f.code << ": " << f.length << ", (" << f.x << ", " << f.y << ")";
}

/// The chord of an arc that runs one way round: 143 counter-clockwise, 144 clockwise.
struct Chord {
  [[nodiscard]] Found centre(float r) const {
    Found f{};
    f.code = slCalArcCent(dir, x1, y1, x2, y2, r, &f.x, &f.y);
    return f;
  }
  [[nodiscard]] Found centreAndRadius(float angle) const {
    Found f{};
    f.code = slCalArcCentRadius(dir, x1, y1, x2, y2, angle, &f.length, &f.x, &f.y);
    return f;
  }
  [[nodiscard]] Found radiusPoint(float angle) const {
    Found f{};
    f.code = slCalArcRadiusPnt(dir, x1, y1, x2, y2, angle, &f.length, &f.x, &f.y);
    return f;
  }
  [[nodiscard]] Double3 first() const { return {x1, y1, 0}; }
  [[nodiscard]] Double3 second() const { return {x2, y2, 0}; }
  [[nodiscard]] double length() const { return norm(second() - first()); }

  int dir;
  float x1, y1, x2, y2;
};

/// A chord of a length that is no special case.
Chord randomChord(RandomGeometry& random, int dir) {
  return {dir, random.number(-9, 9), random.number(-9, 9), random.number(-9, 9),
          random.number(-9, 9)};
}

TEST(ArcCentre, liesOnTheSideThatSenseAndRadiusChoose) {
  randomRounds<RandomGeometry>(61, 4000, [&](RandomGeometry& random, int round) {
    const Chord chord = randomChord(random, round % 2 == 0 ? 143 : 144);
    const float r = static_cast<float>(chord.length() * random.number(0.55, 3.0)) *
                    (round % 4 < 2 ? 1.0F : -1.0F);
    const Found found = chord.centre(r);
    const Double3 centre{found.x, found.y, 0};
    ASSERT_EQ(found.code, 1);
    EXPECT_NEAR(norm(centre - chord.first()), std::fabs(r), 2e-5 * std::fabs(r) + 2e-6);
    EXPECT_NEAR(norm(centre - chord.second()), std::fabs(r), 2e-5 * std::fabs(r) + 2e-6);
    const bool left = cross(chord.second() - chord.first(), centre - chord.first())[2] > 0;
    EXPECT_EQ(left, (chord.dir == 143) == (r > 0));
  });
}

TEST(ArcCentre, pointsTooFarApartOrCoincident) {
  const Chord chord{143, 0, 0, 2, 0}, tiny{143, 5, 6, 5, 6.0001F}, none{143, 5, 6, 5, 6};
  EXPECT_EQ(chord.centre(0.9F), (Found{0}));
  EXPECT_EQ(chord.centre(1.0F), (Found{1, -7, 1, 0}));
  EXPECT_EQ(chord.centre(0.99995F).code, 1) << "within the tolerance";
  EXPECT_EQ((Chord{143, 0, 0, 2 * zel::kTolerance, 0}.centre(0)), (Found{1, -7, 0, 0}));
  EXPECT_EQ(tiny.centre(-2.0F), (Found{1, -7, 3, 6}));
  EXPECT_EQ(none.centre(0.0F), (Found{1, -7, 5, 6}));
}

TEST(ArcCentreAndRadiusPoint, turnOnePointOfTheChordByTheAngle) {
  randomRounds<RandomGeometry>(62, 4000, [&](RandomGeometry& random, int round) {
    const Chord chord = randomChord(random, round % 2 == 0 ? 143 : 144);
    const float angle = random.number(0.05, 6.2) * (round % 4 < 2 ? 1.0F : -1.0F);
    const double turn = chord.dir == 143 ? std::fabs(angle) : -std::fabs(angle);

    const Found arc = chord.centreAndRadius(angle);
    const Double3 centre{arc.x, arc.y, 0};
    const double r = std::fabs(arc.length);
    ASSERT_EQ(arc.code, 1);
    EXPECT_LT(norm(turned(chord.first(), centre, turn) - chord.second()), 3e-5 * (1 + r));
    EXPECT_EQ(arc.length < 0, angle < 0);
    EXPECT_NEAR(r, norm(chord.first() - centre), 3e-5 * r);

    const Found end = chord.radiusPoint(angle);
    ASSERT_EQ(end.code, 1);
    EXPECT_NEAR(end.length, chord.length(), 2e-6 * chord.length());
    EXPECT_LT(norm(Double3{end.x, end.y, 0} - turned(chord.first(), chord.second(), turn)), 3e-5);
  });
}

TEST(ArcCentreAndRadiusPoint, smallAnglesAndShortChordsHaveTheirOwnAnswers) {
  const Chord chord{143, 0, 0, 2, 0}, shortest{143, 0, 0, 0.0002F, 0};
  const Found half = chord.centreAndRadius(kPi);
  EXPECT_EQ(half, (Found{1, 1, 1, half.y}));
  EXPECT_NEAR(half.y, 0.0F, 1e-7) << "half a circle centres on the chord";
  for (const float angle : {0.0F, 0.0002F, -0.0002F, kTwoPi, NAN}) {
    EXPECT_EQ(chord.centreAndRadius(angle), (Found{0})) << angle;
  }
  EXPECT_EQ(shortest.centreAndRadius(1.0F), (Found{0}));
  EXPECT_EQ((Chord{143, 1, 2, 1.00005F, 2}.radiusPoint(1.0F)), (Found{0}));
  const Chord justEnough{143, 0, 0, 5.00000206e-5F, 8.66025293e-5F};
  EXPECT_EQ(justEnough.radiusPoint(1.0F).length, zel::kTolerance);
  EXPECT_EQ((Chord{143, 1, 2, 4, 6}.radiusPoint(0.0002F)), (Found{1, 5, 1, 2}));
}

TEST(ArcFormulas, areEvaluatedInDoubleAndRoundedWhereStated) {
  randomRounds<RandomGeometry>(64, 3000, [&](RandomGeometry& random, int round) {
    const Chord c = randomChord(random, round % 2 == 0 ? 143 : 144);
    const float angle = random.number(0.1, 6.1);
    const double s = c.dir == 143 ? 1.0 : -1.0;
    const float a = static_cast<float>((double{c.y1} - c.y2) * s);
    const float b = static_cast<float>((double{c.x2} - c.x1) * s);
    const double half = std::sqrt(double{a} * a + double{b} * b) * 0.5;
    const float h = static_cast<float>(half);
    const double bigR = double{h} / static_cast<float>(std::sin(angle * 0.5));
    const double ua = a * 0.5 / h;
    const Found arc = c.centreAndRadius(angle);
    EXPECT_EQ(bits(arc.length), bits(static_cast<float>(bigR)));
    EXPECT_EQ(bits(arc.x), bits(static_cast<float>(bigR * ua * std::cos(angle * 0.5) +
                                                   (double{c.x1} + c.x2) * 0.5)));

    const float radius = static_cast<float>(half * 1.5);
    const double k = std::sqrt(double{radius} * radius - half * half) / half * 0.5;
    EXPECT_EQ(bits(c.centre(radius).y),
              bits(static_cast<float>((double{c.y1} + c.y2) * 0.5 + k * b)));

    const double dx = double{c.x2} - c.x1, dy = double{c.y2} - c.y1;
    const float length = static_cast<float>(std::sqrt(dx * dx + dy * dy));
    const double sn = static_cast<float>(std::sin(angle * 0.5) * length);
    const double cs = static_cast<float>(std::cos(angle * 0.5) * length);
    const double t1 = s < 0 ? (cs * c.y1 - cs * c.y2 - sn * c.x1 + sn * c.x2) / length / length
                            : (dy * cs - sn * c.x1 + sn * c.x2) / length / length;
    const double w = s < 0 ? t1 * cs - c.y1 + c.y2 : c.y2 - (t1 * cs + c.y1);
    const float u = static_cast<float>(w / sn);
    const Found end = c.radiusPoint(angle);
    EXPECT_EQ(bits(end.x), bits(static_cast<float>(c.x1 + 2 * t1 * sn)));
    EXPECT_EQ(bits(end.y), bits(static_cast<float>(c.y1 + 2 * u * sn)));
  });
}

TEST(ArcAngle, runsFromTheFirstAxisTowardTheSecondAndSnapsNearTheFirst) {
  for (int degrees = 2; degrees < 359; ++degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const Float3 p = narrow(Double3{3, 4, 0} + 2 * flatDirection(angle));
    EXPECT_NEAR(slGetArcAng2(3, 4, p[0], p[1], 2), angle, 3e-5) << degrees;
  }
  EXPECT_FLOAT_EQ(slGetArcAng2(0, 0, 0, -1, 1), 4.712389F);
  EXPECT_EQ(slGetArcAng2(0, 0, 1, 0.01F, 1), 0.0F);
  EXPECT_EQ(bits(slGetArcAng2(0, 0, 1, -0.01F, 1)), bits(kTwoPi)) << "a full turn, not 0";
  EXPECT_EQ(bits(slGetArcAng2(0, 0, -1, 0.01F, 1)), bits(kPi));
  EXPECT_EQ(slGetArcAng2(0, 0, 5, 1, 1), 0.0F) << "beyond the circle";
  EXPECT_EQ(slGetArcAng2(0, 0, 1, -1, 0), kTwoPi) << "below a circle without a radius";
  EXPECT_NEAR(slGetArcAng2(0, 0, 0.5F, 0.8660254F, -1), 4 * std::numbers::pi / 3, 1e-6)
      << "a negative radius turns both axes round";
}

TEST(DirectionToZ, isMeasuredInThePlaneOfTheMode) {
  randomRounds<RandomGeometry>(65, 1000, [&](RandomGeometry& random, int round) {
    const double angle = random.number(0.05, 3.0) + (round % 2 == 0 ? 0 : 3.2);
    const Double3 a = random.point(5);
    const Double3 inXz = a + 3.0 * Double3{std::sin(angle), 0, std::cos(angle)};
    const Double3 inYz = a + 3.0 * Double3{0, -std::sin(angle), std::cos(angle)};
    EXPECT_NEAR(slGetDirectAngleToZ(1, narrow(a), narrow(inXz)), angle, 1e-4);
    EXPECT_NEAR(slGetDirectAngleToZ(0, narrow(a), narrow(inYz)), angle, 1e-4);
  });
  const Float3 p{1, 2, 3};
  EXPECT_EQ(slGetDirectAngleToZ(1, p, Float3{1, 2, 5}), 0.0F);
  EXPECT_FLOAT_EQ(slGetDirectAngleToZ(1, p, p), kHalfPi) << "no direction counts as +x";
}

}  // namespace
