#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "zel/containers/point3d_arr.h"
#include "zel/core/constants.h"
#include "zel/geometry/planes.h"

namespace {

using zel::test::Float3;
using zel::test::RandomGeometry;

float oddNumber(RandomGeometry& random, double extent) {
  const float odd[]{0.0F, -0.0F, INFINITY, -INFINITY, NAN, 3e38F, -1e18F, 1e-45F, -2e-39F};
  const auto pick = static_cast<std::size_t>(random.number(0, 120));
  return pick < std::size(odd) ? odd[pick] : static_cast<float>(random.number(-extent, extent));
}

TEST(PointSetMoves, projectionEqualsOneByOneToTheBit) {
  RandomGeometry random(211);
  for (int count = 0; count < 200; ++count) {
    const Float3 on{oddNumber(random, 9), oddNumber(random, 9), oddNumber(random, 9)};
    const bool isOddPlane = count % 8 == 7;
    const Float3 n = isOddPlane ? on : zel::test::narrow(random.direction());
    Point3DArr points;
    std::vector<Float3> expected;
    for (int i = 0; i < count; ++i) {
      const Float3 p{oddNumber(random, 1000), oddNumber(random, 1000), oddNumber(random, 1000)};
      points.SetItemM(p.data(), i);
      expected.push_back(p);
      if (p[0] > zel::kLiveNearMark) {
        slProjectPntToPlane(n.data(), slGetPlaneEquation(on.data(), n.data()), p.data(),
                            expected.back().data());
      }
    }
    points.ProjectPntsToPlaneM(on.data(), n.data());
    for (int i = 0; i < count; ++i) {
      Float3 p{};
      points.GetItemM(p.data(), i);
      EXPECT_TRUE(zel::test::samePoint(p.data(), expected[static_cast<std::size_t>(i)].data()))
          << count << ' ' << i;
    }
  }
}

}  // namespace
