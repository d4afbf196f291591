#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/geometry/intersections.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

TEST(LineIntersection, infiniteLinesMeetWhereTheyWereBuiltToMeet) {
  randomRounds<RandomGeometry>(101, 3000, [&](RandomGeometry& random) {
    const auto [u, v, normal] = random.obliqueDirections(0.35);
    const Double3 meeting = random.point(3);
    const double expectedT = random.number(-4, 4), expectedS = random.number(1, 4);
    const Double3 a0 = meeting - expectedT * u, b0 = meeting - expectedS * v;
    for (const double height : {0.0, double{random.number(0.1, 2)}}) {
      float t = 0, s = 0;
      EXPECT_EQ(slIntersectInfLines(narrow(a0), narrow(u), narrow(b0 + height * normal), narrow(v),
                                    &t, &s),
                height == 0 ? 1 : -1);
      EXPECT_NEAR(t, expectedT, 1e-4);
      EXPECT_NEAR(s, expectedS, 1e-4);
    }
  });
}

TEST(LineIntersection, parallelInfiniteLinesScaleWhatTheCallerHad) {
  const Float3 a0{0, 0, 0}, u{1, 0, 0}, apart{0, 1, 0}, same{5, 0.00005F, 0};
  float t = 2, s = 3;
  EXPECT_EQ(slIntersectInfLines(a0, u, apart, u, &t, &s), 0);
  EXPECT_EQ(t, 20.0F);
  EXPECT_EQ(s, 30.0F);
  EXPECT_EQ(slIntersectInfLines(a0, u, same, u, &t, &s), INT_MAX);
  EXPECT_EQ(t, 200.0F);
}

TEST(LineIntersection, rayMeetsSegmentInThePlane) {
  randomRounds<RandomGeometry>(102, 5000, [&](RandomGeometry& random) {
    const double angle = random.number(-3, 3), turn = random.number(0.3, 2.8);
    const double t0 = random.number(-3, 3), s0 = random.number(-0.5, 1.5);
    const Double3 u = flatDirection(angle), meeting = random.point(3);
    const Double3 e = random.number(1, 4) * flatDirection(angle + turn);
    float t, s;
    const int result =
        slIntersectLines2D(narrow(meeting - t0 * u), narrow(u), narrow(meeting - s0 * e),
                           narrow(meeting + (1 - s0) * e), &t, &s);
    EXPECT_NEAR(t, t0, 2e-5);
    EXPECT_NEAR(s, s0, 2e-5);
    if (std::fabs(t0) > 0.001 && std::fabs(s0) > 0.001 && std::fabs(s0 - 1) > 0.001) {
      EXPECT_EQ(result, t0 > 0 && s0 > 0 && s0 < 1 ? 1 : 0);
    }
  });
}

TEST(LineIntersection, rayAndSegmentEndsHaveTheTolerance) {
  float t, s;
  const auto result = [&](float x, float y) {
    return slIntersectLines2D(Float3{x, y}, Float3{0, 1}, Float3{0, 0}, Float3{1, 0}, &t, &s);
  };
  EXPECT_EQ(result(std::nextafter(1.0001F, 0.0F), -1), 1);
  EXPECT_EQ(result(1.0001F, -1), 0);
  EXPECT_EQ(s, 1.0001F);
  EXPECT_EQ(result(-kTolerance, -1), 0);
  EXPECT_EQ(result(-0.00009F, -1), 1);
  EXPECT_EQ(result(0.5F, kTolerance), 0);
  EXPECT_EQ(t, -kTolerance);
  EXPECT_EQ(result(0.5F, 0.00009F), 1);
}

TEST(LineIntersection, parallelRayMeetsTheNearEndWithoutLookingAside) {
  const auto expectMeeting = [](float from, float to, int code, float t, float s) {
    float foundT = 9, foundS = 9;
    const Float3 ray{0, 7}, along{1, 0};
    EXPECT_EQ(slIntersectLines2D(ray, along, Float3{from}, Float3{to}, &foundT, &foundS), code);
    EXPECT_EQ(foundT, t) << from << " to " << to;
    EXPECT_EQ(foundS, s) << from << " to " << to;
  };
  expectMeeting(3, 5, INT_MAX, 3, 0);
  expectMeeting(-2, 5, INT_MAX, 0, 1);
  expectMeeting(-0.00005F, 5, INT_MAX, 0, 0);
  expectMeeting(-2, -4, 0, 9, 9);
  float t, s;
  const Float3 p{0, 7}, u{1, 0}, ahead{3, 0};
  EXPECT_EQ(slIntersectLines2D(p, u, ahead, ahead, &t, &s), 0) << "a segment without length";
}

TEST(LineIntersection, segmentPointOfAPerpendicularLineIsTheClosest) {
  randomRounds<RandomGeometry>(103, 2000, [&](RandomGeometry& random) {
    const auto [u, v, normal] = random.obliqueDirections(0.35);
    const Double3 b0 = random.point(2), e = 3.0 * normal;
    const double s = random.number(-0.5, 1.5), back = random.number(0.5, 2);
    const Double3 a0 = b0 + s * e + back * u + random.number(-2, 2) * cross(u, normal);
    float out[3];
    const int result =
        slIntersecLines(narrow(a0), narrow(u), narrow(b0), narrow(b0 + e), out, 0.25F);
    if (std::fabs(s) > 0.001 && std::fabs(s - 1) > 0.001) {
      ASSERT_EQ(result, s > 0 && s < 1 ? 1 : 0);
      EXPECT_LT(result == 1 ? apart(out, b0 + s * e) : 0.0, 1e-4);
    }
  });
}

TEST(LineIntersection, obliqueLinesKeepTheStatedSigns) {
  // |e|^2 = 4, |u|^2 = 2, m = -2, D = 4, A = 2, B = 4: k = 5, and the foot would be at s = -1.
  const Float3 u{1, 1, 0}, b0{0, 0, 0}, b1{2, 0, 0}, a0{1, 3, 7};
  float out[3]{8, 8, 8};
  EXPECT_EQ(slIntersecLines(a0, u, b0, b1, out, 0.5F), 0) << "s = (2 * 2 + 4 * 2) / 4 = 3";
  const Float3 nearer{0.25F, 0.5F, 7};  // A = 0.5, B = 0.75, k = 1, s = 0.625
  EXPECT_EQ(slIntersecLines(nearer, u, b0, b1, out, 0.5F), 1);
  EXPECT_EQ(out[0], 1.25F);
  const Float3 behind{1, -3, 0};  // A = 2, B = -2, k < 0
  EXPECT_EQ(slIntersecLines(behind, u, b0, b1, out, 0.75F), 1);
  EXPECT_EQ(out[0], 1.5F);
  EXPECT_EQ(slIntersecLines(behind, u, b0, b1, out, 1.0002F), 0);
  const Float3 x{1, 0, 0};
  EXPECT_EQ(slIntersecLines(a0, x, b0, b1, out, 0.5F), 0) << "parallel, ahead";
  EXPECT_EQ(slIntersecLines(b0, x, b0, b1, out, 0.5F), 1) << "parallel, B = 0";
  EXPECT_EQ(out[0], 1.0F);
}

TEST(LineIntersection, polygonCrossesOrTouchesAtAVertex) {
  const float poly[6][2]{{0, 0}, {1, 1}, {2, 0}, {3, -1}, {1, -2}, {0, 0}};
  const float fromTop[4][2]{{1, 1}, {2, 0}, {0, 0}, {1, 1}};
  const Float3 p{-1, 0}, top{-1, 1}, bottom{-1, -2};
  EXPECT_EQ(slGetIntersectType(p, 2, 6, poly, 1), 1);
  EXPECT_EQ(slGetIntersectType(top, 1, 6, poly, 1), 2);
  EXPECT_EQ(slGetIntersectType(bottom, 4, 6, poly, 1), 2);
  EXPECT_EQ(slGetIntersectType(p, 0, 6, poly, 1), 1) << "before the first comes the last but one";
  EXPECT_EQ(slGetIntersectType(p, 5, 6, poly, 1), 1) << "after the last comes the second";
  EXPECT_EQ(slGetIntersectType(top, 0, 4, fromTop, 1), 2) << "the last point is the first again";
  EXPECT_EQ(slGetIntersectType(top, 1, 6, poly, 3), 2);
  EXPECT_EQ(slGetIntersectType(p, 1, 6, poly, 1), 1) << "a neighbour on the line is a crossing";
  for (const int vertex : {-7, 6, INT_MAX, INT_MIN}) {
    EXPECT_EQ(slGetIntersectType(p, vertex, 6, poly, 1), 2) << vertex;
  }
  EXPECT_EQ(slGetIntersectType(p, 0, 1, poly, 1), 2);
  EXPECT_EQ(slGetIntersectType(p, 0, 6, poly, INT_MIN), 2);
}

/// The three floats of a point as the one call wants them that refuses a pointer.
const float (&floatsOf(const Float3& p))[3] {
  return reinterpret_cast<const float(&)[3]>(*p.data());
}

TEST(LineIntersection, parallelsHaveAPerpendicularOffset) {
  RandomGeometry random(104);
  for (int repeat = 0; repeat < 2000; ++repeat) {
    const auto [d, other, normal] = random.obliqueDirections(0.35);
    const Double3 start = random.point(3), offset = random.number(0.01, 3) * normal;
    const Float3 a = narrow(start), b = narrow(start + offset + random.number(-3, 3) * d),
                 u = narrow(random.number(0.5, 3) * d), v = narrow(random.number(-3, -0.5) * d);
    Float3 out{9, 9, 9};
    const auto offsetOf = [&](const Float3& from, const Float3& to, const Float3& along) {
      return slCalculateVectTwoParallel(floatsOf(from), floatsOf(u), floatsOf(to), floatsOf(along),
                                        out);
    };
    EXPECT_EQ(offsetOf(a, b, narrow(other)), 0) << "not parallel";
    EXPECT_EQ(offsetOf(a, a, v), 0) << "the same line";
    EXPECT_EQ(out, (Float3{9, 9, 9}));
    EXPECT_EQ(offsetOf(a, b, v), 1);
    EXPECT_LT(apart(out, offset), 2e-5);
  }
}

}  // namespace
