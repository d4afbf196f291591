#include "zel/geometry/rectangles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "geometry/geometry_values.h"
#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "support/random_rounds.h"
#include "zel/core/constants.h"
#include "zel/geometry/rectangle_moves.h"

namespace {

using namespace zel::test;  // NOLINT
using zel::kTolerance;

/// A rectangle along the axes with its corners in standard order.
RectangleD upright(double x0, double y0, double x1, double y1) {
  const float a = static_cast<float>(x0), b = static_cast<float>(y0);
  const float c = static_cast<float>(x1), d = static_cast<float>(y1);
  return {{a, b, 0}, {c, b, 0}, {c, d, 0}, {a, d, 0}};
}

RectangleD placed(const RectangleD& r, const Matrix& placement) {
  RectangleD out;
  slTransRectangleByMatrix(r, placement, &out);
  return out;
}

TEST(Rectangles, standardPositionUndoesAnyPlacement) {
  randomRounds<RandomGeometry>(151, 2000, [&](RandomGeometry& random) {
    const RectangleD standard = upright(0, 0, random.number(0.5, 4), random.number(0.5, 4));
    RectangleD r = placed(standard, randomMotion(random, 5)), back;
    Matrix m;
    ASSERT_EQ(slTransToStdRect(r, &back, m), 1);
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_LT(norm(corners(back)[i] - corners(standard)[i]), 1e-5);
    }
    EXPECT_EQ(corners(placed(r, m)), corners(back));
    slTransRectangleByMatrix(r, m, &r);
    EXPECT_EQ(corners(r), corners(back)) << "in place";
  });
  RectangleD flat = upright(1, 1, 3, 1), out = upright(8, 8, 9, 9);
  float m[16]{8};
  EXPECT_EQ(slTransToStdRect(flat, &out, m), 0);
  EXPECT_EQ(out.corner0[0], 8.0F);
  EXPECT_EQ(m[0], 8.0F);
}

TEST(Rectangles, pointInsideHasAToleranceOnlyInStandardPosition) {
  const auto inside = [](float x, float y) {
    return slJudgePntInRectM(upright(0, 0, 2, 1), Float3{x, y});
  };
  EXPECT_EQ(inside(0, 0), 1);
  EXPECT_EQ(inside(-0.00009F, 0.5F), 1);
  EXPECT_EQ(inside(-kTolerance, 0.5F), 0);
  EXPECT_EQ(inside(2.00009F, 1.00009F), 1);
  EXPECT_EQ(inside(2.0002F, 0.5F), 0);
  EXPECT_EQ(inside(1, 1.0002F), 0);
  EXPECT_EQ(inside(1, -kTolerance), 0);
  EXPECT_EQ(inside(NAN, 0.5F), 0);
  const Float3 origin{1, 1}, size{2, 1}, in{1.0001F, 1.5F}, edge{3, 1.5F}, above{2, 2.00001F};
  EXPECT_EQ(slJudgePntInRectM(origin, size, in), 1);
  for (const Float3& outside : {origin, edge, above}) {
    EXPECT_EQ(slJudgePntInRectM(origin, size, outside), 0) << outside[0];
  }
}

TEST(Rectangles, segmentLeavesThroughTheEdgeItCrosses) {
  RandomGeometry random(152);
  const RectangleD r = upright(-1, -2, 3, 1);
  for (int repeat = 0; repeat < 4000; ++repeat) {
    const Double3 a{random.number(-0.9, 2.9), random.number(-1.9, 0.9), 7};
    const Double3 u = flatDirection(random.number(-3, 3));
    // The first wall that the ray from the inside reaches.
    const double toX = ((u[0] > 0 ? 3 : -1) - a[0]) / u[0];
    const double toY = ((u[1] > 0 ? 1 : -2) - a[1]) / u[1];
    const double reach = std::min(toX, toY), length = random.number(0.05, 6);
    if (std::fabs(length - reach) < 0.01) {
      continue;
    }
    Float3 hit{8, 8, 7};
    const int found = slGetLineSegIntersectRect(r, narrow(a), narrow(a + length * u), hit);
    ASSERT_EQ(found, length > reach ? 1 : 0);
    EXPECT_LT(apart(hit, found == 1 ? a + reach * u : Double3{8, 8, 7}), 1e-4);
  }
}

TEST(Rectangles, throughSegmentHitsTheLowestEdgeAndAlongOneNone) {
  const RectangleD r = upright(0, 0, 4, 2);
  const Float3 left{-1, 1, 0}, right{9, 1, 0}, onLeft{-1, 2, 0}, onRight{9, 2, 0}, far{9, 9, 0};
  float hit[2];
  EXPECT_EQ(slGetLineSegIntersectRect(r, left, right, hit), 1);
  EXPECT_EQ(hit[0], 4.0F) << "corner1-corner2 comes before corner3-corner0";
  EXPECT_EQ(slGetLineSegIntersectRect(r, onLeft, onRight, hit), 1);
  EXPECT_EQ(hit[0], 4.0F) << "the edge along it is passed over, its neighbour is met";
  EXPECT_EQ(slGetLineSegIntersectRect(r, right, far, hit), 0);
}

TEST(Rectangles, mergeKeepsTheStatedZeros) {
  const RectangleD a = upright(1, 2, 3, 4), b = upright(5, 6, 9, 12);
  RectangleD out{{8, 8, 8}, {8, 8, 8}, {8, 8, 8}, {8, 8, 8}}, self = b;
  slMergeRectWithSameDir(a, b, &out);
  // x: 0 - (1 - 5) / 2 = 2 (corner3 is above corner0); y: 6 / 2 - (4 - 6) / 2 = 4.
  EXPECT_EQ(corners(out), (Corners{{-1, -2, 8}, {0, 6, 8}, {0, 12, 8}, {0, 8, 8}}));
  slMergeRectWithSameDir(a, self, &self);
  EXPECT_EQ(self.corner3[1], 8.0F) << "in place";
}

TEST(RectangleMoves, oneRectangleStopsAtTheWallOfTheOther) {
  RandomGeometry random(153);
  const RectangleD r = upright(0, 0, 6, 4);
  int cut = 0;
  for (int repeat = 0; repeat < 4000; ++repeat) {
    const Double3 low{random.number(0.1, 3), random.number(0.1, 2), 0}, v = random.flatPoint(4);
    const Double3 high{random.number(3.2, 5.9), random.number(2.2, 3.9), 0};
    const double partX = (v[0] > 0 ? 6 - high[0] : -low[0]) / v[0];
    const double partY = (v[1] > 0 ? 4 - high[1] : -low[1]) / v[1];
    const double part = std::min({1.0, partX, partY});
    const RectangleD moving = upright(low[0], low[1], high[0], high[1]);
    Float3 out;
    const int whole = slGetStdRectMinPanDisplace(r, moving, narrow(v), out);
    EXPECT_LT(apart(out, part * v), 3e-4);
    if (std::fabs(norm(v) * (1 - part)) > 0.001 || part == 1) {
      EXPECT_EQ(whole, part == 1 ? 1 : 0);
    }
    cut += whole == 0 ? 1 : 0;
    // Two ends of the diagonal, as a segment, meet the same walls.
    EXPECT_EQ(slCheckLineInRect(r, narrow(low), narrow(high), narrow(v), out), whole);
    EXPECT_LT(apart(out, part * v), 3e-4);
    // And the same in the world, whatever the placement.
    const Matrix placement = randomMotion(random, 5);
    slGetRectMinPanDisplace(placed(r, placement), placed(moving, placement),
                            turned(placement, v + Double3{0, 0, 0.7}), out);
    slMatrixTrans16MultiVector3(placement, out);
    EXPECT_LT(apart(out, part * v), 1e-3);
  }
  EXPECT_GT(cut, 1000);
}

TEST(RectangleMoves, possibleMovesAndThoseWithoutLengthAreAnsweredToTheBit) {
  const RectangleD r = upright(0, 0, 4, 2), inside = upright(1, 0.5, 2, 1);
  const Float3 a{1, 1, 0}, b{2, 1, 0};
  Float3 out{8, 8, 8};
  for (const Float3& v : {Float3{-0.0F, 0.1F, -0.0F}, Float3{0, 0, 0}}) {
    EXPECT_EQ(slGetStdRectMinPanDisplace(r, inside, v, out), 1);
    EXPECT_TRUE(samePoint(out, v));
    out = {8, 8, 8};
    EXPECT_EQ(slCheckLineInRect(r, a, b, v, out), 1);
    EXPECT_TRUE(samePoint(out, v));
  }
  EXPECT_EQ(slGetRectMinPanDisplace(upright(0, 0, 4, 0), inside, a, out), 0) << "a flat one";
  EXPECT_EQ(out, (Float3{0, 0, 0}));
}

TEST(RectangleMoves, whatLiesOutsideIsFreeExceptForASegment) {
  const RectangleD r = upright(0, 0, 4, 2), beside = upright(10, 10, 11, 11);
  const Float3 v{1, 0, 0}, a{1, 1, 0}, outside{10, 10, 0};
  Float3 out;
  EXPECT_EQ(slGetStdRectMinPanDisplace(r, beside, v, out), 1);
  EXPECT_EQ(out, v);
  EXPECT_EQ(slCheckLineInRect(r, a, outside, v, out), 0);
  EXPECT_EQ(out[0], 0.0F);
}

TEST(RectangleMoves, correctionPushesJustInside) {
  const auto expectCorrected = [](RectangleD moving, Double3 low, Double3 high) {
    slCorrectRectContainError(upright(0, 0, 4, 2), &moving);
    EXPECT_LT(apart(moving.corner0, low), 1e-6);
    EXPECT_LT(apart(moving.corner2, high), 1e-6);
  };
  expectCorrected(upright(-0.00005, 0.5, 1, 1), {0.0001, 0.5}, {1.00015, 1});  // as a whole
  expectCorrected(upright(3.5, 1.5, 4.5, 2.25), {2.9999, 1.2499}, {3.9999, 1.9999});
  expectCorrected(upright(-1, 0.5, 9, 1), {-6.0001, 0.5},
                  {3.9999, 1});                          // the right side comes last
  expectCorrected(upright(0, 0, 4, 2), {0, 0}, {4, 2});  // it fits
}

TEST(RectangleMoves, standardFormRepairsTheMovingRectangleFirst) {
  const RectangleD r = upright(0, 0, 4, 2);
  const Matrix m =
      made(slGenerateMoveMatrix, Float3{-10, 0, 0}, 1.0F);  // the world is to the right
  const Float3 v{2, 0, 5};
  float out[3];
  EXPECT_EQ(slGetStdRectMinPanDisp(r, m, upright(9.9, 0.5, 13, 1), v, out), 0);
  EXPECT_NEAR(out[0], 4 - (13.1 - 10 + 0.0001), 1e-5) << "pushed right by 0.1001, then moved";
  EXPECT_EQ(out[2], 0.0F) << "no part of v leaves the plane";
  EXPECT_EQ(slGetStdRectMinPanDisp(r, m, upright(10.5, 0.5, 11, 1), v, out), 1);
  EXPECT_EQ(out[0], 2.0F);
}

TEST(RectangleMoves, arcMovesWithItsBounds) {
  const RectangleD standard = upright(0, 0, 10, 10);
  const Float3 a{2, 0, 0}, b{0, 2, 0}, c{0, 0, 0}, v{4, 0, 0};
  float out[3];
  // The quarter from +x to +y reaches x = 2: it is free to go four to the right.
  EXPECT_EQ(slCheckArcInRect(147, standard, a, b, c, v, out), 1);
  EXPECT_EQ(out[0], 4.0F);
  const Float3 near{3, 3, 0}, centre{3, 5, 0}, far{6, 0, 0};
  EXPECT_EQ(slCheckArcInRect(147, standard, near, near, centre, far, out), 0) << "whole circle";
  EXPECT_NEAR(out[0], 5, 1e-5) << "the circle of radius 2 about x = 3 reaches 5";
}

}  // namespace
