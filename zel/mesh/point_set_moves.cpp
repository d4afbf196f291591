// Moves of whole point sets: onto a plane, into a local coordinate system.

#include "zel/containers/point3d_arr.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/point_set_scan.h"

void Point3DArr::ProjectPntsToPlaneM(const float* p, const float* nrm) {
  const float d = slGetPlaneEquation(p, nrm);
  const zel::Vec3 n = nrm;
  zel::Float3* store = slots_.changeAll().data();
  zel::scanAvailable(*this, 0, -1, [&](const float* point, int slot) {
    // As slProjectPntToPlane(), without a call for every point.
    zel::along(point, -(zel::dot(n, point) + d), n).store(store[slot].data());
  });
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
