#pragma once

/// @file
/// What triangles and quads do with their normal and corners.

#include <algorithm>

#include "zel/containers/int_arr.h"
#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/face_record.h"

namespace zel {

/// The first corner that is `node`, or kNoIndex.
template <int kCount>
int cornerOf(const FaceRecord<kCount>& face, int node) {
  const int* end = face.corners + kCount;
  const int* hit = std::find(face.corners, end, node);
  return hit == end ? kNoIndex : static_cast<int>(hit - face.corners);
}

template <int kCount>
bool hasEqualCorners(const FaceRecord<kCount>& face) {
  for (int i = 0; i < kCount; ++i) {
    for (int j = i + 1; j < kCount; ++j) {
      if (face.corners[i] == face.corners[j]) {
        return true;
      }
    }
  }
  return false;
}

/// Whether b stands beside the first corner that is a.
template <int kCount>
bool hasNeighbours(const FaceRecord<kCount>& face, int a, int b) {
  const int k = cornerOf(face, a);
  return k != kNoIndex &&
         (face.corners[(k + 1) % kCount] == b || face.corners[(k + kCount - 1) % kCount] == b);
}

template <int kCount>
void setNormal(FaceRecord<kCount>& face, const float* normal) {
  std::copy_n(normal, 3, face.normal);
  face.normalType = 1;
}

template <int kCount>
void negateNormal(FaceRecord<kCount>& face) {
  for (float& component : face.normal) {
    component = -component;
  }
}

template <int kCount>
void turnNormal(FaceRecord<kCount>& face, const float* matrix) {
  slMatrix16MultiVector3(matrix, face.normal);
}

/// How many faces ahead a map's entries are asked for, so that they arrive from memory in time.
inline constexpr int kFacesAhead = 8;

/// Asks for the memory that renumberCorners() will look at.
template <int kCount>
void prefetchCorners(const FaceRecord<kCount>& face, const IntArr& map) {
  for (const int corner : face.corners) {
    __builtin_prefetch(&map.ElementAtM(corner));
  }
}

template <int kCount>
void renumberCorners(FaceRecord<kCount>& face, const IntArr& map) {
  for (int& corner : face.corners) {
    map.GetItemM(&corner, corner);
  }
}

}  // namespace zel
