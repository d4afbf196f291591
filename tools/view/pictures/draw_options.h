#pragma once

#include "tools/view/pictures/picture.h"

namespace zel::view {

/// What the colours of faces tell.
enum class Colouring {
  kOwn,         ///< the mesh's own colours, or clay
  kEdgeLength,  ///< mean length of the edges around each node
  kFaceArea,
  kStretch,  ///< of the texture coordinates: how far lengths on them differ from the mesh's
};

/// What is drawn, and how.
struct DrawOptions {
  bool faces = true;
  bool smooth = false;    ///< else every face shows its own plane
  bool textured = false;  ///< with the texture, or a checker pattern when there is none
  bool occlusion = true;  ///< darker where other faces hide the sky, once that is measured
  bool shadow = true;     ///< on the ground, once that is measured; only from above
  bool edges = false;
  bool features = false;  ///< edges at which faces meet at `featureAngle` or more
  bool boundary = false;  ///< edges of exactly one face, in colour
  bool defects = false;   ///< each class in a colour of its own, where the scene has any
  bool normals = false;
  bool axes = false;  ///< a small cross that shows the directions of the axes
  bool grid = false;  ///< on the ground
  Colouring colouring = Colouring::kOwn;
  double featureAngle = 30;  ///< degrees between the planes of two faces
  Colour backgroundTop{243, 246, 250, 255};
  Colour backgroundBottom{196, 206, 218, 255};
  float lineScale = 1;  ///< width of lines and size of text relative to a plain screen's

  /// @return whether lines and text must be light to be seen.
  [[nodiscard]] bool isDark() const;
  /// Puts in a dark or a light background.
  void setDark(bool dark);
};

}  // namespace zel::view
