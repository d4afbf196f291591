// The record of a line or an arc, its ends in the direction of travel, and how it is moved.

#include "zel/curves/touch_cur.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"

namespace {

using namespace zel::test;

constexpr Float3 kFirst{1, 2, 3}, kSecond{4, 5, 6}, kCentre{7, 8, 9}, kOrigin{0, 0, 0};

Float3 pointAt(const float* p) { return {p[0], p[1], p[2]}; }

bool sameBytes(const TouchCurD& a, const TouchCurD& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

TouchCurD emptyRecord() {
  TouchCurD c;
  slInitTouchCurD(&c);
  return c;
}

TouchCurD lineOf(Float3 from, Float3 to, int type = 1) {
  TouchCurD c = emptyRecord();
  EXPECT_EQ(slSetLine(&c, type, from, to), 1);
  return c;
}

/// A record from (1, 2, 3) to (4, 5, 6) with a centre of (7, 8, 9).
TouchCurD numberedRecord(int type, int direction = 143) {
  TouchCurD c = emptyRecord();
  slSetArc(&c, type, direction, kFirst, kCentre, kSecond, 2.0F, 0.5F, 1.0F);
  return c;
}

/// The arc of a profile between two angles about a centre, with a radius of 2 and type 146.
TouchCurD profileArc(Double3 centre, float from, float to) {
  const auto onCircle = [&](double angle) {
    return narrow(centre + 2.0 * Double3{std::sin(angle), 0, std::cos(angle)});
  };
  TouchCurD c = emptyRecord();
  slSetArc(&c, 146, 143, onCircle(from), narrow(centre), onCircle(to), 2.0F, from, to);
  return c;
}

/// The ends in the direction of travel, each by both of its functions.
std::pair<Float3, Float3> endsOf(const TouchCurD& c) {
  Float3 start, start2, end, end2;
  EXPECT_EQ(slGetStartPnt(&c, start) + slGetCurveStartPnt(&c, start2), 2);
  EXPECT_EQ(slGetCurveEndPnt(&c, end) + GetCurveEndPnt(&c, end2), 2);
  EXPECT_EQ(start, start2);
  EXPECT_EQ(end, end2);
  return {start, end};
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
  TouchCurD expected = emptyRecord();
  expected.type = 164;
  std::copy_n(kFirst.data(), 3, expected.startPnt);
  std::copy_n(kSecond.data(), 3, expected.endPnt);
  EXPECT_TRUE(sameBytes(lineOf(kFirst, kSecond, 164), expected));

  expected.type = 156;
  expected.direction = 144;  // the ends are stored as given in either direction
  std::copy_n(kCentre.data(), 3, expected.centre);
  expected.radius1 = expected.radius2 = 2.0F;
  expected.startAng = 0.5F;
  expected.endAng = 1.0F;
  TouchCurD copy;
  EXPECT_EQ(slTouchCurDCopy(numberedRecord(156, 144), &copy), 1);
  EXPECT_TRUE(sameBytes(copy, expected));
}

TEST(TouchCur, fieldsOfTheRecordMayBeItsOwnArguments) {
  TouchCurD c = numberedRecord(1);
  slSetLine(&c, 1, c.endPnt, c.startPnt);
  EXPECT_EQ(endsOf(c), std::pair(kSecond, kFirst));
  slTouchCurDMove(c.endPnt, &c);
  EXPECT_EQ(endsOf(c), std::pair(Float3{5, 7, 9}, Float3{2, 4, 6}));
}

TEST(TouchCur, travelRunsBackwardOnlyOnArcs) {
  for (const int type : {1, 163, 164, 146, 154, 156, 159, 0, -5}) {
    for (const int direction : {143, 144, 0}) {
      const bool forward = type == 1 || type == 163 || type == 164 || direction == 143;
      EXPECT_EQ(endsOf(numberedRecord(type, direction)),
                forward ? std::pair(kFirst, kSecond) : std::pair(kSecond, kFirst))
          << type << " " << direction;
    }
  }
}

TEST(TouchCur, settersWriteWhatTheGettersRead) {
  const Float3 p{-1, -2, -3};
  for (const int direction : {143, 144}) {
    const TouchCurD before = numberedRecord(156, direction);
    const auto [start, end] = endsOf(before);
    for (const auto set : {slSetCurveStartPnt, slSetStartPnt}) {
      TouchCurD c = before;
      EXPECT_EQ(set(&c, p), 1);
      EXPECT_EQ(endsOf(c), std::pair(p, end));
    }
    for (const auto set : {slSetCurveEndPnt, slSetEndPnt}) {
      TouchCurD c = before;
      EXPECT_EQ(set(&c, p), 1);
      EXPECT_EQ(endsOf(c), std::pair(start, p));
    }
  }
}

TEST(TouchCur, elementWithoutExtentMovesAsAWhole) {
  const Float3 p{5, 5, 5};
  // A difference of exactly the tolerance still counts as none, on each axis for itself.
  for (const float apart : {0.0F, zel::kTolerance, std::nextafter(zel::kTolerance, 1.0F)}) {
    for (const auto set : {slSetStartPnt, slSetEndPnt}) {
      TouchCurD c = lineOf(kOrigin, {apart, -apart, apart});
      const bool collapsed = apart <= zel::kTolerance;
      EXPECT_EQ(set(&c, p), collapsed ? 0 : 1);
      EXPECT_EQ(endsOf(c) == std::pair(p, p), collapsed);
    }
  }
  TouchCurD c = lineOf(p, p);
  EXPECT_EQ(slSetCurveStartPnt(&c, kFirst), 1) << "knows no such rule";
  EXPECT_EQ(pointAt(c.endPnt), p);
}

TEST(TouchCurMove, centreStaysOnlyForPlainLines) {
  for (const int type : {1, 163, 164, 146, 156, -2147483647}) {
    TouchCurD c = numberedRecord(type);
    slTouchCurDMove(Float3{1, 1, 1}, &c);
    EXPECT_EQ(pointAt(c.startPnt), (Float3{2, 3, 4}));
    EXPECT_EQ(pointAt(c.endPnt), (Float3{5, 6, 7}));
    EXPECT_EQ(pointAt(c.centre), type == 1 ? kCentre : (Float3{8, 9, 10})) << type;
  }
}

TEST(TouchCurMirror, anglesStayThoseOfTheMirroredPoints) {
  randomRounds<RandomGeometry>(51, 2000, [&](RandomGeometry& random) {
    const Double3 centre = random.point(5);
    const float from = random.number(0.01, 6.2), to = from + random.number(0.01, 6.0);
    const Float3 axis{9, 9, random.number(-5, 5)};
    TouchCurD c = profileArc(centre, from, std::min(to, 6.28F));
    EXPECT_EQ(slTouchCurDMirror(&c, axis, 0), 0);
    EXPECT_EQ(c.direction, 144);
    EXPECT_GE(c.startAng, c.endAng);
    EXPECT_NEAR(c.centre[2], 2 * axis[2] - centre[2], 2e-6);
    const TouchCurD image = profileArc(widen(c.centre), c.startAng, c.endAng);
    EXPECT_LT(apart(c.startPnt, widen(image.startPnt)), 3e-5);
    EXPECT_LT(apart(c.endPnt, widen(image.endPnt)), 3e-5);
    slTouchCurDMirror(&c, axis, 0);
    EXPECT_EQ(c.direction, 143);
    EXPECT_LE(c.startAng, c.endAng);
    EXPECT_NEAR(std::remainder(c.startAng - from, 2 * std::numbers::pi), 0, 1e-5);
  });
}

TEST(TouchCurMirror, resultIsAlwaysZeroAndOnlyModeZeroMirrors) {
  TouchCurD c = numberedRecord(146);
  EXPECT_EQ(slTouchCurDMirror(&c, kOrigin, 1), 0);
  EXPECT_TRUE(sameBytes(c, numberedRecord(146)));
  EXPECT_EQ(slTouchCurDMirror(&c, kOrigin, 0), 0);
  EXPECT_EQ(bits(c.startAng), bits(3.1415925F - 0.5F));
  EXPECT_EQ(bits(c.endAng), bits(3.1415925F - 1.0F));
  for (const int type : {1, 154, 156, 163, 164}) {
    TouchCurD other = numberedRecord(type), expected = other;
    slTouchCurDMirror(&other, kOrigin, 0);
    expected.startPnt[2] = -3.0F;
    expected.endPnt[2] = -6.0F;
    EXPECT_TRUE(sameBytes(other, expected)) << type;
  }
}

TEST(TouchCurMirror, whateverIsNotForwardBecomesForward) {
  for (const int direction : {144, 0, -2147483647}) {
    TouchCurD c = numberedRecord(146, direction);
    slTouchCurDMirror(&c, kOrigin, 0);
    EXPECT_EQ(c.direction, 143);
    EXPECT_EQ(c.endAng, (3.1415925F - 1.0F) + 6.283185F) << "start exceeded the end";
  }
}

TEST(TouchCurTransCoord, lineTakesItsEndAlongOnlyInMode55) {
  const auto expectCarried = [](int mode, Float3 to, Float3 end) {
    Float3 out{};
    TouchCurD c = numberedRecord(1);
    EXPECT_EQ(slTouchCurTransCoord(&c, mode, nullptr, to, out), 1);
    EXPECT_EQ(endsOf(c), std::pair(to, end));
    EXPECT_EQ(out, end);
  };
  expectCarried(55, {10, 20, 30}, {13, 23, 33});
  expectCarried(54, {10, 20, 30}, kSecond);
  // The carried end meets the old start, and the line collapses.
  Float3 out{};
  TouchCurD c = numberedRecord(1);
  const Float3 p{-2, -1, 0};
  EXPECT_EQ(slTouchCurTransCoord(&c, 55, nullptr, p, out), 1);
  EXPECT_EQ(endsOf(c), std::pair(p, p));
  EXPECT_EQ(out, p);
}

TEST(TouchCurTransCoord, arcIsMovedToBeginAtThePoint) {
  const Float3 p{10, 20, 30};
  for (int type = 150; type <= 165; ++type) {
    for (const int direction : {143, 144, 7}) {
      TouchCurD c = numberedRecord(type, direction);
      Float3 out{};
      const bool isArc = type >= 154 && type <= 159;
      EXPECT_EQ(slTouchCurTransCoord(&c, 55, nullptr, p, out), isArc ? 1 : 0);
      if (!isArc) {
        EXPECT_TRUE(sameBytes(c, numberedRecord(type, direction)));
        EXPECT_EQ(out, p);
        continue;
      }
      const bool forward = direction == 143;
      EXPECT_EQ(out, forward ? (Float3{13, 23, 33}) : (Float3{7, 17, 27}));
      EXPECT_EQ(endsOf(c), std::pair(p, out));
      EXPECT_EQ(c.centre[0], 7.0F + 10.0F - (forward ? 1.0F : 4.0F));
    }
  }
}

TEST(TouchCurMoves, differencesAreNotRoundedBeforeTheyAreAdded) {
  RandomGeometry random(53);
  const auto carried = [](Float3 p, Float3 to, Float3 from, double factor = 1) {
    return narrow(widen(p) + factor * (widen(to) - widen(from)));
  };
  for (int round = 0; round < 2000; ++round) {
    const Float3 start = narrow(random.point(9)), end = narrow(random.point(0.1));
    const Float3 centre = narrow(random.point(3)), to = narrow(random.point(7));
    for (const int type : {1, 156}) {
      TouchCurD c = emptyRecord();
      slSetArc(&c, type, 143, start, centre, end, 1, 0, 1);
      Float3 out{};
      slTouchCurTransCoord(&c, 55, nullptr, to, out);
      EXPECT_EQ(out, carried(end, to, start));
      EXPECT_EQ(pointAt(c.centre), type == 1 ? centre : carried(centre, to, start));
    }
    // Of the offset, the radius at the start is a float vector; the one at the end is not.
    const float dist = random.number(-2, 2), radius = random.number(1, 5);
    const Float3 toStart = narrow(widen(start) - widen(centre));
    TouchCurD c = emptyRecord();
    slSetArc(&c, 146, 143, start, centre, end, radius, 0, 1);
    slTouchCurDOffset(dist, toStart, &c);  // outward
    const double factor = double{dist} / radius;
    EXPECT_EQ(pointAt(c.startPnt), carried(start, toStart, Float3{}, factor));
    EXPECT_EQ(pointAt(c.endPnt), carried(end, end, centre, factor));
  }
}

TEST(TouchCurOffset, lineMovesPerpendicularTowardTheReference) {
  randomRounds<RandomGeometry>(52, 2000, [&](RandomGeometry& random, int round) {
    const auto [along, ref, normal] = random.obliqueDirections(0.01);
    const Double3 start = random.point(10);
    const float dist = random.number(-3, 3);
    TouchCurD c = numberedRecord(round % 2 == 0 ? 1 : 164);
    slSetLine(&c, c.type, narrow(start), narrow(start + 5.0 * along));
    slTouchCurDOffset(dist, narrow(ref), &c);
    const Double3 step = dist * unit(ref - dot(ref, along) * along);
    EXPECT_LT(apart(c.startPnt, start + step), 3e-4);
    EXPECT_LT(apart(c.endPnt, start + 5.0 * along + step), 3e-4);
    EXPECT_LT(apart(c.centre, widen(kCentre) + (c.type == 1 ? 0 : 1) * step), 3e-4);
  });
}

TEST(TouchCurOffset, arcGrowsTowardTheSideOfTheReferenceAtItsStart) {
  // From (3, 2, 3) to (1, 2, 1): the side is decided once, at the start.
  const TouchCurD before = profileArc({1, 2, 3}, zel::kHalfPi, zel::kPi);
  for (const float side : {1.0F, -1.0F}) {
    TouchCurD c = before;
    slTouchCurDOffset(0.5F, Float3{side, 0, 0}, &c);
    EXPECT_EQ(c.radius1, 2.0F + 0.5F * side);
    EXPECT_EQ(c.radius2, 2.0F);
    EXPECT_LT(apart(c.startPnt, {3 + 0.5 * side, 2, 3}), 1e-6);
    EXPECT_LT(apart(c.endPnt, {1, 2, 1 - 0.5 * side}), 1e-6);
    EXPECT_EQ(pointAt(c.centre), pointAt(before.centre));
  }
}

TEST(TouchCurOffset, otherElementsAndUndecidedSidesAreLeftAlone) {
  const auto expectLeftAlone = [](const TouchCurD& before, Float3 ref) {
    TouchCurD c = before;
    slTouchCurDOffset(1.0F, ref, &c);
    EXPECT_TRUE(sameBytes(c, before)) << before.type;
  };
  for (const int type : {163, 154, 155, 156, 158, 159, 0}) {
    expectLeftAlone(numberedRecord(type), {0, 1, 0});
  }
  expectLeftAlone(profileArc({0, 0, 0}, 0.5F, 1.0F), {0, 1, 0});  // perpendicular to its plane
  expectLeftAlone(numberedRecord(1), {2, 2, 2});                  // along the line
}

TEST(PointToCircle, isMovedRadially) {
  randomRounds<RandomGeometry>(53, 1000, [&](RandomGeometry& random) {
    const Double3 centre = random.flatPoint(9), before = random.flatPoint(9);
    Float3 p = narrow(before);
    EXPECT_EQ(slCalCirPnt(narrow(centre), 3.0F, p), 1);
    EXPECT_LT(apart(p, centre + 3 * unit(before - centre)), 1e-4);
  });
  Float3 p = kFirst;
  EXPECT_EQ(slCalCirPnt(kFirst, 3.0F, p), 0);
  EXPECT_EQ(p, (Float3{4, 2, 3})) << "the centre itself goes along +x";
}

}  // namespace
