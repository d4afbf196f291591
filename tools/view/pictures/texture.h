#pragma once

#include <cstdint>
#include <vector>

namespace zel::view {

/// Texels of four bytes (red, green, blue, alpha), the bottom row first. Empty when there is no
/// texture.
struct TextureImage {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgba;

  [[nodiscard]] bool isEmpty() const { return rgba.empty(); }
};

/// A pattern of squares that shows how texture coordinates run.
[[nodiscard]] TextureImage checkerTexture();

/// Makes a texture of the current OpenGL context, with all its smaller levels.
/// @return its name.
[[nodiscard]] unsigned uploadTexture(const TextureImage& image);

}  // namespace zel::view
