#include <cmath>
#include <cstdint>

#include "zel/core/constants.h"
#include "zel/geometry/detail/intersections.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/intersections.h"
#include "zel/geometry/lengths.h"
#include "zel/geometry/line_pairs.h"
#include "zel/geometry/vectors.h"

using zel::kTolerance;
using zel::Vec3;

namespace {

/// Cross product of two vectors seen along one axis.
double planeCross(const float* a, const float* b, int i, int j) {
  return static_cast<double>(a[i]) * b[j] - static_cast<double>(a[j]) * b[i];
}

struct CoordinatePair {
  int i, j;
};

/// The two coordinates in which the directions differ most; the first of equal pairs.
CoordinatePair bestPair(const float* d1, const float* d2) {
  constexpr CoordinatePair kPairs[]{{0, 1}, {0, 2}, {1, 2}};
  CoordinatePair best = kPairs[0];
  float largest = 0.0F;
  for (const CoordinatePair& pair : kPairs) {
    const float size = zel::deadAbsF(planeCross(d2, d1, pair.i, pair.j));
    if (size > largest) {
      largest = size;
      best = pair;
    }
  }
  return best;
}

/// How far along their directions the points lie that stand for infinite lines.
constexpr double kReach = 10.0;

/// A ray parallel to a segment, from how far ahead the ends of the segment lie.
int meetParallel(double toFirst, double toSecond, float* t, float* s) {
  if (toFirst > -kTolerance) {
    *s = 0.0F;
    *t = static_cast<float>(toFirst > 0.0 ? toFirst : 0.0);
    return zel::kCoincident;
  }
  if (toSecond > -kTolerance) {
    *s = 1.0F;
    *t = 0.0F;
    return zel::kCoincident;
  }
  return 0;
}

}  // namespace

int slIntersectLines3D(const float a0[3], const float a1[3], const float b0[3], const float b1[3],
                       float* t, float* s) {
  const Vec3 first = Vec3(a1) - a0;
  const Vec3 second = Vec3(b1) - b0;
  const double squareA = zel::squareLength(first);
  const double squareB = zel::squareLength(second);
  if (zel::isSineTiny(squareA, squareB, zel::cross(first, second))) {
    const float apart = zel::length(zel::footOnLine(a0, a1, b0).offset);
    return apart >= kTolerance ? 0 : zel::kCoincident;
  }
  float d1[3], d2[3], w[3];
  first.store(d1);
  second.store(d2);
  (Vec3(b0) - a0).store(w);
  const auto [i, j] = bestPair(d1, d2);
  const double determinant = planeCross(d2, d1, i, j);
  if (zel::deadAbsF(determinant) <= kTolerance) {
    return 0;
  }
  *t = static_cast<float>(planeCross(d2, w, i, j) / determinant);
  *s = static_cast<float>(planeCross(d1, w, i, j) / determinant);
  return 1;
}

int slIntersectInfLines(const float a0[3], const float u[3], const float b0[3], const float v[3],
                        float* t, float* s) {
  float a1[3], b1[3], n[3], distance;
  zel::along(a0, kReach, u).store(a1);
  zel::along(b0, kReach, v).store(b1);
  int result = -1;
  if (slJudgeLineCoPlane(a0, a1, b0, b1, n) == 2) {
    result = slIntersectLines3D(a0, a1, b0, b1, t, s);
  } else {
    slGetDifPlaneInfLineDist(a0, a1, b0, b1, t, s, &distance);
  }
  *t = static_cast<float>(*t * kReach);
  *s = static_cast<float>(*s * kReach);
  return result;
}

int slIntersectLines2D(const float p[2], const float u[2], const float b0[2], const float b1[2],
                       float* t, float* s) {
  const float e[2]{b1[0] - b0[0], b1[1] - b0[1]};
  const float w[2]{p[0] - b0[0], p[1] - b0[1]};
  const double determinant = planeCross(e, u, 0, 1);
  if (!(zel::deadAbsF(determinant) >= static_cast<double>(slLength2(e)) * kTolerance)) {
    const double toFirst = -(static_cast<double>(w[0]) * u[0] + static_cast<double>(w[1]) * u[1]);
    const double toSecond =
        (static_cast<double>(b1[0]) - p[0]) * u[0] + (static_cast<double>(b1[1]) - p[1]) * u[1];
    return meetParallel(toFirst, toSecond, t, s);
  }
  const float onRay = static_cast<float>(planeCross(w, e, 0, 1) / determinant);
  const float onSegment = static_cast<float>(planeCross(w, u, 0, 1) / determinant);
  *t = onRay;
  *s = onSegment;
  return onRay > -kTolerance && zel::isOnSegment(onSegment) ? 1 : 0;
}

int slIntersecLines(const float a0[3], const float u[3], const float b0[3], const float b1[3],
                    float out[3], float sDefault) {
  const Vec3 direction = u;
  const Vec3 e = Vec3(b1) - b0;
  const Vec3 w = Vec3(a0) - b0;
  const double squareE = zel::squareLength(e);
  const double squareU = zel::squareLength(direction);
  const double m = -zel::dot(e, direction);
  const float determinant = static_cast<float>(squareE * squareU - m * m);
  const float onE = static_cast<float>(zel::dot(w, e));
  const float onU = static_cast<float>(zel::dot(w, direction));
  const double k = (onU * squareE - onE * m) / determinant;
  const double s = k > 0.0 ? (onE * squareU - onU * m) / determinant : sDefault;
  if (s <= -kTolerance || s >= 1.0 + kTolerance) {
    return 0;
  }
  zel::between(b0, s, b1).store(out);
  return 1;
}

int slGetIntersectType(const float p[2], int i, int count, const float (*poly)[2], int step) {
  const std::int64_t ahead = static_cast<std::int64_t>(i) + step;
  const std::int64_t previous = i < 1 ? count - std::int64_t{2} : i - std::int64_t{1};
  const std::int64_t next = ahead < count ? ahead : 1;
  const auto isListed = [=](std::int64_t index) { return index >= 0 && index < count; };
  if (!isListed(i) || !isListed(previous) || !isListed(next)) {
    return 2;
  }
  const double y1 = static_cast<double>(poly[previous][1]) - p[1];
  const double y2 = static_cast<double>(poly[next][1]) - p[1];
  return std::fabs(y1) * std::fabs(y2) * kTolerance >= y1 * y2 ? 1 : 2;
}

int slCalculateVectTwoParallel(const float (&a0)[3], const float (&u)[3], const float (&b0)[3],
                               const float (&v)[3], float out[3]) {
  if (slVectParallel(u, v) != 1) {
    return 0;
  }
  const Vec3 unit = zel::normalized(u);
  const Vec3 w = Vec3(b0) - a0;
  const Vec3 q = zel::along(b0, -zel::dot(w, unit), unit);
  if (zel::isEqualPoint(q, a0)) {
    return 0;
  }
  (q - a0).store(out);
  return 1;
}
