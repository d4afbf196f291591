#include "zel/geometry/matrices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "geometry/geometry_values.h"
#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/geometry/motions.h"
#include "zel/geometry/rotations.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kHalfPi;
using zel::kTolerance;

/// Rotation by the unit quaternion of axis and angle: another route than the matrix formula.
Double3 rotated(Double3 v, Double3 axis, double angle) {
  const Double3 q = std::sin(angle / 2) * axis;
  const Double3 t = 2.0 * cross(q, v);
  return v + std::cos(angle / 2) * t + cross(q, t);
}

Matrix identity() { return made(slSetIdentity); }

TEST(Matrices, movesAndScalingsDoWhatTheyAreMadeFor) {
  const Float3 v{1, 2, 3}, zero{0, 0, 0};
  const Matrix move = made(slGenerateMoveMatrix, v, 1.0F);
  EXPECT_EQ(moved(move, {0, 0, 0}), v);
  EXPECT_EQ(turned(move, {0, 0, 0}), zero) << "a direction is not moved";
  EXPECT_EQ(moved(made(slGenerateMoveMatrix, v, -2.0F), {0, 0, 0}), (Float3{-2, -4, -6}));
  const Matrix scale = made(slGenScaleMatrix, v, Float3{2, 0.5F, -1});
  EXPECT_EQ(moved(scale, {1, 2, 3}), v);
  EXPECT_EQ(moved(scale, {2, 4, 5}), (Float3{3, 3, 1}));
}

TEST(Matrices, productRoundsEveryPartialSum) {
  randomRounds<RandomGeometry>(51, 500, [&](RandomGeometry& random) {
    Matrix a, b, product, expected{};
    std::generate(a.begin(), a.end(), [&] { return random.number(-5, 5); });
    std::generate(b.begin(), b.end(), [&] { return random.number(-5, 5); });
    for (std::size_t k = 0; k < 64; ++k) {
      const std::size_t i = k / 16, j = k / 4 % 4, term = k % 4;
      float& sum = expected[i + 4 * j];
      sum = static_cast<float>(sum + static_cast<double>(a[i + 4 * term]) * b[term + 4 * j]);
    }
    EXPECT_EQ(slMultiMatrix(a, b, product), 1);
    Matrix left = b, right = a;
    slSetMatrixByMulti(a, left);
    slSetMatrixByRightMulti(b, right);
    for (const Matrix& result : {product, left, right}) {
      EXPECT_TRUE(sameBits(result, expected));
    }
  });
}

TEST(Matrices, vectorsAreSummedInDoubleAndRoundedOnce) {
  // In single precision the large terms would swallow the small one.
  const float m[16]{1e8F, 0, 0, 0, 1.0F, 1, 0, 0, -1e8F, 0, 1, 0, 0, 0, 0, 1};
  EXPECT_EQ(turned(m, {1, 0.25, 1}), (Float3{0.25F, 0.25F, 1}));
  float v[4]{1, 0.25F, 1, 7};
  EXPECT_EQ(slMatrix16MultiVector4(m, v), 1);
  EXPECT_EQ(v[0], 0.25F);
  EXPECT_EQ(v[3], 7.0F);
}

TEST(Matrices, formsAgreeInPlaceAndOutOfPlace) {
  randomRounds<RandomGeometry>(52, 300, [&](RandomGeometry& random) {
    const Matrix m = randomMotion(random, 10);
    const Double3 p = random.point(5);
    Float3 out, flat = narrow(p);
    slMatrix16MultiPoint3(m, narrow(p), out);
    EXPECT_TRUE(samePoint(out, moved(m, p)));
    slMatrix16MultiVector3(m, narrow(p), out);
    EXPECT_TRUE(samePoint(out, turned(m, p)));
    slMatrix16MultiPoint2(m, flat);
    const Float3 expected = moved(m, {p[0], p[1], 0});
    EXPECT_EQ(flat, (Float3{expected[0], expected[1], narrow(p)[2]}));
    slMatrixTrans16MultiVector3(m, out);
    EXPECT_LT(apart(out, p), 1e-5);
    float four[4]{0, 0, 0, 1};
    slMatrixTrans16MultiVector4(m, four);
    EXPECT_EQ(four[3], 1.0F);
  });
}

TEST(Matrices, inverseUndoesTheMatrix) {
  RandomGeometry random(53);
  const Matrix stretch = made(slGenScaleMatrix, Float3{}, Float3{2, 0.5F, 3});
  for (int repeat = 0; repeat < 2000; ++repeat) {
    Matrix m = made(slMultiMatrix, randomMotion(random, 10), stretch), inverse;
    ASSERT_EQ(slInverseMatrixM(m, inverse), 1);
    const Double3 p = random.point(5);
    EXPECT_LT(apart(moved(inverse, widen(moved(m, p))), p), 1e-4);
    EXPECT_EQ(slInverseMatrixM(m, m), 1);
    EXPECT_TRUE(sameBits(m, inverse)) << "in place";
  }
}

TEST(Matrices, inverseRefusesASmallDeterminant) {
  Matrix m = identity(), b;
  b.fill(7.0F);
  for (const float small : {0.00005F, kTolerance, -kTolerance}) {
    m[0] = small;
    EXPECT_EQ(slInverseMatrixM(m, b), 0);
    EXPECT_EQ(std::count(b.begin(), b.end(), 7.0F), 16);
  }
  m[0] = 0.000100000005F;
  EXPECT_EQ(slInverseMatrixM(m, b), 1);
  EXPECT_FLOAT_EQ(b[0], 1.0F / m[0]);
}

TEST(Matrices, fourPointsAreCarriedOntoFour) {
  randomRounds<RandomGeometry>(54, 500, [&](RandomGeometry& random) {
    float p[4][3]{{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}}, q[4][3], m[16];
    for (auto& target : q) {
      std::copy_n(narrow(random.point(3)).data(), 3, target);
    }
    ASSERT_EQ(slChangeFourPntMatrixM(p, q, m), 1);
    for (int i = 0; i < 4; ++i) {
      EXPECT_LT(apart(moved(m, widen(p[i])), widen(q[i])), 1e-5);
    }
    p[3][2] = 0.0F;
    EXPECT_EQ(slChangeFourPntMatrixM(p, q, m), 0);
  });
}

TEST(Matrices, identityCheckCountsOnlyRealDifferences) {
  Matrix m = identity();
  m[12] = 0.0015F;
  EXPECT_EQ(slCheckIndentity(m), 1);
  m[12] = 0.002F;
  EXPECT_EQ(slCheckIndentity(m), 0);
  for (std::size_t i = 0; i < 16; ++i) {
    m[i] = i % 5 == 0 ? 0.99991F : 0.00009F;
  }
  EXPECT_EQ(slCheckIndentity(m), 1);
}

TEST(Matrices, repairSnapsTheBlockOnly) {
  Matrix m{0.99995F, -0.00009F, -1.00009F, 0.00005F, 1.00011F, 0.99989F, 0.5F, 0.5F,
           0.5F,     0.5F,      0.5F,      0.5F,     0.00005F, 0.5F,     0.5F, 0.5F};
  Matrix expected = m;
  expected[0] = 1.0F;
  expected[1] = 0.0F;  // and not -0
  expected[2] = -1.0F;
  slCheckMatrixError(m);
  EXPECT_TRUE(sameBits(m, expected)) << testing::PrintToString(m);
}

TEST(Matrices, normalizingLeavesTheSecondColumnOblique) {
  Matrix m{2, 0, 0, 0, 3, 4, 0, 0, 0, 0, -9, 0, 0, 0, 0, 1};
  slNormalizeMatrix(m);
  EXPECT_EQ(widen(m), (Double3{1, 0, 0}));
  EXPECT_LT(apart(m + 4, {0.6, 0.8, 0}), 1e-7);
  EXPECT_EQ(widen(m + 8), (Double3{0, 0, 1}));
}

TEST(Rotations, matchTheQuaternionForAnyAngleHoweverSmall) {
  RandomGeometry random(55);
  const auto aboutY = [](float angle, float m[16]) { slRotateByY(angle, m); };
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 axis = random.direction(), centre = random.point(10), p = random.point(10);
    const float angle = repeat % 2 == 0 ? random.number(-7, 7) : random.number(-0.02, 0.02);
    const Matrix m = made(slGetRotateMatrix, narrow(centre), narrow(axis), angle);
    EXPECT_LT(apart(moved(m, p), centre + rotated(p - centre, axis, angle)), 2e-5);
    EXPECT_LT(apart(moved(made(slRotateByX, angle), p), rotated(p, {1, 0, 0}, angle)), 2e-5);
    EXPECT_LT(apart(moved(made(+aboutY, angle), p), rotated(p, {0, 1, 0}, angle)), 2e-5);
    EXPECT_LT(apart(moved(made(slRotateByZ, angle), p), rotated(p, {0, 0, 1}, angle)), 2e-5);
  }
  Matrix m;
  slRotateByY(0.6F, 0.8F, m);
  EXPECT_LT(apart(turned(m, {1, 0, 0}), {0.6, 0, -0.8}), 1e-7);
}

TEST(Rotations, centreNearTheOriginCountsAsTheOrigin) {
  const Float3 nearOrigin{0.00003F, -kTolerance, 0}, off{0.00011F, 0, 0}, up{0, 0, 1};
  EXPECT_EQ(widen(made(slGetRotateMatrix, nearOrigin, up, 1.0F) + 12), (Double3{0, 0, 0}));
  EXPECT_NE(made(slGetRotateMatrix, off, up, 1.0F)[12], 0.0F);
}

TEST(Rotations, anyDirectionTurnsOntoZAndAHorizontalOneOntoX) {
  randomRounds<RandomGeometry>(56, 3000, [&](RandomGeometry& random) {
    const Double3 dir = random.direction(), centre = random.point(10);
    const Matrix toZ = made(slGenVectToZMatrix, narrow(centre), narrow(dir));
    EXPECT_LT(apart(turned(toZ, dir), {0, 0, 1}), 1e-6);
    EXPECT_LT(apart(moved(toZ, centre), centre), 1e-5);
    EXPECT_LT(apart(turned(toZ, unit(cross({0, 0, 1}, dir))), {-1, 0, 0}), 1e-5);

    const Double3 level = flatDirection(random.number(-3, 3)), raised = level + Double3{0, 0, 5};
    const Matrix toX = made(slGenVectToXMatrix, narrow(centre), narrow(raised));  // z is ignored
    EXPECT_LT(apart(turned(toX, level), {1, 0, 0}), 1e-6);
    EXPECT_LT(apart(moved(toX, centre), centre), 1e-5);
  });
}

TEST(Rotations, downwardDirectionTakesHalfATurnAboutX) {
  const Float3 centre{0, 2, 3}, up{0, 0, 1}, null{0, 0, 0};
  const Matrix m = made(slGenVectToZMatrix, centre, Float3{0, 0, -1});
  EXPECT_EQ(moved(m, {0, 2, 3}), centre);
  EXPECT_EQ(moved(m, {0, 2, 4}), (Float3{0, 2, 2}));
  for (const Float3& still : {up, null}) {
    EXPECT_EQ(made(slGenVectToZMatrix, centre, still), identity());
  }
}

TEST(Rotations, turnsToZAreOfOneRotation) {
  RandomGeometry random(58);
  float cosA, sinA, cosB, sinB;
  for (int repeat = 0; repeat < 1000; ++repeat) {
    const Double3 dir = random.direction();
    slGetAnglesRotToZ(narrow(dir), &cosA, &sinA, &cosB, &sinB);
    const Matrix aboutZ = made(slRotateByZExt, cosA, sinA);
    const Matrix aboutX = made(slRotateByXExt, cosB, sinB);
    EXPECT_LT(apart(turned(made(slMultiMatrix, aboutX, aboutZ), dir), {0, 0, 1}), 1e-6);
  }
  slGetAnglesRotToZ(Float3{0, 0, 0.00005F}, &cosA, &sinA, &cosB, &sinB);
  EXPECT_EQ(cosA, 1.0F);
  EXPECT_EQ(sinA + cosB + sinB, 0.0F);
}

TEST(Rotations, axesFromTwoAnglesAreOrthonormal) {
  randomRounds<RandomGeometry>(59, 500, [&](RandomGeometry& random) {
    const float a = random.number(-4, 4), b = random.number(-4, 4);
    float x[3], y[3], z[3];
    slGetAxes(a, b, x, y, z);
    EXPECT_NEAR(dot(widen(x), widen(y)), 0, 1e-6);
    EXPECT_LT(apart(z, cross(widen(x), widen(y))), 1e-6);
    EXPECT_NEAR(norm(widen(x)), 1, 1e-6);
    EXPECT_NEAR(y[0], std::sin(a), 1e-6);
    EXPECT_NEAR(x[2], -std::sin(b), 1e-6);
  });
}

TEST(Rotations, rayPairMatrixKeepsItsClosedForm) {
  const auto expectNear = [](const Matrix& m, const Matrix& expected) {
    for (std::size_t i = 0; i < 16; ++i) {
      EXPECT_NEAR(m[i], expected[i], 1e-6) << i;
    }
  };
  // u turns by (0.8, 0.6) and (0, 1); w by (0, 1) and (0.6, 0.8).
  const Float3 u{0.6F, 0.8F, 0}, w{0.8F, 0, 0.6F}, p{1, 2, 3}, q{4, 4, 4};
  expectNear(made(slGenMatrixToSpRadials, p, u, q, w),
             {0, -0.36F, 0, 0, 0, 0, 0, 0, 0, -0.64F, 0, 0, -3, -2, -1, 1});
  // cosA 0.8, sinA 0.6, cosB of u -0.6, of w 0.6, sinB 0.8 for both
  const Float3 w2{0.48F, 0.64F, 0.6F}, u2{0.48F, 0.64F, -0.6F};
  Matrix m = made(slGenMatrixToSpRadials, p, u2, q, w2);
  const Matrix full{0.64F, -0.216F, 0,      0, 0.216F, -0.2304F, -0.512F, 0,
                    0,     -0.512F, -0.36F, 0, -3,     -2,       -1,      1};
  expectNear(m, full);
  EXPECT_EQ(slGenMatrixToSpLines(p, p, q, w, m), 0);
  EXPECT_EQ(slGenMatrixToSpLines(p, q, w, w, m), 0);
  expectNear(m, full);
  EXPECT_EQ(slGenMatrixToSpLines(p, q, w, u, m), 1);
  EXPECT_FLOAT_EQ(m[12], 0.2F);
}

TEST(Motions, partsComposeToTheMotionAndItsInverse) {
  randomRounds<RandomGeometry>(60, 1000, [&](RandomGeometry& random) {
    const Matrix motion = randomMotion(random, 10);
    const Matrix turn = made(slGetRotMatrixFromMotion, motion);
    const Matrix move = made(slGetMoveMatrixFromMotion, motion);
    EXPECT_TRUE(sameBits(made(slMultiMatrix, move, turn), motion));
    Matrix back = made(slGetInverseMotionMatrix, motion);
    EXPECT_EQ(slCheckIndentity(made(slMultiMatrix, back, motion)), 1);
    slSetMatrixByMvToOri(back);
    EXPECT_TRUE(sameBits(made(slGetRotTransMatrixFromMotion, motion), back));
    const Matrix unmoved = made(slGetInvMvMatrixFromMotion, motion);
    EXPECT_EQ(moved(unmoved, widen(motion + 12)), Float3{});
  });
}

TEST(Motions, framesConvertBothWays) {
  randomRounds<RandomGeometry>(61, 1000, [&](RandomGeometry& random) {
    const Matrix motion = randomMotion(random, 10);
    XYCoordSysD cs;
    std::copy_n(motion.data(), 3, cs.xAxis);
    std::copy_n(motion + 4, 3, cs.yAxis);
    std::copy_n(motion + 8, 3, cs.zAxis);
    std::copy_n(motion + 12, 3, cs.origin);
    Matrix toWorld, toLocal;
    slGenMatrixToWorld(cs, toWorld);
    slGenMatrixToLocal(cs, toLocal);
    EXPECT_TRUE(sameBits(toWorld, motion));
    const Double3 p = random.point(5);
    EXPECT_LT(apart(moved(toLocal, widen(moved(toWorld, p))), p), 2e-5);
    Float3 out;
    slTransToWorld(cs.xAxis, cs.yAxis, cs.zAxis, narrow(p), out);
    EXPECT_EQ(out, turned(toWorld, p));
  });
}

TEST(Motions, signComparesTheZAxes) {
  const Matrix up = identity();
  EXPECT_EQ(slGetTwoMatrixSign(up, made(slRotateByX, 1.0F)), 1);
  EXPECT_EQ(slGetTwoMatrixSign(up, made(slRotateByX, 3.0F)), -1);
  EXPECT_EQ(slGetTwoMatrixSign(up, made(slRotateByX, kHalfPi)), 0);
}

}  // namespace
