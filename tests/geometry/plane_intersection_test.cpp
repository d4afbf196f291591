#include <gtest/gtest.h>

#include <cmath>

#include "geometry/random_geometry.h"
#include "zel/core/constants.h"
#include "zel/geometry/intersections.h"
#include "zel/geometry/matrices.h"
#include "zel/geometry/rotations.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

constexpr float kUp[3]{0, 0, 1};

TEST(PlaneIntersection, linesAndRaysMeetThePlaneWhereTheyWereBuiltTo) {
  RandomGeometry random(111);
  for (int repeat = 0; repeat < 5000; ++repeat) {
    const Double3 n = random.direction(), u = random.direction(), meeting = random.point(3);
    const double k = random.number(-4, 4);
    if (std::fabs(dot(u, n)) < 0.2 || std::fabs(k) < 0.01) {
      continue;
    }
    const Float3 p = narrow(meeting - k * u), fu = narrow(u), fn = narrow(n);
    const float d = static_cast<float>(-dot(meeting, n));
    float out[3];
    EXPECT_EQ(slLineIntersectPlane(p.data(), fu.data(), fn.data(), d, out), 1);
    EXPECT_LT(norm(widen(out) - meeting), 3e-5);
    EXPECT_EQ(slRadialIntersectPlane(p.data(), fu.data(), fn.data(), d, out), k > 0 ? 1 : -1);
    EXPECT_LT(norm(widen(out) - meeting), 3e-5) << "also when the plane lies behind";
  }
}

TEST(PlaneIntersection, lineInThePlaneIsToldApartAndAParallelOneIsNot) {
  const float along[3]{1, 0, kTolerance}, steeper[3]{1, 0, 0.00011F};
  const float on[3]{5, 0, kTolerance}, off[3]{5, 0, 1};
  float out[3]{8, 8, 8};
  EXPECT_EQ(slLineIntersectPlane(on, along, kUp, 0, out), 3);
  EXPECT_EQ(slRadialIntersectPlane(on, along, kUp, 0, out), 3);
  EXPECT_EQ(out[0], 8.0F);
  EXPECT_EQ(slRadialIntersectPlane(on, steeper, kUp, 0, out), 1);
  EXPECT_EQ(out[2], kTolerance) << "a start on the plane is the answer, unmoved";
  EXPECT_EQ(slLineIntersectPlane(on, steeper, kUp, 0, out), 1);
  EXPECT_NEAR(out[2], 0.0F, 1e-9F);
  const float level[3]{1, 0, 0};
  EXPECT_EQ(slLineIntersectPlane(off, level, kUp, 0, out), 1);
  EXPECT_TRUE(std::isinf(out[0]));
  EXPECT_EQ(slRadialIntersectPlane(off, level, kUp, 0, out), -1);
}

TEST(PlaneIntersection, rayAgainstAPolygonAnswersZeroForInside) {
  const float face[4][3]{{-1, -2, 5}, {3, -2, 5}, {3, 1, 5}, {-1, 1, 5}};
  const float away[4][3]{{1, 0.5F, 5}, {3, 0.5F, 5}, {3, 2, 5}, {1, 2, 5}};
  const float bent[4][3]{{-1, -2, 5}, {3, -2, 5}, {3, 1, 5}, {-1, 1, 6}};
  const float line[3][3]{{0, 0, 5}, {1, 0, 5}, {2, 0, 5}}, point[2][3]{{1, 1, 1}, {1, 1, 1}};
  const float origin[3]{0, 0, 0}, down[3]{0, 0, -1}, level[3]{1, 0, 0}, over[3]{0.5F, 0, 5};
  float out[3]{8, 8, 8};
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, face, 4, out), 0);
  EXPECT_EQ(out[2], 5.0F);
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, away, 4, out), 1);
  EXPECT_EQ(slRadialIntersectFaceM(origin, down, face, 4, out), -1);
  EXPECT_EQ(slRadialIntersectFaceM(over, level, face, 4, out), 3) << "in the plane";
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, bent, 4, out), 3) << "no plane";
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, point, 2, out), 4);
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, point, 0, out), 4);
  EXPECT_EQ(slRadialIntersectFaceM(origin, kUp, line, 3, out), 5);
  const float beside[3]{2, 1, 0};
  EXPECT_EQ(slRadialIntersectFaceM(beside, kUp, away, 4, out), 1)
      << "a ray through the middle of a polygon that does not hold the place of the origin";
}

TEST(PlaneIntersection, rayPassesAPointOfAPlacedFrame) {
  RandomGeometry random(112);
  int passed = 0;
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Float3 axis = narrow(random.direction()), place = narrow(random.point(4));
    float turn[16], motion[16];
    slGenerateRotateMatrix(axis.data(), static_cast<float>(random.number(-3, 3)), turn);
    slGenerateMoveMatrix(place.data(), 1.0F, motion);
    slSetMatrixByRightMulti(turn, motion);
    const Double3 hit{random.number(-2, 2), random.number(-2, 2), 0};
    const Double3 q = random.point(2), u = random.direction();
    const double apart = std::hypot(hit[0] - q[0], hit[1] - q[1]), k = random.number(0.5, 3);
    const double r = random.number(0.1, 3);
    if (std::fabs(u[2]) < 0.2 || std::fabs(apart - r) < 0.001) {
      continue;
    }
    Float3 start = narrow(hit - k * u), direction = narrow(u);
    slMatrix16MultiPoint3(motion, start.data());
    slMatrix16MultiVector3(motion, direction.data());
    const float fq[2]{static_cast<float>(q[0]), static_cast<float>(q[1])};
    const float fr = static_cast<float>(r);
    const int result = slJudgeRadialThroughPntM(start.data(), direction.data(), fq, fr, motion);
    EXPECT_EQ(result, apart < r ? 1 : 0);
    passed += result;
    const Float3 back{-direction[0], -direction[1], -direction[2]};
    EXPECT_EQ(slJudgeRadialThroughPntM(start.data(), back.data(), fq, fr, motion), 0);
  }
  EXPECT_GT(passed, 500);
}

TEST(PlaneIntersection, raySegmentTestMeasuresThreeComponents) {
  // e = (3, 4), w = (1, 0): L^2 = 26, c = 3 / sqrt(26), L^2 - c^2 = 25.6538...
  float still[16];
  slSetIdentity(still);
  const float(&motion)[16] = still;
  const float a[2]{0, 0}, b[2]{3, 4}, start[3]{1, 0, 2}, down[3]{0, 0, -1};
  EXPECT_EQ(slJudgeRadialThroughLineM(start, down, a, b, 5.066F, motion), 1);
  EXPECT_EQ(slJudgeRadialThroughLineM(start, down, a, b, 5.064F, motion), 0);
  EXPECT_EQ(slJudgeRadialThroughLineM(start, kUp, a, b, 9, motion), 0) << "plane behind";
  const float behind[3]{-1, 0, 2}, onLine[3]{1.5F, 2, 2}, flat[2]{0.3F, 0};
  EXPECT_EQ(slJudgeRadialThroughLineM(behind, down, a, b, 9, motion), 0) << "c <= 0";
  EXPECT_EQ(slJudgeRadialThroughLineM(onLine, down, a, b, 0.01F, motion), 0)
      << "meets the segment itself, but r is small against its length";
  const float ahead[3]{0.1F, 0, 2};  // c = 0.03 / (0.1 * sqrt(0.1)) = 0.9487
  EXPECT_EQ(slJudgeRadialThroughLineM(ahead, down, a, flat, 0.0F, motion), 1);
}

TEST(PlaneIntersection, twoPlanesMeetInALineOfBoth) {
  RandomGeometry random(113);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 na = random.direction(), nb = random.direction();
    const Double3 pa = random.point(3), pb = random.point(3);
    if (norm(cross(na, nb)) < 0.2) {
      continue;
    }
    float pt[3], dir[3];
    ASSERT_EQ(slGetPlaneIntersectM(narrow(pa).data(), narrow(na).data(), narrow(pb).data(),
                                   narrow(nb).data(), pt, dir),
              3);
    EXPECT_LT(norm(widen(dir) - unit(cross(na, nb))), 1e-6);
    EXPECT_NEAR(dot(widen(pt) - pa, na), 0, 1e-4);
    EXPECT_NEAR(dot(widen(pt) - pb, nb), 0, 1e-4);
    EXPECT_NEAR(dot(widen(pt) - pa, unit(cross(na, nb))), 0, 1e-4) << "no slip along the line";
  }
}

TEST(PlaneIntersection, parallelPlanesAreToldFromEqualOnes) {
  const float pa[3]{1, 2, 3}, down[3]{0, 0, -1}, apart[3]{0, 0, 3.001F}, near[3]{9, 9, 3.00009F};
  float pt[3]{8, 8, 8}, dir[3];
  EXPECT_EQ(slGetPlaneIntersectM(pa, kUp, apart, down, pt, dir), 1);
  EXPECT_EQ(slGetPlaneIntersectM(pa, kUp, near, down, pt, dir), 2);
  EXPECT_EQ(pt[0], 8.0F);
  EXPECT_EQ(dir[0], 1.0F);
  const float tilted[3]{0, 0.000101F, 1};
  EXPECT_EQ(slGetPlaneIntersectM(pa, kUp, near, tilted, pt, dir), 3);
  EXPECT_TRUE(std::isfinite(pt[1]));
  const float twice[3]{0, 0, 2}, hardlyTilted[3]{0, 0.00006F, 1}, level[3]{1, 2, 3.00005F};
  EXPECT_EQ(slGetPlaneIntersectM(pa, twice, level, hardlyTilted, pt, dir), 3);
  EXPECT_EQ(widen(pt), widen(pa)) << "too flat to divide by: the first point is on both";
}

TEST(PlaneIntersection, commonPointPrefersZeroInXThenYThenZ) {
  RandomGeometry random(114);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 na = random.direction(), nb = random.direction();
    PlaneD a, b;
    for (std::size_t i = 0; i < 3; ++i) {
      a.normal[i] = static_cast<float>(na[i]);
      b.normal[i] = static_cast<float>(nb[i]);
      a.point[i] = static_cast<float>(random.number(-3, 3));
      b.point[i] = static_cast<float>(random.number(-3, 3));
    }
    if (std::fabs(cross(na, nb)[0]) < 0.05) {
      continue;
    }
    float out[3];
    ASSERT_EQ(slGetPointOnIntersectLine(a, b, out), 1);
    EXPECT_EQ(out[0], 0.0F);
    EXPECT_NEAR(dot(widen(out) - widen(a.point), na), 0, 2e-4);
    EXPECT_NEAR(dot(widen(out) - widen(b.point), nb), 0, 2e-4);
  }
  float out[3];
  const PlaneD x{{4, 0, 0}, {1, 0, 0}}, y{{0, 5, 0}, {0, 1, 0}}, z{{0, 0, 6}, {0, 0, 1}};
  EXPECT_EQ(slGetPointOnIntersectLine(x, z, out), 1);
  EXPECT_EQ(widen(out), (Double3{4, 0, 6}));
  EXPECT_EQ(slGetPointOnIntersectLine(x, y, out), 1);
  EXPECT_EQ(widen(out), (Double3{4, 5, 0}));
  EXPECT_EQ(slGetPointOnIntersectLine(x, x, out), 0);
  EXPECT_EQ(widen(out), (Double3{0, 0, 0}));
}

}  // namespace
