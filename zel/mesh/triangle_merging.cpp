// Merging triangles: one whose corners are there already is not added again.

#include "zel/mesh/detail/faces/face_list_ops.h"
#include "zel/mesh/triangle.h"

int TriangleArr::MergeTriangleLstM(TriangleCL triangle) {
  const auto& record = triangle.record();
  if (zel::hasEqualCorners(record)) {
    return 0;
  }
  auto* index = faces_.knownIndex();
  if ((index == nullptr || !index->surelyLacks(record.corners)) &&
      zel::anyFaceWithin(faces_, record.corners, [](int /*slot*/) { return true; })) {
    return 0;
  }
  faces_.add(triangle);
  return 1;
}
