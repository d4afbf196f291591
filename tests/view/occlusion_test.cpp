#include "tools/view/pictures/occlusion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "scene_shapes.h"

namespace {

using zel::test::makeCube;
using zel::test::Shape;
using zel::view::cross;
using zel::view::dot;
using zel::view::length;
using zel::view::minus;
using zel::view::Occlusion;
using zel::view::SceneMesh;
using zel::view::Surface;
using zel::view::UpAxis;
using zel::view::Vector3;

struct Measured {
  explicit Measured(const Shape& shape, UpAxis up = UpAxis::kY, unsigned threads = 0)
      : scene(shape.nodes, shape.triangles, shape.quads, shape.textureCoords),
        surface(scene),
        occlusion(measureOcclusion(scene, surface, up, threads)) {}

  // The openness of the sample nearest to a place of the scene that looks along `normal`.
  [[nodiscard]] zel::view::Openness at(const Vector3& place, const Vector3& normal) const {
    std::size_t best = 0;
    float nearest = 1e9F;
    for (std::size_t i = 0; i < surface.samples.size(); ++i) {
      const float away = length(minus(surface.samples[i].point, place));
      if (away < nearest && dot(surface.samples[i].normal, normal) > 0.9F) {
        nearest = away;
        best = i;
      }
    }
    return occlusion.samples.at(best);
  }

  SceneMesh scene;
  Surface surface;
  Occlusion occlusion;
};

TEST(Occlusion, convexShapesSeeTheWholeSky) {
  const Measured cube(makeCube());
  ASSERT_GT(cube.occlusion.samples.size(), 100U);
  for (const auto& open : cube.occlusion.samples) {
    EXPECT_EQ(open.front, 1);
  }
}

// In the middle of the floor of an open box the sky is the open top; near the rim it is wide.
TEST(Occlusion, hollowsAreDarkAndRimsAreLight) {
  const Measured box(makeCube(true));
  const float r = 1 / std::sqrt(3.0F);
  const Vector3 down{0, -1, 0};
  const float floor = box.at({0, -r, 0}, down).back;
  const float corner = box.at({r, -r, r}, down).back;
  const float rim = box.at({r, r, 0}, {1, 0, 0}).back;
  EXPECT_LT(floor, 0.6F);
  EXPECT_GT(floor, 0.1F);
  EXPECT_LT(corner, floor - 0.05F);
  EXPECT_GT(rim, floor + 0.05F);
  EXPECT_EQ(box.at({0, -r, 0}, down).front, 1);
}

TEST(Occlusion, shadowLiesUnderTheShapeAndFadesOut) {
  for (const UpAxis up : {UpAxis::kY, UpAxis::kZ}) {
    const Measured cube(makeCube(), up);
    const auto& shadow = cube.occlusion.shadow;
    constexpr int kSide = zel::view::GroundShadow::kSide;
    const auto darkness = [&](int column, int row) {
      return shadow.darkness.at(static_cast<std::size_t>(row * kSide + column));
    };
    EXPECT_GT(darkness(kSide / 2, kSide / 2), 0.95F);
    EXPECT_EQ(darkness(0, 0), 0);
    EXPECT_LT(darkness(kSide / 5, kSide / 2), darkness(kSide / 3, kSide / 2));
    EXPECT_NEAR(shadow.height, -1 / std::sqrt(3.0F), 0.01F);
    EXPECT_EQ(shadow.at(kSide / 2, kSide / 2, up)[up == UpAxis::kY ? 1 : 2], shadow.height);
  }
}

TEST(Occlusion, isTheSameOnAnyNumberOfThreadsAndEndsWhenAsked) {
  const Measured one(makeCube(true), UpAxis::kY, 1);
  const Measured three(makeCube(true), UpAxis::kY, 3);
  ASSERT_EQ(one.occlusion.samples.size(), three.occlusion.samples.size());
  for (std::size_t i = 0; i < one.occlusion.samples.size(); ++i) {
    EXPECT_EQ(one.occlusion.samples[i].back, three.occlusion.samples[i].back);
  }
  EXPECT_EQ(one.occlusion.shadow.darkness, three.occlusion.shadow.darkness);
  const std::atomic<bool> cancel{true};
  EXPECT_TRUE(measureOcclusion(one.scene, one.surface, UpAxis::kY, 2, &cancel).samples.empty());
}

// A ball of many samples, which share measurements, is as open as a ball is.
TEST(Occlusion, largeSurfacesShareMeasurements) {
  const int kRings = 130;
  Shape grid{zel::test::makeGrid(2 * kRings, kRings, [](float, float) { return 0.0F; })};
  const Measured sheet(grid);
  const auto worst =
      std::min_element(sheet.occlusion.samples.begin(), sheet.occlusion.samples.end(),
                       [](const auto& a, const auto& b) {
                         return std::min(a.front, a.back) < std::min(b.front, b.back);
                       });
  EXPECT_GT(sheet.surface.samples.size(), 30'000U);
  EXPECT_EQ(worst->front, 1);
  EXPECT_EQ(worst->back, 1);
}

TEST(Surface, cutsKeepTheFacesArea) {
  const Measured cube(makeCube());
  double area = 0;
  for (std::size_t c = 0; c < cube.surface.corners.size(); c += 3) {
    const auto point = [&](std::size_t k) {
      return cube.surface.samples[cube.surface.corners[c + k].sample].point;
    };
    area += static_cast<double>(
        length(cross(minus(point(1), point(0)), minus(point(2), point(0)))) / 2);
  }
  EXPECT_NEAR(area, 6 * 4 / 3.0, 1e-4);
  EXPECT_GT(cube.surface.faces.size(), 12U * 64);
}

}  // namespace
