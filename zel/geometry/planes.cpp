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

/// The exported function on points that `n` may overwrite.
int planeNormal(Vec3 p0, Vec3 p1, Vec3 p2, float* n) {
  const Vec3 a = p1 - p0;
  const Vec3 b = p2 - p0;
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

}  // namespace

int slPlaneNormal(const float p0[3], const float p1[3], const float p2[3], float n[3]) {
  return planeNormal(p0, p1, p2, n);
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
  const Vec3 first = p0, second = p1, fourth = p3;
  if (planeNormal(first, second, p2, n) == 0) {
    return planeNormal(first, second, fourth, n);
  }
  Vec3 toFourth = fourth - first;
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
  const Vec3 flat(zel::roundToFloat(dot(vector, x)), zel::roundToFloat(dot(vector, y)), 0.0F);
  flat.store(v);
}

int slJudgePntCoPlane(int count, const float (*pts)[3], float n[3]) {
  float direction[3];
  int next = 1;
  if (count < 1 || slGetVectBtPntsNZero(pts[0], count, pts, &next, direction) == 0) {
    return 4;
  }
  float normal[3]{n[0], n[1], n[2]};
  int result = slGetNormNZero(pts[0], direction, count, pts, &next, normal) == 0 ? 5 : 2;
  float other[3];
  while (result == 2 && slGetNormNZero(pts[0], direction, count, pts, &next, other) == 1) {
    result = zel::length(zel::cross(normal, other)) > kTolerance ? 3 : 2;
  }
  Vec3(normal).store(n);
  return result;
}

int slGetVectBtPntsNZero(const float base[3], int count, const float (*pts)[3], int* next,
                         float v[3]) {
  const Vec3 origin = base;
  if (*next < 0) {
    *next = 0;
  }
  while (*next < count) {
    const Vec3 difference = Vec3(pts[*next]) - origin;
    ++*next;
    if (storeDirection(difference, v)) {
      return 1;
    }
  }
  return 0;
}

int slGetNormNZero(const float base[3], const float dir[3], int count, const float (*pts)[3],
                   int* next, float n[3]) {
  const float origin[3]{base[0], base[1], base[2]};
  const Vec3 direction = dir;
  float v[3];
  while (slGetVectBtPntsNZero(origin, count, pts, next, v) == 1) {
    if (storeDirection(zel::cross(direction, v), n)) {
      return 1;
    }
  }
  return 0;
}
