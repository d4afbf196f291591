#pragma once

#include <atomic>
#include <vector>

#include "tools/view/pictures/camera.h"
#include "tools/view/pictures/surface.h"

namespace zel::view {

/// How much of the sky a place sees: 1 all of it, 0 none. `front` is on the side of the normal.
struct Openness {
  float front = 1;
  float back = 1;
};

/// How high the ground under a scene lies along the up axis: a little below its lowest point.
[[nodiscard]] float groundLevel(const SceneMesh& scene, UpAxis up);

/// The shadow of a scene on the ground under it: a square grid, row after row.
struct GroundShadow {
  static constexpr int kSide = 81;       ///< places along each side
  static constexpr float kReach = 1.9F;  ///< half the side
  std::vector<float> darkness;           ///< kSide x kSide, 0 none to 1 full; may be empty
  float height = 0;                      ///< of the ground along the up axis
  /// Place (column, row) in the scene.
  [[nodiscard]] Vector3 at(int column, int row, UpAxis up) const;
};

/// What the shape of a scene does to the light on it; the same numbers on every machine and with
/// any number of threads.
struct Occlusion {
  std::vector<Openness> samples;  ///< by sample of the surface; empty: not measured
  GroundShadow shadow;
};

/// Measures the occlusion by rays.
///
/// Takes about a second for 100,000 samples; those of larger surfaces share measurements with their
/// neighbours.
/// @param up      the axis that points up.
/// @param threads 0: one for each core. A thread that cannot be had costs time only.
/// @param cancel  when it becomes true, the result is empty and comes soon; may be null.
[[nodiscard]] Occlusion measureOcclusion(const SceneMesh& scene, const Surface& surface, UpAxis up,
                                         unsigned threads = 0,
                                         const std::atomic<bool>* cancel = nullptr);

}  // namespace zel::view
