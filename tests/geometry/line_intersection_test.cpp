#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "geometry/random_geometry.h"
#include "zel/core/constants.h"
#include "zel/geometry/intersections.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

struct Directions {
  Double3 u, v, normal;
};

/// Two unit directions at least 20 degrees apart and their unit normal.
Directions obliqueDirections(RandomGeometry& random) {
  Directions d{random.direction(), random.direction(), {}};
  while (norm(cross(d.u, d.v)) < 0.35) {
    d.v = random.direction();
  }
  d.normal = unit(cross(d.u, d.v));
  return d;
}

TEST(LineIntersection, infiniteLinesMeetWhereTheyWereBuiltToMeet) {
  RandomGeometry random(101);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const auto [u, v, normal] = obliqueDirections(random);
    const Double3 meeting = random.point(3);
    const double expectedT = random.number(-4, 4), expectedS = random.number(1, 4);
    const Double3 a0 = meeting - expectedT * u, b0 = meeting - expectedS * v;
    float t = 0, s = 0;
    EXPECT_EQ(slIntersectInfLines(narrow(a0).data(), narrow(u).data(), narrow(b0).data(),
                                  narrow(v).data(), &t, &s),
              1);
    EXPECT_NEAR(t, expectedT, 1e-4);
    EXPECT_NEAR(s, expectedS, 1e-4);
    const double height = random.number(0.1, 2);
    EXPECT_EQ(slIntersectInfLines(narrow(a0).data(), narrow(u).data(),
                                  narrow(b0 + height * normal).data(), narrow(v).data(), &t, &s),
              -1);
    EXPECT_NEAR(t, expectedT, 1e-4);
    EXPECT_NEAR(s, expectedS, 1e-4);
  }
}

TEST(LineIntersection, parallelInfiniteLinesScaleWhatTheCallerHad) {
  const float a0[3]{0, 0, 0}, u[3]{1, 0, 0}, apart[3]{0, 1, 0}, same[3]{5, 0.00005F, 0};
  float t = 2, s = 3;
  EXPECT_EQ(slIntersectInfLines(a0, u, apart, u, &t, &s), 0);
  EXPECT_EQ(t, 20.0F);
  EXPECT_EQ(s, 30.0F);
  EXPECT_EQ(slIntersectInfLines(a0, u, same, u, &t, &s), INT_MAX);
  EXPECT_EQ(t, 200.0F);
}

TEST(LineIntersection, rayMeetsSegmentInThePlane) {
  RandomGeometry random(102);
  for (int repeat = 0; repeat < 5000; ++repeat) {
    const double angle = random.number(-3, 3), turn = random.number(0.3, 2.8);
    const double t0 = random.number(-3, 3), s0 = random.number(-0.5, 1.5);
    const Double3 u{std::cos(angle), std::sin(angle), 0};
    const Double3 e = random.number(1, 4) * Double3{std::cos(angle + turn), std::sin(angle + turn)};
    const Double3 meeting = random.point(3);
    const Float3 p = narrow(meeting - t0 * u), b0 = narrow(meeting - s0 * e),
                 b1 = narrow(meeting + (1 - s0) * e);
    float t, s;
    const int result = slIntersectLines2D(p.data(), narrow(u).data(), b0.data(), b1.data(), &t, &s);
    EXPECT_NEAR(t, t0, 2e-5);
    EXPECT_NEAR(s, s0, 2e-5);
    if (std::fabs(t0) > 0.001 && std::fabs(s0) > 0.001 && std::fabs(s0 - 1) > 0.001) {
      EXPECT_EQ(result, t0 > 0 && s0 > 0 && s0 < 1 ? 1 : 0);
    }
  }
}

TEST(LineIntersection, rayAndSegmentEndsHaveTheTolerance) {
  const float up[2]{0, 1}, b0[2]{0, 0}, b1[2]{1, 0};
  float t, s;
  const auto result = [&](float x, float y) {
    const float p[2]{x, y};
    return slIntersectLines2D(p, up, b0, b1, &t, &s);
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
  const float p[2]{0, 7}, u[2]{1, 0}, behind[2]{-2, 0}, ahead[2]{3, 0}, far[2]{5, 0};
  const float farBehind[2]{-4, 0}, here[2]{-0.00005F, 0};
  float t = 9, s = 9;
  EXPECT_EQ(slIntersectLines2D(p, u, ahead, far, &t, &s), INT_MAX);
  EXPECT_EQ(t, 3.0F);
  EXPECT_EQ(s, 0.0F);
  EXPECT_EQ(slIntersectLines2D(p, u, behind, far, &t, &s), INT_MAX);
  EXPECT_EQ(t, 0.0F);
  EXPECT_EQ(s, 1.0F);
  EXPECT_EQ(slIntersectLines2D(p, u, here, far, &t, &s), INT_MAX);
  EXPECT_EQ(t, 0.0F);
  EXPECT_EQ(s, 0.0F);
  t = s = 9;
  EXPECT_EQ(slIntersectLines2D(p, u, behind, farBehind, &t, &s), 0);
  EXPECT_EQ(t, 9.0F);
  EXPECT_EQ(slIntersectLines2D(p, u, ahead, ahead, &t, &s), 0) << "a segment without length";
}

TEST(LineIntersection, segmentPointOfAPerpendicularLineIsTheClosest) {
  RandomGeometry random(103);
  for (int repeat = 0; repeat < 2000; ++repeat) {
    const auto [u, v, normal] = obliqueDirections(random);
    const Double3 b0 = random.point(2), e = 3.0 * normal;
    const double s = random.number(-0.5, 1.5), back = random.number(0.5, 2);
    const Float3 a0 = narrow(b0 + s * e + back * u + random.number(-2, 2) * cross(u, normal));
    float out[3];
    const int result = slIntersecLines(a0.data(), narrow(u).data(), narrow(b0).data(),
                                       narrow(b0 + e).data(), out, 0.25F);
    if (std::fabs(s) > 0.001 && std::fabs(s - 1) > 0.001) {
      ASSERT_EQ(result, s > 0 && s < 1 ? 1 : 0);
      EXPECT_LT(result == 1 ? norm(widen(out) - (b0 + s * e)) : 0.0, 1e-4);
    }
  }
}

TEST(LineIntersection, obliqueLinesKeepTheStatedSigns) {
  // |e|^2 = 4, |u|^2 = 2, m = -2, D = 4, A = 2, B = 4: k = 5, and the foot would be at s = -1.
  const float u[3]{1, 1, 0}, b0[3]{0, 0, 0}, b1[3]{2, 0, 0}, a0[3]{1, 3, 7};
  float out[3]{8, 8, 8};
  EXPECT_EQ(slIntersecLines(a0, u, b0, b1, out, 0.5F), 0) << "s = (2 * 2 + 4 * 2) / 4 = 3";
  const float nearer[3]{0.25F, 0.5F, 7};  // A = 0.5, B = 0.75, k = 1, s = 0.625
  EXPECT_EQ(slIntersecLines(nearer, u, b0, b1, out, 0.5F), 1);
  EXPECT_EQ(out[0], 1.25F);
  const float behind[3]{1, -3, 0};  // A = 2, B = -2, k < 0
  EXPECT_EQ(slIntersecLines(behind, u, b0, b1, out, 0.75F), 1);
  EXPECT_EQ(out[0], 1.5F);
  EXPECT_EQ(slIntersecLines(behind, u, b0, b1, out, 1.0002F), 0);
  const float x[3]{1, 0, 0};
  EXPECT_EQ(slIntersecLines(a0, x, b0, b1, out, 0.5F), 0) << "parallel, ahead";
  EXPECT_EQ(slIntersecLines(b0, x, b0, b1, out, 0.5F), 1) << "parallel, B = 0";
  EXPECT_EQ(out[0], 1.0F);
}

TEST(LineIntersection, polygonCrossesOrTouchesAtAVertex) {
  const float poly[6][2]{{0, 0}, {1, 1}, {2, 0}, {3, -1}, {1, -2}, {0, 0}};
  const float p[2]{-1, 0}, top[2]{-1, 1}, bottom[2]{-1, -2};
  EXPECT_EQ(slGetIntersectType(p, 2, 6, poly, 1), 1);
  EXPECT_EQ(slGetIntersectType(top, 1, 6, poly, 1), 2);
  EXPECT_EQ(slGetIntersectType(bottom, 4, 6, poly, 1), 2);
  EXPECT_EQ(slGetIntersectType(p, 0, 6, poly, 1), 1) << "before the first comes the last but one";
  EXPECT_EQ(slGetIntersectType(p, 5, 6, poly, 1), 1) << "after the last comes the second";
  const float fromTop[4][2]{{1, 1}, {2, 0}, {0, 0}, {1, 1}};
  EXPECT_EQ(slGetIntersectType(top, 0, 4, fromTop, 1), 2) << "the last point is the first again";
  EXPECT_EQ(slGetIntersectType(top, 1, 6, poly, 3), 2);
  EXPECT_EQ(slGetIntersectType(p, 1, 6, poly, 1), 1) << "a neighbour on the line is a crossing";
  for (const int vertex : {-7, 6, INT_MAX, INT_MIN}) {
    EXPECT_EQ(slGetIntersectType(p, vertex, 6, poly, 1), 2) << vertex;
  }
  EXPECT_EQ(slGetIntersectType(p, 0, 1, poly, 1), 2);
  EXPECT_EQ(slGetIntersectType(p, 0, 6, poly, INT_MIN), 2);
}

TEST(LineIntersection, parallelsHaveAPerpendicularOffset) {
  RandomGeometry random(104);
  for (int repeat = 0; repeat < 2000; ++repeat) {
    const auto [d, other, normal] = obliqueDirections(random);
    const Double3 start = random.point(3), offset = random.number(0.01, 3) * normal;
    const Float3 fa = narrow(start), fb = narrow(start + offset + random.number(-3, 3) * d);
    const Float3 fu = narrow(random.number(0.5, 3) * d), fv = narrow(random.number(-3, -0.5) * d);
    const float a0[3]{fa[0], fa[1], fa[2]}, b0[3]{fb[0], fb[1], fb[2]};
    const float u[3]{fu[0], fu[1], fu[2]}, v[3]{fv[0], fv[1], fv[2]};
    const float w[3]{static_cast<float>(other[0]), static_cast<float>(other[1]),
                     static_cast<float>(other[2])};
    float out[3]{9, 9, 9};
    EXPECT_EQ(slCalculateVectTwoParallel(a0, u, b0, w, out), 0) << "not parallel";
    EXPECT_EQ(slCalculateVectTwoParallel(a0, u, a0, v, out), 0) << "the same line";
    EXPECT_EQ(out[0], 9.0F);
    EXPECT_EQ(slCalculateVectTwoParallel(a0, u, b0, v, out), 1);
    EXPECT_LT(norm(widen(out) - offset), 2e-5);
  }
}

}  // namespace
