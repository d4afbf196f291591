// The filling of an arc's record from its ends, in the three planes.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "geometry/random_geometry.h"
#include "zel/core/constants.h"
#include "zel/curves/touch_cur.h"

namespace {

using zel::kTwoPi;
using namespace zel::test;

/// Fills an arc of one of the three planes between two angles, in the direction of travel.
struct PlaneArc {
  PlaneArc(int planeType, int direction, double from, double to, float climb = 0) {
    type = planeType;
    slInitTouchCurD(&record);
    record.type = planeType;
    record.direction = direction;
    p1 = narrow(pointAt(from, 0));
    p2 = narrow(pointAt(to, climb));
    const Float3 c = narrow(centre);
    result = slSetArcPara(&record, p1.data(), p2.data(), c.data(), 2.0F);
  }
  [[nodiscard]] Double3 pointAt(double angle, double climb) const {
    Double3 p = centre;
    const std::size_t u = static_cast<std::size_t>(type - 154) % 3;
    p[u] += 2 * std::cos(angle);
    p[(u + 1) % 3] += 2 * std::sin(angle);
    p[(u + 2) % 3] += climb;
    return p;
  }
  int type;
  Double3 centre{1, 2, 3};
  Float3 p1, p2;
  TouchCurD record;
  int result;
};

/// A random angle that keeps clear of the snapping at the ends of the first axis.
double clearAngle(RandomGeometry& random) {
  return random.number(0.03, 3.1) + (random.number(0, 1) < 0.5 ? 0 : std::numbers::pi);
}

TEST(SetArcPara, anglesGrowFromTheStoredStartToTheStoredEnd) {
  RandomGeometry random(66);
  for (int round = 0; round < 6000; ++round) {
    const double from = clearAngle(random);
    const double to = clearAngle(random);
    const int direction = round % 2 == 0 ? 143 : 144;
    const PlaneArc arc(154 + round % 3, direction, from, to);
    const double sweep = std::fmod(
        (direction == 143 ? to - from : from - to) + 2 * std::numbers::pi, 2 * std::numbers::pi);
    if (sweep < 0.001 || sweep > 2 * std::numbers::pi - 0.001) {
      continue;  // nearly the same point: see the case of its own
    }
    EXPECT_EQ(arc.result, 1);
    EXPECT_EQ(arc.record.radius1, 2.0F);
    EXPECT_NEAR(arc.record.startAng, direction == 143 ? from : to, 1e-4);
    EXPECT_NEAR(arc.record.endAng - arc.record.startAng, sweep, 2e-4) << from << " " << to;
    EXPECT_EQ(arc.record.startPnt[0], (direction == 143 ? arc.p1 : arc.p2)[0]);
    EXPECT_EQ(arc.record.endPnt[2], (direction == 143 ? arc.p2 : arc.p1)[2]);
  }
}

TEST(SetArcPara, endsCloseTogetherAreAShortArcOrNearlyAFullTurn) {
  for (int type = 154; type <= 156; ++type) {
    for (const double from : {0.5, 2.0, 3.5, 5.0}) {
      for (const double apart : {0.005, 0.05, 0.1}) {
        const PlaneArc shortArc(type, 143, from, from + apart);
        EXPECT_NEAR(shortArc.record.endAng - shortArc.record.startAng, apart, 1e-4);
        const PlaneArc longArc(type, 143, from + apart, from);
        EXPECT_NEAR(longArc.record.endAng - longArc.record.startAng, 2 * std::numbers::pi - apart,
                    1e-4);
      }
      const PlaneArc circle(type, 143, from, from);
      EXPECT_NEAR(circle.record.endAng - circle.record.startAng, 2 * std::numbers::pi, 1e-5);
    }
  }
}

TEST(SetArcPara, noRadiusMeansAFullTurn) {
  TouchCurD c;
  const float p[]{1, 2, 3};
  const float q[]{1, 2, 4};
  for (const float r : {0.0F, zel::kTolerance, -3.0F}) {
    slInitTouchCurD(&c);
    c.type = 154;
    c.direction = 143;
    EXPECT_EQ(slSetArcPara(&c, p, q, p, r), 1);
    if (r != 0.0F) {
      EXPECT_EQ(c.endAng - c.startAng, kTwoPi) << r;
    }
  }
}

/// Sweep of a forward arc of the xy plane about the origin.
float sweepOf(Float3 p1, Float3 p2, float r) {
  const float centre[]{0, 0, 0};
  TouchCurD c;
  slInitTouchCurD(&c);
  c.type = 154;
  c.direction = 143;
  slSetArcPara(&c, p1.data(), p2.data(), centre, r);
  return c.endAng - c.startAng;
}

TEST(SetArcPara, chordWithoutLengthOrAlongTheRadiusMeansAFullTurn) {
  const float tiny = 0.0008F;  // 0.1 rad of it are closer than the tolerance
  EXPECT_NEAR(sweepOf({tiny * std::cos(0.5F), tiny * std::sin(0.5F), 0},
                      {tiny * std::cos(0.6F), tiny * std::sin(0.6F), 0}, tiny),
              2 * std::numbers::pi + 0.1, 1e-3);
  EXPECT_EQ(sweepOf({0, 1, 0}, {0, 1.5F, 0}, 1), kTwoPi);
}

TEST(SetArcPara, climbAlongTheNormalMakesAHelix) {
  const PlaneArc aboutX(155, 143, 0.5, 2.0, 6.0F);
  EXPECT_EQ(aboutX.record.type, 158);
  EXPECT_NEAR(aboutX.record.radius2, 6.0 * 2 * std::numbers::pi / 1.5, 1e-3);
  const PlaneArc aboutY(156, 144, 0.5, 2.0, 6.0F);
  EXPECT_EQ(aboutY.record.type, 159);
  EXPECT_NEAR(aboutY.record.radius2, -6.0 * 2 * std::numbers::pi / (2 * std::numbers::pi - 1.5),
              1e-3);
  const PlaneArc aboutZ(154, 143, 0.5, 2.0, 6.0F);
  EXPECT_EQ(aboutZ.record.type, 154) << "the xy plane knows no helix";
  EXPECT_EQ(aboutZ.record.radius2, -1e18F);
  const PlaneArc flat(156, 143, 0.5, 2.0, 0.00005F);
  EXPECT_EQ(flat.record.type, 156);
}

TEST(SetArcPara, otherTypesKeepTheirAngles) {
  for (const int type : {1, 146, 153, 157, 158, 159}) {
    TouchCurD c;
    slInitTouchCurD(&c);
    c.type = type;
    const float p1[]{1, 2, 3};
    const float p2[]{4, 5, 6};
    EXPECT_EQ(slSetArcPara(&c, p1, p2, p1, 2.0F), 0) << type;
    EXPECT_EQ(c.startPnt[0], 4.0F) << "direction is not 143";
    EXPECT_EQ(c.radius1, 2.0F);
    EXPECT_EQ(c.startAng, -1e18F);
  }
}

}  // namespace
