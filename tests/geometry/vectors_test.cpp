#include "zel/geometry/vectors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "support/bits.h"
#include "zel/core/constants.h"
#include "zel/geometry/determinants.h"
#include "zel/geometry/lengths.h"

namespace {

using zel::kTolerance;

TEST(Lengths, tinyVectorsHaveNoLength) {
  const float tiny[3]{0.00005F, 0.0F, 0.0F};
  const float atTolerance[3]{kTolerance, 0.0F, 0.0F};
  const float above[3]{0.00010001F, 0.0F, 0.0F};
  EXPECT_EQ(slNorm2(tiny), 0.0F);
  EXPECT_EQ(slNorm2(atTolerance), 0.0F);
  EXPECT_FLOAT_EQ(slNorm2(above), 0.00010001F);
  const float nan[3]{NAN, 1.0F, 1.0F};
  EXPECT_EQ(slNorm2(nan), 0.0F);
}

TEST(Lengths, agreeWithEachOther) {
  const float a[3]{1.0F, 2.0F, 3.0F};
  const float b[3]{3.0F, 5.0F, 9.0F};
  const double d[3]{2.0, 3.0, 6.0};
  EXPECT_EQ(slDistance3(a, b), 7.0F);
  EXPECT_EQ(slSquareDistance3(a, b), 49.0F);
  EXPECT_EQ(slDistance(1, 2, 3, 3, 5, 9), 7.0F);
  EXPECT_EQ(slLength(d), 7.0);
  EXPECT_EQ(slLengthD(a), std::sqrt(14.0));
  EXPECT_EQ(slPlaneDistSqr(a, b), 13.0F);
  EXPECT_EQ(slDistSquare2(1, 2, 3, 5), 13.0F);
  EXPECT_FLOAT_EQ(slDistance2(a, b), std::sqrt(13.0F));
  EXPECT_EQ(slLength2(d), std::sqrt(13.0));
  EXPECT_EQ(slSquareLength2(a), 5.0F);
  EXPECT_EQ(slDot2D(a, b), 13.0F);
  const double e[2]{5.0, 7.0};
  EXPECT_EQ(slDistanceD2(d, e), 5.0);
}

TEST(Lengths, squaresAreFormedInDoublePrecision) {
  const float huge[3]{1e30F, 0.0F, 0.0F};
  EXPECT_EQ(slNorm2(huge), 1e30F);  // the square does not fit a float
  const float mixed[3]{4097.0F, 1.0F, 0.0F};
  EXPECT_EQ(slLengthD(mixed), std::sqrt(16785410.0));  // nor does this one, exactly
  // sqrt(25080101) = 5008.003694; a square that was rounded to float leads to the float before.
  EXPECT_EQ(slDistance(1, 2, 3, 3001, 4012, 4), 5008.00390625F);
  const float a[3]{1.0F, 2.0F, 3.0F}, b[3]{3001.0F, 4012.0F, 4.0F};
  EXPECT_EQ(slDistance3(a, b), 5008.00341796875F);
}

TEST(Normalizing, degenerateVectorsBecomeTheFirstAxis) {
  float v[3]{0.0F, kTolerance, 2.5e-8F};
  EXPECT_EQ(slNorm2(v), kTolerance);
  EXPECT_EQ(slNormalize(v), 0);
  EXPECT_EQ(v[0], 1.0F);
  double d[3]{0.0, 0.0001, 0.0};
  EXPECT_EQ(slNormalize(d), 1);
  EXPECT_EQ(d[1], 1.0);
  double e[3]{0.0, 0.00009, 0.0};
  EXPECT_EQ(slNormalize(e), 0);
  EXPECT_EQ(e[0] + e[1], 1.0);
  float plane[2]{0.0F, -0.00009F};
  EXPECT_EQ(slNormalize2D(plane), 0);
  EXPECT_EQ(plane[0], 1.0F);
  EXPECT_EQ(plane[1], 0.0F);
}

TEST(Normalizing, lengthIsReportedEvenWithoutADirection) {
  const float shortest[3]{0.0F, kTolerance, 0.00000005F};
  float dir[3];
  EXPECT_FLOAT_EQ(slLenAndDir(shortest, dir), kTolerance);
  const float v[3]{0.0F, -3.0F, 4.0F};
  EXPECT_EQ(slLenAndDir(v, dir), 5.0F);
  EXPECT_EQ(dir[1], -0.6F);
  EXPECT_EQ(dir[2], 0.8F);
}

TEST(Normalizing, randomVectorsKeepTheirDirection) {
  std::mt19937 random(42);
  std::uniform_real_distribution<double> component(-1000.0, 1000.0);
  for (int i = 0; i < 5000; ++i) {
    const double d[3]{component(random), component(random), component(random)};
    const long double length = std::hypot(static_cast<long double>(d[0]), d[1], d[2]);
    float f[3]{static_cast<float>(d[0]), static_cast<float>(d[1]), static_cast<float>(d[2])};
    double e[3]{d[0], d[1], d[2]};
    ASSERT_EQ(slNormalize(f) + slNormalize(e), 2);
    for (int k = 0; k < 3; ++k) {
      EXPECT_NEAR(f[k], static_cast<double>(d[k] / length), 2e-7);
      EXPECT_NEAR(e[k], static_cast<double>(d[k] / length), 1e-15);
    }
  }
}

TEST(Vectors, edgesLeaveTheMiddleVertex) {
  const float a[3]{1, 0, 0}, b[3]{1, 1, 0}, c[3]{0, 1, 5};
  float u[3], w[3];
  EXPECT_EQ(slVect(a, b, c, u, w), 1);
  EXPECT_EQ(u[1], -1.0F);
  EXPECT_EQ(w[0], -1.0F);
  EXPECT_EQ(w[2], 5.0F);
}

TEST(Vectors, perpendicularsFormARightHandedFrame) {
  std::mt19937 random(43);
  std::uniform_real_distribution<float> component(-1.0F, 1.0F);
  for (int i = 0; i < 3000; ++i) {
    float v[3]{component(random), component(random), component(random)};
    v[i % 4 % 3] *= i % 4 == 3 ? 1.0F : 1e-5F;
    slNormalize(v);
    float u[3], w[3];
    slOthPlane(v, u, w);
    const double determinant = u[0] * (w[1] * v[2] - w[2] * v[1]) +
                               u[1] * (w[2] * v[0] - w[0] * v[2]) +
                               u[2] * (w[0] * v[1] - w[1] * v[0]);
    EXPECT_NEAR(determinant, 1.0, 3e-4) << v[0] << ' ' << v[1] << ' ' << v[2];
  }
}

TEST(Vectors, perpendicularOfAnAxisTriesXFirst) {
  float out[3];
  const float zero[3]{0, 0, 0}, alongX[3]{1, 0, 0}, inPlane[3]{1, 1, 0}, oblique[3]{3, 4, 1};
  slOthVect(zero, out);
  EXPECT_EQ(out[0], 1.0F);
  slOthVect(alongX, out);
  EXPECT_EQ(out[1], 1.0F);
  slOthVect(inPlane, out);
  EXPECT_EQ(out[2], 1.0F);
  slOthVect(oblique, out);
  EXPECT_EQ(out[0], -0.8F);
  EXPECT_EQ(out[1], 0.6F);
}

TEST(Vectors, parallelMeansSineBelowTheTolerance) {
  const float x[3]{2, 0, 0}, opposite[3]{-5, 0, 0};
  const float tiny[3]{kTolerance, 0, 2.5e-8F};  // its length rounds to the tolerance itself
  const float barely[3]{1.0F, 0.00009F, 0.0F}, hardly[3]{1.0F, 0.00011F, 0.0F};
  EXPECT_EQ(slVectParallel(x, opposite), 1);
  EXPECT_EQ(slVectParallel(x, barely), 1);
  EXPECT_EQ(slVectParallel(x, hardly), 0);
  EXPECT_EQ(slVectParallel(x, tiny), 0);
}

TEST(Vectors, pointsAtTheToleranceDiffer) {
  const float o[3]{0, 0, 0}, at[3]{0, kTolerance, 0}, near[3]{0, 0, 0.00009999F};
  EXPECT_EQ(slIsEqualPoint3D(o, at), 0);
  EXPECT_EQ(slIsEqualPoint3D(o, near), 1);
}

TEST(Vectors, dominantAxisPrefersTheLowerIndex) {
  const float tie[3]{-2, 2, 2}, z[3]{1, 1, -3}, zero[3]{0.00009F, -0.0001F, 0.0001F};
  EXPECT_EQ(slGetVectMaxDir(tie), 0);
  EXPECT_EQ(slGetVectMaxDir(z), 2);
  EXPECT_EQ(slGetVectMaxDir(zero), 0);
  const float alongZ[3]{0, 0, 5}, none[3]{0, 1, 1}, null[3]{0, 0, 0};
  EXPECT_EQ(slComparWithCoordAxis(alongZ), 2);
  EXPECT_EQ(slComparWithCoordAxis(none), -1);
  EXPECT_EQ(slComparWithCoordAxis(null), 0);
}

TEST(Vectors, angleLeavesTheDotProductWhenThereIsNone) {
  const float tiny[3]{kTolerance, 0, 2.5e-8F}, x[3]{2, 0, 0}, y[3]{0, 3, 0};
  float angle = -1.0F;
  EXPECT_EQ(slGetVectAngle(tiny, x, &angle), 0);
  EXPECT_FLOAT_EQ(angle, 0.0002F);
  EXPECT_EQ(slGetVectAngle(x, y, &angle), 1);
  EXPECT_FLOAT_EQ(angle, zel::kHalfPi);
}

TEST(Vectors, signedAngleMatchesTheTwoArgumentArcTangent) {
  std::mt19937 random(44);
  std::uniform_real_distribution<double> turn(-3.0, 3.0);
  const float up[3]{0, 0, 2};
  const double upD[3]{0, 0, 0.5};
  for (int i = 0; i < 3000; ++i) {
    const double from = turn(random), by = turn(random);
    const double a[3]{3 * std::cos(from), 3 * std::sin(from), 0};
    const double b[3]{std::cos(from + by), std::sin(from + by), 0};
    const float fa[3]{static_cast<float>(a[0]), static_cast<float>(a[1]), 0};
    const float fb[3]{static_cast<float>(b[0]), static_cast<float>(b[1]), 0};
    if (std::abs(by) > 0.02) {  // nearer to 0 the arc cosine snaps
      EXPECT_NEAR(slCalAngleTwoVects(fa, fb, up), by, 3e-5);
      EXPECT_NEAR(slCalAngleTwoVects(a, b, upD), by, 1e-12);
    }
  }
}

TEST(Vectors, signedAngleFollowsAnyReference) {
  std::mt19937 random(46);
  std::normal_distribution<double> component;
  for (int i = 0; i < 1000; ++i) {
    double a[3], b[3], ref[3];
    for (int k = 0; k < 3; ++k) {
      a[k] = component(random);
      b[k] = component(random);
    }
    const double side = i % 2 == 0 ? 1.0 : -1.0;
    for (int k = 0; k < 3; ++k) {
      ref[k] = side * (a[(k + 1) % 3] * b[(k + 2) % 3] - a[(k + 2) % 3] * b[(k + 1) % 3]);
    }
    const double sine = std::hypot(ref[0], ref[1], ref[2]);
    const double angle = std::atan2(sine, a[0] * b[0] + a[1] * b[1] + a[2] * b[2]);
    if (angle > 0.02 && angle < 3.12) {
      EXPECT_NEAR(slCalAngleTwoVects(a, b, ref), side * angle, 1e-12);
    }
  }
}

TEST(Vectors, directionOfUnitVectorsIsTheirAngle) {
  for (int degrees = 1; degrees < 360; ++degrees) {
    const double angle = degrees * std::acos(-1.0) / 180.0;
    const float v[2]{static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    const bool snapped = std::abs(v[0]) > 0.9998F;
    EXPECT_NEAR(slGetVectorAngle(v), degrees, snapped ? 1.0 : 1e-3);
  }
}

TEST(Vectors, directionInDegreesDividesByTheSquaredLength) {
  const auto degrees = [](float x, float y) {
    const float v[2]{x, y};
    return slGetVectorAngle(v);
  };
  EXPECT_EQ(degrees(0, -1), 270.0F);
  EXPECT_EQ(degrees(0, 0), 0.0F);
  EXPECT_NEAR(degrees(2, 0), 60.0F, 1e-5F);
  EXPECT_EQ(degrees(-1, 0), 180.0F);
  EXPECT_EQ(degrees(1, -0.00011F), 360.0F);
  EXPECT_EQ(degrees(0.1F, 0.1F), 0.0F);
}

TEST(Vectors, bisectorHalvesTheAngleOfEqualSides) {
  const float o[3]{1, 1, 1}, p[3]{3, 1, 1}, q[3]{1, 3, 1};
  float out[3];
  slGetPntsMidVect(o, p, q, out);
  EXPECT_FLOAT_EQ(out[0], std::sqrt(0.5F));
  EXPECT_FLOAT_EQ(out[1], std::sqrt(0.5F));
  EXPECT_EQ(out[2], 0.0F);
}

TEST(Vectors, boundsOfTwoEmptyListsAreInfinite) {
  const float points[2][3]{{1, -2, 3}, {-1, 2, 5}};
  const float others[1][3]{{0, -7, 4}};
  float low[3], high[3];
  slGetMinXYZ(0, nullptr, -3, nullptr, low);
  EXPECT_EQ(low[2], zel::kInfinity);
  slGetMinXYZ(2, points, 1, others, low);
  slGetMaxXYZ(0, nullptr, 2, points, high);
  EXPECT_EQ(low[0], -1.0F);
  EXPECT_EQ(low[1], -7.0F);
  EXPECT_EQ(high[1], 2.0F);
  EXPECT_EQ(high[2], 5.0F);
}

/// Expansion written as the definition reads, with fresh minors at every level.
float expand(const std::vector<float>& m, int n) {
  if (n == 2) {
    return static_cast<float>(double{m[0]} * m[3] - double{m[1]} * m[2]);
  }
  double sum = 0.0;
  for (int k = 0; k < n; ++k) {
    std::vector<float> minor(static_cast<size_t>((n - 1) * (n - 1)));
    slNewTrainM(m.data(), k, 0, n, minor.data());
    sum += double{m[static_cast<size_t>(k)]} * expand(minor, n - 1) * (k % 2 == 0 ? 1 : -1);
  }
  return static_cast<float>(sum);
}

TEST(Determinants, equalPlainExpansionToTheBit) {
  std::mt19937 random(45);
  std::uniform_real_distribution<float> entry(-3.0F, 3.0F);
  for (int n = 2; n <= 7; ++n) {
    for (int repeat = 0; repeat < 40; ++repeat) {
      std::vector<float> m(static_cast<size_t>(n * n));
      for (float& value : m) {
        value = repeat % 2 == 0 ? entry(random) : std::trunc(entry(random));  // zeros of both signs
      }
      EXPECT_EQ(zel::test::bits(slValueOfTrainM(m.data(), n)), zel::test::bits(expand(m, n)));
    }
  }
}

TEST(Determinants, oneByOneIsZeroAndLargeOnesEnd) {
  const float one[1]{5.0F};
  EXPECT_EQ(slValueOfTrainM(one, 1), 0.0F);
  EXPECT_EQ(slValueOfTrainM(nullptr, 0), 0.0F);
  for (const int n : {12, 40}) {
    std::vector<float> diagonal(static_cast<size_t>(n * n), 0.0F);
    for (int i = 0; i < n; ++i) {
      diagonal[static_cast<size_t>(i * n + (i + 1) % n)] = 1.0F;  // a cycle: sign (-1)^(n-1)
    }
    EXPECT_EQ(slValueOfTrainM(diagonal.data(), n), -1.0F);
  }
}

TEST(Determinants, minorOutsideTheMatrixIsNotTaken) {
  const float m[4]{1, 2, 3, 4};
  float out[4]{9, 9, 9, 9};
  slNewTrainM(m, 2, 0, 2, out);
  slNewTrainM(m, 0, 2, 2, out);
  slNewTrainM(m, 0, -1, 2, out);
  EXPECT_EQ(out[0], 9.0F);
  slNewTrainM(m, 1, 0, 2, out);
  EXPECT_EQ(out[0], 3.0F);
  EXPECT_EQ(out[1], 9.0F);
}

}  // namespace
