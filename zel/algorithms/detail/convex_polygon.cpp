#include "zel/algorithms/detail/convex_polygon.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zel {

namespace {

double dot(const PlanePoint& a, const PlanePoint& b) { return a[0] * b[0] + a[1] * b[1]; }

bool turnsLeft(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
  return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]) > 0.0;
}

/// Whether `b` reaches less than `depth` behind one of the edges of `a`. The corner of `b` that
/// reaches farthest goes once round while the edges do.
bool hasEdgeThatSeparates(ConvexPolygon a, ConvexPolygon b, double depth) {
  std::size_t deepest = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const PlanePoint& from = a[i];
    const PlanePoint& to = a[(i + 1) % a.size()];
    const PlanePoint inwards{from[1] - to[1], to[0] - from[0]};
    const auto reach = [&](std::size_t corner) {
      return dot(inwards, {b[corner][0] - from[0], b[corner][1] - from[1]});
    };
    if (i == 0) {
      for (std::size_t corner = 1; corner < b.size(); ++corner) {
        deepest = reach(corner) > reach(deepest) ? corner : deepest;
      }
    }
    for (std::size_t steps = 0; steps < b.size(); ++steps) {
      const std::size_t next = (deepest + 1) % b.size();
      if (!(reach(next) > reach(deepest))) {
        break;
      }
      deepest = next;
    }
    const double length = std::hypot(inwards[0], inwards[1]);
    if (length > 0.0 && reach(deepest) <= depth * length) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::vector<PlanePoint> convexHull(std::vector<PlanePoint> points) {
  std::sort(points.begin(), points.end());
  std::vector<PlanePoint> hull;
  hull.reserve(points.size() + 1);
  const auto addChain = [&](auto first, auto last) {
    const std::size_t start = hull.size();
    for (; first != last; ++first) {
      while (hull.size() >= start + 2 && !turnsLeft(hull[hull.size() - 2], hull.back(), *first)) {
        hull.pop_back();
      }
      hull.push_back(*first);
    }
    hull.pop_back();
  };
  if (points.size() < 2) {
    return points;
  }
  addChain(points.begin(), points.end());
  addChain(points.rbegin(), points.rend());
  return hull;
}

bool areApart(ConvexPolygon a, ConvexPolygon b, double depth) {
  return hasEdgeThatSeparates(a, b, depth) || hasEdgeThatSeparates(b, a, depth);
}

}  // namespace zel
