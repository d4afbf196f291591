#include "zel/geometry/circles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "geometry/random_geometry.h"
#include "zel/core/constants.h"
#include "zel/geometry/bounding_rectangles.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kHalfPi;
using zel::kPi;

struct Extent {
  double min[2]{1e9, 1e9};
  double max[2]{-1e9, -1e9};

  void take(double x, double y) {
    min[0] = std::min(min[0], x);
    min[1] = std::min(min[1], y);
    max[0] = std::max(max[0], x);
    max[1] = std::max(max[1], y);
  }
};

TEST(Circles, circleThroughThreePointsIsRecovered) {
  RandomGeometry random(161);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 c = random.point(4), n = random.direction();
    const Double3 u = unit(cross(n, Double3{0.31, 0.52, 0.79})), v = cross(n, u);
    const double r = random.number(0.5, 4), first = random.number(-3, 3);
    const auto at = [&](double angle) {
      return narrow(c + (r * std::cos(angle)) * u + (r * std::sin(angle)) * v);
    };
    const Float3 p = at(first), q = at(first + random.number(0.7, 2)),
                 s = at(first + random.number(2.7, 4));
    float centre[3], normal[3], radius;
    ASSERT_EQ(slGenCircle(p.data(), q.data(), s.data(), centre, normal, &radius), 1);
    EXPECT_LT(norm(widen(centre) - c), 2e-4);
    EXPECT_LT(norm(widen(normal) - n), 2e-5);
    EXPECT_NEAR(radius, r, 2e-4);
    EXPECT_EQ(slGetCircleRadius(centre, p.data()), radius);
  }
}

TEST(Circles, pointsWithoutACircleLeaveTheOutputsAlone) {
  const float a[3]{0, 0, 0}, b[3]{1, 1, 1}, c[3]{2, 2, 2}, tinyB[3]{0.003F, 0, 0};
  const float tinyC[3]{0, 0.003F, 0};
  float centre[3]{8, 8, 8}, normal[3]{8, 8, 8}, radius = 8;
  EXPECT_EQ(slGenCircle(a, b, c, centre, normal, &radius), 0);
  EXPECT_EQ(slGenCircle(a, tinyB, tinyC, centre, normal, &radius), 0);
  EXPECT_EQ(slGenSphere(a, b, c, tinyB, centre, &radius), 0);
  EXPECT_EQ(slGenSphere(a, b, tinyB, c, centre, &radius), 0);
  EXPECT_EQ(centre[0] + normal[0] + radius, 24.0F);
}

TEST(Circles, sphereThroughFourPointsIsRecovered) {
  RandomGeometry random(162);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 c = random.point(4);
    const double r = random.number(0.8, 4);
    Double3 d[4];
    for (Double3& direction : d) {
      direction = random.direction();
    }
    const double volume = std::fabs(dot(d[1] - d[0], cross(d[2] - d[0], d[3] - d[0])));
    if (volume < 0.5) {
      continue;
    }
    Float3 p[4];
    for (std::size_t i = 0; i < 4; ++i) {
      p[i] = narrow(c + r * unit(d[i]));
    }
    float centre[3], radius;
    ASSERT_EQ(slGenSphere(p[0].data(), p[1].data(), p[2].data(), p[3].data(), centre, &radius), 1);
    EXPECT_LT(norm(widen(centre) - c), 1e-3);
    EXPECT_NEAR(radius, r, 1e-3);
  }
}

TEST(Circles, fourPointsOfOnePlaneGiveTheMiddleOfTheirCentres) {
  const float a[3]{1, 0, 0}, b[3]{0, 1, 0}, c[3]{-1, 0, 0}, d[3]{0, -1, 0}, far[3]{0, -3, 0};
  float centre[3], radius;
  EXPECT_EQ(slGenSphere(a, b, c, d, centre, &radius), 1);
  EXPECT_LT(norm(widen(centre)), 1e-6) << "one circle";
  EXPECT_NEAR(radius, 1, 1e-6);
  EXPECT_EQ(slGenSphere(a, b, c, far, centre, &radius), 1);
  EXPECT_LT(norm(widen(centre) - Double3{-0.5, -0.5, 0}), 1e-6) << "circles about 0 and (-1, -1)";
}

TEST(BoundingRectangles, arcExtentsMatchASampledArc) {
  RandomGeometry random(163);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const double start = random.number(0, 6.28), sweep = random.number(0.05, 6.2);
    const bool forward = repeat % 2 == 0;
    const double end = forward ? start + sweep : start - sweep;
    const double r = random.number(0.5, 3);
    const double wrapped = std::fmod(end + 4 * std::acos(-1.0), 2 * std::acos(-1.0));
    Extent expected;
    for (int k = 0; k <= 2000; ++k) {
      const double angle = start + (end - start) * k / 2000;
      expected.take(r * std::cos(angle), r * std::sin(angle));
    }
    const Float3 s = narrow(r * Double3{std::cos(start), std::sin(start), 0});
    const Float3 e = narrow(r * Double3{std::cos(end), std::sin(end), 0});
    float min[2], max[2];
    (forward ? slGetCCWArcRectangle : slGetCWArcRectangle)(
        s.data(), e.data(), static_cast<float>(start), static_cast<float>(wrapped),
        static_cast<float>(r), min, max);
    for (int i = 0; i < 2; ++i) {
      EXPECT_NEAR(min[i], expected.min[i], 1e-4);
      EXPECT_NEAR(max[i], expected.max[i], 1e-4);
    }
  }
}

TEST(BoundingRectangles, arcEndingJustShortOfAnAxisReachesIt) {
  const float s[2]{1, 0}, e[2]{0.1F, 0.9F}, bound = 3.1414926F;
  float min[2], max[2];
  const auto reachesLeft = [&](float end) {
    slGetCCWArcRectangle(s, e, 1, end, 5, min, max);
    return min[0] == -5.0F;
  };
  EXPECT_FALSE(reachesLeft(bound));
  EXPECT_TRUE(reachesLeft(std::nextafter(bound, 9.0F)));
  slGetCCWArcRectangle(s, e, 3.1416924F, 4, 5, min, max);
  EXPECT_EQ(min[0], 0.1F) << "it starts beyond";
  slGetCCWArcRectangle(s, e, 3.1416922F, 4, 5, min, max);
  EXPECT_EQ(min[0], -5.0F);
  slGetCCWArcRectangle(s, e, 0, kHalfPi, 1, min, max);
  EXPECT_EQ(max[0], 1.0F);
  EXPECT_EQ(max[1], 1.0F);
  EXPECT_EQ(min[0], 0.1F);
  EXPECT_EQ(min[1], 0.0F);
}

TEST(BoundingRectangles, arcAboutTheOriginIsBounded) {
  const float a[3]{2, 0, 7}, b[3]{0, 2, 7}, c[3]{0, 0, 7};
  RectangleD out;
  slGetArcRectangle(147, a, b, c, &out);
  EXPECT_EQ(widen(out.corner0), (Double3{0, 0, 0}));
  EXPECT_EQ(widen(out.corner1), (Double3{2, 0, 0}));
  EXPECT_EQ(widen(out.corner2), (Double3{2, 2, 0}));
  EXPECT_EQ(widen(out.corner3), (Double3{0, 2, 0}));
  slGetArcRectangle(148, a, b, c, &out);
  EXPECT_EQ(widen(out.corner0), (Double3{-2, -2, 0})) << "the long way round";
}

TEST(BoundingRectangles, arcReachAndAnglesAreNotThoseOfTheCentre) {
  const float a[3]{1, 0, 0}, left[3]{-1, 0, 0}, c[3]{0, 0, 0};
  RectangleD out;
  slGetArcRectangle(147, a, left, c, &out);
  EXPECT_NEAR(out.corner2[1], std::sqrt(2.0), 1e-6) << "length of (1, 0, -1)";
  const float centre[3]{5, 5, 0}, from[3]{6, 5, 0}, to[3]{5, 6, 0};
  slGetArcRectangle(147, from, to, centre, &out);
  EXPECT_EQ(widen(out.corner0), (Double3{5, 5, 0}));
  EXPECT_EQ(widen(out.corner2), (Double3{6, 6, 0})) << "seen from the origin no axis is passed";
}

TEST(BoundingRectangles, circleLeavesOneValueAlone) {
  const float c[3]{1, 2, 3}, p[3]{4, 6, 3};
  RectangleD out{{8, 8, 8}, {8, 8, 8}, {8, 8, 8}, {8, 8, 8}};
  slGetCircleRectangle(c, p, &out);
  EXPECT_EQ(widen(out.corner0), (Double3{-4, -3, 0}));
  EXPECT_EQ(widen(out.corner1), (Double3{6, 8, 0}));
  EXPECT_EQ(widen(out.corner2), (Double3{6, 7, 0}));
  EXPECT_EQ(widen(out.corner3), (Double3{6, 7, 0}));
}

TEST(BoundingRectangles, sphereIsBoundedAlongTheViewOrTheAxes) {
  const float c[3]{1, 2, 3}, down[3]{0.00009F, 0.00009F, -1}, oblique[3]{3, 4, 9};
  RectangleD out;
  slGetSphereProjRect(c, 5, down, &out);
  EXPECT_EQ(widen(out.corner0), (Double3{-4, -3, 0}));
  EXPECT_EQ(widen(out.corner1), (Double3{6, -3, 0}));
  EXPECT_EQ(widen(out.corner2), (Double3{6, 7, 0}));
  EXPECT_EQ(widen(out.corner3), (Double3{-4, 7, 0}));
  slGetSphereProjRect(c, 5, oblique, &out);
  EXPECT_LT(norm(widen(out.corner0) - Double3{1 - 3 + 4, 2 - 4 - 3, 0}), 1e-5);
  EXPECT_LT(norm(widen(out.corner1) - Double3{1 + 3 + 4, 2 + 4 - 3, 0}), 1e-5);
  EXPECT_LT(norm(widen(out.corner2) - Double3{1 + 3 - 4, 2 + 4 + 3, 0}), 1e-5);
  EXPECT_LT(norm(widen(out.corner3) - Double3{1 - 3 - 4, 2 - 4 + 3, 0}), 1e-5);
}

TEST(BoundingRectangles, cylinderIsBoundedTightly) {
  RandomGeometry random(164);
  for (int repeat = 0; repeat < 200; ++repeat) {
    const Double3 base = random.point(3);
    const Double3 axis = repeat == 0   ? Double3{0, 0, 1}
                         : repeat == 1 ? Double3{1, 0, 0}
                                       : random.direction();
    const double r = random.number(0.1, 2), length = random.number(-3, 3);
    const Double3 u = unit(cross(axis, Double3{0.31, 0.52, 0.79})), v = cross(axis, u);
    Extent expected;
    for (int k = 0; k < 4000; ++k) {
      const double angle = k * 0.0015708, height = k % 2 == 0 ? 0 : length;
      const Double3 p =
          base + height * axis + (r * std::cos(angle)) * u + (r * std::sin(angle)) * v;
      expected.take(p[0], p[1]);
    }
    RectangleD out;
    slGetCylinderProjRect(narrow(base).data(), narrow(axis).data(), static_cast<float>(r),
                          static_cast<float>(length), &out);
    EXPECT_NEAR(out.corner0[0], expected.min[0], 1e-5);
    EXPECT_NEAR(out.corner0[1], expected.min[1], 1e-5);
    EXPECT_NEAR(out.corner2[0], expected.max[0], 1e-5);
    EXPECT_NEAR(out.corner2[1], expected.max[1], 1e-5);
    EXPECT_EQ(out.corner1[0], out.corner2[0]);
    EXPECT_EQ(out.corner3[1], out.corner2[1]);
    EXPECT_EQ(out.corner2[2], 0.0F);
  }
}

}  // namespace
