// The circle that touches two lines.

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "geometry/random_geometry.h"
#include "zel/core/constants.h"
#include "zel/curves/arcs.h"

namespace {

using namespace zel::test;

TEST(TangentCircle, touchesBothLinesInTheAngleOfTheEnds) {
  RandomGeometry random(67);
  int found = 0;
  for (int round = 0; round < 4000; ++round) {
    const auto [u, v, normal] = random.obliqueDirections(0.1);
    const Double3 corner = random.point(10);
    const Float3 a = narrow(corner + random.number(-9, -1) * u),
                 b = narrow(corner + random.number(1, 9) * u),
                 c = narrow(corner + random.number(10, 12) * v),
                 d = narrow(corner + random.number(1, 9) * v);
    const float radius = random.number(0.1, 3);
    Float3 centre, touch1, touch2;
    if (slGetTangentCircle(a, b, c, d, radius, centre, touch1, touch2) != 1) {
      continue;  // rounded to lines that pass each other by more than the tolerance
    }
    ++found;
    for (const auto& [touch, direction] : {std::pair(touch1, u), std::pair(touch2, v)}) {
      const Double3 t = widen(touch), toCentre = widen(centre) - t;
      EXPECT_NEAR(norm(toCentre), radius, 5e-4);
      EXPECT_NEAR(dot(toCentre, direction), 0, 5e-4);
      EXPECT_LT(norm(cross(t - corner, direction)), 5e-4) << "on its line";
      EXPECT_GT(dot(t - corner, direction), 0) << "on the side of b and d";
    }
  }
  EXPECT_GT(found, 3900);
}

TEST(TangentCircle, refusesWhatHasNoneAndLeavesTheOutputs) {
  const Float3 o{0, 0, 0}, x{1, 0, 0}, z{0, 0, 1}, xz{1, 0, 1};
  const Float3 above{0, 0.001F, 0}, aboveZ{0, 0.001F, 1};
  Float3 centre{-7, -7, -7}, touch1 = centre, touch2 = centre;
  const auto circle = [&](Float3 a, Float3 b, Float3 c, Float3 d, float r) {
    return slGetTangentCircle(a, b, c, d, r, centre, touch1, touch2);
  };
  EXPECT_EQ(circle(o, x, z, xz, 1), 0) << "parallel";
  EXPECT_EQ(circle(o, o, o, z, 1), 0) << "no line";
  EXPECT_EQ(circle(o, x, above, aboveZ, 1), 0) << "passing each other";
  for (const float radius : {0.0F, -1.0F, zel::kTolerance, NAN, INFINITY, 3.4e38F}) {
    EXPECT_EQ(circle(o, x, o, xz, radius), 0) << radius;
  }
  for (const Float3& out : {centre, touch1, touch2}) {
    EXPECT_EQ(out, (Float3{-7, -7, -7}));
  }
  const Float3 corner{4, 0, 0}, end{4, 0, 3};
  EXPECT_EQ(circle(o, corner, corner, end, 1), 1) << "of two segments, rounded off";
  EXPECT_EQ(centre, (Float3{3, 0, 1}));
  EXPECT_EQ(touch1, (Float3{3, 0, 0}));
  EXPECT_EQ(touch2, (Float3{4, 0, 1}));
}

}  // namespace
