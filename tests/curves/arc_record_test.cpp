// The filling of an arc's record from its ends, in the three planes.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/curves/touch_cur.h"

namespace {

using zel::kTwoPi;
using namespace zel::test;

constexpr double kTurn = 2 * std::numbers::pi;

/// An arc of one of the three planes, filled from its ends in the direction of travel.
struct FilledArc {
  FilledArc(int type, int direction, Float3 from, Float3 to, Float3 centre, float radius)
      : p1(from), p2(to) {
    slInitTouchCurD(&record);
    record.type = type;
    record.direction = direction;
    result = slSetArcPara(&record, p1, p2, centre, radius);
  }
  [[nodiscard]] float sweep() const { return record.endAng - record.startAng; }

  Float3 p1, p2;
  TouchCurD record;
  int result;
};

/// An arc of radius 2 about (1, 2, 3) between two angles, which climbs along its normal.
FilledArc planeArc(int type, int direction, double from, double to, double climb = 0) {
  const Double3 centre{1, 2, 3};
  const auto pointAt = [&](double angle, double height) {
    Double3 p = centre;
    const std::size_t u = static_cast<std::size_t>(type - 154) % 3;
    p[u] += 2 * std::cos(angle);
    p[(u + 1) % 3] += 2 * std::sin(angle);
    p[(u + 2) % 3] += height;
    return narrow(p);
  };
  return {type, direction, pointAt(from, 0), pointAt(to, climb), narrow(centre), 2.0F};
}

/// A random angle that keeps clear of the snapping at the ends of the first axis.
double clearAngle(RandomGeometry& random) {
  return random.number(0.03, 3.1) + (random.number(0, 1) < 0.5 ? 0 : std::numbers::pi);
}

TEST(SetArcPara, anglesGrowFromTheStoredStartToTheStoredEnd) {
  randomRounds<RandomGeometry>(66, 6000, [&](RandomGeometry& random, int round) {
    const double from = clearAngle(random), to = clearAngle(random);
    const bool forward = round % 2 == 0;
    const FilledArc arc = planeArc(154 + round % 3, forward ? 143 : 144, from, to);
    const double sweep = std::fmod((forward ? to - from : from - to) + kTurn, kTurn);
    if (sweep < 0.001 || sweep > kTurn - 0.001) {
      return;  // nearly the same point: see the case of its own
    }
    EXPECT_EQ(arc.result, 1);
    EXPECT_EQ(arc.record.radius1, 2.0F);
    EXPECT_NEAR(arc.record.startAng, forward ? from : to, 1e-4);
    EXPECT_NEAR(arc.sweep(), sweep, 2e-4) << from << " " << to;
    EXPECT_EQ(widen(arc.record.startPnt), widen(forward ? arc.p1 : arc.p2));
    EXPECT_EQ(widen(arc.record.endPnt), widen(forward ? arc.p2 : arc.p1));
  });
}

TEST(SetArcPara, endsCloseTogetherAreAShortArcOrNearlyAFullTurn) {
  for (int type = 154; type <= 156; ++type) {
    for (const double from : {0.5, 2.0, 3.5, 5.0}) {
      for (const double apart : {0.005, 0.05, 0.1}) {
        EXPECT_NEAR(planeArc(type, 143, from, from + apart).sweep(), apart, 1e-4);
        EXPECT_NEAR(planeArc(type, 143, from + apart, from).sweep(), kTurn - apart, 1e-4);
      }
      EXPECT_NEAR(planeArc(type, 143, from, from).sweep(), kTurn, 1e-5);
    }
  }
}

TEST(SetArcPara, whatHasNoRadiusOrNoChordToSpeakOfIsAFullTurn) {
  const auto sweep = [](Float3 from, Float3 to, float r) {
    return FilledArc(154, 143, from, to, {0, 0, 0}, r).sweep();
  };
  for (const float r : {zel::kTolerance, -3.0F}) {
    EXPECT_EQ(FilledArc(154, 143, {1, 2, 3}, {1, 2, 4}, {1, 2, 3}, r).sweep(), kTwoPi) << r;
  }
  EXPECT_EQ(FilledArc(154, 143, {1, 2, 3}, {1, 2, 4}, {1, 2, 3}, 0).result, 1);
  EXPECT_EQ(sweep({0, 1, 0}, {0, 1.5F, 0}, 1), kTwoPi) << "a chord along the radius";
  EXPECT_EQ(sweep({6e-5F, 3e-4F, 0}, {6e-5F, 9e-4F, 0}, zel::kTolerance), kTwoPi);
  EXPECT_EQ(sweep({0.6F, 3, 0}, {0.6F, 9, 0}, 1), 0.0F) << "one angle, ends far apart";
  EXPECT_EQ(FilledArc(156, 143, {3, 0, 0.6F}, {9, 0, 0.6F}, {0, 0, 0}, 1).sweep(), kTwoPi)
      << "the zx plane knows no arc without a sweep";
  const double tiny = 0.0008;  // 0.1 rad of it are closer than the tolerance
  EXPECT_NEAR(sweep(narrow(tiny * flatDirection(0.5)), narrow(tiny * flatDirection(0.6)), 0.0008F),
              kTurn + 0.1, 1e-3);
}

TEST(SetArcPara, climbAlongTheNormalMakesAHelix) {
  const auto expectRecord = [](const FilledArc& arc, int type, double pitch, double tolerance) {
    EXPECT_EQ(arc.record.type, type);
    EXPECT_NEAR(arc.record.radius2, pitch, tolerance);
  };
  expectRecord(planeArc(155, 143, 0.5, 2.0, 6.0), 158, 6.0 * kTurn / 1.5, 1e-3);
  expectRecord(planeArc(156, 144, 0.5, 2.0, 6.0), 159, -6.0 * kTurn / (kTurn - 1.5), 1e-3);
  expectRecord(planeArc(154, 143, 0.5, 2.0, 6.0), 154, -1e18F, 0);  // the xy plane knows no helix
  EXPECT_EQ(planeArc(156, 143, 0.5, 2.0, 0.00005).record.type, 156) << "flat";
}

TEST(SetArcPara, otherTypesKeepTheirAngles) {
  for (const int type : {1, 146, 153, 157, 158, 159}) {
    const FilledArc c(type, 0, {1, 2, 3}, {4, 5, 6}, {1, 2, 3}, 2.0F);
    EXPECT_EQ(c.result, 0) << type;
    EXPECT_EQ(c.record.startPnt[0], 4.0F) << "direction is not 143";
    EXPECT_EQ(c.record.radius1, 2.0F);
    EXPECT_EQ(c.record.startAng, -1e18F);
  }
}

}  // namespace
