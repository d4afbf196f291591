#pragma once

#include "tools/view/pictures/picture.h"

namespace zel::view {

/// What is drawn, and how.
struct DrawOptions {
  bool faces = true;
  bool smooth = false;    ///< else every face shows its own plane
  bool textured = false;  ///< with the texture, or a checker pattern when there is none
  bool edges = false;
  bool boundary = false;  ///< edges of exactly one face, in colour
  bool normals = false;
  Colour backgroundTop{243, 246, 250, 255};
  Colour backgroundBottom{196, 206, 218, 255};
  float lineScale = 1;  ///< width of lines relative to a plain screen's
};

}  // namespace zel::view
