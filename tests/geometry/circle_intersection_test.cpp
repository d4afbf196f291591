#include "zel/geometry/circle_intersection.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "zel/core/constants.h"
#include "zel/geometry/circle_angles.h"
#include "zel/geometry/coordinate_systems.h"
#include "zel/geometry/matrices.h"
#include "zel/geometry/motions.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kPi;
using zel::kTwoPi;

TEST(CircleAngles, roundTripOverTheFullTurn) {
  RandomGeometry random(131);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const double angle = random.number(0.1, 6.1), r = random.number(0.5, 4);
    const Double3 c = random.point(2);
    const Float3 p = narrow(c + r * Double3{std::cos(angle), std::sin(angle), 0});
    const bool snaps = std::fabs(std::cos(angle)) > 0.9998;
    EXPECT_NEAR(slGetCircleAng(narrow(c).data(), p.data(), static_cast<float>(r)), angle,
                snaps ? 0.025 : 5e-5);
    const float v[3]{p[0] - static_cast<float>(c[0]), p[1] - static_cast<float>(c[1]), 0};
    EXPECT_NEAR(slGetCentralAngle(v), angle, snaps ? 0.025 : 5e-5);
  }
}

TEST(CircleAngles, straightDownHasTheAngleOfStraightUpAsACentralAngle) {
  const float down[3]{0, -1, 0}, almost[3]{1e-9F, -1, 0}, origin[2]{0, 0}, null[3]{0, 0, 0};
  EXPECT_FLOAT_EQ(slGetCentralAngle(down), 1.5707963F);
  EXPECT_FLOAT_EQ(slGetCentralAngle(almost), 4.712389F);
  EXPECT_FLOAT_EQ(slGetCircleAng(origin, down, 1.0F), 4.712389F);
  EXPECT_FLOAT_EQ(slGetCircleAng(origin, down, -1.0F), 1.5707963F);
  EXPECT_TRUE(std::isnan(slGetCentralAngle(null)));
}

TEST(CircleIntersection, lineMeetsTheSphereInPointsOfBoth) {
  RandomGeometry random(132);
  for (int repeat = 0; repeat < 5000; ++repeat) {
    const Double3 a = random.point(3), u = random.direction(), c = random.point(3);
    const double r = random.number(0.2, 4);
    const Float3 fa = narrow(a), fb = narrow(a + random.number(0.5, 3) * u), fc = narrow(c);
    const Double3 foot = a + dot(c - a, u) * u;
    const double height = norm(c - foot);
    if (std::fabs(height - r) < 0.01) {
      continue;
    }
    float out[2][3];
    const int result =
        slIntersectLineCircle(fc.data(), static_cast<float>(r), fa.data(), fb.data(), out);
    ASSERT_EQ(result, height < r ? 2 : 1);
    const double half = height < r ? std::sqrt(r * r - height * height) : 0.0;
    EXPECT_LT(norm(widen(out[0]) - (foot + half * u)), 1e-4);
    if (result == 2) {
      EXPECT_LT(norm(widen(out[1]) - (foot - half * u)), 1e-4);
    }
    float again[2][3];
    EXPECT_EQ(slIntersectLineSphere(fc.data(), static_cast<float>(r), fa.data(), fb.data(), again),
              result);
    EXPECT_EQ(widen(again[0]), widen(out[0]));
  }
}

TEST(CircleIntersection, missingLineAnswersLikeATangentOne) {
  const float c[3]{0, 0, 0}, a[3]{-1, 2, 0}, b[3]{3, 2, 0}, through[3]{1, -2, 0};
  float out[2][3]{{8, 8, 8}, {8, 8, 8}};
  EXPECT_EQ(slIntersectLineCircle(c, 1, a, b, out), 1);
  EXPECT_EQ(widen(out[0]), (Double3{0, 2, 0}));
  EXPECT_EQ(slIntersectLineCircle(c, 2, a, b, out), 1) << "tangent";
  EXPECT_EQ(out[1][0], 8.0F);
  EXPECT_EQ(slIntersectLineCircle(c, 2, a, a, out), 0);
  EXPECT_EQ(slIntersectLineCircle(c, 5, a, through, out), 2) << "through the centre";
  EXPECT_LT(norm(widen(out[0]) - (5 / std::sqrt(20.0)) * Double3{2, -4, 0}), 1e-6);
}

struct SegmentHits {
  int result, count;
  float p[2][2], t[2], angle[2];
};

SegmentHits hitCircle(const float* a, const float* b, const float* c, float r) {
  SegmentHits h{};
  h.count = -1;
  h.result = slLineIntCircle(a, b, c, r, h.p[0], &h.t[0], &h.angle[0], h.p[1], &h.t[1], &h.angle[1],
                             &h.count);
  return h;
}

TEST(CircleIntersection, segmentHitsAreTheRootsBetweenItsEnds) {
  RandomGeometry random(133);
  int twice = 0;
  for (int repeat = 0; repeat < 8000; ++repeat) {
    const float ax = static_cast<float>(random.number(-3, 3));
    const float a[2]{ax, static_cast<float>(random.number(-3, 3))};
    const float b[2]{static_cast<float>(random.number(-3, 3)), 1.5F};
    const float c[2]{static_cast<float>(random.number(-3, 3)), 0.25F};
    const double r = random.number(0.2, 3);
    const double dx = b[0] - static_cast<double>(a[0]), dy = b[1] - static_cast<double>(a[1]);
    const double wx = a[0] - static_cast<double>(c[0]), wy = a[1] - static_cast<double>(c[1]);
    const double square = dx * dx + dy * dy, half = (wx * dx + wy * dy) / square;
    const double inner = half * half - (wx * wx + wy * wy - r * r) / square;
    if (square < 0.01 || std::fabs(inner) < 1e-3) {
      continue;
    }
    const SegmentHits h = hitCircle(a, b, c, static_cast<float>(r));
    ASSERT_EQ(h.result, inner > 0 ? 1 : 0);
    std::vector<double> roots;  // the far one first
    bool nearEnd = false;
    for (const double side : {1.0, -1.0}) {
      const double root = inner > 0 ? -half + side * std::sqrt(inner) : -9.0;
      nearEnd = nearEnd || std::fabs(root) < 1e-4 || std::fabs(root - 1) < 1e-4;
      if (root > 0 && root < 1) {
        roots.push_back(root);
      }
    }
    if (nearEnd) {
      continue;
    }
    ASSERT_EQ(h.count, static_cast<int>(roots.size()));
    twice += h.count == 2 ? 1 : 0;
    for (int k = 0; k < h.count; ++k) {
      EXPECT_NEAR(h.t[k], roots[static_cast<std::size_t>(k)], 1e-4);
      EXPECT_NEAR(std::hypot(h.p[k][0] - c[0], h.p[k][1] - c[1]), r, 1e-4);
      EXPECT_EQ(h.angle[k], slGetCircleAng(c, h.p[k], static_cast<float>(r)));
    }
  }
  EXPECT_GT(twice, 100);
}

TEST(CircleIntersection, segmentEndsOnTheCircleFollowTheStatedComparisons) {
  const float c[2]{0, 0}, on[2]{1, 0}, far[2]{3, 0}, opposite[2]{-1, 0}, left[2]{-3, 0};
  EXPECT_EQ(hitCircle(c, on, c, 1).count, 0) << "an end on the circle is inside";
  EXPECT_EQ(hitCircle(opposite, on, c, 1).count, 0);
  const SegmentHits leaving = hitCircle(on, far, c, 1);
  EXPECT_EQ(leaving.count, 1);
  EXPECT_EQ(leaving.t[0], 0.0F);
  const SegmentHits arriving = hitCircle(far, on, c, 1);
  EXPECT_EQ(arriving.count, 1);
  EXPECT_EQ(arriving.t[0], 1.0F);
  const SegmentHits half = hitCircle(left, on, c, 1);
  EXPECT_EQ(half.count, 1) << "far end outside, near end on the circle: only the entry";
  EXPECT_EQ(half.p[0][0], -1.0F);
  const SegmentHits through = hitCircle(left, far, c, 1);
  EXPECT_EQ(through.count, 2);
  EXPECT_GT(through.t[0], through.t[1]);
  EXPECT_NEAR(through.angle[1], kPi, 1e-6);
}

TEST(CircleIntersection, pointSegmentsEndInAResult) {
  const float c[2]{0, 0}, inside[2]{0.5F, 0}, outside[2]{5, 0};
  EXPECT_EQ(hitCircle(inside, inside, c, 1).count, 0);
  EXPECT_EQ(hitCircle(outside, outside, c, 1).result, 0);
}

TEST(CircleIntersection, twoCirclesMeetInPointsOfBoth) {
  RandomGeometry random(134);
  for (int repeat = 0; repeat < 4000; ++repeat) {
    const Double3 c1 = random.point(3), u = random.direction();
    const Double3 n = unit(cross(u, random.direction() + Double3{0.01, 0.02, 0.03}));
    const double r1 = random.number(0.3, 3), r2 = random.number(0.3, 3);
    const double d = random.number(0.05, 5);
    const double margin = std::min(r1 + r2 - d, d - std::fabs(r1 - r2));
    if (std::fabs(margin) < 0.01) {
      continue;
    }
    const Double3 c2 = c1 + d * u;
    float out[2][3]{};
    const int result =
        slIntersectCircle(narrow(c1).data(), static_cast<float>(r1), narrow(c2).data(),
                          static_cast<float>(r2), narrow(n).data(), out);
    ASSERT_EQ(result, margin > 0 ? 2 : 0);
    if (result == 2) {
      const double side = dot(widen(out[0]) - c1, cross(n, u));
      EXPECT_GT(side, 0) << "the first point is the one on the y side";
      EXPECT_NEAR(dot(widen(out[1]) - c1, cross(n, u)), -side, 1e-4);
      for (const auto& p : out) {
        EXPECT_NEAR(norm(widen(p) - c1), r1, 2e-4);
        EXPECT_NEAR(norm(widen(p) - c2), r2, 2e-4);
        EXPECT_NEAR(dot(widen(p) - c1, n), 0, 1e-4);
      }
    }
  }
}

TEST(CircleIntersection, pointsOfTwoCirclesDependOnWhatOutHeld) {
  // The two-point formula written out again; q has a y only through rounding, so out holds large
  // numbers to make it felt.
  RandomGeometry random(135);
  int differing = 0;
  for (int repeat = 0; repeat < 500; ++repeat) {
    const Float3 c1 = narrow(random.point(3)), n = narrow(random.direction());
    const Double3 u = unit(cross(widen(n.data()), random.direction()));
    const Float3 c2 = narrow(widen(c1.data()) + 1.5 * u);
    const float held[2]{1e7F, -3e7F};
    float out[2][3]{{0, held[0], 0}, {0, held[1], 0}}, plain[2][3]{}, m[16], q[3];
    XYCoordSysD cs;
    ASSERT_EQ(slGenXYCoordSysByNormal(c1.data(), c2.data(), n.data(), &cs), 1);
    ASSERT_EQ(slIntersectCircle(c1.data(), 1.25F, c2.data(), 0.75F, n.data(), out), 2);
    ASSERT_EQ(slIntersectCircle(c1.data(), 1.25F, c2.data(), 0.75F, n.data(), plain), 2);
    slGenMatrixToLocal(cs, m);
    slMatrix16MultiPoint3(m, c2.data(), q);
    const double x = q[0], y = q[1], L = (x * x + y * y + 1.25 * 1.25 - 0.75 * 0.75) / (2.0 * x);
    const double g = y / x;
    const double S = std::sqrt(4 * (L * L) * (g * g) - 4 * (L * L - 1.25 * 1.25) * (g + 1));
    for (int k = 0; k < 2; ++k) {
      const float py = static_cast<float>((2 * L * g + (k == 0 ? S : -S)) / (2 * (g + 1)));
      const float px = static_cast<float>(L - g * held[k]);
      for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(bits(out[k][i]), bits(static_cast<float>(cs.origin[i] + double{px} * cs.xAxis[i] +
                                                           double{py} * cs.yAxis[i])));
        differing += out[k][i] != plain[k][i] ? 1 : 0;
      }
    }
  }
  EXPECT_GT(differing, 500);
}

TEST(CircleIntersection, touchingCirclesHaveOnePoint) {
  const float c1[3]{0, 0, 0}, c2[3]{2, 0, 0}, up[3]{0, 0, 1}, near[3]{1, 0, 0};
  float out[2][3]{{8, 8, 8}, {8, 8, 8}};
  EXPECT_EQ(slIntersectCircle(c1, 1, c2, 1, up, out), 1);
  EXPECT_EQ(widen(out[0]), (Double3{1, 0, 0}));
  EXPECT_EQ(slIntersectCircle(c1, 2, near, 1, up, out), 1);
  EXPECT_EQ(widen(out[0]), (Double3{2, 0, 0}));
  EXPECT_EQ(slIntersectCircle(c1, 1, near, 2, up, out), 1);
  EXPECT_EQ(widen(out[0]), (Double3{-1, 0, 0})) << "the larger circle is the second";
  EXPECT_EQ(slIntersectCircle(c1, 0.99991F, c2, 1, up, out), 1) << "a gap below the tolerance";
  EXPECT_EQ(slIntersectCircle(c1, 0.9998F, c2, 1, up, out), 0);
  EXPECT_EQ(out[1][0], 8.0F);
}

TEST(CircleIntersection, sameAndObliqueCirclesHaveTheirOwnCodes) {
  const float c1[3]{0, 0, 0}, lifted[3]{1, 0, 0.5F}, up[3]{0, 0, 1};
  float out[2][3]{{8, 8, 8}, {8, 8, 8}};
  EXPECT_EQ(slIntersectCircle(c1, 1, c1, 1, up, out), INT_MAX);
  EXPECT_EQ(slIntersectCircle(c1, 1, c1, 2, up, out), 0);
  EXPECT_EQ(slIntersectCircle(c1, 1, lifted, 1, up, out), -1);
  EXPECT_EQ(out[0][0], 8.0F);
}

}  // namespace
