#include "zel/geometry/lines.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/geometry/intersections.h"
#include "zel/geometry/line_pairs.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kInfinity;

TEST(Lines, footsAndDistancesMatchTheCrossProduct) {
  randomRounds<RandomGeometry>(81, 5000, [&](RandomGeometry& random) {
    const Double3 a = random.point(5), u = random.direction(), p = random.point(5);
    const Float3 fa = narrow(a), fb = narrow(a + random.number(1, 4) * u), fp = narrow(p);
    const double length = norm(widen(fb) - a);
    const Double3 exactU = unit(widen(fb) - a);
    const double expected = norm(cross(p - a, exactU)), along = dot(p - a, exactU);
    float t, foot[3];
    EXPECT_NEAR(slGetPntLineDist(fa, fb, fp, &t), expected, 1e-4);
    EXPECT_NEAR(t, along / length, 1e-5);
    EXPECT_NEAR(slGetPntLineSquareDist(fa, fb, fp, &t), expected * expected, 1e-4);
    EXPECT_NEAR(slGetPntLineDistByVect(fa, narrow(u), fp, &t), expected, 1e-4);
    EXPECT_NEAR(t, along, 1e-5);
    EXPECT_NEAR(slProjectPntToLine(fa, fb, fp, foot), along, 1e-5);
    EXPECT_LT(apart(foot, a + along * exactU), 1e-5);
  });
}

TEST(Lines, planeDistanceIsPositiveOnTheLeft) {
  randomRounds<RandomGeometry>(82, 3000, [&](RandomGeometry& random) {
    const double height = random.number(-4, 4), along = random.number(-4, 4);
    const Double3 u = flatDirection(random.number(-3, 3)), left{-u[1], u[0], 0};
    const Double3 a = random.flatPoint(4);
    const Float3 fa = narrow(a), fb = narrow(a + 2.0 * u),
                 p = narrow(a + along * u + height * left);
    float t, foot[3]{};
    EXPECT_NEAR(slGetPntLineDist2D(fa, fb, p, &t), height, 1e-4);
    EXPECT_NEAR(t, along / 2, 2e-6);
    EXPECT_EQ(slGetLineFoot(fa, fb, p, foot, &t), 1);
    EXPECT_LT(apart(foot, a + along * u), 7e-6);
  });
}

TEST(Lines, coincidentPointsAreNoLine) {
  const Float3 a{1, 2, 3}, p{4, 5, 6};
  float out[3]{7, 7, 7}, t = 0;
  EXPECT_EQ(slProjectPntToLine(a, a, p, out), zel::kFloatMark);
  EXPECT_EQ(out[0], 7.0F);
  EXPECT_EQ(slGetPntLineDist(a, a, p, &t), 0.0F);
  EXPECT_TRUE(std::isnan(t));
  EXPECT_EQ(slGetPntLineDist2D(a, a, p, &t), 0.0F);
  EXPECT_TRUE(std::isnan(slGetPntLineSquareDist(a, a, p, &t)));
}

TEST(Lines, footOnAShortSegmentIsItsStart) {
  const Float3 a{1, 2}, close{1.005F, 2}, far{1.0101F, 2}, p{3, 3};
  float foot[2], t;
  EXPECT_EQ(slGetLineFoot(a, close, p, foot, &t), 1);
  EXPECT_EQ(t, 1.0F);
  EXPECT_EQ(foot[0], 1.0F);
  EXPECT_EQ(foot[1], 2.0F);
  EXPECT_EQ(slGetLineFoot(a, far, p, foot, &t), 1);
  EXPECT_NEAR(foot[0], 3.0F, 1e-4F);
}

TEST(Lines, firstOfEqualPairsIsNearest) {
  const Float3 nan{NAN, NAN, NAN};
  float out[2][3]{{9, 9, 9}, {9, 9, 9}};
  slGetNearestPair(Float3{0, 0, 0}, Float3{1, 1, 0}, Float3{1, 0, 0}, Float3{0, 1, 0}, out);
  for (int repeat = 0; repeat < 2; ++repeat) {
    EXPECT_EQ(widen(out[0]), (Double3{0, 0, 0}));
    EXPECT_EQ(widen(out[1]), (Double3{1, 0, 0}));
    slGetNearestPair(nan, nan, nan, nan, out);  // leaves them alone
  }
}

using PairFunction = int(const float*, const float*, const float*, const float*, float*, float*,
                         float*);

constexpr PairFunction& kInfinite = slGetInfLinesCoPerpenticular;
constexpr PairFunction& kSegments = slGetLinesCoPerpenticular;

/// The code, the two parameters and the distance that a function finds for two lines.
struct Approach {
  Approach(PairFunction measure, Double3 a0, Double3 a1, Double3 b0, Double3 b1)
      : code(measure(narrow(a0), narrow(a1), narrow(b0), narrow(b1), &t, &s, &dist)) {}
  float t = 0, s = 0, dist = 0;
  int code;
};

using Found = std::array<float, 3>;

/// What a function finds for two lines of one plane: both parameters and the distance.
Found found(PairFunction measure, Double3 a0, Double3 a1, Double3 b0, Double3 b1) {
  const Approach r(measure, a0, a1, b0, b1);
  EXPECT_EQ(r.code, 2);
  return {r.t, r.s, r.dist};
}

TEST(LinePairs, skewLinesMeetTheirCommonPerpendicular) {
  randomRounds<RandomGeometry>(83, 5000, [&](RandomGeometry& random) {
    const Double3 a0 = random.point(5), a1 = random.point(5), b0 = random.point(5),
                  b1 = random.point(5);
    const Double3 u = unit(a1 - a0), v = unit(b1 - b0), normal = cross(a1 - a0, b1 - b0);
    if (norm(normal) < 5 || norm(cross(u, v)) < 0.3) {
      return;
    }
    const double height = std::abs(dot(b0 - a0, unit(normal)));
    const Approach r(kInfinite, a0, a1, b0, b1);
    EXPECT_NEAR(r.dist, height, 2e-4);
    EXPECT_NEAR(slGetLineDist(narrow(a0), narrow(a1), narrow(b0), narrow(b1)), height, 2e-4);
    const Double3 across = (b0 + r.s * (b1 - b0)) - (a0 + r.t * (a1 - a0));
    EXPECT_NEAR(dot(across, u), 0, 1e-3);
    EXPECT_NEAR(dot(across, v), 0, 1e-3);
    EXPECT_EQ(r.code, height > 0.01 ? 3 : r.code);
  });
}

TEST(LinePairs, segmentsThatCrossInSpaceAreAsFarAsTheirLines) {
  randomRounds<RandomGeometry>(84, 3000, [&](RandomGeometry& random) {
    const auto [u, v, normal] = random.obliqueDirections(0.3);
    const Double3 centre = random.point(3);
    const double t = random.number(0.1, 0.9), s = random.number(0.1, 0.9);
    const double height = random.number(0.1, 2);
    const Double3 b = centre + height * normal;
    const Approach r(kSegments, centre - 4 * t * u, centre + 4 * (1 - t) * u, b - 3 * s * v,
                     b + 3 * (1 - s) * v);
    EXPECT_EQ(r.code, 3);
    EXPECT_NEAR(r.dist, height, 1e-4);
    EXPECT_NEAR(r.t, t, 1e-4);
    EXPECT_NEAR(r.s, s, 1e-4);
  });
}

TEST(LinePairs, linesOfOnePlaneIntersectOrAreParallel) {
  EXPECT_EQ(found(kInfinite, {0, 0}, {1, 0}, {2, -1}, {2, 0}), (Found{2, 1, 0}));
  EXPECT_EQ(found(kInfinite, {0, 0}, {1, 0}, {5, 3}, {9, 3}), (Found{5, 0, 3}));
  // A point on the first line makes any pair coplanar, without a normal.
  EXPECT_EQ(found(kInfinite, {0, 0}, {2, 0}, {5, 0}, {5, 1, 9}), (Found{2.5F, 0, 0}));
  Float3 n{7, 7, 7};
  EXPECT_EQ(slJudgeLineCoPlane(Float3{}, Float3{2, 0, 0}, Float3{5, 0, 0}, Float3{5, 1, 9}, n), 2);
  EXPECT_EQ(n, (Float3{0, 0, 0}));
}

TEST(LinePairs, endOfTheSecondSegmentIsNeverMeasured) {
  // b1 alone is near a, 1 above its middle; nothing else projects onto the other segment.
  EXPECT_EQ(found(kSegments, {0, 0}, {1, 0}, {9, 9}, {0.5, 1}),
            (Found{kInfinity, kInfinity, kInfinity}));
  EXPECT_EQ(found(kSegments, {0, 0}, {1, 0}, {0.5, 1}, {9, 9}), (Found{0.5F, 0, 1}));
}

TEST(LinePairs, eitherEndOfTheFirstSegmentReportsItsParameterAsOne) {
  EXPECT_EQ(found(kSegments, {0, 0}, {-1, 1}, {1, -5}, {1, 5}), (Found{1, 0.5F, 1}));
  EXPECT_EQ(found(kSegments, {-1, 1}, {0, 0}, {1, -5}, {1, 5}), (Found{1, 0.5F, 1}));
}

TEST(LinePairs, crossingReachesFurtherBeyondTheFirstSegment) {
  const auto crossing = [](double beyondA, double endOfB) {
    return Approach(kSegments, {0, 0}, {1, 0}, {1 + beyondA, -1}, {1 + beyondA, endOfB}).dist;
  };
  EXPECT_EQ(crossing(0.00019, 1), 0.0F);
  EXPECT_GT(crossing(0.00021, 1), 0.0F);
  EXPECT_EQ(crossing(-0.5, -0.00009), 0.0F);
  EXPECT_GT(crossing(-0.5, -0.0003), 0.0F);
}

TEST(LinePairs, skewCrossingJustBeyondTheEndKeepsDistanceZero) {
  const auto skew = [](double beyond) {
    return Approach(kSegments, {0, 0, 0}, {1, 0, 0}, {1 + beyond, -1, 3}, {1 + beyond, 1, 3});
  };
  EXPECT_EQ(skew(0.00005).dist, 3.0F);
  EXPECT_EQ(skew(0.00015).code, 3);
  EXPECT_EQ(skew(0.00015).dist, 0.0F);  // accepted in the plane, too far for the height
  EXPECT_GT(skew(0.01).dist, 0.0F);
}

TEST(LinePairs, parallelDirectionsFallBackToThePoint) {
  const Float3 a0{0, 0, 0}, a1{1, 0, 0}, b0{4, 3, 4}, b1{8, 3, 4};
  EXPECT_EQ(slGetLineDist(a0, a1, b0, b1), 5.0F);
  const Float3 tiny{0.001F, 0, 0}, up{4, 3.1F, 4};  // the product of such edges is too short
  EXPECT_EQ(slGetLineDist(a0, tiny, b0, up), 5.0F);
}

int intersect(Double3 a0, Double3 a1, Double3 b0, Double3 b1, float* t, float* s) {
  return slIntersectLines3D(narrow(a0), narrow(a1), narrow(b0), narrow(b1), t, s);
}

TEST(Intersections, linesOfOnePlaneMeetWhereTheyWereMade) {
  randomRounds<RandomGeometry>(85, 5000, [&](RandomGeometry& random) {
    const auto [u, v, normal] = random.obliqueDirections(0.1);
    const Double3 meeting = random.point(5);
    const double t = random.number(-3, 3), s = random.number(-3, 3);
    float foundT, foundS;
    ASSERT_EQ(intersect(meeting - 2 * t * u, meeting + 2 * (1 - t) * u, meeting - s * v,
                        meeting + (1 - s) * v, &foundT, &foundS),
              1);
    EXPECT_NEAR(foundT, t, 1e-4);
    EXPECT_NEAR(foundS, s, 1e-4);
  });
}

TEST(Intersections, eachCodeOfTwoLinesIsReached) {
  float t = 7, s = 7;
  EXPECT_EQ(intersect({0, 0, 0}, {1, 0, 0}, {3, 0.00005, 0}, {9, 0, 0}, &t, &s), INT_MAX);
  EXPECT_EQ(intersect({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, &t, &s), 0);
  EXPECT_EQ(intersect({0, 0, 0}, {0.01, 0, 0}, {0, 0, 0}, {0, 0.01, 0}, &t, &s), 0);  // too short
  EXPECT_EQ(intersect({1, 1, 1}, {1, 1, 1}, {0, 1, 0}, {1, 1, 0}, &t, &s), INT_MAX);
  EXPECT_EQ(t, 7.0F);
  EXPECT_EQ(intersect({0, 0, 0}, {1, 0, 0}, {0.25, -1, 5}, {0.25, 1, 5}, &t, &s), 1);  // skew
  EXPECT_EQ(t, 0.25F);
}

}  // namespace
