#pragma once

#include <utility>

#include "zel/mesh/detail/checked_lists.h"
#include "zel/mesh/mesh.h"

namespace zel {

/// Gives the corners of a new list the texture coordinates that they had in the old ones.
class TextureTransfer {
 public:
  /// @param corners how many corners to make room for, if there is anything to transfer at all.
  TextureTransfer(bool isNeeded, int corners) : isNeeded_(isNeeded) {
    if (isNeeded) {
      reserve(to_, corners);
    }
  }
  [[nodiscard]] bool isNeeded() const { return isNeeded_; }
  /// Gives `toCorner` the coordinate of `fromCorner`, if that has one. @throws Error (kExhausted).
  void move(const Point2DArr& from, int fromCorner, int toCorner) {
    Float2 coord{};
    if (textureCoordOf(from, fromCorner, coord)) {
      setTextureCoord(to_, toCorner, coord);
    }
  }
  /// @return the new coordinates.
  Point2DArr taken() && { return std::move(to_); }

 private:
  bool isNeeded_;
  Point2DArr to_;
};

}  // namespace zel
