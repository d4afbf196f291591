#include <gtest/gtest.h>

#include <cmath>

#include "geometry/geometry_values.h"
#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/geometry/intersections.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

constexpr Float3 kUp{0, 0, 1}, kUntouched{8, 8, 8};

TEST(PlaneIntersection, linesAndRaysMeetThePlaneWhereTheyWereBuiltTo) {
  randomRounds<RandomGeometry>(111, 5000, [&](RandomGeometry& random) {
    const Double3 n = random.direction(), u = random.direction(), meeting = random.point(3);
    const double k = random.number(-4, 4);
    if (std::fabs(dot(u, n)) < 0.2 || std::fabs(k) < 0.01) {
      return;
    }
    const Float3 p = narrow(meeting - k * u);
    const float d = static_cast<float>(-dot(meeting, n));
    float out[3];
    EXPECT_EQ(slLineIntersectPlane(p, narrow(u), narrow(n), d, out), 1);
    EXPECT_LT(apart(out, meeting), 3e-5);
    EXPECT_EQ(slRadialIntersectPlane(p, narrow(u), narrow(n), d, out), k > 0 ? 1 : -1);
    EXPECT_LT(apart(out, meeting), 3e-5) << "also when the plane lies behind";
  });
}

TEST(PlaneIntersection, lineInThePlaneIsToldApartAndAParallelOneIsNot) {
  const Float3 along{1, 0, kTolerance}, steeper{1, 0, 0.00011F}, level{1, 0, 0};
  const Float3 on{5, 0, kTolerance}, off{5, 0, 1};
  Float3 out = kUntouched;
  EXPECT_EQ(slLineIntersectPlane(on, along, kUp, 0, out), 3);
  EXPECT_EQ(slRadialIntersectPlane(on, along, kUp, 0, out), 3);
  EXPECT_EQ(out, kUntouched);
  EXPECT_EQ(slRadialIntersectPlane(on, steeper, kUp, 0, out), 1);
  EXPECT_EQ(out, on) << "a start on the plane is the answer, unmoved";
  EXPECT_EQ(slLineIntersectPlane(on, steeper, kUp, 0, out), 1);
  EXPECT_NEAR(out[2], 0.0F, 1e-9F);
  EXPECT_EQ(slLineIntersectPlane(off, level, kUp, 0, out), 1);
  EXPECT_TRUE(std::isinf(out[0]));
  EXPECT_EQ(slRadialIntersectPlane(off, level, kUp, 0, out), -1);
}

TEST(PlaneIntersection, rayAgainstAPolygonAnswersZeroForInside) {
  const float face[4][3]{{-1, -2, 5}, {3, -2, 5}, {3, 1, 5}, {-1, 1, 5}};
  const float away[4][3]{{1, 0.5F, 5}, {3, 0.5F, 5}, {3, 2, 5}, {1, 2, 5}};
  const float bent[4][3]{{-1, -2, 5}, {3, -2, 5}, {3, 1, 5}, {-1, 1, 6}};
  const float line[3][3]{{0, 0, 5}, {1, 0, 5}, {2, 0, 5}}, point[2][3]{{1, 1, 1}, {1, 1, 1}};
  const Float3 origin{}, down{0, 0, -1}, level{1, 0, 0}, over{0.5F, 0, 5}, beside{2, 1, 0};
  Float3 out = kUntouched;
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, face, 4, out), 0);
  EXPECT_EQ(out[2], 5.0F);
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, away, 4, out), 1);
  EXPECT_EQ(slRadialIntersectFaceM(origin, down, face, 4, out), -1);
  EXPECT_EQ(slRadialIntersectFaceM(over, level, face, 4, out), 3) << "in the plane";
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, bent, 4, out), 3) << "no plane";
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, point, 2, out), 4);
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, point, 0, out), 4);
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, line, 3, out), 5);
  EXPECT_EQ(slRadialIntersectFaceM(beside, kUp, away, 4, out), 1)
      << "a ray through the middle of a polygon that does not hold the place of the origin";
}

TEST(PlaneIntersection, rayPassesAPointOfAPlacedFrame) {
  RandomGeometry random(112);
  int passed = 0;
  for (int repeat = 0; repeat < 3000; ++repeat) {
    float motion[16];
    std::copy_n(randomMotion(random, 4).data(), 16, motion);
    const Double3 hit = random.flatPoint(2), q = random.flatPoint(2), u = random.direction();
    const float k = random.number(0.5, 3), r = random.number(0.1, 3);
    if (std::fabs(u[2]) < 0.2 || std::fabs(norm(hit - q) - r) < 0.001) {
      continue;
    }
    const Float3 start = moved(motion, hit - k * u);
    const int ahead = slJudgeRadialThroughPntM(start, turned(motion, u), narrow(q), r, motion);
    EXPECT_EQ(ahead, norm(hit - q) < r ? 1 : 0);
    passed += ahead;
    EXPECT_EQ(slJudgeRadialThroughPntM(start, turned(motion, -1.0 * u), narrow(q), r, motion), 0);
  }
  EXPECT_GT(passed, 500);
}

TEST(PlaneIntersection, raySegmentTestMeasuresThreeComponents) {
  const Float3 down{0, 0, -1};
  const auto passes = [](Float3 start, Float3 along, Float3 b, float r) {
    const float still[16]{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    return slJudgeRadialThroughLineM(start, along, Float3{0, 0}, b, r, still);
  };
  // e = (3, 4), w = (1, 0): L^2 = 26, c = 3 / sqrt(26), L^2 - c^2 = 25.6538...
  EXPECT_EQ(passes({1, 0, 2}, down, {3, 4}, 5.066F), 1);
  EXPECT_EQ(passes({1, 0, 2}, down, {3, 4}, 5.064F), 0);
  EXPECT_EQ(passes({1, 0, 2}, kUp, {3, 4}, 9), 0) << "plane behind";
  EXPECT_EQ(passes({-1, 0, 2}, down, {3, 4}, 9), 0) << "c <= 0";
  EXPECT_EQ(passes({1.5F, 2, 2}, down, {3, 4}, 0.01F), 0)
      << "meets the segment itself, but r is small against its length";
  EXPECT_EQ(passes({0.1F, 0, 2}, down, {0.3F, 0}, 0), 1) << "c = 0.03 / (0.1 sqrt(0.1)) = 0.9487";
}

TEST(PlaneIntersection, twoPlanesMeetInALineOfBothAndHaveACommonPoint) {
  randomRounds<RandomGeometry>(113, 3000, [&](RandomGeometry& random) {
    const auto [na, nb, along] = random.obliqueDirections(0.2);
    const Double3 pa = random.point(3), pb = random.point(3);
    const Float3 fpa = narrow(pa), fna = narrow(na), fpb = narrow(pb), fnb = narrow(nb);
    float pt[3], dir[3];
    ASSERT_EQ(slGetPlaneIntersectM(fpa, fna, fpb, fnb, pt, dir), 3);
    EXPECT_LT(apart(dir, along), 1e-6);
    EXPECT_NEAR(dot(widen(pt) - pa, na), 0, 1e-4);
    EXPECT_NEAR(dot(widen(pt) - pb, nb), 0, 1e-4);
    EXPECT_NEAR(dot(widen(pt) - pa, along), 0, 1e-4) << "no slip along the line";

    const PlaneD a{{fpa[0], fpa[1], fpa[2]}, {fna[0], fna[1], fna[2]}};
    const PlaneD b{{fpb[0], fpb[1], fpb[2]}, {fnb[0], fnb[1], fnb[2]}};
    if (std::fabs(cross(na, nb)[0]) > 0.05) {
      ASSERT_EQ(slGetPointOnIntersectLine(a, b, pt), 1);
      EXPECT_EQ(pt[0], 0.0F);
      EXPECT_NEAR(dot(widen(pt) - pa, na), 0, 2e-4);
      EXPECT_NEAR(dot(widen(pt) - pb, nb), 0, 2e-4);
    }
  });
}

TEST(PlaneIntersection, parallelPlanesAreToldFromEqualOnes) {
  const Float3 pa{1, 2, 3}, down{0, 0, -1}, apart{0, 0, 3.001F}, near{9, 9, 3.00009F};
  Float3 pt = kUntouched, dir;
  EXPECT_EQ(slGetPlaneIntersectM(pa, kUp, apart, down, pt, dir), 1);
  EXPECT_EQ(slGetPlaneIntersectM(pa, kUp, near, down, pt, dir), 2);
  EXPECT_EQ(pt, kUntouched);
  EXPECT_EQ(dir[0], 1.0F);
  const Float3 tilted{0, 0.000101F, 1};
  EXPECT_EQ(slGetPlaneIntersectM(pa, kUp, near, tilted, pt, dir), 3);
  EXPECT_TRUE(std::isfinite(pt[1]));
  const Float3 twice{0, 0, 2}, hardlyTilted{0, 0.00006F, 1}, level{1, 2, 3.00005F};
  EXPECT_EQ(slGetPlaneIntersectM(pa, twice, level, hardlyTilted, pt, dir), 3);
  EXPECT_EQ(pt, pa) << "too flat to divide by: the first point is on both";
}

TEST(PlaneIntersection, commonPointPrefersZeroInXThenYThenZ) {
  const PlaneD x{{4, 0, 0}, {1, 0, 0}}, y{{0, 5, 0}, {0, 1, 0}}, z{{0, 0, 6}, {0, 0, 1}};
  Float3 out;
  EXPECT_EQ(slGetPointOnIntersectLine(x, z, out), 1);
  EXPECT_EQ(out, (Float3{4, 0, 6}));
  EXPECT_EQ(slGetPointOnIntersectLine(x, y, out), 1);
  EXPECT_EQ(out, (Float3{4, 5, 0}));
  EXPECT_EQ(slGetPointOnIntersectLine(x, x, out), 0);
  EXPECT_EQ(out, (Float3{0, 0, 0}));
}

}  // namespace
