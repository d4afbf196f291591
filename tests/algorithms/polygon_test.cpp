// Polygons cut into triangles: the pieces cover them once, whatever their shape.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <random>

#include "support/meshes.h"
#include "zel/algorithms/triangulate.h"

namespace {

using namespace zel::test;
using Plane = std::array<float, 2>;
using Polygon = std::vector<Plane>;

double cross(const Plane& a, const Plane& b, const Plane& c) {
  return (double{b[0]} - a[0]) * (double{c[1]} - a[1]) -
         (double{b[1]} - a[1]) * (double{c[0]} - a[0]);
}

double areaOf(const Polygon& polygon) {
  double doubled = 0;
  for (std::size_t k = 2; k < polygon.size(); ++k) {
    doubled += cross(polygon[0], polygon[k - 1], polygon[k]);
  }
  return doubled / 2;
}

/// Nothing turned over, the whole area, each edge of the border once and each other one twice.
void expectCovered(const Polygon& polygon, const std::vector<std::array<int, 3>>& triangles) {
  const int count = static_cast<int>(polygon.size());
  const double sign = areaOf(polygon) < 0 ? -1 : 1;
  ASSERT_EQ(triangles.size(), polygon.size() - 2);
  std::map<std::pair<int, int>, int> edges;
  double doubled = 0;
  for (const auto& triangle : triangles) {
    const auto point = [&](std::size_t k) {
      return polygon[static_cast<std::size_t>(triangle[k])];
    };
    const double piece = sign * cross(point(0), point(1), point(2));
    EXPECT_GE(piece, 0);
    doubled += piece;
    for (std::size_t k = 0; k < 3; ++k) {
      ++edges[{triangle[k], triangle[(k + 1) % 3]}];
    }
  }
  EXPECT_NEAR(doubled / 2, std::fabs(areaOf(polygon)), 1e-9 * doubled);
  for (const auto& [edge, uses] : edges) {
    const bool isBorder = edge.second == (edge.first + 1) % count;
    EXPECT_EQ(uses, 1);
    EXPECT_EQ(edges.count({edge.second, edge.first}), isBorder ? 0U : 1U);
  }
}

/// Looks at a polygon from six sides, in both windings.
void expectCutRightly(const Polygon& polygon) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    for (const bool isReversed : {false, true}) {
      Polygon seen = polygon;
      if (isReversed) {
        std::reverse(seen.begin(), seen.end());
      }
      std::vector<zel::Float3> corners;
      for (const auto& [x, y] : seen) {
        zel::Float3 corner{};
        corner[axis] = x;
        corner[(axis + 1) % 3] = y;
        corner[(axis + 2) % 3] = 0.25F * x - 0.125F * y;
        corners.push_back(corner);
      }
      expectCovered(seen, zel::triangulatePolygon(corners));
      if (testing::Test::HasFailure()) {
        for (const auto& [x, y] : polygon) {
          std::printf("{%g, %g}, ", double{x}, double{y});
        }
        std::printf("axis %zu reversed %d\n", axis, isReversed);
        return;
      }
    }
  }
}

bool touch(const Plane& a, const Plane& b, const Plane& c, const Plane& d) {
  const auto side = [](double s) { return s > 0 ? 1 : (s < 0 ? -1 : 0); };
  const int abc = side(cross(a, b, c)), abd = side(cross(a, b, d));
  const int cda = side(cross(c, d, a)), cdb = side(cross(c, d, b));
  const auto inBox = [](const Plane& p, const Plane& q, const Plane& r) {
    return std::min(p[0], q[0]) <= r[0] && r[0] <= std::max(p[0], q[0]) &&
           std::min(p[1], q[1]) <= r[1] && r[1] <= std::max(p[1], q[1]);
  };
  return (abc * abd < 0 && cda * cdb < 0) || (abc == 0 && inBox(a, b, c)) ||
         (abd == 0 && inBox(a, b, d)) || (cda == 0 && inBox(c, d, a)) ||
         (cdb == 0 && inBox(c, d, b));
}

/// Different points of a raster joined at random and untangled; empty when that fails.
Polygon tangledPolygon(std::mt19937& random, int count, int raster) {
  Polygon polygon;
  while (static_cast<int>(polygon.size()) < count) {
    const auto place = [&] { return static_cast<float>(random() % static_cast<unsigned>(raster)); };
    const Plane point{place(), place()};
    if (std::find(polygon.begin(), polygon.end(), point) == polygon.end()) {
      polygon.push_back(point);
    }
  }
  const auto n = polygon.size();
  for (int round = 0; round < 400; ++round) {
    bool isSimple = true;
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = i + 2; j < n && (i > 0 || j + 1 < n); ++j) {
        if (touch(polygon[i], polygon[i + 1], polygon[j], polygon[(j + 1) % n])) {
          std::reverse(polygon.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                       polygon.begin() + static_cast<std::ptrdiff_t>(j) + 1);
          isSimple = false;
        }
      }
    }
    if (isSimple) {
      return polygon;
    }
  }
  return {};
}

TEST(Polygon, rastersOfRandomPointsAreCovered) {
  std::mt19937 random(17);
  int cut = 0;
  for (int round = 0; round < 1500; ++round) {
    const Polygon polygon = tangledPolygon(random, 3 + round % 23, 6 + round % 10);
    if (!polygon.empty() && areaOf(polygon) != 0) {
      expectCutRightly(polygon);
      ++cut;
      ASSERT_FALSE(HasFailure()) << "round " << round;
    }
  }
  EXPECT_GT(cut, 500);
}

TEST(Polygon, combsSpiralsAndStarsAreCovered) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> uniform(0.1F, 1.0F);
  for (const int teeth : {1, 2, 7, 1500}) {
    Polygon comb{{static_cast<float>(2 * teeth), -1}, {static_cast<float>(2 * teeth), 0}};
    Polygon star;
    Polygon spiral;
    for (int i = teeth; i-- > 0;) {
      comb.push_back({static_cast<float>(2 * i) + 1, 10 * uniform(random)});
      comb.push_back({static_cast<float>(2 * i), 0.25F * static_cast<float>(i % 3) / 3});
    }
    comb.push_back({0, -1});
    expectCutRightly(comb);
    for (int i = 0; i < 2 * teeth + 3; ++i) {
      const double angle = 2 * std::numbers::pi * i / (2 * teeth + 3);
      const double radius = double{uniform(random)};
      star.push_back({static_cast<float>(radius * std::cos(angle)),
                      static_cast<float>(radius * std::sin(angle))});
    }
    expectCutRightly(star);
    for (int side = 0; side < 2; ++side) {
      const int turns = std::min(teeth, 10);  // of larger ones the sides would cut the next turn
      for (int i = 0; i <= 8 * turns; ++i) {
        const double angle = 0.7 * (side == 0 ? i : 8 * turns - i);
        const double radius = 1 + angle + (side == 0 ? 0 : 1.5);
        spiral.push_back({static_cast<float>(radius * std::cos(angle)),
                          static_cast<float>(radius * std::sin(angle))});
      }
    }
    expectCutRightly(spiral);
  }
}

TEST(Polygon, holesJoinedByAnEdgeWalkedTwiceStayOpen) {
  // A square of side 12 with 1 to 4 square holes, each reached from the left along y = const.
  for (int holes = 1; holes <= 4; ++holes) {
    Polygon polygon{{0, 0}, {12, 0}, {12, 12}, {0, 12}};
    for (int hole = holes; hole-- > 0;) {
      const auto y = static_cast<float>(3 * hole) + 1;
      polygon.insert(
          polygon.end(),
          {{0, y}, {3, y}, {3, y + 1}, {6 + y / 2, y + 1}, {6 + y / 2, y}, {3, y}, {0, y}});
    }
    expectCutRightly(polygon);
  }
}

TEST(Polygon, spikesAndRepeatedCornersCostNoArea) {
  expectCutRightly({{0, 0}, {4, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 9}, {2, 4}, {0, 4}});
  expectCutRightly({{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 2}, {2, 4}, {0, 4}});
  expectCutRightly({{0, 0}, {2, 0}, {1, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 4}, {0, 4}});
}

TEST(Polygon, farAwayAndTinyOnesAreCutAlike) {
  // Areas of a few units in the last place: rounded differences would get signs wrong.
  std::mt19937 random(23);
  for (int round = 0; round < 300; ++round) {
    Polygon polygon = tangledPolygon(random, 4 + round % 12, 8);
    if (polygon.empty() || areaOf(polygon) == 0) {
      continue;
    }
    for (Plane& point : polygon) {
      point = {8388608 + point[0], -8388608 - point[1]};
    }
    expectCutRightly(polygon);
    for (Plane& point : polygon) {
      point = {std::ldexp(point[0], -140), std::ldexp(point[1], -140)};
    }
    std::vector<zel::Float3> corners;
    for (const auto& [x, y] : polygon) {
      corners.push_back({x, y, 0});
    }
    EXPECT_EQ(zel::triangulatePolygon(corners).size(), corners.size() - 2);
  }
}

TEST(Polygon, whateverComesIsAnsweredWithTheRightNumber) {
  std::mt19937 random(29);
  const float values[] = {0, 1, 2, -1, NAN, INFINITY, -INFINITY, 1e38F, -1e-45F};
  for (int round = 0; round < 3000; ++round) {
    std::vector<zel::Float3> corners(random() % 12);
    for (zel::Float3& corner : corners) {
      for (float& coordinate : corner) {
        coordinate = values[random() % (round % 2 == 0 ? 3 : std::size(values))];
      }
    }
    const auto triangles = zel::triangulatePolygon(corners);
    ASSERT_EQ(triangles.size(), corners.size() < 3 ? 0 : corners.size() - 2);
    for (const auto& triangle : triangles) {
      for (const int corner : triangle) {
        ASSERT_TRUE(corner >= 0 && corner < static_cast<int>(corners.size()));
      }
    }
  }
  EXPECT_EQ(zel::triangulatePolygon(std::vector<zel::Float3>(100000)).size(), 99998U);
}

}  // namespace
