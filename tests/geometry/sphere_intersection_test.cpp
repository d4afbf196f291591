#include "zel/geometry/sphere_intersection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/geometry/determinants.h"
#include "zel/geometry/solid_contact.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

constexpr Float3 kOrigin{0, 0, 0}, kX{1, 0, 0}, kY{0, 1, 0}, kUp{0, 0, 1};

TEST(SphereIntersection, circleOfTwoSpheresLiesOnBoth) {
  randomRounds<RandomGeometry>(141, 4000, [&](RandomGeometry& random) {
    const Double3 c1 = random.point(3), u = random.direction();
    const float r1 = random.number(0.3, 3), r2 = random.number(0.3, 3), d = random.number(0.1, 6);
    const Double3 c2 = c1 + d * u;
    const double apart = d - (r1 + r2), inside = std::fabs(r1 - r2) - d;
    if (std::fabs(apart) < 0.01) {
      return;
    }
    float centre[3], normal[3], radius;
    ASSERT_EQ(slGetShereIntersect(narrow(c1), r1, narrow(c2), r2, centre, normal, &radius),
              apart < 0 ? 3 : 0);
    if (apart > 0) {
      return;
    }
    EXPECT_LT(norm(widen(normal) - u), 2e-5);
    if (inside > 0.01) {
      EXPECT_EQ(radius, 0.0F) << "one inside the other is not told apart";
    } else if (inside < -0.01) {
      const Double3 p = widen(centre) + radius * perpendicularTo(u);
      EXPECT_NEAR(norm(p - c1), r1, 5e-4);
      EXPECT_NEAR(norm(p - c2), r2, 5e-4);
    }
  });
}

TEST(SphereIntersection, touchingSpheresGiveTheContactPoint) {
  Float3 centre, normal{8, 8, 8};
  float radius = 8;
  const auto meet = [&](float r1, float x2, float r2) {
    return slGetShereIntersect(kOrigin, r1, Float3{x2, 0, 0}, r2, centre, normal, &radius);
  };
  EXPECT_EQ(meet(3, 4, 0.9999F), 0);
  EXPECT_EQ(meet(3, 4, 1.00005F), 1);
  EXPECT_EQ(meet(3, 4, 1), 1);
  EXPECT_EQ(centre, (Float3{3, 0, 0}));
  EXPECT_EQ(radius + normal[0], 16.0F) << "neither is written";
  EXPECT_EQ(meet(1, 1, 1), 3);
  EXPECT_EQ(centre, (Float3{0.5, 0, 0}));
  EXPECT_EQ(radius, static_cast<float>(std::sqrt(0.75)));
  EXPECT_EQ(meet(1, 0, 2), 3) << "concentric";
  EXPECT_TRUE(std::isnan(normal[0]));
}

TEST(SphereIntersection, planeCutsTheSphereInACircle) {
  randomRounds<RandomGeometry>(142, 3000, [&](RandomGeometry& random) {
    const Double3 p = random.point(3), n = random.direction(), c = random.point(3);
    const float r = random.number(0.3, 4);
    const double height = std::fabs(dot(c - p, n));
    if (std::fabs(height - r) < 0.01) {
      return;
    }
    float centre[3], radius;
    ASSERT_EQ(slIntersectPlaneSphereM(narrow(p), narrow(n), narrow(c), r, centre, &radius),
              height < r ? 3 : 0);
    if (height < r) {
      EXPECT_NEAR(dot(widen(centre) - p, n), 0, 1e-5);
      EXPECT_LT(norm(cross(widen(centre) - c, n)), 1e-5);
      EXPECT_NEAR(std::hypot(radius, apart(centre, c)), r, 1e-4);
    }
  });
}

TEST(SphereIntersection, planeCutsTheConeBelowItsApex) {
  randomRounds<RandomGeometry>(143, 2000, [&](RandomGeometry& random) {
    const Double3 apex = random.point(3), axis = random.direction();
    const float height = random.number(0.01, 4), halfAngle = random.number(0.05, 1.4);
    const Double3 foot = apex - height * axis, aside = perpendicularTo(axis);
    const Float3 p = narrow(foot + random.number(-2, 2) * aside), fAxis = narrow(axis);
    float centre[3], radius;
    ASSERT_EQ(slIntersectPlaneCone(p, fAxis, narrow(apex), fAxis, halfAngle, centre, &radius), 3);
    EXPECT_LT(apart(centre, foot), 1e-5);
    // A point of the circle is seen from the apex at the half angle.
    const Double3 toRim = widen(centre) + radius * cross(axis, aside) - apex;
    EXPECT_NEAR(dot(unit(toRim), axis), -std::cos(halfAngle), 2e-4);
    const Float3 below = narrow(foot - height * axis);
    EXPECT_EQ(slIntersectPlaneCone(p, fAxis, below, fAxis, halfAngle, centre, &radius), 0);
  });
}

TEST(SphereIntersection, planeThatTouchesASphereOrAnApexMeetsItInAPoint) {
  Float3 centre;
  float radius = 8;
  EXPECT_EQ(slIntersectPlaneSphereM(kOrigin, kUp, Float3{1, 2, 1}, 1, centre, &radius), 1);
  EXPECT_EQ(centre, (Float3{1, 2, 0}));
  EXPECT_EQ(slIntersectPlaneSphereM(kOrigin, kUp, Float3{1, 2, 1.0002F}, 1, centre, &radius), 0);
  const Float3 apex{1, 0, 0.00009F};
  EXPECT_EQ(slIntersectPlaneCone(kOrigin, kUp, apex, kUp, 0.5F, centre, &radius), 1);
  EXPECT_EQ(centre, apex);
  EXPECT_EQ(radius, 8.0F);
  EXPECT_EQ(slIntersectPlaneCone(kOrigin, kUp, kOrigin, kUp, 0.5F, centre, &radius), 3);
  EXPECT_EQ(radius, 0.0F);
}

TEST(SolidContact, cylindersMeetWhenTheirAxesAreCloseEnough) {
  const float thin[2]{1, 10};
  const auto meets = [&](float height, float radius) {
    const float other[2]{radius, 10};
    return slJudgeTwoCylinder(kOrigin, Float3{5, -5, height}, kX, kY, thin, other);
  };
  EXPECT_EQ(meets(3, 2.5F), 1);
  EXPECT_EQ(meets(3, 2), 1) << "touching";
  EXPECT_EQ(meets(3, 1.99995F), 1);
  EXPECT_EQ(meets(3, 1.999F), 0);
  EXPECT_EQ(slJudgeTwoCylinder(kOrigin, Float3{20, 0, 0}, kX, kY, thin, thin), 0);
}

/// A prism whose axes are those of the world, with a ball of radius 1 at its origin.
BallAndPrismD uprightPrism() {
  BallAndPrismD d{};
  d.lengthAxis[0] = d.sideAxis1[1] = d.sideAxis2[2] = d.ballRadius = 1;
  return d;
}

int contact(const BallAndPrismD& d) {
  int result = 8;
  EXPECT_EQ(slJudgeBallAndPrism(d, &result), 1);
  return result;
}

TEST(SolidContact, ballReachesThePrismWhenItIsCloserThanItsRadius) {
  RandomGeometry random(144);
  int reached = 0;
  for (int repeat = 0; repeat < 4000; ++repeat) {
    BallAndPrismD d = uprightPrism();
    const Double3 centre = random.point(3);
    d.lengthMin = -1;
    d.lengthMax = 2;
    d.sideAngle1 = random.number(-1.2, 1.2);
    d.sideAngle2 = random.number(-1.2, 1.2);
    d.ballRadius = random.number(0.1, 1);
    d.prismOrigin[1] = 0.5F;
    std::copy_n(narrow(centre + Double3{0, 0.5, 0}).data(), 3, d.ballCentre);
    // Each side is the half space below a plane that rises by its angle along the prism.
    const double over1 = centre[1] * std::cos(d.sideAngle1) - centre[0] * std::sin(d.sideAngle1);
    const double over2 = centre[2] * std::cos(d.sideAngle2) - centre[0] * std::sin(d.sideAngle2);
    const double gap = std::max({over1, over2, -1 - centre[0], centre[0] - 2}) - d.ballRadius;
    const int result = contact(d);
    if (std::fabs(gap) > 1e-4) {
      EXPECT_EQ(result, gap < 0 ? 1 : 0);
    }
    reached += result;
  }
  EXPECT_GT(reached, 500);
}

TEST(SolidContact, uprightSideDoesNotLimitTheBall) {
  BallAndPrismD d = uprightPrism();
  d.ballCentre[1] = 1e6F;
  EXPECT_EQ(contact(d), 0);
  d.sideAngle1 = zel::kHalfPi;
  EXPECT_EQ(contact(d), 1);
  d.ballCentre[1] = 1.1e7F;
  EXPECT_EQ(contact(d), 0) << "the limit that stands for none";
}

TEST(LinearSystems, threeUnknownsAreRecovered) {
  randomRounds<RandomGeometry>(145, 3000, [&](RandomGeometry& random) {
    const Double3 rows[3]{random.point(3), random.point(3), random.point(3)};
    const Double3 expected = random.point(5);
    const Double3 b{dot(rows[0], expected), dot(rows[1], expected), dot(rows[2], expected)};
    double a[9];
    for (int i = 0; i < 9; ++i) {
      a[i] = rows[i / 3][static_cast<std::size_t>(i % 3)];
    }
    Double3 x;
    if (slSolveEquationGroup3(a, b.data(), x.data()) == 1) {
      EXPECT_LT(norm(x - expected), 1e-8);
    }
  });
  double diagonal[9]{1, 0, 0, 0, 1, 0, 0, 0, kTolerance}, b[3]{1, 2, 3}, x[3]{8, 8, 8};
  EXPECT_EQ(slSolveEquationGroup3(diagonal, b, x), 0);
  EXPECT_EQ(x[0], 8.0);
  diagonal[8] = 0.000101;
  EXPECT_EQ(slSolveEquationGroup3(diagonal, b, b), 1) << "in place";
  EXPECT_EQ(b[1], 2.0);
}

}  // namespace
