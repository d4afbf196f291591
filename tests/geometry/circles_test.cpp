#include "zel/geometry/circles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "geometry/geometry_values.h"
#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/geometry/bounding_rectangles.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kHalfPi;

/// The bounds of points in the xy plane.
struct Extent {
  Double3 min{1e9, 1e9, 0}, max{-1e9, -1e9, 0};

  void take(Double3 p) {
    for (std::size_t i = 0; i < 2; ++i) {
      min[i] = std::min(min[i], p[i]);
      max[i] = std::max(max[i], p[i]);
    }
  }
};

/// A point of the circle about c with the normal n.
Double3 onCircle(Double3 c, Double3 n, double r, double angle) {
  const Double3 u = perpendicularTo(n);
  return c + (r * std::cos(angle)) * u + (r * std::sin(angle)) * cross(n, u);
}

TEST(Circles, circleThroughThreePointsIsRecovered) {
  randomRounds<RandomGeometry>(161, 3000, [&](RandomGeometry& random) {
    const Double3 c = random.point(4), n = random.direction();
    const double r = random.number(0.5, 4), first = random.number(-3, 3);
    const Float3 p = narrow(onCircle(c, n, r, first)),
                 q = narrow(onCircle(c, n, r, first + random.number(0.7, 2))),
                 s = narrow(onCircle(c, n, r, first + random.number(2.7, 4)));
    float centre[3], normal[3], radius;
    ASSERT_EQ(slGenCircle(p, q, s, centre, normal, &radius), 1);
    EXPECT_LT(apart(centre, c), 2e-4);
    EXPECT_LT(apart(normal, n), 2e-5);
    EXPECT_NEAR(radius, r, 2e-4);
    EXPECT_EQ(slGetCircleRadius(centre, p), radius);
  });
}

TEST(Circles, pointsWithoutACircleLeaveTheOutputsAlone) {
  const Float3 a{0, 0, 0}, b{1, 1, 1}, c{2, 2, 2}, tinyB{0.003F, 0, 0}, tinyC{0, 0.003F, 0};
  float centre[3]{8, 8, 8}, normal[3]{8, 8, 8}, radius = 8;
  EXPECT_EQ(slGenCircle(a, b, c, centre, normal, &radius), 0);
  EXPECT_EQ(slGenCircle(a, tinyB, tinyC, centre, normal, &radius), 0);
  EXPECT_EQ(slGenSphere(a, b, c, tinyB, centre, &radius), 0);
  EXPECT_EQ(slGenSphere(a, b, tinyB, c, centre, &radius), 0);
  EXPECT_EQ(centre[0] + normal[0] + radius, 24.0F);
}

TEST(Circles, sphereThroughFourPointsIsRecovered) {
  randomRounds<RandomGeometry>(162, 3000, [&](RandomGeometry& random) {
    const Double3 c = random.point(4), d[4]{random.direction(), random.direction(),
                                            random.direction(), random.direction()};
    const double r = random.number(0.8, 4);
    if (std::fabs(dot(d[1] - d[0], cross(d[2] - d[0], d[3] - d[0]))) < 0.5) {
      return;
    }
    float centre[3], radius;
    ASSERT_EQ(slGenSphere(narrow(c + r * unit(d[0])), narrow(c + r * unit(d[1])),
                          narrow(c + r * unit(d[2])), narrow(c + r * unit(d[3])), centre, &radius),
              1);
    EXPECT_LT(apart(centre, c), 1e-3);
    EXPECT_NEAR(radius, r, 1e-3);
  });
}

TEST(Circles, fourPointsOfOnePlaneGiveTheMiddleOfTheirCentres) {
  const Float3 a{1, 0, 0}, b{0, 1, 0}, c{-1, 0, 0}, d{0, -1, 0}, far{0, -3, 0};
  float centre[3], radius;
  EXPECT_EQ(slGenSphere(a, b, c, d, centre, &radius), 1);
  EXPECT_LT(apart(centre, {0, 0, 0}), 1e-6) << "one circle";
  EXPECT_NEAR(radius, 1, 1e-6);
  EXPECT_EQ(slGenSphere(a, b, c, far, centre, &radius), 1);
  EXPECT_LT(apart(centre, {-0.5, -0.5, 0}), 1e-6) << "circles about 0 and (-1, -1)";
}

TEST(BoundingRectangles, arcExtentsMatchASampledArc) {
  randomRounds<RandomGeometry>(163, 3000, [&](RandomGeometry& random, int repeat) {
    const bool forward = repeat % 2 == 0;
    const float start = random.number(0, 6.28), r = random.number(0.5, 3);
    const double end = start + random.number(0.05, 6.2) * (forward ? 1 : -1);
    const double wrapped = std::fmod(end + 4 * std::numbers::pi, 2 * std::numbers::pi);
    Extent expected;
    for (int k = 0; k <= 1000; ++k) {
      expected.take(r * flatDirection(start + (end - start) * k / 1000));
    }
    float min[3]{}, max[3]{};
    (forward ? slGetCCWArcRectangle : slGetCWArcRectangle)(
        narrow(r * flatDirection(start)), narrow(r * flatDirection(end)), start,
        static_cast<float>(wrapped), r, min, max);
    EXPECT_LT(apart(min, expected.min), 1e-4);
    EXPECT_LT(apart(max, expected.max), 1e-4);
  });
}

TEST(BoundingRectangles, arcReachesTheAxesBetweenItsAnglesWithTheTolerance) {
  constexpr float kJustShort = 3.1414926F;
  const Float3 s{1, 0}, e{0.1F, 0.9F};
  float min[2], max[2];
  const auto left = [&](float start, float end) {
    slGetCCWArcRectangle(s, e, start, end, 5, min, max);
    return min[0];
  };
  EXPECT_EQ(left(1, kJustShort), 0.1F);
  EXPECT_EQ(left(1, std::nextafter(kJustShort, 9.0F)), -5.0F);
  EXPECT_EQ(left(3.1416924F, 4), 0.1F) << "it starts beyond";
  EXPECT_EQ(left(3.1416922F, 4), -5.0F);
  slGetCCWArcRectangle(s, e, 0, kHalfPi, 1, min, max);
  EXPECT_EQ(max[0], 1.0F);
  EXPECT_EQ(max[1], 1.0F);
  EXPECT_EQ(min[1], 0.0F);
}

TEST(BoundingRectangles, arcIsBoundedAsIfItsCentreWereTheOrigin) {
  const Float3 a{2, 0, 7}, b{0, 2, 7}, c{0, 0, 7};
  RectangleD out;
  slGetArcRectangle(147, a, b, c, &out);
  EXPECT_EQ(corners(out), (Corners{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}));
  slGetArcRectangle(148, a, b, c, &out);
  EXPECT_EQ(widen(out.corner0), (Double3{-2, -2, 0})) << "the long way round";

  const Float3 right{1, 0, 0}, left{-1, 0, 0}, origin{0, 0, 0};
  slGetArcRectangle(147, right, left, origin, &out);
  EXPECT_NEAR(out.corner2[1], std::sqrt(2.0), 1e-6) << "length of (1, 0, -1)";
  const Float3 centre{5, 5, 0}, from{6, 5, 0}, to{5, 6, 0};
  slGetArcRectangle(147, from, to, centre, &out);
  EXPECT_EQ(widen(out.corner0), (Double3{5, 5, 0}));
  EXPECT_EQ(widen(out.corner2), (Double3{6, 6, 0})) << "seen from the origin no axis is passed";
}

TEST(BoundingRectangles, circleHasItsOwnCornersAndASphereASquareAcrossTheView) {
  const Float3 c{1, 2, 3}, p{4, 6, 3}, down{0.00009F, 0.00009F, -1}, oblique{3, 4, 9};
  RectangleD out{{8, 8, 8}, {8, 8, 8}, {8, 8, 8}, {8, 8, 8}};
  slGetCircleRectangle(c, p, &out);
  EXPECT_EQ(corners(out), (Corners{{-4, -3, 0}, {6, 8, 0}, {6, 7, 0}, {6, 7, 0}}))
      << "an 8 is left";
  slGetSphereProjRect(c, 5, down, &out);
  EXPECT_EQ(corners(out), (Corners{{-4, -3, 0}, {6, -3, 0}, {6, 7, 0}, {-4, 7, 0}}));
  slGetSphereProjRect(c, 5, oblique, &out);
  EXPECT_LT(apart(out.corner0, {1 - 3 + 4, 2 - 4 - 3, 0}), 1e-5);
  EXPECT_LT(apart(out.corner1, {1 + 3 + 4, 2 + 4 - 3, 0}), 1e-5);
  EXPECT_LT(apart(out.corner2, {1 + 3 - 4, 2 + 4 + 3, 0}), 1e-5);
  EXPECT_LT(apart(out.corner3, {1 - 3 - 4, 2 - 4 + 3, 0}), 1e-5);
}

TEST(BoundingRectangles, cylinderIsBoundedTightly) {
  randomRounds<RandomGeometry>(164, 200, [&](RandomGeometry& random, int repeat) {
    const Double3 base = random.point(3);
    const Double3 axis = repeat == 0   ? Double3{0, 0, 1}
                         : repeat == 1 ? Double3{1, 0, 0}
                                       : random.direction();
    const float r = random.number(0.1, 2), length = random.number(-3, 3);
    Extent expected;
    for (int k = 0; k < 4000; ++k) {
      expected.take(onCircle(base + (k % 2 == 0 ? 0 : length) * axis, axis, r, k * 0.0015708));
    }
    RectangleD out;
    slGetCylinderProjRect(narrow(base), narrow(axis), r, length, &out);
    EXPECT_LT(apart(out.corner0, expected.min), 1e-5);
    EXPECT_LT(apart(out.corner2, expected.max), 1e-5);
    EXPECT_EQ(out.corner1[0], out.corner2[0]);
    EXPECT_EQ(out.corner3[1], out.corner2[1]);
  });
}

}  // namespace
