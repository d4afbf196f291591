// The record of a line or an arc, its ends in the direction of travel, and how it is moved.

#include "zel/curves/touch_cur.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <numbers>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "zel/core/constants.h"

namespace {

using namespace zel::test;

Float3 pointAt(const float* p) { return {p[0], p[1], p[2]}; }

bool sameBytes(const TouchCurD& a, const TouchCurD& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

TouchCurD emptyRecord() {
  TouchCurD c;
  slInitTouchCurD(&c);
  return c;
}

/// A line from (1, 2, 3) to (4, 5, 6) with a centre of (7, 8, 9).
TouchCurD numberedRecord(int type, int direction = 143) {
  TouchCurD c = emptyRecord();
  const float p1[]{1, 2, 3};
  const float p2[]{4, 5, 6};
  const float centre[]{7, 8, 9};
  slSetArc(&c, type, direction, p1, centre, p2, 2.0F, 0.5F, 1.0F);
  return c;
}

/// The arc of a profile between two angles about a centre, as type 146.
TouchCurD profileArc(const float (&centre)[3], float radius, float from, float to) {
  const auto onCircle = [&](float angle) {
    return narrow({centre[0] + radius * std::sin(static_cast<double>(angle)), centre[1],
                   centre[2] + radius * std::cos(static_cast<double>(angle))});
  };
  TouchCurD c = emptyRecord();
  slSetArc(&c, 146, 143, onCircle(from).data(), centre, onCircle(to).data(), radius, from, to);
  return c;
}

TEST(TouchCur, emptyRecordIsMarkedInEveryField) {
  const TouchCurD c = emptyRecord();
  EXPECT_EQ(c.type, -2147483647);
  EXPECT_EQ(c.direction, -2147483647);
  for (const float* field : {c.centre, c.startPnt, c.endPnt, c.auxPnt1, c.auxPnt2}) {
    EXPECT_EQ(pointAt(field), (Float3{-1e18F, -1e18F, -1e18F}));
  }
  for (const float field : {c.radius1, c.radius2, c.startAng, c.endAng}) {
    EXPECT_EQ(field, -1e18F);
  }
}

TEST(TouchCur, fieldsAreSetAndOthersLeftAlone) {
  TouchCurD line = emptyRecord();
  const float p1[]{1, 2, 3};
  const float p2[]{4, 5, 6};
  EXPECT_EQ(slSetLine(&line, 164, p1, p2), 1);
  TouchCurD expected = emptyRecord();
  expected.type = 164;
  std::memcpy(expected.startPnt, p1, sizeof p1);
  std::memcpy(expected.endPnt, p2, sizeof p2);
  EXPECT_TRUE(sameBytes(line, expected));

  const TouchCurD arc = numberedRecord(156, 144);
  EXPECT_EQ(pointAt(arc.startPnt), (Float3{1, 2, 3})) << "stored as given in either direction";
  EXPECT_EQ(arc.radius1, 2.0F);
  EXPECT_EQ(arc.radius2, 2.0F);
  EXPECT_EQ(arc.auxPnt1[0], -1e18F);
  TouchCurD copy;
  EXPECT_EQ(slTouchCurDCopy(arc, &copy), 1);
  EXPECT_TRUE(sameBytes(arc, copy));
}

TEST(TouchCur, fieldsOfTheRecordMayBeItsOwnArguments) {
  TouchCurD c = numberedRecord(1);
  slSetLine(&c, 1, c.endPnt, c.startPnt);
  EXPECT_EQ(pointAt(c.startPnt), (Float3{4, 5, 6}));
  EXPECT_EQ(pointAt(c.endPnt), (Float3{1, 2, 3}));
  slTouchCurDMove(c.endPnt, &c);
  EXPECT_EQ(pointAt(c.startPnt), (Float3{5, 7, 9}));
  EXPECT_EQ(pointAt(c.endPnt), (Float3{2, 4, 6}));
}

TEST(TouchCur, travelRunsBackwardOnlyOnArcs) {
  const Float3 first{1, 2, 3};
  const Float3 second{4, 5, 6};
  for (const int type : {1, 163, 164, 146, 154, 156, 159, 0, -5}) {
    for (const int direction : {143, 144, 0}) {
      const TouchCurD c = numberedRecord(type, direction);
      const bool isLine = type == 1 || type == 163 || type == 164;
      const bool forward = isLine || direction == 143;
      Float3 start, start2, end, end2;
      EXPECT_EQ(slGetStartPnt(&c, start.data()) + slGetCurveStartPnt(&c, start2.data()), 2);
      EXPECT_EQ(slGetCurveEndPnt(&c, end.data()) + GetCurveEndPnt(&c, end2.data()), 2);
      EXPECT_EQ(start, forward ? first : second) << type << " " << direction;
      EXPECT_EQ(end, forward ? second : first) << type << " " << direction;
      EXPECT_EQ(start, start2);
      EXPECT_EQ(end, end2);
    }
  }
}

TEST(TouchCur, settersWriteWhatTheGettersRead) {
  const float p[]{-1, -2, -3};
  for (const int direction : {143, 144}) {
    for (const auto set : {slSetCurveStartPnt, slSetStartPnt}) {
      TouchCurD c = numberedRecord(156, direction);
      EXPECT_EQ(set(&c, p), 1);
      EXPECT_EQ(pointAt(direction == 143 ? c.startPnt : c.endPnt), pointAt(p));
      EXPECT_EQ(pointAt(direction == 143 ? c.endPnt : c.startPnt)[0], direction == 143 ? 4 : 1);
    }
    for (const auto set : {slSetCurveEndPnt, slSetEndPnt}) {
      TouchCurD c = numberedRecord(156, direction);
      EXPECT_EQ(set(&c, p), 1);
      EXPECT_EQ(pointAt(direction == 143 ? c.endPnt : c.startPnt), pointAt(p));
    }
  }
}

TEST(TouchCur, elementWithoutExtentMovesAsAWhole) {
  const float p[]{5, 5, 5};
  // A difference of exactly the tolerance still counts as none, on each axis for itself.
  for (const float apart : {0.0F, zel::kTolerance, std::nextafter(zel::kTolerance, 1.0F)}) {
    for (const auto set : {slSetStartPnt, slSetEndPnt}) {
      TouchCurD c = emptyRecord();
      const float p1[]{0, 0, 0};
      const float p2[]{apart, -apart, apart};
      slSetLine(&c, 1, p1, p2);
      const bool collapsed = apart <= zel::kTolerance;
      EXPECT_EQ(set(&c, p), collapsed ? 0 : 1);
      EXPECT_EQ(c.startPnt[0] == 5 && c.endPnt[0] == 5, collapsed);
    }
  }
  TouchCurD c = emptyRecord();
  slSetLine(&c, 1, p, p);
  const float q[]{6, 6, 6};
  EXPECT_EQ(slSetCurveStartPnt(&c, q), 1) << "knows no such rule";
  EXPECT_EQ(c.endPnt[0], 5);
}

TEST(TouchCurMove, centreStaysOnlyForPlainLines) {
  const float d[]{1, 1, 1};
  for (const int type : {1, 163, 164, 146, 156, -2147483647}) {
    TouchCurD c = numberedRecord(type);
    slTouchCurDMove(d, &c);
    EXPECT_EQ(pointAt(c.startPnt), (Float3{2, 3, 4}));
    EXPECT_EQ(pointAt(c.endPnt), (Float3{5, 6, 7}));
    EXPECT_EQ(c.centre[1], type == 1 ? 8 : 9) << type;
  }
}

TEST(TouchCurMirror, anglesStayThoseOfTheMirroredPoints) {
  RandomGeometry random(51);
  for (int round = 0; round < 2000; ++round) {
    const float centre[]{static_cast<float>(random.number(-5, 5)), 0.5F,
                         static_cast<float>(random.number(-5, 5))};
    const float from = static_cast<float>(random.number(0.01, 6.2));
    const float to = from + static_cast<float>(random.number(0.01, 6.0));
    TouchCurD c = profileArc(centre, 2.0F, from, to > 6.28F ? 6.28F : to);
    const TouchCurD before = c;
    const float axis[]{9, 9, static_cast<float>(random.number(-5, 5))};
    EXPECT_EQ(slTouchCurDMirror(&c, axis, 0), 0);
    EXPECT_EQ(c.direction, 144);
    EXPECT_GE(c.startAng, c.endAng);
    EXPECT_FLOAT_EQ(c.centre[2], 2 * axis[2] - before.centre[2]);
    const float angles[]{c.startAng, c.endAng};
    const float* points[]{c.startPnt, c.endPnt};
    for (int i = 0; i < 2; ++i) {
      EXPECT_NEAR(c.centre[0] + 2 * std::sin(angles[i]), points[i][0], 2e-5);
      EXPECT_NEAR(c.centre[2] + 2 * std::cos(angles[i]), points[i][2], 2e-5);
    }
    slTouchCurDMirror(&c, axis, 0);
    EXPECT_EQ(c.direction, 143);
    EXPECT_LE(c.startAng, c.endAng);
    EXPECT_NEAR(std::remainder(c.startAng - before.startAng, 2 * std::numbers::pi), 0, 1e-5);
  }
}

TEST(TouchCurMirror, resultIsAlwaysZeroAndOnlyModeZeroMirrors) {
  const float axis[]{0, 0, 0};
  TouchCurD c = numberedRecord(146);
  EXPECT_EQ(slTouchCurDMirror(&c, axis, 1), 0);
  EXPECT_TRUE(sameBytes(c, numberedRecord(146)));
  EXPECT_EQ(slTouchCurDMirror(&c, axis, 0), 0);
  EXPECT_EQ(bits(c.startAng), bits(3.1415925F - 0.5F));
  EXPECT_EQ(bits(c.endAng), bits(3.1415925F - 1.0F));
  for (const int type : {1, 154, 156, 163, 164}) {
    TouchCurD other = numberedRecord(type);
    slTouchCurDMirror(&other, axis, 0);
    EXPECT_EQ(other.startPnt[2], -3.0F);
    EXPECT_EQ(other.endPnt[2], -6.0F);
    EXPECT_EQ(other.centre[2], 9.0F);
    EXPECT_EQ(other.direction, 143);
    EXPECT_EQ(other.startAng, 0.5F);
  }
}

TEST(TouchCurMirror, whateverIsNotForwardBecomesForward) {
  const float axis[]{0, 0, 0};
  for (const int direction : {144, 0, -2147483647}) {
    TouchCurD c = numberedRecord(146, direction);
    slTouchCurDMirror(&c, axis, 0);
    EXPECT_EQ(c.direction, 143);
    EXPECT_EQ(c.endAng, (3.1415925F - 1.0F) + 6.283185F) << "start exceeded the end";
  }
}

TEST(TouchCurTransCoord, lineTakesItsEndAlongOnlyInMode55) {
  const float p[]{10, 20, 30};
  Float3 out{};
  TouchCurD c = numberedRecord(1);
  EXPECT_EQ(slTouchCurTransCoord(&c, 55, nullptr, p, out.data()), 1);
  EXPECT_EQ(pointAt(c.startPnt), (Float3{10, 20, 30}));
  EXPECT_EQ(out, (Float3{13, 23, 33}));
  EXPECT_EQ(pointAt(c.endPnt), out);
  c = numberedRecord(1);
  EXPECT_EQ(slTouchCurTransCoord(&c, 54, nullptr, p, out.data()), 1);
  EXPECT_EQ(pointAt(c.startPnt), (Float3{10, 20, 30}));
  EXPECT_EQ(out, (Float3{4, 5, 6}));
}

TEST(TouchCurTransCoord, carriedEndThatMeetsTheOldStartCollapsesTheLine) {
  const float p[]{-2, -1, 0};  // start minus the line's vector
  Float3 out{};
  TouchCurD c = numberedRecord(1);
  EXPECT_EQ(slTouchCurTransCoord(&c, 55, nullptr, p, out.data()), 1);
  EXPECT_EQ(out, pointAt(p));
  EXPECT_EQ(pointAt(c.startPnt), out);
  EXPECT_EQ(pointAt(c.endPnt), out);
}

TEST(TouchCurTransCoord, arcIsMovedToBeginAtThePoint) {
  const float p[]{10, 20, 30};
  for (int type = 150; type <= 165; ++type) {
    for (const int direction : {143, 144, 7}) {
      TouchCurD c = numberedRecord(type, direction);
      Float3 out{};
      const bool isArc = type >= 154 && type <= 159;
      EXPECT_EQ(slTouchCurTransCoord(&c, 55, nullptr, p, out.data()), isArc ? 1 : 0);
      if (!isArc) {
        EXPECT_TRUE(sameBytes(c, numberedRecord(type, direction)));
        EXPECT_EQ(out, pointAt(p));
        continue;
      }
      Float3 start, end;
      slGetStartPnt(&c, start.data());
      slGetCurveEndPnt(&c, end.data());
      const float step = direction == 143 ? 3.0F : -3.0F;
      EXPECT_EQ(start, pointAt(p));
      EXPECT_EQ(end, (Float3{10 + step, 20 + step, 30 + step}));
      EXPECT_EQ(out, end);
      const float first = direction == 143 ? 1.0F : 4.0F;
      EXPECT_EQ(c.centre[0], 7.0F + 10.0F - first);
    }
  }
}

TEST(TouchCurOffset, lineMovesPerpendicularTowardTheReference) {
  RandomGeometry random(52);
  for (int round = 0; round < 2000; ++round) {
    TouchCurD c = numberedRecord(round % 2 == 0 ? 1 : 164);
    const Double3 start = random.point(10);
    const Double3 along = random.direction();
    const Double3 ref = random.direction();
    slSetLine(&c, c.type, narrow(start).data(), narrow(start + 5.0 * along).data());
    const TouchCurD before = c;
    const float dist = static_cast<float>(random.number(-3, 3));
    slTouchCurDOffset(dist, narrow(ref).data(), &c);
    if (norm(cross(along, ref)) < 0.01) {
      continue;
    }
    const Double3 aside = unit(ref - dot(ref, along) * along);
    for (int axis = 0; axis < 3; ++axis) {
      const double step = dist * aside[static_cast<std::size_t>(axis)];
      EXPECT_NEAR(c.startPnt[axis], before.startPnt[axis] + step, 2e-4);
      EXPECT_NEAR(c.endPnt[axis], before.endPnt[axis] + step, 2e-4);
      EXPECT_NEAR(c.centre[axis], before.centre[axis] + (c.type == 1 ? 0 : step), 2e-4);
    }
  }
}

TEST(TouchCurOffset, arcGrowsTowardTheSideOfTheReferenceAtItsStart) {
  const float centre[]{1, 2, 3};
  const float outward[]{1, 0, 0};
  const float inward[]{-1, 0, 0};
  const TouchCurD before = profileArc(centre, 2.0F, zel::kHalfPi, zel::kPi);
  TouchCurD c = before;
  slTouchCurDOffset(0.5F, outward, &c);
  EXPECT_EQ(c.radius1, 2.5F);
  EXPECT_FLOAT_EQ(c.startPnt[0], 3.5F);
  EXPECT_FLOAT_EQ(c.endPnt[2], 0.5F);
  EXPECT_EQ(c.radius2, 2.0F);
  EXPECT_EQ(pointAt(c.centre), pointAt(before.centre));
  c = before;
  slTouchCurDOffset(0.5F, inward, &c);
  EXPECT_EQ(c.radius1, 1.5F);
  EXPECT_FLOAT_EQ(c.startPnt[0], 2.5F);
  EXPECT_FLOAT_EQ(c.endPnt[2], 1.5F) << "the side is decided once, at the start";
}

TEST(TouchCurOffset, otherElementsAndUndecidedSidesAreLeftAlone) {
  const float ref[]{0, 1, 0};
  for (const int type : {163, 154, 155, 156, 158, 159, 0}) {
    TouchCurD c = numberedRecord(type);
    slTouchCurDOffset(1.0F, ref, &c);
    EXPECT_TRUE(sameBytes(c, numberedRecord(type))) << type;
  }
  const float centre[]{0, 0, 0};
  const TouchCurD arc = profileArc(centre, 2.0F, 0.5F, 1.0F);
  TouchCurD c = arc;
  slTouchCurDOffset(1.0F, ref, &c);  // perpendicular to the arc's plane
  EXPECT_TRUE(sameBytes(c, arc));
  TouchCurD line = numberedRecord(1);
  const float alongTheLine[]{2, 2, 2};
  slTouchCurDOffset(1.0F, alongTheLine, &line);
  EXPECT_TRUE(sameBytes(line, numberedRecord(1)));
}

TEST(PointToCircle, isMovedRadially) {
  RandomGeometry random(53);
  for (int round = 0; round < 1000; ++round) {
    const float centre[]{static_cast<float>(random.number(-9, 9)),
                         static_cast<float>(random.number(-9, 9))};
    float p[]{static_cast<float>(random.number(-9, 9)), static_cast<float>(random.number(-9, 9))};
    const double angle = std::atan2(p[1] - centre[1], p[0] - centre[0]);
    EXPECT_EQ(slCalCirPnt(centre, 3.0F, p), 1);
    EXPECT_NEAR(p[0], centre[0] + 3 * std::cos(angle), 1e-4);
    EXPECT_NEAR(p[1], centre[1] + 3 * std::sin(angle), 1e-4);
  }
  const float centre[]{1, 2};
  float p[]{1, 2};
  EXPECT_EQ(slCalCirPnt(centre, 3.0F, p), 0);
  EXPECT_EQ(p[0], 4.0F);
  EXPECT_EQ(p[1], 2.0F);
}

}  // namespace
