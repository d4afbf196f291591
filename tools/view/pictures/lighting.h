#pragma once

#include <array>

#include "tools/view/pictures/picture.h"

namespace zel::view {

/// Fills the current drawing area with a gradient and clears its depth.
void paintBackground(const Colour& top, const Colour& bottom);

/// Red, green and blue from 0 to 1.
using LinearColour = std::array<float, 3>;

/// What a surface looks like where its corners say nothing else.
struct Look {
  bool textured = false;  ///< the current texture colours the surface
  /// Tint of the inside of open surfaces, so that it shows.
  LinearColour inside{0.80F, 0.45F, 0.38F};
  float gloss = 0.22F;
};

/// The light of the studio, which stays with the eye: a warm key from the upper left, a cool fill
/// from the right, light of sky and floor from all around and a rim from behind. The lamps stand
/// near, so that no face is one flat shade. Works per pixel, in the OpenGL context that is current
/// from construction to destruction.
///
/// Corners bring a colour (glColor) and how open the surface is (texture coordinates of unit 1: in
/// front and behind).
class FaceLight {
 public:
  /// @throws GraphicsError when OpenGL is older than 2.0.
  FaceLight();
  ~FaceLight();
  FaceLight(const FaceLight&) = delete;
  FaceLight& operator=(const FaceLight&) = delete;

  /// Lights what is drawn until turnOff().
  void turnOn(const Look& look);
  static void turnOff();

 private:
  unsigned program_ = 0;
};

}  // namespace zel::view
