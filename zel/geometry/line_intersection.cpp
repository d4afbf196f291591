#include <limits>

#include "zel/core/constants.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/intersections.h"

using zel::kTolerance;
using zel::Vec3;

namespace {

/// Result for two lines that are one and the same.
constexpr int kCollinear = std::numeric_limits<int>::max();

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

}  // namespace

int slIntersectLines3D(const float a0[3], const float a1[3], const float b0[3], const float b1[3],
                       float* t, float* s) {
  const Vec3 first = Vec3(a1) - a0;
  const Vec3 second = Vec3(b1) - b0;
  const double squareA = zel::squareLength(first);
  const double squareB = zel::squareLength(second);
  if (zel::isSineTiny(squareA, squareB, zel::cross(first, second))) {
    const float apart = zel::length(zel::footOnLine(a0, a1, b0).offset);
    return apart >= kTolerance ? 0 : kCollinear;
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
