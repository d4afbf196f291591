// Numbers that are none, infinite, huge or tiny end in one of the stated results.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <limits>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/random_rounds.h"
#include "zel/containers/point3d_arr.h"
#include "zel/geometry/geometry.h"

namespace {

using zel::test::RandomGeometry;
using zel::test::randomRounds;

/// A float of which a good part is hostile.
float hostileNumber(RandomGeometry& random) {
  constexpr float kHuge = std::numeric_limits<float>::max();
  constexpr float kPicks[]{NAN,   INFINITY, -INFINITY, kHuge, -kHuge, 1e-40F, 0.0F,
                           -0.0F, 0.0001F,  1e18F,     1e20F, -1e18F, 1.0F,   0.0F};
  const float pick = random.number(0, 28);
  return pick < 14 ? kPicks[static_cast<int>(pick)] : random.number(-3, 3);
}

/// A record that consists of floats alone, each of them hostile in its turn.
template <class Record>
Record hostile(RandomGeometry& random) {
  std::array<float, sizeof(Record) / sizeof(float)> numbers;
  std::generate(numbers.begin(), numbers.end(), [&] { return hostileNumber(random); });
  return std::bit_cast<Record>(numbers);
}

/// Six points, a matrix, room for outputs, three numbers, and a record of each kind.
struct Field {
  float p[6][3], flat[6][2], m[16], out[2][3], x, y, z;
  RectangleD r, moving;
  PlaneD a, b;
  BallAndPrismD solids;
};

void expectOneOf(int result, const std::vector<int>& codes) {
  EXPECT_EQ(std::count(codes.begin(), codes.end(), result), 1) << result;
}

TEST(HostileGeometry, linesAndPlanes) {
  randomRounds<RandomGeometry>(181, 20000, [&](RandomGeometry& random) {
    auto [p, flat, m, out, x, y, z, r, moving, a, b, solids] = hostile<Field>(random);
    const auto& motion = m;
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
    expectOneOf(slGetPointOnIntersectLine(a, b, out[0]), {0, 1});
    expectOneOf(slGetPlaneEquation(p[0], p[1], p[2], out[0], &x), {0, 1});
    expectOneOf(slGetPlaneFourPnt(p[0], p[1], p[2], p[3], out[0]), {0, 1});
    expectOneOf(slJudgePntCoPlane(6, p, out[0]), {2, 3, 4, 5});
    expectOneOf(slGetInfLinesCoPerpenticular(p[0], p[1], p[2], p[3], &x, &y, &z), {2, 3});
    expectOneOf(slGetLinesCoPerpenticular(p[0], p[1], p[2], p[3], &x, &y, &z), {2, 3});
    EXPECT_GE(slGetLineDist(p[0], p[1], p[2], p[3]), 0.0F);
  });
}

TEST(HostileGeometry, matricesInsideTestsAndRectangles) {
  randomRounds<RandomGeometry>(184, 20000, [&](RandomGeometry& random, int repeat) {
    auto [p, flat, m, out, x, y, z, r, moving, a, b, solids] = hostile<Field>(random);
    float made[16];
    expectOneOf(slInverseMatrixM(m, made), {0, 1});
    slGetRotateMatrix(p[0], p[1], x, made);
    slCheckMatrixError(made);
    slNormalizeMatrix(made);
    expectOneOf(slCheckIndentity(made), {0, 1});
    expectOneOf(slPointInterFaceM(flat, 6, p[0]), {0, 1});
    expectOneOf(slJudgePntInPolygon(6, p, p[0], p[1]), {0, 1});
    expectOneOf(slIsPntInsideOfTrapezium(p[0], p[1], p[2], p[3], p[4]), {0, 1});
    expectOneOf(slCircumCenter3D(p[0], p[1], p[2], out[0], &x), {0, 1});
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
  });
}

TEST(HostileGeometry, circlesSpheresAndSolids) {
  randomRounds<RandomGeometry>(182, 20000, [&](RandomGeometry& random) {
    auto [p, flat, m, out, x, y, z, r, moving, a, b, solids] = hostile<Field>(random);
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
    slJudgeBallAndPrism(solids, &count);
    expectOneOf(count, {0, 1});
    expectOneOf(slGenCircle(p[0], p[1], p[2], out[0], out[1], &ang[0]), {0, 1});
    expectOneOf(slGenSphere(p[0], p[1], p[2], p[3], out[0], &ang[0]), {0, 1});
    Point3DArr pts;
    for (const auto& point : p) {
      pts.AddItemM(point);
    }
    expectOneOf(slGenVerticalTube(pts, out[0], &ang[0]), {0, 1});
  });
}

}  // namespace
