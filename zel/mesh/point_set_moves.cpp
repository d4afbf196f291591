// Moves of whole point sets: onto a plane, into a local coordinate system.

#include "zel/containers/point3d_arr.h"
#include "zel/geometry/detail/plane_feet.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/points/point_set_scan.h"

namespace {

void moveIfAvailable(const zel::PlaneFeet& feet, float* point) {
  if (zel::isAvailable(point)) {
    feet.moveOne(point);
  }
}

}  // namespace

void Point3DArr::ProjectPntsToPlaneM(const float* p, const float* nrm) {
  const zel::PlaneFeet feet(nrm, slGetPlaneEquation(p, nrm));
  const int bound = GetBoundM();
  zel::Float3* store = slots_.changeAll().data();
  int slot = 0;
  for (; slot + 1 < bound; slot += 2) {
    float* a = store[slot].data();
    float* b = store[slot + 1].data();
    if (zel::isAvailable(a) && zel::isAvailable(b)) {
      feet.moveTwo(a, b);
    } else {
      moveIfAvailable(feet, a);
      moveIfAvailable(feet, b);
    }
  }
  if (slot < bound) {
    moveIfAvailable(feet, store[slot].data());
  }
}

void Point3DArr::TransToLocalCoordSysM(const XYCoordSysD& cs) {
  zel::Float3* store = slots_.changeAll().data();
  zel::scanAvailable(*this, 0, -1, [&](const float* point, int slot) {
    const zel::Vec3 v = zel::Vec3(point) - cs.origin;
    store[slot][0] = zel::roundToFloat(zel::dot(v, cs.xAxis));
    store[slot][1] = zel::roundToFloat(zel::dot(v, cs.yAxis));
    store[slot][2] = zel::roundToFloat(zel::dot(v, cs.zAxis));
  });
}
