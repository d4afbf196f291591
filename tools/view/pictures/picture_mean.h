#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "tools/view/pictures/camera.h"

namespace zel::view {

/// Where within a pixel the drawings of a PictureMean look: to the right and upward of its middle,
/// in pixels, no two in one row or column.
inline constexpr std::array<std::array<double, 2>, 8> kSamplePlaces{{
    {0.0625, -0.1875},
    {-0.0625, 0.1875},
    {0.3125, 0.0625},
    {-0.1875, -0.3125},
    {-0.3125, 0.3125},
    {-0.4375, -0.0625},
    {0.1875, 0.4375},
    {0.4375, -0.4375},
}};

/// Averages several drawings of one scene, each shifted by a part of a pixel, so that edges become
/// smooth. Works on the drawing buffer of the current OpenGL context.
class PictureMean {
 public:
  explicit PictureMean(ViewSize size);

  /// Takes in what the buffer holds. At most 257 times.
  void add();
  /// Fills the buffer with the mean of what was taken in, at least one drawing.
  void paint();

 private:
  ViewSize size_;
  std::uint16_t count_ = 0;
  std::vector<std::uint16_t> sums_;
  std::vector<std::uint8_t> pixels_;
};

}  // namespace zel::view
