#pragma once

#include <memory>

#include "tools/view/pictures/picture.h"

namespace zel::view {

/// An OpenGL context of the thread that needs no display, drawing into memory of its own. It is
/// current from construction to destruction.
class OffscreenContext {
 public:
  /// @param width, height pixels.
  /// @throws GraphicsError when the machine has no OpenGL or not the memory.
  OffscreenContext(int width, int height);
  ~OffscreenContext();
  OffscreenContext(const OffscreenContext&) = delete;
  OffscreenContext& operator=(const OffscreenContext&) = delete;

  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }

 private:
  struct Handles;

  int width_;
  int height_;
  std::unique_ptr<Handles> handles_;
};

/// Reads pixels of the current context's drawing buffer, from its lower edge and `left` pixels from
/// its left edge on; the top row comes first in the picture.
[[nodiscard]] Picture readPixels(int width, int height, int left = 0);

}  // namespace zel::view
