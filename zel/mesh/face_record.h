#pragma once

/// @file
/// What a face holds besides its delete tag. Internal: it stands in a public header only because
/// the faces hold it by value.

#include "zel/core/constants.h"

namespace zel {

/// Normal and corners of a face of `kCount` corners.
template <int kCount>
struct FaceRecord {
  static constexpr int kCorners = kCount;

  char normalType = 0;       ///< 0 no normal given, 1 set explicitly
  float normal[3] = {};      ///< zero until set
  int corners[kCount] = {};  ///< node indices in winding order; kNoIndex: no node

  FaceRecord() {
    for (int& corner : corners) {
      corner = kNoIndex;
    }
  }
};

}  // namespace zel
