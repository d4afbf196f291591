#pragma once

#include <string>
#include <vector>

#include "tools/view/pictures/draw_options.h"
#include "tools/view/pictures/scene_mesh.h"

namespace zel::view {

/// A number for each corner of each face of a scene.
struct ScalarField {
  std::string name;
  std::vector<float> corners;  ///< entry 3 f + k belongs to corner k of face f; may be empty
  /// The range that the colours span; 2 of 100 values may lie beyond either end.
  float low = 0;
  float high = 0;

  /// @return where a value lies within the range, 0 to 1.
  [[nodiscard]] float shareOf(float value) const;
};

/// Measures what a colouring shows, in units of the mesh; empty for kOwn, and for kStretch when the
/// scene has no texture coordinates.
///
/// The stretch of a face is the greater of s1 and 1 / s2, with s1 >= s2 the singular values of the
/// map from the texture to the mesh, divided by the mean scale of the whole: 1 is no distortion
/// (P. Sander et al., Texture mapping progressive meshes, 2001).
[[nodiscard]] ScalarField scalarsOf(const SceneMesh& scene, Colouring colouring);

/// A colour for a share from 0 (dark violet) to 1 (yellow); equal steps look equal, also to the
/// colour-blind.
[[nodiscard]] Colour colourOfShare(float share);

}  // namespace zel::view
