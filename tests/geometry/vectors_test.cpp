#include "zel/geometry/vectors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/geometry/determinants.h"
#include "zel/geometry/lengths.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

constexpr Float3 kX{1, 0, 0}, kZero{0, 0, 0};
constexpr Float3 kRoundsToTheTolerance{0, kTolerance, 2.5e-8F};  // a hair above, in double

TEST(Lengths, tinyVectorsHaveNoLength) {
  for (const Float3& none : {Float3{0.00005F}, Float3{kTolerance}, Float3{NAN, 1, 1}}) {
    EXPECT_EQ(slNorm2(none), 0.0F) << none[0];
  }
  EXPECT_FLOAT_EQ(slNorm2(Float3{0.00010001F}), 0.00010001F);
}

TEST(Lengths, agreeWithEachOther) {
  const Float3 a{1, 2, 3}, b{3, 5, 9};
  const double d[3]{2.0, 3.0, 6.0}, e[2]{5.0, 7.0};
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
  EXPECT_EQ(slDistanceD2(d, e), 5.0);
}

TEST(Lengths, squaresAreFormedInDoublePrecision) {
  EXPECT_EQ(slNorm2(Float3{1e30F}), 1e30F);  // the square does not fit a float
  EXPECT_EQ(slLengthD(Float3{4097, 1, 0}), std::sqrt(16785410.0));  // nor does this one, exactly
  // sqrt(25080101) = 5008.003694; a square that was rounded to float leads to the float before.
  EXPECT_EQ(slDistance(1, 2, 3, 3001, 4012, 4), 5008.00390625F);
  EXPECT_EQ(slDistance3(Float3{1, 2, 3}, Float3{3001, 4012, 4}), 5008.00341796875F);
}

TEST(Normalizing, degenerateVectorsBecomeTheFirstAxis) {
  Float3 v = kRoundsToTheTolerance;
  EXPECT_EQ(slNorm2(v), kTolerance);
  EXPECT_EQ(slNormalize(v), 0);
  EXPECT_EQ(v, kX);
  Double3 d{0, 0.0001, 0}, e{0, 0.00009, 0};
  EXPECT_EQ(slNormalize(d.data()), 1);
  EXPECT_EQ(d, (Double3{0, 1, 0}));
  EXPECT_EQ(slNormalize(e.data()), 0);
  EXPECT_EQ(e, (Double3{1, 0, 0}));
  Float3 plane{0, -0.00009F};
  EXPECT_EQ(slNormalize2D(plane), 0);
  EXPECT_EQ(plane, kX);
}

TEST(Normalizing, lengthIsReportedEvenWithoutADirection) {
  Float3 dir;
  EXPECT_FLOAT_EQ(slLenAndDir(Float3{0, kTolerance, 5e-8F}, dir), kTolerance);
  EXPECT_EQ(slLenAndDir(Float3{0, -3, 4}, dir), 5.0F);
  EXPECT_EQ(dir, (Float3{0, -0.6F, 0.8F}));
}

TEST(Normalizing, randomVectorsKeepTheirDirection) {
  randomRounds<RandomGeometry>(42, 5000, [&](RandomGeometry& random) {
    const Double3 d = std::numbers::pi * random.point(300);  // no floats
    const long double length = std::hypot(static_cast<long double>(d[0]), d[1], d[2]);
    Float3 f = narrow(d);
    Double3 e = d;
    ASSERT_EQ(slNormalize(f) + slNormalize(e.data()), 2);
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_NEAR(f[k], static_cast<double>(d[k] / length), 2e-7);
      EXPECT_NEAR(e[k], static_cast<double>(d[k] / length), 1e-15);
    }
  });
}

TEST(Vectors, edgesLeaveTheMiddleVertex) {
  Float3 u, w;
  EXPECT_EQ(slVect(Float3{1, 0, 0}, Float3{1, 1, 0}, Float3{0, 1, 5}, u, w), 1);
  EXPECT_EQ(u, (Float3{0, -1, 0}));
  EXPECT_EQ(w, (Float3{-1, 0, 5}));
}

TEST(Vectors, perpendicularsFormARightHandedFrame) {
  randomRounds<RandomGeometry>(43, 3000, [&](RandomGeometry& random, int i) {
    Float3 v = narrow(random.point(1)), u, w;
    v[i % 4 % 3] *= i % 4 == 3 ? 1.0F : 1e-5F;
    slNormalize(v);
    slOthPlane(v, u, w);
    EXPECT_NEAR(dot(widen(u), cross(widen(w), widen(v))), 1.0, 3e-4) << testing::PrintToString(v);
  });
}

TEST(Vectors, perpendicularOfAnAxisTriesXFirst) {
  const auto across = [](Float3 v) {
    Float3 out;
    slOthVect(v, out);
    return out;
  };
  EXPECT_EQ(across({0, 0, 0})[0], 1.0F);
  EXPECT_EQ(across({1, 0, 0})[1], 1.0F);
  EXPECT_EQ(across({1, 1, 0})[2], 1.0F);
  EXPECT_EQ(across({3, 4, 1}), (Float3{-0.8F, 0.6F, 0}));
}

TEST(Vectors, parallelMeansSineBelowTheTolerance) {
  EXPECT_EQ(slVectParallel(kX, Float3{-5, 0, 0}), 1);
  EXPECT_EQ(slVectParallel(kX, Float3{1, 0.00009F, 0}), 1);
  EXPECT_EQ(slVectParallel(kX, Float3{1, 0.00011F, 0}), 0);
  EXPECT_EQ(slVectParallel(Float3{0, 2, 0}, kRoundsToTheTolerance), 0);
}

TEST(Vectors, pointsAtTheToleranceDiffer) {
  EXPECT_EQ(slIsEqualPoint3D(kZero, Float3{0, kTolerance, 0}), 0);
  EXPECT_EQ(slIsEqualPoint3D(kZero, Float3{0, 0, 0.00009999F}), 1);
}

TEST(Vectors, dominantAxisPrefersTheLowerIndex) {
  EXPECT_EQ(slGetVectMaxDir(Float3{-2, 2, 2}), 0);
  EXPECT_EQ(slGetVectMaxDir(Float3{1, 1, -3}), 2);
  EXPECT_EQ(slGetVectMaxDir(Float3{0.00009F, -0.0001F, 0.0001F}), 0);
  EXPECT_EQ(slComparWithCoordAxis(Float3{0, 0, 5}), 2);
  EXPECT_EQ(slComparWithCoordAxis(Float3{0, 1, 1}), -1);
  EXPECT_EQ(slComparWithCoordAxis(kZero), 0);
}

TEST(Vectors, angleLeavesTheDotProductWhenThereIsNone) {
  const Float3 x{0, 2, 0}, y{0, 0, 3};
  float angle = -1.0F;
  EXPECT_EQ(slGetVectAngle(kRoundsToTheTolerance, x, &angle), 0);
  EXPECT_FLOAT_EQ(angle, 0.0002F);
  EXPECT_EQ(slGetVectAngle(x, y, &angle), 1);
  EXPECT_FLOAT_EQ(angle, zel::kHalfPi);
}

TEST(Vectors, signedAngleFollowsAnyReference) {
  randomRounds<RandomGeometry>(46, 3000, [&](RandomGeometry& random, int i) {
    const double side = i % 2 == 0 ? 1.0 : -1.0;
    const Double3 a = std::numbers::pi * random.point(3), b = random.point(9);
    const Double3 ref = side * cross(a, b);
    const double angle = std::atan2(norm(ref), dot(a, b));
    if (angle > 0.02 && angle < 3.12) {  // nearer to the ends the arc cosine snaps
      EXPECT_NEAR(slCalAngleTwoVects(a.data(), b.data(), ref.data()), side * angle, 1e-12);
      EXPECT_NEAR(slCalAngleTwoVects(narrow(a), narrow(b), narrow(ref)), side * angle, 3e-5);
    }
  });
}

TEST(Vectors, directionInDegreesDividesByTheSquaredLength) {
  const auto degrees = [](float x, float y) { return slGetVectorAngle(Float3{x, y}); };
  EXPECT_EQ(degrees(0, -1), 270.0F);
  EXPECT_EQ(degrees(0, 0), 0.0F);
  EXPECT_NEAR(degrees(2, 0), 60.0F, 1e-5F);
  EXPECT_EQ(degrees(-1, 0), 180.0F);
  EXPECT_EQ(degrees(1, -0.00011F), 360.0F);
  EXPECT_EQ(degrees(0.1F, 0.1F), 0.0F);
  for (int angle = 1; angle < 360; ++angle) {  // that of a unit vector is its angle
    const Float3 v = narrow(flatDirection(angle * std::numbers::pi / 180.0));
    EXPECT_NEAR(slGetVectorAngle(v), angle, std::abs(v[0]) > 0.9998F ? 1.0 : 1e-3);
  }
}

TEST(Vectors, bisectorHalvesTheAngleOfEqualSides) {
  Float3 out;
  slGetPntsMidVect(Float3{1, 1, 1}, Float3{3, 1, 1}, Float3{1, 3, 1}, out);
  EXPECT_LT(apart(out, {std::sqrt(0.5), std::sqrt(0.5), 0}), 1e-7);
}

TEST(Vectors, boundsOfTwoEmptyListsAreInfinite) {
  const float points[2][3]{{1, -2, 3}, {-1, 2, 5}}, others[1][3]{{0, -7, 4}};
  Float3 low, high;
  slGetMinXYZ(0, nullptr, -3, nullptr, low);
  EXPECT_EQ(low[2], zel::kInfinity);
  slGetMinXYZ(2, points, 1, others, low);
  slGetMaxXYZ(0, nullptr, 2, points, high);
  EXPECT_EQ(low, (Float3{-1, -7, 3}));
  EXPECT_EQ(high, (Float3{1, 2, 5}));
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
  RandomGeometry random(45);
  for (int n = 2; n <= 7; ++n) {
    for (int repeat = 0; repeat < 40; ++repeat) {
      std::vector<float> m(static_cast<size_t>(n * n));
      std::generate(m.begin(), m.end(), [&] {
        const float entry = random.number(-3, 3);
        return repeat % 2 == 0 ? entry : std::trunc(entry);  // zeros of both signs
      });
      EXPECT_EQ(bits(slValueOfTrainM(m.data(), n)), bits(expand(m, n)));
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
