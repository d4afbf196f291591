#include "zel/geometry/inside_tests.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/geometry/circumcentres.h"

namespace {

using namespace zel::test;  // NOLINT
using Point = std::array<float, 2>;

int inPolygon(const std::vector<Point>& polygon, Point p) {
  return slPointInterFaceM(reinterpret_cast<const float(*)[2]>(polygon.data()),
                           static_cast<int>(polygon.size()), p.data());
}

/// Winding angle of a polygon about a point, in turns: an oracle that casts no ray.
double turnsAbout(const std::vector<Point>& polygon, Point p) {
  double sum = 0.0;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Point a = polygon[i], b = polygon[(i + 1) % polygon.size()];
    const double ax = double{a[0]} - p[0], ay = double{a[1]} - p[1];
    const double bx = double{b[0]} - p[0], by = double{b[1]} - p[1];
    sum += std::atan2(ax * by - ay * bx, ax * bx + ay * by);
  }
  return sum / (2.0 * std::numbers::pi);
}

/// A polygon whose corners go once round the origin.
std::vector<Point> star(RandomGeometry& random, int corners) {
  std::vector<Point> polygon;
  for (int i = 0; i < corners; ++i) {
    const double angle = 2.0 * std::numbers::pi * (i + double{random.number(0, 0.7)}) / corners;
    const Float3 corner = narrow(random.number(0.5, 3) * flatDirection(angle));
    polygon.push_back({corner[0], corner[1]});
  }
  return polygon;
}

TEST(InsideTests, polygonAgreesWithTheWindingAngle) {
  RandomGeometry random(91);
  int inside = 0;
  for (int repeat = 0; repeat < 8000; ++repeat) {
    std::vector<Point> polygon = star(random, 3 + repeat % 9);
    const Point p{random.number(-3, 3), random.number(-3, 3)};
    const bool nearVertexHeight = std::any_of(
        polygon.begin(), polygon.end(), [&](Point q) { return std::abs(q[1] - p[1]) < 0.001F; });
    if (nearVertexHeight) {
      continue;
    }
    const int expected = std::abs(turnsAbout(polygon, p)) > 0.5 ? 1 : 0;
    inside += expected;
    const int found = inPolygon(polygon, p);
    if (found != expected) {  // only possible within the tolerance of an edge
      const Point left{p[0] - 0.001F, p[1]}, right{p[0] + 0.001F, p[1]};
      EXPECT_NE(std::round(turnsAbout(polygon, left)), std::round(turnsAbout(polygon, right)));
    }
    std::reverse(polygon.begin(), polygon.end());
    polygon.push_back(polygon.front());
    EXPECT_EQ(inPolygon(polygon, p), found);
  }
  EXPECT_GT(inside, 1000);
}

TEST(InsideTests, edgesOfASquareAreOutsideUpToTheTolerance) {
  const std::vector<Point> square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
  for (const Point& outside : {Point{0.5F, 0}, {1, 0.5F}, {0.00009F, 0.5F}}) {
    EXPECT_EQ(inPolygon(square, outside), 0) << outside[0];
  }
  EXPECT_EQ(inPolygon(square, {0.00011F, 0.5F}), 1);
  EXPECT_EQ(inPolygon({}, {0, 0}), 0);
  EXPECT_EQ(inPolygon({{0, 0}}, {0, 0}), 0);
}

TEST(InsideTests, crossingsAtAVertexOrNearTheStartOfALongEdgeAreNotCounted) {
  EXPECT_EQ(inPolygon({{1, 0}, {0, 1}, {-1, 0}, {0, -1}}, {0, 0}), 0);
  EXPECT_EQ(inPolygon({{0, 0}, {1, 0}, {1, 1}, {0, 1}}, {-1, 0}), 1);
  EXPECT_EQ(inPolygon({{3, 2}, {4, 2}, {4, 3}, {3, 3}, {3, 2.00009F}}, {-1, 2}), 1);
  std::vector<Point> tower{{2, 0}, {2, 10000}, {-2, 10000}, {-2, 0}};
  EXPECT_EQ(inPolygon(tower, {0, 0.5F}), 0);  // 0.00005 along the right edge
  EXPECT_EQ(inPolygon(tower, {0, 1.5F}), 1);
  std::reverse(tower.begin(), tower.end());
  EXPECT_EQ(inPolygon(tower, {0, 0.5F}), 1);
}

TEST(InsideTests, oneEdgeGivesEachOfItsCodes) {
  float hit[2]{7, 7}, t = 7;
  const auto code = [&](Point a, Point b) {
    return slRightInter(1, 1, a.data(), b.data(), hit, &t);
  };
  EXPECT_EQ(code({2, 1}, {5, 1.00005F}), 3);
  EXPECT_EQ(code({0, 1}, {5, 1}), 2);
  EXPECT_EQ(code({1, 1}, {5, 1}), 4);  // the point is an end of the edge
  EXPECT_EQ(code({0, 1}, {1, 1}), 4);
  EXPECT_EQ(code({5, 1}, {0, 1}), 2);
  EXPECT_EQ(code({-1, 1}, {0, 1}), 4);
  EXPECT_EQ(code({2, 1.5F}, {5, 1.5F}), 4);
  EXPECT_EQ(code({2, 1}, {2, 3}), 4);  // starts at the height of the ray
  EXPECT_EQ(t, 7.0F);
  EXPECT_EQ(code({2, 0}, {4, 4}), 1);
  EXPECT_EQ(t, 0.25F);
  EXPECT_EQ(hit[0], 2.5F);
  EXPECT_EQ(hit[1], 1.0F);
  EXPECT_EQ(code({1.00009F, 0}, {1.00009F, 2}), 2);
  EXPECT_EQ(code({0, 0}, {0, 2}), 4);
}

TEST(InsideTests, triangleEdgesBelongToOneOrientation) {
  const Point o{0, 0}, x{1, 0}, y{0, 1}, inner{0.2F, 0.2F}, outer{0.6F, 0.6F};
  const auto inside = [](Point p, Point a, Point b, Point c) {
    return slIsPntInsideOfTriangle(p.data(), a.data(), b.data(), c.data());
  };
  EXPECT_EQ(inside(o, o, y, x), 1);
  EXPECT_EQ(inside(o, o, x, y), 0);
  EXPECT_EQ(inside(inner, o, y, x) + inside(inner, o, x, y), 2);
  EXPECT_EQ(inside(outer, o, y, x) + inside(outer, o, x, y), 0);
}

TEST(InsideTests, quadrilateralsAgreeWithTheWindingAngle) {
  randomRounds<RandomGeometry>(92, 20000, [&](RandomGeometry& random) {
    const std::vector<Point> q = star(random, 4);
    const Point p{random.number(-2, 2), random.number(-2, 2)};
    EXPECT_EQ(
        slIsPntInsideOfTrapezium(p.data(), q[0].data(), q[1].data(), q[2].data(), q[3].data()),
        std::abs(turnsAbout(q, p)) > 0.5 ? 1 : 0);
  });
}

TEST(InsideTests, polygonInSpaceIsTestedAgainstTheOrigin) {
  const float square[4][3]{{-1, -1, 5}, {3, -1, 5}, {3, 2, 5}, {-1, 2, 5}};
  const float shifted[4][3]{{1, -1, 5}, {3, -1, 5}, {3, 2, 5}, {1, 2, 5}};
  const Float3 up{0, 0, 1}, far{100, 100, 5}, within{2, 0, 5};
  EXPECT_EQ(slJudgePntInPolygon(4, square, up, far), 1);      // `far` itself is outside
  EXPECT_EQ(slJudgePntInPolygon(4, shifted, up, within), 0);  // `within` itself is inside
  EXPECT_EQ(slJudgePntInPolygon(0, square, up, far), 0);
  EXPECT_EQ(slJudgePntInPolygon(1, square, up, far), 0);
}

TEST(Circumcentres, areEquallyFarFromTheVertices) {
  randomRounds<RandomGeometry>(93, 3000, [&](RandomGeometry& random) {
    const Double3 a = random.point(3), b = random.point(3), c = random.point(3);
    if (norm(cross(unit(b - a), unit(c - a))) < 0.3 || norm(b - a) < 0.5 || norm(c - b) < 0.5) {
      return;
    }
    const Float3 fa = narrow(a), fb = narrow(b), fc = narrow(c);
    float centre[3], radius;
    ASSERT_EQ(slCircumCenter3D(fa, fb, fc, centre, &radius), 1);
    for (const Double3& vertex : {a, b, c}) {
      EXPECT_NEAR(apart(centre, vertex), radius, 2e-4);
    }
    EXPECT_NEAR(dot(widen(centre) - a, unit(cross(b - a, c - a))), 0, 2e-4);
    if (std::abs(cross(b - a, c - a)[2]) > 0.5) {
      ASSERT_EQ(slCircumcenter(fa, fb, fc, centre), 1);
      const double toA = std::hypot(centre[0] - a[0], centre[1] - a[1]);
      EXPECT_NEAR(std::hypot(centre[0] - b[0], centre[1] - b[1]), toA, 3e-4);
      EXPECT_NEAR(std::hypot(centre[0] - c[0], centre[1] - c[1]), toA, 3e-4);
    }
  });
}

TEST(Circumcentres, smallTrianglesAreRefused) {
  const Float3 o{0, 0, 0}, x{0.005F, 0, 0}, y{0, 0.005F, 0}, far{0.01F, 0, 0};
  float centre[3]{7, 7, 7}, radius = 7;
  EXPECT_EQ(slCircumcenter(o, x, y, centre), 0);
  EXPECT_EQ(slCircumCenter3D(o, x, y, centre, &radius), 0);
  EXPECT_EQ(slCircumCenter3D(o, x, far, centre, &radius), 0);
  EXPECT_EQ(centre[0] + radius, 14.0F);
}

TEST(Circumcentres, linearSystemRefusesADeterminantAtTheTolerance) {
  const float singular[2][2]{{0.0001F, 0}, {0, 1}}, regular[2][2]{{2, 0}, {1, 1}}, r[2]{3, 8};
  float x[2]{7, 7};
  EXPECT_EQ(slLineEquation2(singular, r, x), 0);
  EXPECT_EQ(x[0], 7.0F);
  EXPECT_EQ(slLineEquation2(regular, r, x), 1);
  EXPECT_EQ(x[0], 1.5F);
  EXPECT_EQ(x[1], 6.5F);
}

TEST(Circumcentres, triangleOnlyNeedsThreeDifferentVertices) {
  const Float3 o{0, 0, 0}, x{1, 0, 0}, two{2, 0, 0}, close{0.0001F, 0.0001F, 0.0001F};
  EXPECT_EQ(slJudgeIsTriangle(o, x, two), 1);
  EXPECT_EQ(slJudgeIsTriangle(Float3{-1, 0, 0}, x, o), 1);
  EXPECT_EQ(slJudgeIsTriangle(x, o, x), 0);
  EXPECT_EQ(slJudgeIsTriangle(x, two, two), 0);
  EXPECT_EQ(slJudgeIsTriangle(o, x, o), 0);
  EXPECT_EQ(slJudgeIsTriangle(o, close, x), 0);
}

TEST(Circumcentres, polygonCentreLeavesOutTheLastTwoPoints) {
  const float square[4][3]{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  Float3 out;
  slPolygenCenterM(square, 4, out);
  EXPECT_EQ(out, (Float3{0.25F, 0, 0}));
  for (const int count : {2, 0, -1}) {
    slPolygenCenterM(square + 2, count, out);
    EXPECT_EQ(out[0], 0.0F);
  }
}

}  // namespace
