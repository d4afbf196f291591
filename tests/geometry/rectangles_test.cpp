#include "zel/geometry/rectangles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "zel/core/constants.h"
#include "zel/geometry/matrices.h"
#include "zel/geometry/motions.h"
#include "zel/geometry/rectangle_moves.h"
#include "zel/geometry/rotations.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

/// A rectangle along the axes with its corners in standard order.
RectangleD upright(double x0, double y0, double x1, double y1) {
  const float a = static_cast<float>(x0), b = static_cast<float>(y0);
  const float c = static_cast<float>(x1), d = static_cast<float>(y1);
  return {{a, b, 0}, {c, b, 0}, {c, d, 0}, {a, d, 0}};
}

void randomPlacement(RandomGeometry& random, float m[16]) {
  float move[16];
  slGenerateRotateMatrix(narrow(random.direction()).data(),
                         static_cast<float>(random.number(-3, 3)), m);
  slGenerateMoveMatrix(narrow(random.point(5)).data(), 1.0F, move);
  slSetMatrixByMulti(move, m);
}

TEST(Rectangles, standardPositionUndoesAnyPlacement) {
  RandomGeometry random(151);
  for (int repeat = 0; repeat < 2000; ++repeat) {
    const double width = random.number(0.5, 4), height = random.number(0.5, 4);
    const RectangleD standard = upright(0, 0, width, height);
    float placement[16], m[16];
    RectangleD placed, back;
    randomPlacement(random, placement);
    slTransRectangleByMatrix(standard, placement, &placed);
    ASSERT_EQ(slTransToStdRect(placed, &back, m), 1);
    EXPECT_LT(norm(widen(back.corner0)), 1e-5);
    EXPECT_LT(norm(widen(back.corner1) - Double3{width, 0, 0}), 1e-5);
    EXPECT_LT(norm(widen(back.corner2) - Double3{width, height, 0}), 1e-5);
    EXPECT_LT(norm(widen(back.corner3) - Double3{0, height, 0}), 1e-5);
    float corner[3];
    slMatrix16MultiPoint3(m, placed.corner2, corner);
    EXPECT_EQ(widen(corner), widen(back.corner2));
    slTransRectangleByMatrix(placed, m, &placed);
    EXPECT_EQ(widen(placed.corner3), widen(back.corner3)) << "in place";
  }
  RectangleD flat = upright(1, 1, 3, 1), out = upright(8, 8, 9, 9);
  float m[16]{8};
  EXPECT_EQ(slTransToStdRect(flat, &out, m), 0);
  EXPECT_EQ(out.corner0[0], 8.0F);
  EXPECT_EQ(m[0], 8.0F);
}

TEST(Rectangles, pointInsideHasAToleranceOnlyInStandardPosition) {
  const RectangleD r = upright(0, 0, 2, 1);
  const auto inside = [&](float x, float y) {
    const float p[2]{x, y};
    return slJudgePntInRectM(r, p);
  };
  EXPECT_EQ(inside(0, 0), 1);
  EXPECT_EQ(inside(-0.00009F, 0.5F), 1);
  EXPECT_EQ(inside(-kTolerance, 0.5F), 0);
  EXPECT_EQ(inside(2.00009F, 1.00009F), 1);
  EXPECT_EQ(inside(2.0002F, 0.5F), 0);
  EXPECT_EQ(inside(1, 1.0002F), 0);
  EXPECT_EQ(inside(1, -kTolerance), 0);
  EXPECT_EQ(inside(NAN, 0.5F), 0);
  const float origin[2]{1, 1}, size[2]{2, 1}, corner[2]{1, 1}, in[2]{1.0001F, 1.5F};
  const float edge[2]{3, 1.5F}, above[2]{2, 2.00001F};
  EXPECT_EQ(slJudgePntInRectM(origin, size, corner), 0);
  EXPECT_EQ(slJudgePntInRectM(origin, size, in), 1);
  EXPECT_EQ(slJudgePntInRectM(origin, size, edge), 0);
  EXPECT_EQ(slJudgePntInRectM(origin, size, above), 0);
}

TEST(Rectangles, segmentLeavesThroughTheEdgeItCrosses) {
  RandomGeometry random(152);
  const RectangleD r = upright(-1, -2, 3, 1);
  for (int repeat = 0; repeat < 4000; ++repeat) {
    const Double3 a{random.number(-0.9, 2.9), random.number(-1.9, 0.9), 7};
    const double angle = random.number(-3, 3);
    const Double3 u{std::cos(angle), std::sin(angle), 0};
    // The first wall that the ray from the inside reaches.
    const double toX = ((u[0] > 0 ? 3 : -1) - a[0]) / u[0];
    const double toY = ((u[1] > 0 ? 1 : -2) - a[1]) / u[1];
    const double reach = std::min(toX, toY), length = random.number(0.05, 6);
    if (std::fabs(length - reach) < 0.01) {
      continue;
    }
    float hit[2]{8, 8};
    const int found =
        slGetLineSegIntersectRect(r, narrow(a).data(), narrow(a + length * u).data(), hit);
    ASSERT_EQ(found, length > reach ? 1 : 0);
    EXPECT_NEAR(hit[0], found == 1 ? a[0] + reach * u[0] : 8, 1e-4);
    EXPECT_NEAR(hit[1], found == 1 ? a[1] + reach * u[1] : 8, 1e-4);
  }
}

TEST(Rectangles, throughSegmentHitsTheLowestEdgeAndAlongOneNone) {
  const RectangleD r = upright(0, 0, 4, 2);
  const float left[3]{-1, 1, 0}, right[3]{9, 1, 0}, onLeft[3]{-1, 2, 0}, onRight[3]{9, 2, 0};
  float hit[2];
  EXPECT_EQ(slGetLineSegIntersectRect(r, left, right, hit), 1);
  EXPECT_EQ(hit[0], 4.0F) << "corner1-corner2 comes before corner3-corner0";
  EXPECT_EQ(slGetLineSegIntersectRect(r, onLeft, onRight, hit), 1);
  EXPECT_EQ(hit[0], 4.0F) << "the edge along it is passed over, its neighbour is met";
  const float far[3]{9, 9, 0};
  EXPECT_EQ(slGetLineSegIntersectRect(r, right, far, hit), 0);
}

TEST(Rectangles, mergeKeepsTheStatedZeros) {
  const RectangleD a = upright(1, 2, 3, 4), b = upright(5, 6, 9, 12);
  RectangleD out{{8, 8, 8}, {8, 8, 8}, {8, 8, 8}, {8, 8, 8}};
  slMergeRectWithSameDir(a, b, &out);
  // x: 0 - (1 - 5) / 2 = 2 (corner3 is above corner0); y: 6 / 2 - (4 - 6) / 2 = 4.
  EXPECT_EQ(widen(out.corner0), (Double3{-1, -2, 8}));
  EXPECT_EQ(widen(out.corner1), (Double3{0, 6, 8}));
  EXPECT_EQ(widen(out.corner2), (Double3{0, 12, 8}));
  EXPECT_EQ(widen(out.corner3), (Double3{0, 8, 8}));
  RectangleD self = b;
  slMergeRectWithSameDir(a, self, &self);
  EXPECT_EQ(self.corner3[1], 8.0F) << "in place";
}

TEST(RectangleMoves, oneRectangleStopsAtTheWallOfTheOther) {
  RandomGeometry random(153);
  int cut = 0;
  for (int repeat = 0; repeat < 4000; ++repeat) {
    const RectangleD r = upright(0, 0, 6, 4);
    const double x0 = random.number(0.1, 3), y0 = random.number(0.1, 2);
    const double x1 = random.number(3.2, 5.9), y1 = random.number(2.2, 3.9);
    const Double3 v{random.number(-4, 4), random.number(-4, 4), 0};
    double part = 1;
    part = std::min(part, (v[0] > 0 ? 6 - x1 : -x0) / v[0]);
    part = std::min(part, (v[1] > 0 ? 4 - y1 : -y0) / v[1]);
    float out[3];
    const int whole = slGetStdRectMinPanDisplace(r, upright(x0, y0, x1, y1), narrow(v).data(), out);
    EXPECT_LT(norm(widen(out) - part * v), 3e-4);
    if (std::fabs(norm(v) * (1 - part)) > 0.001 || part == 1) {
      EXPECT_EQ(whole, part == 1 ? 1 : 0);
    }
    cut += whole == 0 ? 1 : 0;
    // Two ends of the diagonal, as a segment, meet the same walls.
    const float a[3]{static_cast<float>(x0), static_cast<float>(y0), 0};
    const float b[3]{static_cast<float>(x1), static_cast<float>(y1), 0};
    float line[3];
    EXPECT_EQ(slCheckLineInRect(r, a, b, narrow(v).data(), line), whole);
    EXPECT_LT(norm(widen(line) - part * v), 3e-4);
    // And the same in the world, whatever the placement.
    float placement[16], moved[3];
    RectangleD placedR, placed;
    randomPlacement(random, placement);
    slTransRectangleByMatrix(r, placement, &placedR);
    slTransRectangleByMatrix(upright(x0, y0, x1, y1), placement, &placed);
    Float3 world = narrow(v + Double3{0, 0, 0.7});
    slMatrix16MultiVector3(placement, world.data());
    slGetRectMinPanDisplace(placedR, placed, world.data(), moved);
    slMatrixTrans16MultiVector3(placement, moved);
    EXPECT_LT(norm(widen(moved) - part * v), 1e-3);
  }
  EXPECT_GT(cut, 1000);
}

TEST(RectangleMoves, aMoveThatIsPossibleIsAnsweredToTheBit) {
  const RectangleD r = upright(0, 0, 4, 2), inside = upright(1, 0.5, 2, 1);
  const float v[3]{-0.0F, 0.1F, -0.0F}, a[3]{1, 1, 0}, b[3]{2, 1, 0};
  float out[2][3];
  EXPECT_EQ(slGetStdRectMinPanDisplace(r, inside, v, out[0]), 1);
  EXPECT_EQ(slCheckLineInRect(r, a, b, v, out[1]), 1);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(bits(out[0][i]), bits(v[i]));
    EXPECT_EQ(bits(out[1][i]), bits(v[i]));
  }
}

TEST(RectangleMoves, displacementsWithoutLengthAreAllPossible) {
  const RectangleD r = upright(0, 0, 4, 2), inside = upright(1, 0.5, 2, 1);
  const float a[3]{1, 1, 0}, b[3]{2, 1, 0}, none[3]{0, 0, 0};
  float out[3]{8, 8, 8};
  EXPECT_EQ(slGetStdRectMinPanDisplace(r, inside, none, out), 1);
  EXPECT_EQ(widen(out), (Double3{0, 0, 0}));
  out[0] = 8;
  EXPECT_EQ(slCheckLineInRect(r, a, b, none, out), 1);
  EXPECT_EQ(widen(out), (Double3{0, 0, 0}));
  const RectangleD flat = upright(0, 0, 4, 0);
  EXPECT_EQ(slGetRectMinPanDisplace(flat, inside, a, out), 0);
  EXPECT_EQ(widen(out), (Double3{0, 0, 0}));
}

TEST(RectangleMoves, whatLiesOutsideIsFreeExceptForASegment) {
  const RectangleD r = upright(0, 0, 4, 2), beside = upright(10, 10, 11, 11);
  const float v[3]{1, 0, 0}, a[3]{1, 1, 0}, outside[3]{10, 10, 0};
  float out[3];
  EXPECT_EQ(slGetStdRectMinPanDisplace(r, beside, v, out), 1);
  EXPECT_EQ(out[0], 1.0F);
  EXPECT_EQ(slCheckLineInRect(r, a, outside, v, out), 0);
  EXPECT_EQ(out[0], 0.0F);
}

TEST(RectangleMoves, correctionPushesJustInside) {
  const RectangleD r = upright(0, 0, 4, 2);
  RectangleD left = upright(-0.00005, 0.5, 1, 1);
  slCorrectRectContainError(r, &left);
  EXPECT_NEAR(left.corner0[0], 0.0001, 1e-9);
  EXPECT_NEAR(left.corner2[0], 1.00015, 1e-6) << "moved as a whole";
  RectangleD corner = upright(3.5, 1.5, 4.5, 2.25);
  slCorrectRectContainError(r, &corner);
  EXPECT_NEAR(corner.corner2[0], 3.9999, 1e-6);
  EXPECT_NEAR(corner.corner2[1], 1.9999, 1e-6);
  EXPECT_NEAR(corner.corner0[0], 2.9999, 1e-6);
  RectangleD large = upright(-1, 0.5, 9, 1);
  slCorrectRectContainError(r, &large);
  EXPECT_NEAR(large.corner2[0], 3.9999, 1e-6) << "the right side is seen to last";
  RectangleD fits = upright(0, 0, 4, 2);
  slCorrectRectContainError(r, &fits);
  EXPECT_EQ(fits.corner2[0], 4.0F);
}

TEST(RectangleMoves, standardFormRepairsTheMovingRectangleFirst) {
  const RectangleD r = upright(0, 0, 4, 2);
  float m[16], out[3];
  slSetIdentity(m);
  m[12] = -10;  // the world is ten to the right
  const float v[3]{2, 0, 5};
  EXPECT_EQ(slGetStdRectMinPanDisp(r, m, upright(9.9, 0.5, 13, 1), v, out), 0);
  EXPECT_NEAR(out[0], 4 - (13.1 - 10 + 0.0001), 1e-5) << "pushed right by 0.1001, then moved";
  EXPECT_EQ(out[2], 0.0F) << "no part of v leaves the plane";
  EXPECT_EQ(slGetStdRectMinPanDisp(r, m, upright(10.5, 0.5, 11, 1), v, out), 1);
  EXPECT_EQ(out[0], 2.0F);
}

TEST(RectangleMoves, arcMovesWithItsBounds) {
  const RectangleD standard = upright(0, 0, 10, 10);
  const float a[3]{2, 0, 0}, b[3]{0, 2, 0}, c[3]{0, 0, 0}, v[3]{4, 0, 0};
  float out[3];
  // The quarter from +x to +y reaches x = 2: it is free to go four to the right.
  EXPECT_EQ(slCheckArcInRect(147, standard, a, b, c, v, out), 1);
  EXPECT_EQ(out[0], 4.0F);
  const float near[3]{3, 3, 0}, centre[3]{3, 5, 0}, far[3]{6, 0, 0};
  EXPECT_EQ(slCheckArcInRect(147, standard, near, near, centre, far, out), 0) << "whole circle";
  EXPECT_NEAR(out[0], 5, 1e-5) << "the circle of radius 2 about x = 3 reaches 5";
}

}  // namespace
