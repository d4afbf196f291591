#pragma once

#include <algorithm>

#include "zel/core/constants.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace zel {

/// Triangles and quads under one set of names, for code that serves both.
template <class Faces>
struct FaceKind;

template <>
struct FaceKind<TriangleArr> {
  using Face = TriangleCL;
  static constexpr int kCorners = 3;
  static void read(const Face& face, int* corners) { face.GetTriangleM(corners); }
  static void write(Face& face, int* corners) { face.SetTriangleM(corners); }
};

template <>
struct FaceKind<QuadArr> {
  using Face = QuadCL;
  static constexpr int kCorners = 4;
  static void read(const Face& face, int* corners) { face.GetQuadM(corners); }
  static void write(Face& face, int* corners) { face.SetQuadM(corners); }
};

/// Calls visit(slot, face, corners) for every live face, in slot order.
template <class Faces, class Visit>
void forEachLiveFace(const Faces& faces, Visit visit) {
  using Kind = FaceKind<Faces>;
  const typename Kind::Face* store = faces.getCurrentItemPrtConstM();
  for (int slot = 0; slot < faces.GetBoundM(); ++slot) {
    if (store[slot].IsAvailableM() == kTagAvailable) {
      int corners[Kind::kCorners];
      Kind::read(store[slot], corners);
      visit(slot, store[slot], corners);
    }
  }
}

/// @return whether two of the corners are equal.
inline bool hasRepeatedCorner(const int* corners, int count) {
  for (int i = 0; i < count; ++i) {
    if (std::find(corners + i + 1, corners + count, corners[i]) != corners + count) {
      return true;
    }
  }
  return false;
}

}  // namespace zel
