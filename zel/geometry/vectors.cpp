#include "zel/geometry/vectors.h"

#include <functional>

#include "zel/core/constants.h"
#include "zel/geometry/detail/scalars.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/lengths.h"
#include "zel/geometry/scalars.h"

using zel::cross;
using zel::deadAbs;
using zel::dot;
using zel::kSquareTolerance;
using zel::kTolerance;
using zel::Vec3;

namespace {

/// Divides by the length, or writes the first axis when that is no longer than the tolerance.
template <int Size>
int normalizeDoubles(double* v, double length) {
  const bool degenerate = length <= kTolerance;
  for (int i = 0; i < Size; ++i) {
    v[i] = degenerate ? (i == 0 ? 1.0 : 0.0) : v[i] / length;
  }
  return degenerate ? 0 : 1;
}

/// Sum of the squares of all components but one.
double squareOff(const float* v, int axis) {
  const double a = v[axis == 0 ? 1 : 0];
  const double b = v[axis == 2 ? 1 : 2];
  return a * a + b * b;
}

/// (a x b) . ref, nothing rounded to float.
template <class Real>
double tripleProduct(const Real* a, const Real* b, const Real* ref) {
  const double ax = a[0], ay = a[1], az = a[2];
  const double bx = b[0], by = b[1], bz = b[2];
  return (ay * bz - az * by) * ref[0] + (az * bx - ax * bz) * ref[1] + (ax * by - ay * bx) * ref[2];
}

template <class Real>
double signedAngle(const Real* a, const Real* b, const Real* ref) {
  Real from[3]{a[0], a[1], a[2]};
  Real to[3]{b[0], b[1], b[2]};
  slNormalize(from);
  slNormalize(to);
  double cosine = 0.0;
  for (int i = 0; i < 3; ++i) {
    cosine += static_cast<double>(from[i]) * to[i];
  }
  const double angle = slAcos(cosine);
  return tripleProduct(from, to, ref) < 0.0 ? -angle : angle;
}

Vec3 perpendicular(Vec3 v) {
  if (deadAbs(v.x) < kTolerance) {
    return {1.0F, 0.0F, 0.0F};
  }
  if (deadAbs(v.y) < kTolerance) {
    return {0.0F, 1.0F, 0.0F};
  }
  if (deadAbs(v.z) >= kTolerance) {
    return zel::normalized({-v.y, v.x, 0.0F});
  }
  return {0.0F, 0.0F, 1.0F};
}

struct PointList {
  int count;
  const float (*points)[3];
};

/// The bounds of two lists on one side, from `start` on; `isBetter(candidate, current)` decides.
template <class IsBetter>
Vec3 boundsOf(PointList a, PointList b, float start, IsBetter isBetter) {
  float bounds[3]{start, start, start};
  for (const PointList& list : {a, b}) {
    for (int i = 0; i < list.count; ++i) {
      for (int axis = 0; axis < 3; ++axis) {
        if (isBetter(list.points[i][axis], bounds[axis])) {
          bounds[axis] = list.points[i][axis];
        }
      }
    }
  }
  return bounds;
}

}  // namespace

int slNormalize(float v[3]) {
  Vec3 unit = v;
  const bool done = zel::normalize(unit);
  unit.store(v);
  return done ? 1 : 0;
}

int slNormalize(double v[3]) { return normalizeDoubles<3>(v, slLength(v)); }

int slNormalize2D(double v[2]) { return normalizeDoubles<2>(v, slLength2(v)); }

int slNormalize2D(float v[2]) {
  double copy[2]{v[0], v[1]};
  const int result = slNormalize2D(copy);
  v[0] = static_cast<float>(copy[0]);
  v[1] = static_cast<float>(copy[1]);
  return result;
}

float slLenAndDir(const float v[3], float dir[3]) {
  const double length = zel::lengthD(v);
  double unit[3]{v[0], v[1], v[2]};
  normalizeDoubles<3>(unit, length);
  for (int i = 0; i < 3; ++i) {
    dir[i] = static_cast<float>(unit[i]);
  }
  return static_cast<float>(length);
}

int slGetNormalVectBtPnts(const float a[3], const float b[3], float out[3]) {
  Vec3 unit = Vec3(b) - a;
  const bool done = zel::normalize(unit);
  unit.store(out);
  return done ? 1 : 0;
}

int slGetNormalVectBtPnts(const float a[3], const float b[3], double out[3]) {
  for (int i = 0; i < 3; ++i) {
    out[i] = static_cast<double>(b[i]) - a[i];
  }
  return slNormalize(out);
}

int slVect(const float a[3], const float b[3], const float c[3], float u[3], float w[3]) {
  const Vec3 first = Vec3(a) - b;
  const Vec3 second = Vec3(c) - b;
  first.store(u);
  second.store(w);
  return 1;
}

void slSetPnt3DValueByDiv(float d, float v[3]) {
  for (int i = 0; i < 3; ++i) {
    v[i] /= d;
  }
}

void slOthVect(const float v[3], float out[3]) { perpendicular(v).store(out); }

void slOthPlane(const float v[3], float u[3], float w[3]) {
  const Vec3 first = perpendicular(v);
  const Vec3 second = zel::normalized(cross(v, first));
  first.store(u);
  second.store(w);
}

void slGetPntsMidVect(const float o[3], const float p[3], const float q[3], float out[3]) {
  const auto component = [=](int i) {
    const double toP = static_cast<double>(p[i]) - o[i];
    const double toQ = static_cast<double>(q[i]) - o[i];
    return static_cast<float>((toP + toQ) * 0.5);
  };
  zel::normalized({component(0), component(1), component(2)}).store(out);
}

int slVectParallel(const float a[3], const float b[3]) {
  const double lengthA = zel::length(a);
  const double lengthB = zel::length(b);
  if (!(lengthA > kTolerance && lengthB > kTolerance)) {
    return 0;
  }
  return zel::length(cross(a, b)) < kTolerance * lengthA * lengthB ? 1 : 0;
}

int slIsEqualPoint3D(const float a[3], const float b[3]) { return zel::isEqualPoint(a, b) ? 1 : 0; }

int slGetVectMaxDir(const float v[3]) {
  const int i = deadAbs(v[0]) >= deadAbs(v[1]) ? 0 : 1;
  return deadAbs(v[i]) >= deadAbs(v[2]) ? i : 2;
}

int slComparWithCoordAxis(const float v[3]) {
  for (int axis = 0; axis < 3; ++axis) {
    if (squareOff(v, axis) < kSquareTolerance) {
      return axis;
    }
  }
  return -1;
}

int slGetVectAngle(const float a[3], const float b[3], float* angle) {
  const double product = dot(a, b);
  const double lengthA = zel::length(a);
  const double lengthB = zel::length(b);
  *angle = static_cast<float>(product);
  if (lengthA <= kTolerance || lengthB <= kTolerance) {
    return 0;
  }
  *angle = static_cast<float>(slAcos(product / (lengthA * lengthB)));
  return 1;
}

float slCalAngleTwoVects(const float a[3], const float b[3], const float ref[3]) {
  return static_cast<float>(signedAngle(a, b, ref));
}

double slCalAngleTwoVects(const double a[3], const double b[3], const double ref[3]) {
  return signedAngle(a, b, ref);
}

float slGetVectorAngle(const float v[2]) {
  const double x = v[0];
  const double y = v[1];
  const int signY = zel::signOf(v[1]);
  if (zel::signOf(v[0]) == 0 && signY == 0) {
    return 0.0F;
  }
  double angle = slAcos(x / (x * x + y * y));
  if (signY == -1) {
    angle = zel::kTwoPi - angle;
  }
  return static_cast<float>(angle * 180.0 * zel::kPerPi);
}

void slGetMinXYZ(int count1, const float (*list1)[3], int count2, const float (*list2)[3],
                 float out[3]) {
  boundsOf({count1, list1}, {count2, list2}, zel::kInfinity, std::less<float>()).store(out);
}

void slGetMaxXYZ(int count1, const float (*list1)[3], int count2, const float (*list2)[3],
                 float out[3]) {
  boundsOf({count1, list1}, {count2, list2}, -zel::kInfinity, std::greater<float>()).store(out);
}
