#include "zel/geometry/planes.h"

#include "zel/core/constants.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/vectors.h"

using zel::dot;
using zel::kTolerance;
using zel::Vec3;

namespace {

/// Stores v, normalised when it is long enough to have a direction. @return whether it is.
bool storeDirection(Vec3 v, float* out) {
  const bool hasDirection = zel::length(v) >= kTolerance;
  if (hasDirection) {
    zel::normalize(v);
  }
  v.store(out);
  return hasDirection;
}

}  // namespace

int slPlaneNormal(const float p0[3], const float p1[3], const float p2[3], float n[3]) {
  const Vec3 a = Vec3(p1) - p0;
  const Vec3 b = Vec3(p2) - p0;
  const double squareA = zel::squareLength(a);
  const double squareB = zel::squareLength(b);
  if (squareA <= zel::kSquareTolerance || squareB <= zel::kSquareTolerance) {
    return 0;
  }
  Vec3 normal = zel::cross(a, b);
  const bool collinear = zel::isSineTiny(squareA, squareB, normal);
  const bool done = !collinear && zel::normalize(normal);
  normal.store(n);
  return done ? 1 : 0;
}

int slGetPlaneEquation(const float p0[3], const float p1[3], const float p2[3], float n[3],
                       float* d) {
  const Vec3 point = p0;
  const int result = slPlaneNormal(p0, p1, p2, n);
  if (result == 1) {
    *d = zel::planeOffset(point, n);
  }
  return result;
}

float slGetPlaneEquation(const float p[3], const float n[3]) { return zel::planeOffset(p, n); }

int slGetPlaneFourPnt(const float p0[3], const float p1[3], const float p2[3], const float p3[3],
                      float n[3]) {
  Vec3 toFourth = Vec3(p3) - p0;
  if (slPlaneNormal(p0, p1, p2, n) == 0) {
    return slPlaneNormal(p0, p1, p3, n);
  }
  if (!zel::normalize(toFourth)) {
    return 1;
  }
  return zel::deadAbsF(dot(toFourth, n)) > kTolerance ? 0 : 1;
}

int slGetAveragePlane(const float a[3], const float b[3], PlaneD* out) {
  const Vec3 normal = Vec3(a) - b;
  for (int i = 0; i < 3; ++i) {
    out->point[i] = static_cast<float>((static_cast<double>(a[i]) + b[i]) * 0.5);
  }
  normal.store(out->normal);
  return 1;
}

float slGetPntPlaneDist(const float n[3], float d, const float p[3]) {
  return zel::planeDistance(n, d, p);
}

float slProjectPntToPlane(const float n[3], float d, const float p[3], float out[3]) {
  const double distance = dot(n, p) + d;
  zel::along(p, -distance, n).store(out);
  return static_cast<float>(distance);
}

void slTransPntToPlane(float p[3], const XYCoordSysD& cs) {
  (Vec3(p) - cs.origin).store(p);
  slTransVectToPlane(p, cs.xAxis, cs.yAxis);
}

void slTransVectToPlane(float v[3], const float x[3], const float y[3]) {
  const Vec3 vector = v;
  v[0] = static_cast<float>(dot(vector, x));
  v[1] = static_cast<float>(dot(vector, y));
  v[2] = 0.0F;
}

int slJudgePntCoPlane(int count, const float (*pts)[3], float n[3]) {
  float direction[3];
  int next = 1;
  if (count < 1 || slGetVectBtPntsNZero(pts[0], count, pts, &next, direction) == 0) {
    return 4;
  }
  if (slGetNormNZero(pts[0], direction, count, pts, &next, n) == 0) {
    return 5;
  }
  float other[3];
  while (slGetNormNZero(pts[0], direction, count, pts, &next, other) == 1) {
    if (zel::length(zel::cross(n, other)) > kTolerance) {
      return 3;
    }
  }
  return 2;
}

int slGetVectBtPntsNZero(const float base[3], int count, const float (*pts)[3], int* next,
                         float v[3]) {
  if (*next < 0) {
    *next = 0;
  }
  while (*next < count) {
    const Vec3 difference = Vec3(pts[*next]) - base;
    ++*next;
    if (storeDirection(difference, v)) {
      return 1;
    }
  }
  return 0;
}

int slGetNormNZero(const float base[3], const float dir[3], int count, const float (*pts)[3],
                   int* next, float n[3]) {
  float v[3];
  while (slGetVectBtPntsNZero(base, count, pts, next, v) == 1) {
    if (storeDirection(zel::cross(dir, v), n)) {
      return 1;
    }
  }
  return 0;
}
