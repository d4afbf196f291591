#include "zel/geometry/lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include "geometry/random_geometry.h"
#include "zel/core/constants.h"
#include "zel/geometry/intersections.h"
#include "zel/geometry/line_pairs.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kInfinity;

TEST(Lines, footsAndDistancesMatchTheCrossProduct) {
  RandomGeometry random(81);
  for (int repeat = 0; repeat < 5000; ++repeat) {
    const Double3 a = random.point(5), u = random.direction(), p = random.point(5);
    const double length = random.number(1, 4);
    const Double3 b = widen(narrow(a + length * u).data());
    const double expected = norm(cross(p - a, unit(b - a)));
    const double along = dot(p - a, unit(b - a));
    const Float3 fa = narrow(a), fb = narrow(b), fp = narrow(p);
    float t, foot[3];
    EXPECT_NEAR(slGetPntLineDist(fa.data(), fb.data(), fp.data(), &t), expected, 1e-4);
    EXPECT_NEAR(t, along / norm(b - a), 1e-5);
    EXPECT_NEAR(slGetPntLineSquareDist(fa.data(), fb.data(), fp.data(), &t), expected * expected,
                1e-4);
    EXPECT_NEAR(slGetPntLineDistByVect(fa.data(), narrow(u).data(), fp.data(), &t), expected, 1e-4);
    EXPECT_NEAR(t, along, 1e-5);
    EXPECT_NEAR(slProjectPntToLine(fa.data(), fb.data(), fp.data(), foot), along, 1e-5);
    EXPECT_NEAR(norm(widen(foot) - (a + along * unit(b - a))), 0, 1e-5);
  }
}

TEST(Lines, planeDistanceIsPositiveOnTheLeft) {
  RandomGeometry random(82);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const double angle = random.number(-3, 3), height = random.number(-4, 4);
    const double along = random.number(-4, 4);
    const Double3 u{std::cos(angle), std::sin(angle), 0}, left{-u[1], u[0], 0};
    const Double3 a = random.point(4);
    const Float3 fa = narrow(a), fb = narrow(a + 2.0 * u),
                 p = narrow(a + along * u + height * left);
    float t, foot[2];
    EXPECT_NEAR(slGetPntLineDist2D(fa.data(), fb.data(), p.data(), &t), height, 1e-4);
    EXPECT_NEAR(t, along / 2, 2e-6);
    EXPECT_EQ(slGetLineFoot(fa.data(), fb.data(), p.data(), foot, &t), 1);
    EXPECT_NEAR(foot[0], a[0] + along * u[0], 5e-6);
    EXPECT_NEAR(foot[1], a[1] + along * u[1], 5e-6);
  }
}

TEST(Lines, coincidentPointsAreNoLine) {
  const float a[3]{1, 2, 3}, p[3]{4, 5, 6};
  float out[3]{7, 7, 7}, t = 0;
  EXPECT_EQ(slProjectPntToLine(a, a, p, out), zel::kFloatMark);
  EXPECT_EQ(out[0], 7.0F);
  EXPECT_EQ(slGetPntLineDist(a, a, p, &t), 0.0F);
  EXPECT_TRUE(std::isnan(t));
  EXPECT_EQ(slGetPntLineDist2D(a, a, p, &t), 0.0F);
  EXPECT_TRUE(std::isnan(slGetPntLineSquareDist(a, a, p, &t)));
}

TEST(Lines, footOnAShortSegmentIsItsStart) {
  const float a[2]{1, 2}, close[2]{1.005F, 2}, far[2]{1.0101F, 2}, p[2]{3, 3};
  float foot[2], t;
  EXPECT_EQ(slGetLineFoot(a, close, p, foot, &t), 1);
  EXPECT_EQ(t, 1.0F);
  EXPECT_EQ(foot[0], 1.0F);
  EXPECT_EQ(foot[1], 2.0F);
  EXPECT_EQ(slGetLineFoot(a, far, p, foot, &t), 1);
  EXPECT_NEAR(foot[0], 3.0F, 1e-4F);
}

TEST(Lines, firstOfEqualPairsIsNearest) {
  const float square[4][3]{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  float out[2][3]{{9, 9, 9}, {9, 9, 9}};
  slGetNearestPair(square[0], square[2], square[1], square[3], out);
  EXPECT_EQ(out[0][0] + out[0][1], 0.0F);
  EXPECT_EQ(out[1][0], 1.0F);
  EXPECT_EQ(out[1][1], 0.0F);
  const float nan[3]{NAN, NAN, NAN};
  slGetNearestPair(nan, nan, nan, nan, out);
  EXPECT_EQ(out[1][0], 1.0F);
}

struct Approach {
  int code;
  float t, s, dist;
};

Approach infinite(Double3 a0, Double3 a1, Double3 b0, Double3 b1) {
  Approach r{};
  r.code = slGetInfLinesCoPerpenticular(narrow(a0).data(), narrow(a1).data(), narrow(b0).data(),
                                        narrow(b1).data(), &r.t, &r.s, &r.dist);
  return r;
}

Approach segments(Double3 a0, Double3 a1, Double3 b0, Double3 b1) {
  Approach r{};
  r.code = slGetLinesCoPerpenticular(narrow(a0).data(), narrow(a1).data(), narrow(b0).data(),
                                     narrow(b1).data(), &r.t, &r.s, &r.dist);
  return r;
}

TEST(LinePairs, skewLinesMeetTheirCommonPerpendicular) {
  RandomGeometry random(83);
  for (int repeat = 0; repeat < 5000; ++repeat) {
    const Double3 a0 = random.point(5), a1 = random.point(5), b0 = random.point(5),
                  b1 = random.point(5);
    const Double3 normal = cross(a1 - a0, b1 - b0);
    if (norm(normal) < 5 || norm(cross(unit(a1 - a0), unit(b1 - b0))) < 0.3) {
      continue;
    }
    const double height = std::abs(dot(b0 - a0, unit(normal)));
    const Approach r = infinite(a0, a1, b0, b1);
    EXPECT_NEAR(r.dist, height, 2e-4);
    EXPECT_NEAR(
        slGetLineDist(narrow(a0).data(), narrow(a1).data(), narrow(b0).data(), narrow(b1).data()),
        height, 2e-4);
    const Double3 across = (b0 + r.s * (b1 - b0)) - (a0 + r.t * (a1 - a0));
    EXPECT_NEAR(dot(across, unit(a1 - a0)), 0, 1e-3);
    EXPECT_NEAR(dot(across, unit(b1 - b0)), 0, 1e-3);
    EXPECT_EQ(r.code, height > 0.01 ? 3 : r.code);
  }
}

TEST(LinePairs, segmentsThatCrossInSpaceAreAsFarAsTheirLines) {
  RandomGeometry random(84);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 centre = random.point(3), u = random.direction(), v = random.direction();
    if (norm(cross(u, v)) < 0.3) {
      continue;
    }
    const double t = random.number(0.1, 0.9), s = random.number(0.1, 0.9);
    const double height = random.number(0.1, 2);
    const Double3 b = centre + height * unit(cross(u, v));
    const Approach r =
        segments(centre - 4 * t * u, centre + 4 * (1 - t) * u, b - 3 * s * v, b + 3 * (1 - s) * v);
    EXPECT_EQ(r.code, 3);
    EXPECT_NEAR(r.dist, height, 1e-4);
    EXPECT_NEAR(r.t, t, 1e-4);
    EXPECT_NEAR(r.s, s, 1e-4);
  }
}

TEST(LinePairs, coplanarLinesIntersectOrAreParallel) {
  Approach r = infinite({0, 0, 0}, {1, 0, 0}, {2, -1, 0}, {2, 0, 0});
  EXPECT_EQ(r.code, 2);
  EXPECT_EQ(r.t, 2.0F);
  EXPECT_EQ(r.s, 1.0F);
  EXPECT_EQ(r.dist, 0.0F);
  r = infinite({0, 0, 0}, {1, 0, 0}, {5, 3, 0}, {9, 3, 0});
  EXPECT_EQ(r.code, 2);
  EXPECT_EQ(r.t, 5.0F);
  EXPECT_EQ(r.s, 0.0F);
  EXPECT_EQ(r.dist, 3.0F);
}

TEST(LinePairs, pointOnTheFirstLineMakesThePairCoplanar) {
  const float a0[3]{0, 0, 0}, a1[3]{2, 0, 0}, b0[3]{5, 0, 0}, b1[3]{5, 1, 9};
  float n[3]{7, 7, 7};
  EXPECT_EQ(slJudgeLineCoPlane(a0, a1, b0, b1, n), 2);
  EXPECT_EQ(n[0], 0.0F);
  const Approach r = infinite({0, 0, 0}, {2, 0, 0}, {5, 0, 0}, {5, 1, 9});
  EXPECT_EQ(r.dist, 0.0F);
  EXPECT_EQ(r.t, 2.5F);
}

TEST(LinePairs, endOfTheSecondSegmentIsNeverMeasured) {
  // b1 alone is near a, 1 above its middle; nothing else projects onto the other segment.
  Approach r = segments({0, 0, 0}, {1, 0, 0}, {9, 9, 0}, {0.5, 1, 0});
  EXPECT_EQ(r.code, 2);
  EXPECT_EQ(r.dist, kInfinity);
  EXPECT_EQ(r.t, kInfinity);
  EXPECT_EQ(r.s, kInfinity);
  r = segments({0, 0, 0}, {1, 0, 0}, {0.5, 1, 0}, {9, 9, 0});  // the same with b0
  EXPECT_EQ(r.dist, 1.0F);
  EXPECT_EQ(r.t, 0.5F);
  EXPECT_EQ(r.s, 0.0F);
}

TEST(LinePairs, eitherEndOfTheFirstSegmentReportsItsParameterAsOne) {
  Approach r = segments({0, 0, 0}, {-1, 1, 0}, {1, -5, 0}, {1, 5, 0});
  EXPECT_EQ(r.dist, 1.0F);
  EXPECT_EQ(r.t, 1.0F);  // although the nearest end is a0
  EXPECT_EQ(r.s, 0.5F);
  r = segments({-1, 1, 0}, {0, 0, 0}, {1, -5, 0}, {1, 5, 0});
  EXPECT_EQ(r.dist, 1.0F);
  EXPECT_EQ(r.t, 1.0F);
}

TEST(LinePairs, crossingReachesFurtherBeyondTheFirstSegment) {
  const auto crossing = [](double beyondA, double beyondB) {
    return segments({0, 0, 0}, {1, 0, 0}, {1 + beyondA, -1, 0}, {1 + beyondA, beyondB, 0}).dist;
  };
  EXPECT_EQ(crossing(0.00019, 1), 0.0F);
  EXPECT_GT(crossing(0.00021, 1), 0.0F);
  EXPECT_EQ(crossing(-0.5, -0.00009), 0.0F);
  EXPECT_GT(crossing(-0.5, -0.0003), 0.0F);
}

TEST(LinePairs, skewCrossingJustBeyondTheEndKeepsDistanceZero) {
  const auto skew = [](double beyond) {
    return segments({0, 0, 0}, {1, 0, 0}, {1 + beyond, -1, 3}, {1 + beyond, 1, 3});
  };
  EXPECT_EQ(skew(0.00005).dist, 3.0F);
  EXPECT_EQ(skew(0.00015).code, 3);
  EXPECT_EQ(skew(0.00015).dist, 0.0F);  // accepted in the plane, too far for the height
  EXPECT_GT(skew(0.01).dist, 0.0F);
}

TEST(LinePairs, parallelDirectionsFallBackToThePoint) {
  const float a0[3]{0, 0, 0}, a1[3]{1, 0, 0}, b0[3]{4, 3, 4}, b1[3]{8, 3, 4};
  EXPECT_EQ(slGetLineDist(a0, a1, b0, b1), 5.0F);
  const float tiny[3]{0.001F, 0, 0}, up[3]{4, 3.1F, 4};  // the product of such edges is too short
  EXPECT_EQ(slGetLineDist(a0, tiny, b0, up), 5.0F);
}

int intersect(Double3 a0, Double3 a1, Double3 b0, Double3 b1, float* t, float* s) {
  return slIntersectLines3D(narrow(a0).data(), narrow(a1).data(), narrow(b0).data(),
                            narrow(b1).data(), t, s);
}

TEST(Intersections, linesOfOnePlaneMeetWhereTheyWereMade) {
  RandomGeometry random(85);
  for (int repeat = 0; repeat < 5000; ++repeat) {
    const Double3 meeting = random.point(5), u = random.direction(), v = random.direction();
    if (norm(cross(u, v)) < 0.1) {
      continue;
    }
    const double t = random.number(-3, 3), s = random.number(-3, 3);
    float foundT, foundS;
    ASSERT_EQ(intersect(meeting - 2 * t * u, meeting + 2 * (1 - t) * u, meeting - s * v,
                        meeting + (1 - s) * v, &foundT, &foundS),
              1);
    EXPECT_NEAR(foundT, t, 1e-4);
    EXPECT_NEAR(foundS, s, 1e-4);
  }
}

TEST(Intersections, eachCodeOfTwoLinesIsReached) {
  float t = 7, s = 7;
  EXPECT_EQ(intersect({0, 0, 0}, {1, 0, 0}, {3, 0.00005, 0}, {9, 0, 0}, &t, &s), INT_MAX);
  EXPECT_EQ(intersect({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, &t, &s), 0);
  EXPECT_EQ(intersect({0, 0, 0}, {0.01, 0, 0}, {0, 0, 0}, {0, 0.01, 0}, &t, &s), 0);  // too short
  EXPECT_EQ(intersect({1, 1, 1}, {1, 1, 1}, {0, 1, 0}, {1, 1, 0}, &t, &s), INT_MAX);
  EXPECT_EQ(t, 7.0F);
  EXPECT_EQ(intersect({0, 0, 0}, {1, 0, 0}, {0.5, -1, 0}, {0.5, 1, 0}, &t, &s), 1);
  EXPECT_EQ(t, 0.5F);
  EXPECT_EQ(s, 0.5F);
  EXPECT_EQ(intersect({0, 0, 0}, {1, 0, 0}, {0.25, -1, 5}, {0.25, 1, 5}, &t, &s), 1);  // skew
  EXPECT_EQ(t, 0.25F);
}

}  // namespace
