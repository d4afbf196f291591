#include "tools/view/pictures/triangle_tree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using zel::view::plus;
using zel::view::TrianglePoints;
using zel::view::TriangleTree;
using zel::view::Vector3;

// A random triangle; every fourth is one of a few, so that some coincide, and every fifth is flat.
std::vector<TrianglePoints> randomTriangles(std::mt19937& random, int count) {
  std::uniform_real_distribution<float> place(-1, 1);
  std::vector<TrianglePoints> triangles;
  for (int i = 0; i < count; ++i) {
    TrianglePoints triangle;
    const Vector3 middle{place(random), place(random), place(random)};
    for (Vector3& point : triangle) {
      point = plus(middle, {place(random), place(random), i % 5 == 0 ? 0 : place(random)}, 0.2F);
    }
    triangles.push_back(i % 4 == 3 ? triangles[static_cast<std::size_t>(i % 3)] : triangle);
  }
  return triangles;
}

TEST(TriangleTree, findsWhatTryingEveryTriangleFinds) {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> place(-1.2F, 1.2F);
  int hits = 0;
  for (const int count : {1, 5, 40, 700}) {
    const std::vector<TrianglePoints> triangles = randomTriangles(random, count);
    const TriangleTree tree(triangles);
    std::vector<TriangleTree> alone;
    for (const TrianglePoints& triangle : triangles) {
      alone.emplace_back(std::vector<TrianglePoints>{triangle});
    }
    for (int ray = 0; ray < 300; ++ray) {
      const Vector3 from{place(random), place(random), place(random)};
      Vector3 along{place(random), place(random), place(random)};
      along[static_cast<std::size_t>(ray) % 3] *= ray % 2 == 0 ? 0.0F : 1.0F;
      std::optional<zel::view::RayHit> best;
      for (std::uint32_t i = 0; i < alone.size(); ++i) {
        const auto hit = alone[i].nearest(from, along, 0.05F, 3);
        if (hit && (!best || hit->distance < best->distance)) {
          best = {i, hit->distance};
        }
      }
      const auto found = tree.nearest(from, along, 0.05F, 3);
      ASSERT_EQ(found.has_value(), best.has_value()) << count << " " << ray;
      if (found) {
        ++hits;
        EXPECT_EQ(found->triangle, best->triangle);
        EXPECT_EQ(found->distance, best->distance);
      }
    }
  }
  EXPECT_GT(hits, 60);
}

TEST(TriangleTree, distancesAreThoseToThePlane) {
  const TriangleTree tree(
      std::vector<TrianglePoints>{{Vector3{0, 0, 2}, Vector3{4, 0, 2}, Vector3{0, 4, 2}}});
  EXPECT_EQ(tree.nearest({1, 1, 0}, {0, 0, 0.5F})->distance, 4);
  EXPECT_EQ(tree.nearest({1, 1, 5}, {0, 0, -1})->distance, 3);
  EXPECT_FALSE(tree.nearest({1, 1, 0}, {0, 0, -1}));
  EXPECT_FALSE(tree.nearest({3, 3, 0}, {0, 0, 1}));
  EXPECT_FALSE(tree.nearest({1, 1, 0}, {0, 0, 1}, 0, 1.9F));
  EXPECT_FALSE(tree.nearest({1, 1, 0}, {0, 0, 1}, 2.1F));
  EXPECT_FALSE(TriangleTree(std::vector<TrianglePoints>()).nearest({0, 0, 0}, {0, 0, 1}));
}

}  // namespace
