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
  int rounds = 0;
  int found = 0;
  while (rounds < 4000) {
    const Double3 corner = random.point(10);
    const Double3 u = random.direction();
    const Double3 v = random.direction();
    if (norm(cross(u, v)) < 0.1) {
      continue;
    }
    ++rounds;
    const Float3 a = narrow(corner + random.number(-9, -1) * u);
    const Float3 b = narrow(corner + random.number(1, 9) * u);
    const Float3 c = narrow(corner + random.number(10, 12) * v);
    const Float3 d = narrow(corner + random.number(1, 9) * v);
    const float radius = static_cast<float>(random.number(0.1, 3));
    Float3 centre, touch1, touch2;
    if (slGetTangentCircle(a.data(), b.data(), c.data(), d.data(), radius, centre.data(),
                           touch1.data(), touch2.data()) != 1) {
      continue;  // rounded to lines that pass each other by more than the tolerance
    }
    ++found;
    const Double3 m = widen(centre.data());
    for (const auto& [touch, direction] : {std::pair(touch1, u), std::pair(touch2, v)}) {
      const Double3 t = widen(touch.data());
      EXPECT_NEAR(norm(m - t), radius, 5e-4);
      EXPECT_NEAR(dot(m - t, direction), 0, 5e-4);
      EXPECT_LT(norm(cross(t - corner, direction)), 5e-4) << "on its line";
      EXPECT_GT(dot(t - corner, direction), 0) << "on the side of b and d";
    }
  }
  EXPECT_GT(found, 3900);
}

TEST(TangentCircle, roundsOffACornerOfTwoSegments) {
  const float a[]{0, 0, 0};
  const float corner[]{4, 0, 0};
  const float d[]{4, 0, 3};
  Float3 centre, touch1, touch2;
  EXPECT_EQ(
      slGetTangentCircle(a, corner, corner, d, 1.0F, centre.data(), touch1.data(), touch2.data()),
      1);
  EXPECT_EQ(centre, (Float3{3, 0, 1}));
  EXPECT_EQ(touch1, (Float3{3, 0, 0}));
  EXPECT_EQ(touch2, (Float3{4, 0, 1}));
}

TEST(TangentCircle, refusesWhatHasNoneAndLeavesTheOutputs) {
  const float o[]{0, 0, 0};
  const float x[]{1, 0, 0};
  const float z[]{0, 0, 1};
  const float xz[]{1, 0, 1};
  const float above[]{0, 0.001F, 0};
  const float aboveZ[]{0, 0.001F, 1};
  Float3 out{-7, -7, -7};
  const auto circle = [&out](const float* a, const float* b, const float* c, const float* d,
                             float r) {
    return slGetTangentCircle(a, b, c, d, r, out.data(), out.data(), out.data());
  };
  EXPECT_EQ(circle(o, x, z, xz, 1), 0) << "parallel";
  EXPECT_EQ(circle(o, o, o, z, 1), 0) << "no line";
  EXPECT_EQ(circle(o, x, above, aboveZ, 1), 0) << "passing each other";
  for (const float radius : {0.0F, -1.0F, zel::kTolerance, NAN, INFINITY, 3.4e38F}) {
    EXPECT_EQ(circle(o, x, o, xz, radius), 0) << radius;
  }
  EXPECT_EQ(out[0], -7.0F);
  EXPECT_EQ(circle(o, x, o, z, 1), 1);
}

}  // namespace
