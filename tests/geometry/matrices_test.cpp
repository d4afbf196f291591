#include "zel/geometry/matrices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "zel/core/constants.h"
#include "zel/geometry/motions.h"
#include "zel/geometry/rotations.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kHalfPi;
using zel::kTolerance;

constexpr float kOrigin[3]{0, 0, 0};

void expectNear(const float* actual, Double3 expected, double tolerance) {
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(actual[i], expected[i], tolerance) << "component " << i;
  }
}

Float3 moved(const float m[16], Double3 p) {
  Float3 out = narrow(p);
  slMatrix16MultiPoint3(m, out.data());
  return out;
}

Float3 turned(const float m[16], Double3 v) {
  Float3 out = narrow(v);
  slMatrix16MultiVector3(m, out.data());
  return out;
}

/// Rotation by the unit quaternion of axis and angle: another route than the matrix formula.
Double3 rotated(Double3 v, Double3 axis, double angle) {
  const Double3 q = std::sin(angle / 2) * axis;
  const Double3 t = 2.0 * cross(q, v);
  return v + std::cos(angle / 2) * t + cross(q, t);
}

void randomMotion(RandomGeometry& random, float m[16]) {
  float move[16];
  slGenerateRotateMatrix(narrow(random.direction()).data(),
                         static_cast<float>(random.number(-4, 4)), m);
  slGenerateMoveMatrix(narrow(random.point(10)).data(), 1.0F, move);
  slSetMatrixByMulti(move, m);
}

TEST(Matrices, moveTouchesPointsButNotDirections) {
  const float v[3]{1, 2, 3};
  float m[16];
  slGenerateMoveMatrix(v, 1.0F, m);
  expectNear(moved(m, {0, 0, 0}).data(), {1, 2, 3}, 0);
  expectNear(turned(m, {0, 0, 0}).data(), {0, 0, 0}, 0);
  slGenerateMoveMatrix(v, -2.0F, m);
  expectNear(moved(m, {0, 0, 0}).data(), {-2, -4, -6}, 0);
}

TEST(Matrices, scalingLeavesItsCentre) {
  const float centre[3]{1, 2, 3}, s[3]{2, 0.5F, -1};
  float m[16];
  slGenScaleMatrix(centre, s, m);
  expectNear(moved(m, {1, 2, 3}).data(), {1, 2, 3}, 0);
  expectNear(moved(m, {2, 4, 5}).data(), {3, 3, 1}, 0);
}

TEST(Matrices, productRoundsEveryPartialSum) {
  RandomGeometry random(51);
  for (int repeat = 0; repeat < 500; ++repeat) {
    float a[16], b[16], c[16], expected[16]{};
    for (int k = 0; k < 16; ++k) {
      a[k] = static_cast<float>(random.number(-5, 5));
      b[k] = static_cast<float>(random.number(-5, 5));
    }
    for (int k = 0; k < 64; ++k) {
      const int i = k / 16, j = k / 4 % 4, term = k % 4;
      expected[i + 4 * j] = static_cast<float>(
          expected[i + 4 * j] + static_cast<double>(a[i + 4 * term]) * b[term + 4 * j]);
    }
    EXPECT_EQ(slMultiMatrix(a, b, c), 1);
    EXPECT_EQ(std::memcmp(c, expected, sizeof c), 0);
    float left[16], right[16];
    std::copy_n(b, 16, left);
    std::copy_n(a, 16, right);
    slSetMatrixByMulti(a, left);
    slSetMatrixByRightMulti(b, right);
    EXPECT_EQ(std::memcmp(c, left, sizeof c), 0);
    EXPECT_EQ(std::memcmp(c, right, sizeof c), 0);
  }
}

TEST(Matrices, vectorsAreSummedInDoubleAndRoundedOnce) {
  // In single precision the large terms would swallow the small one.
  const float m[16]{1e8F, 0, 0, 0, 1.0F, 1, 0, 0, -1e8F, 0, 1, 0, 0, 0, 0, 1};
  expectNear(turned(m, {1, 0.25, 1}).data(), {0.25, 0.25, 1}, 0);
  float v[4]{1, 0.25F, 1, 7};
  EXPECT_EQ(slMatrix16MultiVector4(m, v), 1);
  EXPECT_EQ(v[0], 0.25F);
  EXPECT_EQ(v[3], 7.0F);
}

TEST(Matrices, formsAgreeInPlaceAndOutOfPlace) {
  RandomGeometry random(52);
  for (int repeat = 0; repeat < 300; ++repeat) {
    float m[16], out[3];
    randomMotion(random, m);
    const Double3 p = random.point(5);
    slMatrix16MultiPoint3(m, narrow(p).data(), out);
    EXPECT_EQ(std::memcmp(out, moved(m, p).data(), sizeof out), 0);
    slMatrix16MultiVector3(m, narrow(p).data(), out);
    EXPECT_EQ(std::memcmp(out, turned(m, p).data(), sizeof out), 0);
    float flat[2]{static_cast<float>(p[0]), static_cast<float>(p[1])};
    slMatrix16MultiPoint2(m, flat);
    const Float3 expected = moved(m, {p[0], p[1], 0});
    EXPECT_EQ(flat[0], expected[0]);
    EXPECT_EQ(flat[1], expected[1]);
    slMatrixTrans16MultiVector3(m, out);
    expectNear(out, p, 5e-6);
    float four[4]{0, 0, 0, 1};
    slMatrixTrans16MultiVector4(m, four);
    EXPECT_EQ(four[3], 1.0F);
  }
}

TEST(Matrices, inverseUndoesTheMatrix) {
  RandomGeometry random(53);
  for (int repeat = 0; repeat < 2000; ++repeat) {
    float m[16], inverse[16], product[16];
    randomMotion(random, m);
    const float stretch[3]{2.0F, 0.5F, 3.0F};
    slGenScaleMatrix(kOrigin, stretch, product);
    slSetMatrixByRightMulti(product, m);
    ASSERT_EQ(slInverseMatrixM(m, inverse), 1);
    const Double3 p = random.point(5);
    expectNear(moved(inverse, widen(moved(m, p).data())).data(), p, 1e-4);
    EXPECT_EQ(slInverseMatrixM(m, m), 1);
    EXPECT_EQ(std::memcmp(m, inverse, sizeof m), 0);
  }
}

TEST(Matrices, inverseRefusesASmallDeterminant) {
  float m[16], b[16];
  slSetIdentity(m);
  std::fill_n(b, 16, 7.0F);
  for (const float small : {0.00005F, kTolerance, -kTolerance}) {
    m[0] = small;
    EXPECT_EQ(slInverseMatrixM(m, b), 0);
    EXPECT_EQ(std::count(b, b + 16, 7.0F), 16);
  }
  m[0] = 0.000100000005F;
  EXPECT_EQ(slInverseMatrixM(m, b), 1);
  EXPECT_FLOAT_EQ(b[0], 1.0F / m[0]);
}

TEST(Matrices, fourPointsAreCarriedOntoFour) {
  RandomGeometry random(54);
  for (int repeat = 0; repeat < 500; ++repeat) {
    float p[4][3]{{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}}, q[4][3], m[16];
    for (int i = 0; i < 4; ++i) {
      const Float3 target = narrow(random.point(3));
      std::copy_n(target.data(), 3, q[i]);
    }
    ASSERT_EQ(slChangeFourPntMatrixM(p, q, m), 1);
    for (int i = 0; i < 4; ++i) {
      expectNear(moved(m, widen(p[i])).data(), widen(q[i]), 1e-5);
    }
    p[3][2] = 0.0F;
    EXPECT_EQ(slChangeFourPntMatrixM(p, q, m), 0);
  }
}

TEST(Matrices, identityCheckCountsOnlyRealDifferences) {
  float m[16];
  slSetIdentity(m);
  m[12] = 0.0015F;
  EXPECT_EQ(slCheckIndentity(m), 1);
  m[12] = 0.002F;
  EXPECT_EQ(slCheckIndentity(m), 0);
  for (int i = 0; i < 16; ++i) {
    m[i] = i % 5 == 0 ? 0.99991F : 0.00009F;
  }
  EXPECT_EQ(slCheckIndentity(m), 1);
}

TEST(Matrices, repairSnapsTheBlockOnly) {
  float m[16];
  std::fill_n(m, 16, 0.5F);
  m[0] = 0.99995F;
  m[1] = -0.00009F;
  m[2] = -1.00009F;
  m[3] = m[12] = 0.00005F;
  m[4] = 1.00011F;
  m[5] = 0.99989F;
  slCheckMatrixError(m);
  EXPECT_EQ(m[0], 1.0F);
  EXPECT_EQ(bits(m[1]), bits(0.0F));
  EXPECT_EQ(m[2], -1.0F);
  EXPECT_EQ(m[3], 0.00005F);
  EXPECT_EQ(m[4], 1.00011F);
  EXPECT_EQ(m[5], 0.99989F);
  EXPECT_EQ(m[12], 0.00005F);
  EXPECT_EQ(m[6], 0.5F);
}

TEST(Matrices, normalizingLeavesTheSecondColumnOblique) {
  float m[16];
  slSetIdentity(m);
  m[0] = 2.0F;
  m[4] = 3.0F;
  m[5] = 4.0F;
  m[10] = -9.0F;
  slNormalizeMatrix(m);
  expectNear(m, {1, 0, 0}, 0);
  expectNear(m + 4, {0.6, 0.8, 0}, 1e-7);
  expectNear(m + 8, {0, 0, 1}, 0);
}

TEST(Rotations, coordinateAxesTurnRightHanded) {
  float m[16];
  slRotateByX(kHalfPi, m);
  expectNear(turned(m, {0, 1, 0}).data(), {0, 0, 1}, 1e-6);
  slRotateByY(kHalfPi, m);
  expectNear(turned(m, {0, 0, 1}).data(), {1, 0, 0}, 1e-6);
  slRotateByZ(kHalfPi, m);
  expectNear(moved(m, {1, 0, 0}).data(), {0, 1, 0}, 1e-6);
  slRotateByY(0.6F, 0.8F, m);
  expectNear(turned(m, {1, 0, 0}).data(), {0.6, 0, -0.8}, 1e-7);
}

TEST(Rotations, smallAnglesAreNotSnappedAway) {
  float m[16], step[16];
  slSetIdentity(m);
  slRotateByZ(0.01F, step);
  for (int i = 0; i < 100; ++i) {
    slSetMatrixByMulti(step, m);
  }
  expectNear(turned(m, {1, 0, 0}).data(), {std::cos(1.0), std::sin(1.0), 0}, 1e-5);
}

TEST(Rotations, anyAxisMatchesTheQuaternion) {
  RandomGeometry random(55);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 axis = random.direction(), centre = random.point(10), p = random.point(10);
    const double angle = random.number(-7, 7);
    float m[16];
    slGetRotateMatrix(narrow(centre).data(), narrow(axis).data(), static_cast<float>(angle), m);
    expectNear(moved(m, p).data(), centre + rotated(p - centre, axis, angle), 2e-5);
  }
}

TEST(Rotations, centreNearTheOriginCountsAsTheOrigin) {
  const float nearOrigin[3]{0.00003F, -kTolerance, 0}, up[3]{0, 0, 1};
  const float off[3]{0.00011F, 0, 0};
  float m[16];
  slGetRotateMatrix(nearOrigin, up, 1.0F, m);
  expectNear(m + 12, {0, 0, 0}, 0);
  slGetRotateMatrix(off, up, 1.0F, m);
  EXPECT_NE(m[12], 0.0F);
}

TEST(Rotations, anyDirectionTurnsOntoZ) {
  RandomGeometry random(56);
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const Double3 dir = random.direction(), centre = random.point(10);
    float m[16];
    slGenVectToZMatrix(narrow(centre).data(), narrow(dir).data(), m);
    expectNear(turned(m, dir).data(), {0, 0, 1}, 1e-6);
    expectNear(moved(m, centre).data(), centre, 1e-5);
    expectNear(turned(m, unit(cross({0, 0, 1}, dir))).data(), {-1, 0, 0}, 1e-5);
  }
}

TEST(Rotations, downwardDirectionTakesHalfATurnAboutX) {
  const float centre[3]{0, 2, 3}, down[3]{0, 0, -1}, up[3]{0, 0, 1}, null[3]{0, 0, 0};
  float m[16];
  slGenVectToZMatrix(centre, down, m);
  expectNear(moved(m, {0, 2, 3}).data(), {0, 2, 3}, 0);
  expectNear(moved(m, {0, 2, 4}).data(), {0, 2, 2}, 0);
  for (const float* still : {up, null}) {
    slGenVectToZMatrix(centre, still, m);
    EXPECT_EQ(slCheckIndentity(m), 1);
    EXPECT_EQ(m[14], 0.0F);
  }
}

TEST(Rotations, horizontalDirectionTurnsOntoX) {
  RandomGeometry random(57);
  for (int repeat = 0; repeat < 1000; ++repeat) {
    const double angle = random.number(-3, 3);
    const Double3 dir{std::cos(angle), std::sin(angle), 0}, centre = random.point(10);
    Float3 raised = narrow(dir);
    raised[2] = 5.0F;  // ignored
    float m[16];
    slGenVectToXMatrix(narrow(centre).data(), raised.data(), m);
    expectNear(turned(m, dir).data(), {1, 0, 0}, 1e-6);
    expectNear(moved(m, centre).data(), centre, 1e-5);
  }
}

TEST(Rotations, turnsToZAreOfOneRotation) {
  RandomGeometry random(58);
  for (int repeat = 0; repeat < 1000; ++repeat) {
    const Double3 dir = random.direction();
    float cosA, sinA, cosB, sinB, aboutZ[16], aboutX[16];
    slGetAnglesRotToZ(narrow(dir).data(), &cosA, &sinA, &cosB, &sinB);
    slRotateByZExt(cosA, sinA, aboutZ);
    slRotateByXExt(cosB, sinB, aboutX);
    slSetMatrixByMulti(aboutX, aboutZ);
    expectNear(turned(aboutZ, dir).data(), {0, 0, 1}, 1e-6);
  }
  const float level[3]{0, 0, 0.00005F};
  float c = 9, s = 9, b = 9, d = 9;
  slGetAnglesRotToZ(level, &c, &s, &b, &d);
  EXPECT_EQ(c, 1.0F);
  EXPECT_EQ(s + b + d, 0.0F);
}

TEST(Rotations, axesFromTwoAnglesAreOrthonormal) {
  RandomGeometry random(59);
  for (int repeat = 0; repeat < 500; ++repeat) {
    const float a = static_cast<float>(random.number(-4, 4));
    const float b = static_cast<float>(random.number(-4, 4));
    float x[3], y[3], z[3];
    slGetAxes(a, b, x, y, z);
    EXPECT_NEAR(dot(widen(x), widen(y)), 0, 1e-6);
    expectNear(z, cross(widen(x), widen(y)), 1e-6);
    EXPECT_NEAR(norm(widen(x)), 1, 1e-6);
    EXPECT_NEAR(y[0], std::sin(a), 1e-6);
    EXPECT_NEAR(x[2], -std::sin(b), 1e-6);
  }
}

TEST(Rotations, rayPairMatrixKeepsItsClosedForm) {
  // u turns by (0.8, 0.6) and (0, 1); w by (0, 1) and (0.6, 0.8).
  const float u[3]{0.6F, 0.8F, 0}, w[3]{0.8F, 0, 0.6F}, p[3]{1, 2, 3}, q[3]{4, 4, 4};
  float m[16];
  slGenMatrixToSpRadials(p, u, q, w, m);
  const double expected[16]{0, -0.36, 0, 0, 0, 0, 0, 0, 0, -0.64, 0, 0, -3, -2, -1, 1};
  for (int i = 0; i < 16; ++i) {
    EXPECT_NEAR(m[i], expected[i], 1e-6) << i;
  }
  const float w2[3]{0.48F, 0.64F, 0.6F}, u2[3]{0.48F, 0.64F, -0.6F};
  slGenMatrixToSpRadials(p, u2, q, w2, m);
  // cosA 0.8, sinA 0.6, cosB of u -0.6, of w 0.6, sinB 0.8 for both
  const double full[16]{0.64, -0.216, 0,     0, 0.216, -0.2304, -0.512, 0,
                        0,    -0.512, -0.36, 0, -3,    -2,      -1,     1};
  for (int i = 0; i < 16; ++i) {
    EXPECT_NEAR(m[i], full[i], 1e-6) << i;
  }
  EXPECT_EQ(slGenMatrixToSpLines(p, p, q, w, m), 0);
  EXPECT_EQ(slGenMatrixToSpLines(p, q, w, w, m), 0);
  EXPECT_NEAR(m[0], 0.64F, 1e-6F);
  EXPECT_EQ(slGenMatrixToSpLines(p, q, w, u, m), 1);
  EXPECT_FLOAT_EQ(m[12], 0.2F);
}

TEST(Motions, partsComposeToTheMotionAndItsInverse) {
  RandomGeometry random(60);
  for (int repeat = 0; repeat < 1000; ++repeat) {
    float motion[16], turn[16], move[16], back[16], product[16];
    randomMotion(random, motion);
    slGetRotMatrixFromMotion(motion, turn);
    slGetMoveMatrixFromMotion(motion, move);
    slMultiMatrix(move, turn, product);
    EXPECT_EQ(std::memcmp(product, motion, sizeof motion), 0);
    slGetInverseMotionMatrix(motion, back);
    slMultiMatrix(back, motion, product);
    EXPECT_EQ(slCheckIndentity(product), 1);
    slGetRotTransMatrixFromMotion(motion, turn);
    slSetMatrixByMvToOri(back);
    EXPECT_EQ(std::memcmp(turn, back, sizeof turn), 0);
    slGetInvMvMatrixFromMotion(motion, back);
    expectNear(moved(back, widen(motion + 12)).data(), {0, 0, 0}, 0);
  }
}

TEST(Motions, framesConvertBothWays) {
  RandomGeometry random(61);
  for (int repeat = 0; repeat < 1000; ++repeat) {
    float motion[16], toWorld[16], toLocal[16], out[3];
    randomMotion(random, motion);
    XYCoordSysD cs;
    std::copy_n(motion, 3, cs.xAxis);
    std::copy_n(motion + 4, 3, cs.yAxis);
    std::copy_n(motion + 8, 3, cs.zAxis);
    std::copy_n(motion + 12, 3, cs.origin);
    slGenMatrixToWorld(cs, toWorld);
    EXPECT_EQ(std::memcmp(toWorld, motion, sizeof motion), 0);
    slGenMatrixToLocal(cs, toLocal);
    const Double3 p = random.point(5);
    expectNear(moved(toLocal, widen(moved(toWorld, p).data())).data(), p, 2e-5);
    slTransToWorld(cs.xAxis, cs.yAxis, cs.zAxis, narrow(p).data(), out);
    expectNear(out, widen(turned(toWorld, p).data()), 0);
  }
}

TEST(Motions, signComparesTheZAxes) {
  float up[16], tilted[16], down[16], level[16];
  slSetIdentity(up);
  slRotateByX(1.0F, tilted);
  slRotateByX(3.0F, down);
  slRotateByX(kHalfPi, level);
  EXPECT_EQ(slGetTwoMatrixSign(up, tilted), 1);
  EXPECT_EQ(slGetTwoMatrixSign(up, down), -1);
  EXPECT_EQ(slGetTwoMatrixSign(up, level), 0);
}

}  // namespace
