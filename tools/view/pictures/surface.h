#pragma once

#include <cstdint>
#include <vector>

#include "tools/view/pictures/scene_mesh.h"

namespace zel::view {

/// The faces of a scene as they are drawn: large ones of small meshes are cut into smaller ones, so
/// that shades given per corner can vary within them.
struct Surface {
  /// A place where light is measured: a point of the surface and its smooth unit normal. Corners
  /// share one where faces go smoothly into each other.
  struct Sample {
    Vector3 point;
    Vector3 normal;
    Vector3 inward;  ///< towards the middle of one face there, of its size
  };
  /// A corner of a drawn triangle.
  struct Corner {
    std::uint32_t sample;
    /// Its place in the scene's face: shares of the first and the second corner.
    std::array<float, 2> shares;
  };

  explicit Surface(const SceneMesh& scene);

  std::vector<Sample> samples;
  std::vector<Corner> corners;       ///< three for each drawn triangle
  std::vector<std::uint32_t> faces;  ///< the scene's face of each drawn triangle
};

}  // namespace zel::view
