#include "zel/geometry/inside_tests.h"

#include <array>

#include "zel/core/constants.h"
#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/rotations.h"

using zel::deadAbs;
using zel::kTolerance;

namespace {

enum EdgeCode { kCrossing = 1, kOnEdge = 2, kAheadOnRay = 3, kNoCrossing = 4 };

using Point2 = std::array<float, 2>;

/// (b - a) x (c - a) in the plane.
double turn(const float* a, const float* b, const float* c) {
  const double ux = static_cast<double>(b[0]) - a[0], uy = static_cast<double>(b[1]) - a[1];
  const double vx = static_cast<double>(c[0]) - a[0], vy = static_cast<double>(c[1]) - a[1];
  return ux * vy - uy * vx;
}

/// Which side of a-b the point is on; the edge itself counts with the right side.
bool isOnLeft(const float* p, const float* a, const float* b) {
  const double px = static_cast<double>(p[0]) - a[0], py = static_cast<double>(p[1]) - a[1];
  const double dx = static_cast<double>(b[0]) - a[0], dy = static_cast<double>(b[1]) - a[1];
  return dy * px - py * dx < 0.0;
}

EdgeCode horizontalEdge(float px, float py, const float* a, const float* b) {
  if (!(deadAbs(py - a[1]) < kTolerance)) {
    return kNoCrossing;
  }
  if (a[0] > px && b[0] > px) {
    return kAheadOnRay;
  }
  const bool between = (a[0] > px && px > b[0]) || (a[0] < px && px < b[0]);
  return between ? kOnEdge : kNoCrossing;
}

/// Counts how often the ray from a point toward +x crosses the edges of a polygon, which is walked
/// vertex by vertex.
class RayCrossings {
 public:
  RayCrossings(const float* p, Point2 first)
      : x_(p[0]), y_(p[1]), last_(first), lastSide_(side(first)) {}

  void walkTo(Point2 next) {
    const int nextSide = side(next);
    // Most edges lie wholly above or below the ray, and then there is nothing to compute.
    if (nextSide != lastSide_ || nextSide == 0) {
      meet(next);
    }
    last_ = next;
    lastSide_ = nextSide;
  }
  [[nodiscard]] bool isOnBoundary() const { return onBoundary_; }
  [[nodiscard]] bool isInside() const { return odd_ && !onBoundary_; }
  [[nodiscard]] Point2 last() const { return last_; }

 private:
  /// 1 above the ray, -1 below, 0 at its height (or nowhere).
  [[nodiscard]] int side(Point2 vertex) const {
    const float height = vertex[1] - y_;
    return (height > kTolerance ? 1 : 0) - (height < -kTolerance ? 1 : 0);
  }

  void meet(Point2 next) {
    float hit[2];
    float t = 0.0F;
    const int code = slRightInter(x_, y_, last_.data(), next.data(), hit, &t);
    onBoundary_ = onBoundary_ || code == kOnEdge;
    // A crossing at the first vertex of an edge is left to the edge before it.
    odd_ ^= code == kAheadOnRay || (code == kCrossing && t > kTolerance);
  }

  float x_, y_;
  Point2 last_;
  int lastSide_;
  bool odd_ = false;
  bool onBoundary_ = false;
};

bool coincide(Point2 a, Point2 b) {
  return deadAbs(a[0] - b[0]) < kTolerance && deadAbs(a[1] - b[1]) < kTolerance;
}

/// The test of a polygon whose vertex i is `vertexAt(i)`, asked for once each.
template <class VertexAt>
int judgePolygon(int count, const float* p, VertexAt vertexAt) {
  if (count < 2) {
    return 0;
  }
  const Point2 first = vertexAt(0);
  RayCrossings crossings(p, first);
  for (int i = 1; i < count && !crossings.isOnBoundary(); ++i) {
    crossings.walkTo(vertexAt(i));
  }
  if (!crossings.isOnBoundary() && !coincide(crossings.last(), first)) {
    crossings.walkTo(first);
  }
  return crossings.isInside() ? 1 : 0;
}

}  // namespace

int slIsPntInsideOfTriangle(const float p[2], const float a[2], const float b[2],
                            const float c[2]) {
  const bool side = isOnLeft(p, a, b);
  return side == isOnLeft(p, b, c) && side == isOnLeft(p, c, a) ? 1 : 0;
}

int slIsPntInsideOfTrapezium(const float p[2], const float a[2], const float b[2], const float c[2],
                             const float d[2]) {
  const bool alongAC = (turn(a, b, c) < 0.0) != (turn(a, d, c) < 0.0);
  const bool inFirst = slIsPntInsideOfTriangle(p, a, b, alongAC ? c : d) == 1;
  const bool inside = inFirst || (alongAC ? slIsPntInsideOfTriangle(p, c, d, a)
                                          : slIsPntInsideOfTriangle(p, b, c, d)) == 1;
  return inside ? 1 : 0;
}

int slRightInter(float px, float py, const float a[2], const float b[2], float hit[2], float* t) {
  if (deadAbs(a[1] - b[1]) < kTolerance) {
    return horizontalEdge(px, py, a, b);
  }
  const bool crossesHeight = (a[1] > py && b[1] < py) || (a[1] < py && b[1] > py);
  if (!crossesHeight) {
    return kNoCrossing;
  }
  const double ax = a[0], ay = a[1];
  const float parameter = static_cast<float>((py - ay) / (b[1] - ay));
  const float x = static_cast<float>(ax + parameter * (b[0] - ax));
  *t = parameter;
  hit[0] = x;
  hit[1] = py;
  if (deadAbs(x - px) < kTolerance) {
    return kOnEdge;
  }
  return x > px ? kCrossing : kNoCrossing;
}

int slPointInterFaceM(const float (*poly)[2], int count, const float p[2]) {
  return judgePolygon(count, p, [poly](int i) { return Point2{poly[i][0], poly[i][1]}; });
}

int slJudgePntInPolygon(int count, const float (*pts)[3], const float n[3], const float p[3]) {
  constexpr float kOrigin[2]{};
  float toPlane[16];
  slGenVectToZMatrix(p, n, toPlane);
  return judgePolygon(count, kOrigin, [&](int i) {
    const zel::Vec3 vertex = zel::transformPoint(toPlane, pts[i]);
    return Point2{vertex.x, vertex.y};
  });
}
