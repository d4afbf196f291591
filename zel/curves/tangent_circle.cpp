#include <cmath>
#include <optional>

#include "zel/core/constants.h"
#include "zel/curves/arcs.h"

using zel::kTolerance;

namespace {

struct Point {
  double x, y, z;

  static Point of(const float* p) { return {p[0], p[1], p[2]}; }
  bool store(float* out) const {
    out[0] = static_cast<float>(x);
    out[1] = static_cast<float>(y);
    out[2] = static_cast<float>(z);
    return std::isfinite(out[0]) && std::isfinite(out[1]) && std::isfinite(out[2]);
  }
};

Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Point operator*(double t, Point a) { return {t * a.x, t * a.y, t * a.z}; }
double dot(Point a, Point b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Point cross(Point a, Point b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double norm(Point a) { return std::sqrt(dot(a, a)); }

/// A line with its first and its second given point.
struct Line {
  Point from, to, direction;
  double length;
};

Line lineThrough(const float* p, const float* q) {
  const Point from = Point::of(p);
  const Point to = Point::of(q);
  const double length = norm(to - from);
  return {from, to, 1.0 / length * (to - from), length};
}

/// The unit direction from `corner` to the end of the line, or to its start when the end is there.
Point sideOf(const Line& line, Point corner) {
  const double toEnd = dot(line.to - corner, line.direction);
  const double side =
      std::fabs(toEnd) > kTolerance ? toEnd : dot(line.from - corner, line.direction);
  return std::copysign(1.0, side) * line.direction;
}

/// Where two lines meet. Comparisons are such that NaN finds nothing.
std::optional<Point> meetingPoint(const Line& first, const Line& second) {
  const Point normal = cross(first.direction, second.direction);
  const double sine = norm(normal);
  if (!(first.length > kTolerance && second.length > kTolerance && sine >= kTolerance)) {
    return std::nullopt;
  }
  const Point between = second.from - first.from;
  if (!(std::fabs(dot(between, normal)) / sine < kTolerance)) {
    return std::nullopt;
  }
  const double t = dot(cross(between, second.direction), normal) / (sine * sine);
  return first.from + t * first.direction;
}

}  // namespace

int slGetTangentCircle(const float* a, const float* b, const float* c, const float* d, float radius,
                       float* centre, float* touch1, float* touch2) {
  const Line first = lineThrough(a, b);
  const Line second = lineThrough(c, d);
  const std::optional<Point> corner = meetingPoint(first, second);
  if (!corner || !(radius > kTolerance)) {
    return 0;
  }
  const Point side1 = sideOf(first, *corner);
  const Point side2 = sideOf(second, *corner);
  const double sine = norm(cross(side1, side2));
  // tan of half the angle is sine / (1 + cosine); a corner is that much of the radius away.
  const double reach = radius * (1.0 + dot(side1, side2)) / sine;
  float results[3][3];
  const bool finite = (*corner + radius / sine * (side1 + side2)).store(results[0]) &&
                      (*corner + reach * side1).store(results[1]) &&
                      (*corner + reach * side2).store(results[2]);
  if (!finite) {
    return 0;
  }
  Point::of(results[0]).store(centre);
  Point::of(results[1]).store(touch1);
  Point::of(results[2]).store(touch2);
  return 1;
}
