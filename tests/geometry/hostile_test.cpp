// Numbers that are none, infinite, huge or tiny end in one of the stated results.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <limits>
#include <vector>

#include "geometry/random_geometry.h"
#include "zel/containers/point3d_arr.h"
#include "zel/geometry/geometry.h"

namespace {

using zel::test::RandomGeometry;

/// Hands out floats of which a good part is hostile.
class HostileNumbers {
 public:
  explicit HostileNumbers(unsigned seed) : random_(seed) {}

  float next() {
    constexpr float kHuge = std::numeric_limits<float>::max();
    constexpr float kPicks[]{NAN,   INFINITY, -INFINITY, kHuge, -kHuge, 1e-40F, 0.0F,
                             -0.0F, 0.0001F,  1e18F,     1e20F, -1e18F, 1.0F,   0.0F};
    const double pick = random_.number(0, 28);
    return pick < 14 ? kPicks[static_cast<int>(pick)] : static_cast<float>(random_.number(-3, 3));
  }
  template <std::size_t Size>
  void fill(float (&values)[Size]) {
    std::generate(values, values + Size, [this] { return next(); });
  }

 private:
  RandomGeometry random_;
};

void expectOneOf(int result, const std::vector<int>& codes) {
  EXPECT_EQ(std::count(codes.begin(), codes.end(), result), 1) << result;
}

/// Six random points, room for outputs, and a matrix.
struct Field {
  float p[6][3];
  float m[16];
  float out[2][3];
  float x, y, z;
  RectangleD r, moving;

  explicit Field(HostileNumbers& numbers) {
    for (auto& point : p) {
      numbers.fill(point);
    }
    for (auto& row : out) {
      numbers.fill(row);
    }
    numbers.fill(m);
    x = numbers.next();
    y = numbers.next();
    z = numbers.next();
    for (RectangleD* rectangle : {&r, &moving}) {
      numbers.fill(rectangle->corner0);
      numbers.fill(rectangle->corner1);
      numbers.fill(rectangle->corner2);
      numbers.fill(rectangle->corner3);
    }
  }
};

TEST(HostileGeometry, linesAndPlanes) {
  HostileNumbers numbers(181);
  for (int repeat = 0; repeat < 20000; ++repeat) {
    Field f(numbers);
    auto& [p, m, out, x, y, z, r, moving] = f;
    const auto& motion = f.m;
    expectOneOf(slIntersectLines3D(p[0], p[1], p[2], p[3], &x, &y), {0, 1, INT_MAX});
    expectOneOf(slIntersectInfLines(p[0], p[1], p[2], p[3], &x, &y), {-1, 0, 1, INT_MAX});
    expectOneOf(slIntersectLines2D(p[0], p[1], p[2], p[3], &x, &y), {0, 1, INT_MAX});
    expectOneOf(slIntersecLines(p[0], p[1], p[2], p[3], out[0], z), {0, 1});
    expectOneOf(slCalculateVectTwoParallel(p[0], p[1], p[2], p[3], out[0]), {0, 1});
    expectOneOf(slLineIntersectPlane(p[0], p[1], p[2], z, out[0]), {1, 3});
    expectOneOf(slRadialIntersectPlane(p[0], p[1], p[2], z, out[0]), {-1, 1, 3});
    expectOneOf(slRadialIntersectFaceM(p[0], p[1], p + 2, 4, out[0]), {-1, 0, 1, 3, 4, 5});
    expectOneOf(slJudgeRadialThroughPntM(p[0], p[1], p[2], z, motion), {0, 1});
    expectOneOf(slJudgeRadialThroughLineM(p[0], p[1], p[2], p[3], z, motion), {0, 1});
    expectOneOf(slGetPlaneIntersectM(p[0], p[1], p[2], p[3], out[0], out[1]), {1, 2, 3});
    PlaneD a, b;
    std::copy_n(p[0], 3, a.point);
    std::copy_n(p[1], 3, a.normal);
    std::copy_n(p[2], 3, b.point);
    std::copy_n(p[3], 3, b.normal);
    expectOneOf(slGetPointOnIntersectLine(a, b, out[0]), {0, 1});
    expectOneOf(slGetPlaneEquation(p[0], p[1], p[2], out[0], &x), {0, 1});
    expectOneOf(slGetPlaneFourPnt(p[0], p[1], p[2], p[3], out[0]), {0, 1});
    expectOneOf(slJudgePntCoPlane(6, p, out[0]), {2, 3, 4, 5});
    expectOneOf(slGetInfLinesCoPerpenticular(p[0], p[1], p[2], p[3], &x, &y, &z), {2, 3});
    expectOneOf(slGetLinesCoPerpenticular(p[0], p[1], p[2], p[3], &x, &y, &z), {2, 3});
    EXPECT_GE(slGetLineDist(p[0], p[1], p[2], p[3]), 0.0F);
  }
}

TEST(HostileGeometry, matricesAndInsideTests) {
  HostileNumbers numbers(184);
  for (int repeat = 0; repeat < 20000; ++repeat) {
    Field f(numbers);
    auto& [p, m, out, x, y, z, r, moving] = f;
    float made[16], flat[6][2];
    for (auto& vertex : flat) {
      numbers.fill(vertex);
    }
    expectOneOf(slInverseMatrixM(m, made), {0, 1});
    slGetRotateMatrix(p[0], p[1], x, made);
    slCheckMatrixError(made);
    slNormalizeMatrix(made);
    expectOneOf(slCheckIndentity(made), {0, 1});
    expectOneOf(slPointInterFaceM(flat, 6, p[0]), {0, 1});
    expectOneOf(slJudgePntInPolygon(6, p, p[0], p[1]), {0, 1});
    expectOneOf(slIsPntInsideOfTrapezium(p[0], p[1], p[2], p[3], p[4]), {0, 1});
    expectOneOf(slCircumCenter3D(p[0], p[1], p[2], out[0], &x), {0, 1});
  }
}

TEST(HostileGeometry, circlesSpheresAndSolids) {
  HostileNumbers numbers(182);
  for (int repeat = 0; repeat < 20000; ++repeat) {
    Field f(numbers);
    auto& [p, m, out, x, y, z, r, moving] = f;
    int count = -1;
    float ang[4];
    expectOneOf(slIntersectLineCircle(p[0], x, p[1], p[2], out), {0, 1, 2});
    expectOneOf(slLineIntCircle(p[0], p[1], p[2], x, out[0], &ang[0], &ang[1], out[1], &ang[2],
                                &ang[3], &count),
                {0, 1});
    expectOneOf(count, {0, 1, 2});
    expectOneOf(slIntersectCircle(p[0], x, p[1], y, p[2], out), {-1, 0, 1, 2, INT_MAX});
    expectOneOf(slGetShereIntersect(p[0], x, p[1], y, out[0], out[1], &ang[0]), {0, 1, 3});
    expectOneOf(slIntersectPlaneSphereM(p[0], p[1], p[2], x, out[0], &ang[0]), {0, 1, 3});
    expectOneOf(slIntersectPlaneCone(p[0], p[1], p[2], p[3], x, out[0], &ang[0]), {0, 1, 3});
    expectOneOf(slJudgeTwoCylinder(p[0], p[1], p[2], p[3], p[4], p[5]), {0, 1});
    BallAndPrismD d;
    std::copy_n(m, 3, d.ballCentre);
    d.ballRadius = x;
    std::copy_n(p[0], 3, d.prismOrigin);
    d.sideAngle1 = y;
    d.sideAngle2 = z;
    std::copy_n(p[1], 3, d.lengthAxis);
    d.lengthMin = p[2][0];
    d.lengthMax = p[2][1];
    std::copy_n(p[3], 3, d.sideAxis1);
    std::copy_n(p[4], 3, d.sideAxis2);
    slJudgeBallAndPrism(d, &count);
    expectOneOf(count, {0, 1});
    expectOneOf(slGenCircle(p[0], p[1], p[2], out[0], out[1], &ang[0]), {0, 1});
    expectOneOf(slGenSphere(p[0], p[1], p[2], p[3], out[0], &ang[0]), {0, 1});
    Point3DArr pts;
    for (const auto& point : p) {
      pts.AddItemM(point);
    }
    expectOneOf(slGenVerticalTube(pts, out[0], &ang[0]), {0, 1});
  }
}

TEST(HostileGeometry, framesAndRectangles) {
  HostileNumbers numbers(183);
  for (int repeat = 0; repeat < 20000; ++repeat) {
    Field f(numbers);
    auto& [p, m, out, x, y, z, r, moving] = f;
    XYCoordSysD cs;
    RectangleD bounds;
    expectOneOf(slGenXYCoordSys(p[0], p[1], p[2], &cs), {0, 1});
    expectOneOf(slGenXYCoordSysByNormal(p[0], p[1], p[2], &cs), {1, 3});
    expectOneOf(slTransToStdRect(r, &bounds, m), {0, 1});
    expectOneOf(slJudgePntInRectM(r, p[0]), {0, 1});
    expectOneOf(slGetLineSegIntersectRect(r, p[0], p[1], out[0]), {0, 1});
    expectOneOf(slGetStdRectMinPanDisplace(r, moving, p[0], out[0]), {0, 1});
    expectOneOf(slGetRectMinPanDisplace(r, moving, p[0], out[0]), {0, 1});
    expectOneOf(slGetStdRectMinPanDisp(r, m, moving, p[0], out[0]), {0, 1});
    expectOneOf(slCheckLineInRect(r, p[0], p[1], p[2], out[0]), {0, 1});
    const short dir = repeat % 2 == 0 ? 147 : 148;
    expectOneOf(slCheckArcInRect(dir, r, p[0], p[1], p[2], p[3], out[0]), {0, 1});
    slGetSphereProjRect(p[0], x, p[1], &bounds);
    slGetCylinderProjRect(p[0], p[1], y, z, &bounds);
  }
}

}  // namespace
