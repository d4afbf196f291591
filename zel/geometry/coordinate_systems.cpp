#include "zel/geometry/coordinate_systems.h"

#include "zel/core/constants.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/vectors.h"

using zel::kSquareTolerance;
using zel::Vec3;

namespace {

void storeFrame(Vec3 origin, Vec3 x, Vec3 y, Vec3 z, XYCoordSysD* cs) {
  origin.store(cs->origin);
  x.store(cs->xAxis);
  y.store(cs->yAxis);
  z.store(cs->zAxis);
}

}  // namespace

int slGenXYCoordSys(const float o[3], const float p[3], const float q[3], XYCoordSysD* cs) {
  const Vec3 toP = Vec3(p) - o;
  const Vec3 toQ = Vec3(q) - o;
  const double squareP = zel::squareLength(toP);
  const double squareQ = zel::squareLength(toQ);
  if (squareP <= kSquareTolerance || squareQ <= kSquareTolerance) {
    return 0;
  }
  const Vec3 product = zel::cross(toP, toQ);
  if (zel::isSineTiny(squareP, squareQ, product)) {
    return 0;
  }
  const Vec3 x = zel::normalized(toP);
  const Vec3 z = zel::normalized(product);
  storeFrame(o, x, zel::normalized(zel::cross(z, x)), z, cs);
  return 1;
}

int slGenXYCoordSysByNormal(const float o[3], const float p[3], const float n[3], XYCoordSysD* cs) {
  const Vec3 z = n;
  Vec3 x = Vec3(p) - o;
  if (!zel::normalize(x)) {
    float u[3];
    float w[3];
    slOthPlane(n, u, w);
    storeFrame(o, u, w, z, cs);
    return 1;
  }
  if (zel::deadAbsF(zel::dot(x, z)) >= zel::kTolerance) {
    return 3;
  }
  storeFrame(o, x, zel::normalized(zel::cross(z, x)), z, cs);
  return 1;
}
