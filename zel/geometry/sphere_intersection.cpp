#include "zel/geometry/sphere_intersection.h"

#include <cmath>

#include "zel/core/constants.h"
#include "zel/geometry/detail/intersections.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/planes.h"

using zel::deadAbsF;
using zel::kTolerance;
using zel::Vec3;

int slGetShereIntersect(const float c1[3], float r1, const float c2[3], float r2, float centre[3],
                        float normal[3], float* radius) {
  const Vec3 first = c1;
  const Vec3 second = c2;
  const double apart = zel::distance(first, second);
  const double radius1 = r1;
  const double radius2 = r2;
  if (apart > radius1 + radius2) {
    return 0;
  }
  if (!(deadAbsF(apart - radius1 - radius2) >= kTolerance)) {
    zel::between(first, radius1 / (radius1 + radius2), second).store(centre);
    return 1;
  }
  const double x = (radius1 * radius1 - radius2 * radius2) / (2.0 * apart);
  const double height = x + apart * 0.5;
  const Vec3 unit = zel::directionOver(first, second, apart);
  unit.store(normal);
  zel::along(first, height, unit).store(centre);
  *radius = static_cast<float>(zel::root(radius1 * radius1 - height * height));
  return 3;
}

int slIntersectPlaneSphereM(const float p[3], const float n[3], const float c[3], float r,
                            float centre[3], float* radius) {
  const float d = zel::planeOffset(p, n);
  const double apart = zel::planeDistance(n, d, c);
  if (apart > r) {
    return 0;
  }
  slProjectPntToPlane(n, d, c, centre);
  if (!(deadAbsF(apart - r) >= kTolerance)) {
    return 1;
  }
  *radius = static_cast<float>(zel::root(static_cast<double>(r) * r - apart * apart));
  return 3;
}

int slIntersectPlaneCone(const float p[3], const float n[3], const float apex[3],
                         const float axis[3], float halfAngle, float centre[3], float* radius) {
  const Vec3 toApex = Vec3(apex) - p;
  const double height = zel::dot(toApex, axis);
  if (static_cast<double>(zel::length(toApex)) * kTolerance > deadAbsF(height)) {
    Vec3(apex).store(centre);
    return 1;
  }
  if (height < -kTolerance) {
    return 0;
  }
  const double apart = slProjectPntToPlane(n, zel::planeOffset(p, n), apex, centre);
  *radius = static_cast<float>(std::fabs(apart) * std::tan(static_cast<double>(halfAngle)));
  return 3;
}
