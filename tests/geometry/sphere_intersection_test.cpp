#include "zel/geometry/sphere_intersection.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geometry/random_geometry.h"
#include "zel/core/constants.h"
#include "zel/geometry/determinants.h"
#include "zel/geometry/solid_contact.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

TEST(SphereIntersection, circleOfTwoSpheresLiesOnBoth) {
  RandomGeometry random(141);
  for (int repeat = 0; repeat < 4000; ++repeat) {
    const Double3 c1 = random.point(3), u = random.direction();
    const double r1 = random.number(0.3, 3), r2 = random.number(0.3, 3), d = random.number(0.1, 6);
    const Double3 c2 = c1 + d * u;
    float centre[3], normal[3], radius;
    const int result =
        slGetShereIntersect(narrow(c1).data(), static_cast<float>(r1), narrow(c2).data(),
                            static_cast<float>(r2), centre, normal, &radius);
    if (d > r1 + r2 + 0.001) {
      EXPECT_EQ(result, 0);
    } else if (d < r1 + r2 - 0.01) {
      ASSERT_EQ(result, 3);
      EXPECT_LT(norm(widen(normal) - u), 2e-5);
      if (d > std::fabs(r1 - r2) + 0.01) {
        const Double3 side = unit(cross(u, random.direction() + Double3{0.1, 0.2, 0.3}));
        const Double3 p = widen(centre) + double{radius} * side;
        EXPECT_NEAR(norm(p - c1), r1, 5e-4);
        EXPECT_NEAR(norm(p - c2), r2, 5e-4);
      } else if (d < std::fabs(r1 - r2) - 0.01) {
        EXPECT_EQ(radius, 0.0F) << "one inside the other is not told apart";
      }
    }
  }
}

TEST(SphereIntersection, touchingSpheresGiveTheContactPoint) {
  const float c1[3]{0, 0, 0}, c2[3]{4, 0, 0}, unit[3]{1, 0, 0};
  float centre[3], normal[3]{8, 8, 8}, radius = 8;
  EXPECT_EQ(slGetShereIntersect(c1, 3, c2, 1, centre, normal, &radius), 1);
  EXPECT_EQ(widen(centre), (Double3{3, 0, 0}));
  EXPECT_EQ(radius, 8.0F);
  EXPECT_EQ(normal[0], 8.0F);
  EXPECT_EQ(slGetShereIntersect(c1, 3, c2, 0.9999F, centre, normal, &radius), 0);
  EXPECT_EQ(slGetShereIntersect(c1, 3, c2, 1.00005F, centre, normal, &radius), 1);
  EXPECT_EQ(slGetShereIntersect(c1, 1, unit, 1, centre, normal, &radius), 3);
  EXPECT_EQ(widen(centre), (Double3{0.5, 0, 0}));
  EXPECT_EQ(radius, static_cast<float>(std::sqrt(0.75)));
  EXPECT_EQ(slGetShereIntersect(c1, 1, c1, 2, centre, normal, &radius), 3) << "concentric";
  EXPECT_TRUE(std::isnan(normal[0]));
}

TEST(SphereIntersection, planeCutsTheSphereInACircle) {
  RandomGeometry random(142);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 p = random.point(3), n = random.direction(), c = random.point(3);
    const double r = random.number(0.3, 4), apart = std::fabs(dot(c - p, n));
    float centre[3], radius;
    const int result = slIntersectPlaneSphereM(narrow(p).data(), narrow(n).data(), narrow(c).data(),
                                               static_cast<float>(r), centre, &radius);
    if (std::fabs(apart - r) < 0.01) {
      continue;
    }
    ASSERT_EQ(result, apart < r ? 3 : 0);
    if (result == 3) {
      EXPECT_NEAR(dot(widen(centre) - p, n), 0, 1e-5);
      EXPECT_LT(norm(cross(widen(centre) - c, n)), 1e-5);
      EXPECT_NEAR(std::hypot(radius, norm(widen(centre) - c)), r, 1e-4);
    }
  }
  const float origin[3]{0, 0, 0}, up[3]{0, 0, 1}, c[3]{1, 2, 1}, higher[3]{1, 2, 1.0002F};
  float centre[3], radius = 8;
  EXPECT_EQ(slIntersectPlaneSphereM(origin, up, c, 1, centre, &radius), 1);
  EXPECT_EQ(widen(centre), (Double3{1, 2, 0}));
  EXPECT_EQ(radius, 8.0F);
  EXPECT_EQ(slIntersectPlaneSphereM(origin, up, higher, 1, centre, &radius), 0);
}

TEST(SphereIntersection, planeCutsTheConeBelowItsApex) {
  RandomGeometry random(143);
  for (int repeat = 0; repeat < 2000; ++repeat) {
    const Double3 apex = random.point(3), axis = random.direction();
    const double height = random.number(0.01, 4), halfAngle = random.number(0.05, 1.4);
    const Double3 foot = apex - height * axis;
    const Double3 p = foot + random.number(-2, 2) * unit(cross(axis, Double3{0.3, 0.5, 0.81}));
    const float angle = static_cast<float>(halfAngle);
    float centre[3], radius;
    ASSERT_EQ(slIntersectPlaneCone(narrow(p).data(), narrow(axis).data(), narrow(apex).data(),
                                   narrow(axis).data(), angle, centre, &radius),
              3);
    EXPECT_LT(norm(widen(centre) - foot), 1e-5);
    // A point of the circle is seen from the apex at the half angle.
    const Double3 toRim =
        widen(centre) + double{radius} * unit(cross(axis, {0.2, 0.7, 0.1})) - apex;
    EXPECT_NEAR(dot(unit(toRim), axis), -std::cos(halfAngle), 2e-4);
    EXPECT_EQ(slIntersectPlaneCone(narrow(p).data(), narrow(axis).data(),
                                   narrow(foot - height * axis).data(), narrow(axis).data(), angle,
                                   centre, &radius),
              0);
  }
}

TEST(SphereIntersection, apexOnThePlaneIsTheWholeCut) {
  const float up[3]{0, 0, 1}, p[3]{0, 0, 0}, apex[3]{1, 0, 0.00009F};
  float centre[3], radius = 8;
  EXPECT_EQ(slIntersectPlaneCone(p, up, apex, up, 0.5F, centre, &radius), 1);
  EXPECT_EQ(centre[2], 0.00009F);
  EXPECT_EQ(radius, 8.0F);
  EXPECT_EQ(slIntersectPlaneCone(p, up, p, up, 0.5F, centre, &radius), 3);
  EXPECT_EQ(radius, 0.0F);
}

TEST(SolidContact, cylindersMeetWhenTheirAxesAreCloseEnough) {
  const float c1[3]{0, 0, 0}, x[3]{1, 0, 0}, y[3]{0, 1, 0}, thin[2]{1, 10};
  const auto meets = [&](float height, float radius) {
    const float c2[3]{5, -5, height}, other[2]{radius, 10};
    return slJudgeTwoCylinder(c1, c2, x, y, thin, other);
  };
  EXPECT_EQ(meets(3, 2.5F), 1);
  EXPECT_EQ(meets(3, 2), 1) << "touching";
  EXPECT_EQ(meets(3, 1.99995F), 1);
  EXPECT_EQ(meets(3, 1.999F), 0);
  const float beyond[3]{20, 0, 0};
  EXPECT_EQ(slJudgeTwoCylinder(c1, beyond, x, y, thin, thin), 0);
}

TEST(SolidContact, ballReachesThePrismWhenItIsCloserThanItsRadius) {
  RandomGeometry random(144);
  int reached = 0;
  for (int repeat = 0; repeat < 4000; ++repeat) {
    BallAndPrismD d{};
    const Double3 centre = random.point(3);
    d.lengthAxis[0] = d.sideAxis1[1] = d.sideAxis2[2] = 1;
    d.lengthMin = -1;
    d.lengthMax = 2;
    d.sideAngle1 = static_cast<float>(random.number(-1.2, 1.2));
    d.sideAngle2 = static_cast<float>(random.number(-1.2, 1.2));
    d.ballRadius = static_cast<float>(random.number(0.1, 1));
    d.prismOrigin[1] = 0.5F;
    const Float3 ball = narrow(centre + Double3{0, 0.5, 0});
    std::copy_n(ball.begin(), 3, d.ballCentre);
    // Each side is the half space below a plane that rises by its angle along the prism.
    const double over1 = centre[1] * std::cos(d.sideAngle1) - centre[0] * std::sin(d.sideAngle1);
    const double over2 = centre[2] * std::cos(d.sideAngle2) - centre[0] * std::sin(d.sideAngle2);
    const double outside = std::max(-1 - centre[0], centre[0] - 2);
    const double gap = std::max({over1, over2, outside}) - d.ballRadius;
    int result = 8;
    EXPECT_EQ(slJudgeBallAndPrism(d, &result), 1);
    if (std::fabs(gap) > 1e-4) {
      EXPECT_EQ(result, gap < 0 ? 1 : 0);
    }
    reached += result;
  }
  EXPECT_GT(reached, 500);
}

TEST(SolidContact, uprightSideDoesNotLimitTheBall) {
  BallAndPrismD d{};
  d.lengthAxis[0] = d.sideAxis1[1] = d.sideAxis2[2] = 1;
  d.ballRadius = 1;
  d.ballCentre[1] = 1e6F;
  int result = 8;
  slJudgeBallAndPrism(d, &result);
  EXPECT_EQ(result, 0);
  d.sideAngle1 = zel::kHalfPi;
  slJudgeBallAndPrism(d, &result);
  EXPECT_EQ(result, 1);
  d.ballCentre[1] = 1.1e7F;
  slJudgeBallAndPrism(d, &result);
  EXPECT_EQ(result, 0) << "the limit that stands for none";
}

TEST(LinearSystems, threeUnknownsAreRecovered) {
  RandomGeometry random(145);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    double a[9], b[3], x[3];
    const Double3 expected = random.point(5);
    for (double& element : a) {
      element = random.number(-3, 3);
    }
    for (std::size_t row = 0; row < 3; ++row) {
      b[row] = dot({a[3 * row], a[3 * row + 1], a[3 * row + 2]}, expected);
    }
    if (slSolveEquationGroup3(a, b, x) == 1) {
      EXPECT_LT(norm(Double3{x[0], x[1], x[2]} - expected), 1e-8);
    }
  }
  double diagonal[9]{1, 0, 0, 0, 1, 0, 0, 0, kTolerance}, b[3]{1, 2, 3}, x[3]{8, 8, 8};
  EXPECT_EQ(slSolveEquationGroup3(diagonal, b, x), 0);
  EXPECT_EQ(x[0], 8.0);
  diagonal[8] = 0.000101;
  EXPECT_EQ(slSolveEquationGroup3(diagonal, b, b), 1) << "in place";
  EXPECT_EQ(b[1], 2.0);
}

}  // namespace
