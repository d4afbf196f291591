#include "zel/geometry/circle_intersection.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <vector>

#include "geometry/geometry_values.h"
#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "support/random_rounds.h"
#include "zel/geometry/circle_angles.h"
#include "zel/geometry/coordinate_systems.h"
#include "zel/geometry/motions.h"

namespace {

using namespace zel::test;  // NOLINT

TEST(CircleAngles, roundTripOverTheFullTurn) {
  randomRounds<RandomGeometry>(131, 3000, [&](RandomGeometry& random) {
    const double angle = random.number(0.1, 6.1);
    const float r = random.number(0.5, 4);
    const Double3 c = random.point(2);
    const Float3 p = narrow(c + r * flatDirection(angle)), v = narrow(widen(p) - c);
    const double tolerance = std::fabs(std::cos(angle)) > 0.9998 ? 0.025 : 5e-5;  // it snaps
    EXPECT_NEAR(slGetCircleAng(narrow(c), p, r), angle, tolerance);
    EXPECT_NEAR(slGetCentralAngle(v), angle, tolerance);
  });
}

TEST(CircleAngles, straightDownHasTheAngleOfStraightUpAsACentralAngle) {
  const Float3 down{0, -1, 0}, almost{1e-9F, -1, 0}, origin{0, 0, 0};
  EXPECT_FLOAT_EQ(slGetCentralAngle(down), 1.5707963F);
  EXPECT_FLOAT_EQ(slGetCentralAngle(almost), 4.712389F);
  EXPECT_FLOAT_EQ(slGetCircleAng(origin, down, 1.0F), 4.712389F);
  EXPECT_FLOAT_EQ(slGetCircleAng(origin, down, -1.0F), 1.5707963F);
  EXPECT_TRUE(std::isnan(slGetCentralAngle(origin)));
}

TEST(CircleIntersection, lineMeetsTheSphereInPointsOfBoth) {
  randomRounds<RandomGeometry>(132, 5000, [&](RandomGeometry& random) {
    const Double3 a = random.point(3), u = random.direction(), c = random.point(3);
    const float r = random.number(0.2, 4);
    const Float3 start = narrow(a), end = narrow(a + random.number(0.5, 3) * u), centre = narrow(c);
    const Double3 foot = a + dot(c - a, u) * u;
    const double height = norm(c - foot);
    if (std::fabs(height - r) < 0.01) {
      return;
    }
    const int expected = height < r ? 2 : 1;
    const double half = height < r ? std::sqrt(double{r} * r - height * height) : 0.0;
    float out[2][3]{{}, {8, 8, 8}}, again[2][3];
    ASSERT_EQ(slIntersectLineCircle(centre, r, start, end, out), expected) << "1 also for a miss";
    EXPECT_LT(apart(out[0], foot + half * u), 1e-4);
    EXPECT_LT(apart(out[1], expected == 2 ? foot - half * u : Double3{8, 8, 8}), 1e-4);
    EXPECT_EQ(slIntersectLineSphere(centre, r, start, end, again), expected);
    EXPECT_TRUE(samePoint(again[0], out[0]));
  });
}

TEST(CircleIntersection, linesAreToldApartByOnePointTwoPointsAndNoLength) {
  const Float3 c{0, 0, 0}, a{-1, 2, 0}, b{3, 2, 0}, through{1, -2, 0};
  float out[2][3];
  EXPECT_EQ(slIntersectLineCircle(c, 2, a, b, out), 1) << "tangent";
  EXPECT_EQ(widen(out[0]), (Double3{0, 2, 0}));
  EXPECT_EQ(slIntersectLineCircle(c, 2, a, a, out), 0);
  EXPECT_EQ(slIntersectLineCircle(c, 5, a, through, out), 2) << "through the centre";
  EXPECT_LT(apart(out[0], (5 / std::sqrt(20.0)) * Double3{2, -4, 0}), 1e-6);
}

struct SegmentHits {
  int result, count;
  float p[2][3], t[2], angle[2];
};

SegmentHits hitCircle(const float* a, const float* b, const float* c, float r) {
  SegmentHits h{};
  h.count = -1;
  h.result = slLineIntCircle(a, b, c, r, h.p[0], &h.t[0], &h.angle[0], h.p[1], &h.t[1], &h.angle[1],
                             &h.count);
  return h;
}

TEST(CircleIntersection, segmentHitsAreThoseOfItsLineBetweenItsEnds) {
  RandomGeometry random(133);
  int twice = 0;
  for (int repeat = 0; repeat < 8000; ++repeat) {
    const Double3 c = random.flatPoint(3), u = flatDirection(random.number(-3, 3));
    const float r = random.number(0.2, 3);
    const double height = r * random.number(-1.3, 1.3);
    const double from = random.number(-4, 4), to = from + random.number(0.1, 5);
    const double half = std::sqrt(double{r} * r - height * height);  // of the chord; NaN for none
    const Double3 foot = c + height * Double3{-u[1], u[0], 0};
    std::vector<double> hits;  // the far one first
    double margin = std::fabs(std::fabs(height) / r - 1);
    for (const double at : {half, -half}) {
      margin = std::fmin(margin, std::fmin(std::fabs(at - from), std::fabs(at - to)));
      if (from < at && at < to) {
        hits.push_back(at);
      }
    }
    if (margin < 0.01) {
      continue;
    }
    const SegmentHits h = hitCircle(narrow(foot + from * u), narrow(foot + to * u), narrow(c), r);
    ASSERT_EQ(h.result, std::fabs(height) < r ? 1 : 0);
    ASSERT_EQ(h.count, static_cast<int>(hits.size()));
    twice += h.count == 2 ? 1 : 0;
    for (std::size_t k = 0; k < hits.size(); ++k) {
      EXPECT_LT(apart(h.p[k], foot + hits[k] * u), 1e-4);
      EXPECT_NEAR(h.t[k], (hits[k] - from) / (to - from), 2e-4);
      EXPECT_EQ(h.angle[k], slGetCircleAng(narrow(c), h.p[k], r));
    }
  }
  EXPECT_GT(twice, 100);
}

TEST(CircleIntersection, segmentOfWhichNothingIsKnownHasNoPoint) {
  const Float3 a{-2, 0.1F}, b{2, 0.2F}, c{0.3F, 0};
  const SegmentHits all[]{hitCircle(a, b, Float3{NAN, 0}, 1), hitCircle(a, b, Float3{0, NAN}, 1),
                          hitCircle(Float3{NAN, 0}, b, c, 1), hitCircle(Float3{0, NAN}, b, c, 1),
                          hitCircle(a, b, c, NAN)};
  for (const SegmentHits& hits : all) {
    EXPECT_EQ(hits.result, 1);
    EXPECT_EQ(hits.count, 0);
  }
}

TEST(CircleIntersection, segmentEndsOnTheCircleFollowTheStatedComparisons) {
  const auto expectHits = [](float from, float to, int count, float first) {
    const SegmentHits h = hitCircle(Float3{from}, Float3{to}, Float3{}, 1);  // along x
    EXPECT_EQ(h.count, count) << from << " to " << to;
    EXPECT_EQ(h.p[0][0], first) << from << " to " << to;
    EXPECT_FLOAT_EQ(h.t[0], count > 0 ? (first - from) / (to - from) : 0);
  };
  expectHits(0, 1, 0, 0);  // an end on the circle is inside
  expectHits(-1, 1, 0, 0);
  expectHits(1, 3, 1, 1);
  expectHits(3, 1, 1, 1);
  expectHits(-3, 1, 1, -1);  // near end outside, far end on the circle: only the entry
  expectHits(0.5F, 0.5F, 0, 0);
  expectHits(5, 5, 0, 0);
}

TEST(CircleIntersection, twoCirclesMeetInPointsOfBoth) {
  randomRounds<RandomGeometry>(134, 4000, [&](RandomGeometry& random) {
    const Double3 c1 = random.point(3), u = random.direction();
    const Double3 n = unit(cross(u, random.direction() + Double3{0.01, 0.02, 0.03}));
    const float r1 = random.number(0.3, 3), r2 = random.number(0.3, 3);
    const double d = random.number(0.05, 5);
    const double margin = std::min(r1 + r2 - d, d - std::fabs(r1 - r2));
    if (std::fabs(margin) < 0.01) {
      return;
    }
    const Double3 c2 = c1 + d * u;
    float out[2][3]{};
    const int result = slIntersectCircle(narrow(c1), r1, narrow(c2), r2, narrow(n), out);
    ASSERT_EQ(result, margin > 0 ? 2 : 0);
    if (result == 2) {
      const double side = dot(widen(out[0]) - c1, cross(n, u));
      EXPECT_GT(side, 0) << "the first point is the one on the y side";
      EXPECT_NEAR(dot(widen(out[1]) - c1, cross(n, u)), -side, 1e-4);
      for (const auto& p : out) {
        EXPECT_NEAR(apart(p, c1), r1, 2e-4);
        EXPECT_NEAR(apart(p, c2), r2, 2e-4);
        EXPECT_NEAR(dot(widen(p) - c1, n), 0, 1e-4);
      }
    }
  });
}

TEST(CircleIntersection, pointsOfTwoCirclesDependOnWhatOutHeld) {
  // The two-point formula written out again; q has a y only through rounding, so out holds large
  // numbers to make it felt.
  RandomGeometry random(135);
  int differing = 0;
  for (int repeat = 0; repeat < 500; ++repeat) {
    const Float3 c1 = narrow(random.point(3)), n = narrow(random.direction());
    const Double3 u = unit(cross(widen(n), random.direction()));
    const Float3 c2 = narrow(widen(c1) + 1.5 * u);
    const float held[2]{1e7F, -3e7F};
    float out[2][3]{{0, held[0], 0}, {0, held[1], 0}}, plain[2][3]{};
    XYCoordSysD cs;
    ASSERT_EQ(slGenXYCoordSysByNormal(c1, c2, n, &cs), 1);
    ASSERT_EQ(slIntersectCircle(c1, 1.25F, c2, 0.75F, n, out), 2);
    ASSERT_EQ(slIntersectCircle(c1, 1.25F, c2, 0.75F, n, plain), 2);
    Matrix toLocal;
    slGenMatrixToLocal(cs, toLocal);
    const Float3 q = moved(toLocal, widen(c2));
    const double x = q[0], y = q[1], L = (x * x + y * y + 1.25 * 1.25 - 0.75 * 0.75) / (2.0 * x);
    const double g = y / x;
    const double S = std::sqrt(4 * (L * L) * (g * g) - 4 * (L * L - 1.25 * 1.25) * (g + 1));
    for (int k = 0; k < 2; ++k) {
      const float py = static_cast<float>((2 * L * g + (k == 0 ? S : -S)) / (2 * (g + 1)));
      const float px = static_cast<float>(L - g * held[k]);
      const Double3 expected =
          widen(cs.origin) + (double{px} * widen(cs.xAxis) + double{py} * widen(cs.yAxis));
      EXPECT_TRUE(samePoint(out[k], narrow(expected)));
      differing += samePoint(out[k], plain[k]) ? 0 : 1;
    }
  }
  EXPECT_GT(differing, 500);
}

TEST(CircleIntersection, touchingCirclesHaveOnePointAndSameAndObliqueOnesTheirOwnCodes) {
  constexpr Double3 kUntouched{8, 8, 8};
  const auto expectMeeting = [&](float r1, Float3 c2, float r2, int code, Double3 point) {
    SCOPED_TRACE(testing::Message() << r1 << " and " << r2 << " about " << c2[0]);
    float out[2][3]{{8, 8, 8}, {8, 8, 8}};
    EXPECT_EQ(slIntersectCircle(Float3{}, r1, c2, r2, Float3{0, 0, 1}, out), code);
    EXPECT_LT(apart(out[0], point), 1e-6);
    EXPECT_EQ(widen(out[1]), kUntouched);
  };
  expectMeeting(1, {2, 0, 0}, 1, 1, {1, 0, 0});
  expectMeeting(2, {1, 0, 0}, 1, 1, {2, 0, 0});
  expectMeeting(1, {1, 0, 0}, 2, 1, {-1, 0, 0});               // the larger is the second
  expectMeeting(0.99991F, {2, 0, 0}, 1, 1, {0.999955, 0, 0});  // a gap below the tolerance
  expectMeeting(0.9998F, {2, 0, 0}, 1, 0, kUntouched);         // and above it
  expectMeeting(1, {0, 0, 0}, 1, INT_MAX, kUntouched);         // the same
  expectMeeting(1, {0, 0, 0}, 2, 0, kUntouched);               // concentric
  expectMeeting(1, {1, 0, 0.5F}, 1, -1, kUntouched);           // not in one plane
}

}  // namespace
