#include "zel/algorithms/detail/plane_triangle.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace zel {

namespace {

/// By how much the two shadows on the normal of an edge overlap.
double shadowOverlap(const PlanePoint& from, const PlanePoint& to, const PlaneTriangle& a,
                     const PlaneTriangle& b) {
  const double x = from[1] - to[1];
  const double y = to[0] - from[0];
  const double length = std::hypot(x, y);
  if (!(length > 0.0)) {
    return std::numeric_limits<double>::infinity();
  }
  const auto shadow = [&](const PlaneTriangle& triangle) {
    std::array<double, 3> places{};
    std::transform(triangle.begin(), triangle.end(), places.begin(),
                   [&](const PlanePoint& p) { return (p[0] * x + p[1] * y) / length; });
    const auto [low, high] = std::minmax_element(places.begin(), places.end());
    return std::array<double, 2>{*low, *high};
  };
  const auto [lowA, highA] = shadow(a);
  const auto [lowB, highB] = shadow(b);
  return std::min(highA, highB) - std::max(lowA, lowB);
}

}  // namespace

void PlaneBox::extendTo(const PlanePoint& point) {
  for (std::size_t axis = 0; axis < 2; ++axis) {
    low[axis] = std::min(low[axis], point[axis]);
    high[axis] = std::max(high[axis], point[axis]);
  }
}

PlaneBox boxOf(const std::vector<PlaneTriangle>& triangles) {
  if (triangles.empty()) {
    return {};
  }
  PlaneBox box{triangles.front()[0], triangles.front()[0]};
  for (const PlaneTriangle& triangle : triangles) {
    for (const PlanePoint& corner : triangle) {
      box.extendTo(corner);
    }
  }
  return box;
}

double signedArea(const PlaneTriangle& triangle) {
  const auto& [a, b, c] = triangle;
  return 0.5 * ((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]));
}

double leastOverlap(const PlaneTriangle& triangle) {
  constexpr double kThin = 1e-3;
  return kThin * std::sqrt(std::fabs(signedArea(triangle)));
}

bool overlap(const PlaneTriangle& a, const PlaneTriangle& b) {
  const double least = std::min(leastOverlap(a), leastOverlap(b));
  for (std::size_t k = 0; k < 3; ++k) {
    const std::size_t l = (k + 1) % 3;
    if (!(shadowOverlap(a[k], a[l], a, b) > least) || !(shadowOverlap(b[k], b[l], a, b) > least)) {
      return false;
    }
  }
  return true;
}

}  // namespace zel
