#pragma once

#include "tools/view/pictures/picture.h"

namespace zel::view {

/// Fills the current drawing area with a gradient and clears its depth.
void paintBackground(const Colour& top, const Colour& bottom);

/// Places the lights of the studio, which stay with the eye. Changes the model view matrix.
void placeLights();

/// Surface of faces; the inside of open meshes is tinted so that it shows.
/// @param textured a white surface for a texture to colour.
void setFaceMaterial(bool textured);

/// An even light for lines in the colour of slSetCorlorForLines().
void setLineLight();

}  // namespace zel::view
