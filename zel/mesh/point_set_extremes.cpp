// Extreme points, pairs and extents of a point set.

#include <new>
#include <vector>

#include "zel/containers/point3d_arr.h"
#include "zel/core/constants.h"
#include "zel/core/memory.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/points/extents.h"
#include "zel/mesh/detail/points/farthest_pair.h"
#include "zel/mesh/detail/points/point_set_scan.h"

float Point3DArr::GetFarthestTwoPointsM(int start, int k, int* a, int* b) const {
  zel::FarthestPair pair{0.0F, zel::kNoIndex, zel::kNoIndex};
  try {
    std::vector<zel::ScannedPoint> taken;
    zel::scanAvailable(*this, start, k, [&](const float* point, int slot) {
      taken.push_back({{point[0], point[1], point[2]}, slot});
    });
    pair = zel::farthestPair(taken);
  } catch (const std::bad_alloc&) {
    kwErrorMessage(zel::kOutOfMemory);
  }
  *a = pair.slotA;
  *b = pair.slotB;
  return pair.squareDistance;
}

namespace {

/// The greatest measure over the scanned points; the first in scan order wins ties.
template <class Measure>
float farthestPoint(const Point3DArr& points, int start, int k, int* idx, Measure measure) {
  float greatest = 0.0F;
  *idx = zel::kNoIndex;
  zel::scanAvailable(points, start, k, [&](const float* point, int slot) {
    const float value = measure(point);
    if (value > greatest) {
      greatest = value;
      *idx = slot;
    }
  });
  return greatest;
}

}  // namespace

float Point3DArr::GetFarthestPntToLineM(const float* p, const float* dir, int start, int k,
                                        int* idx) const {
  return farthestPoint(*this, start, k, idx, [&](const float* point) {
    float parameter = 0.0F;
    return slGetPntLineSquareDist(p, dir, point, &parameter);
  });
}

float Point3DArr::GetFarthestPntToPlaneM(const float* nrm, float d, int start, int k,
                                         int* idx) const {
  return farthestPoint(*this, start, k, idx,
                       [&](const float* point) { return slGetPntPlaneDist(nrm, d, point); });
}

float Point3DArr::GetMaxLenToGivenPntM(const float* p) const {
  float greatest = 0.0F;
  if (GetAvailableNumM() < 1) {
    return greatest;
  }
  zel::scanAboveMark(*this, [&](const float* point) {
    const float distance = slDistance3(point, p);
    if (distance > greatest) {
      greatest = distance;
    }
  });
  return greatest;
}

void Point3DArr::GetMaxMinM(const float* a1, const float* a2, const float* a3, float* r1, float* r2,
                            float* r3) const {
  const zel::Extents extents(a1, a2, a3, r1, r2, r3);
  float point[3];
  int slot = 0;
  bool isFirst = true;
  for (int found = GetFirstM(point, &slot); found > 0; found = GetNextM(point, &slot, slot)) {
    extents.take(point, isFirst);
    isFirst = false;
  }
}
