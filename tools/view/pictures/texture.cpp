#include "tools/view/pictures/texture.h"

#include <GL/gl.h>

#include <algorithm>

namespace zel::view {
namespace {

constexpr std::size_t kChannels = 4;

// Half the size in each direction that has more than one texel, by averages.
TextureImage halved(const TextureImage& image) {
  TextureImage half{std::max(image.width / 2, 1), std::max(image.height / 2, 1), {}};
  const auto texel = [&image](int x, int y, std::size_t channel) {
    const auto column = static_cast<std::size_t>(std::min(x, image.width - 1));
    const auto row = static_cast<std::size_t>(std::min(y, image.height - 1));
    return int{
        image.rgba[(row * static_cast<std::size_t>(image.width) + column) * kChannels + channel]};
  };
  for (int y = 0; y < half.height; ++y) {
    for (int x = 0; x < half.width; ++x) {
      for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const int sum = texel(2 * x, 2 * y, channel) + texel(2 * x + 1, 2 * y, channel) +
                        texel(2 * x, 2 * y + 1, channel) + texel(2 * x + 1, 2 * y + 1, channel);
        half.rgba.push_back(static_cast<std::uint8_t>((sum + 2) / 4));
      }
    }
  }
  return half;
}

}  // namespace

TextureImage checkerTexture() {
  constexpr int kSide = 512;
  constexpr int kSquare = 32;
  constexpr int kShift = 85;
  TextureImage image{kSide, kSide, {}};
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      // Redder along u and greener along v, so that the directions can be told apart.
      const bool isLight = (x / kSquare + y / kSquare) % 2 == 0;
      const int base = isLight ? 170 : 70;
      image.rgba.push_back(static_cast<std::uint8_t>(base + x * kShift / kSide));
      image.rgba.push_back(static_cast<std::uint8_t>(base + y * kShift / kSide));
      image.rgba.push_back(static_cast<std::uint8_t>(isLight ? 215 : 120));
      image.rgba.push_back(255);
    }
  }
  return image;
}

unsigned uploadTexture(const TextureImage& image) {
  GLint limit = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limit);
  TextureImage level = image;
  while (level.width > limit || level.height > limit) {
    level = halved(level);
  }
  GLuint name = 0;
  glGenTextures(1, &name);
  glBindTexture(GL_TEXTURE_2D, name);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  for (int number = 0;; ++number) {
    glTexImage2D(GL_TEXTURE_2D, number, GL_RGBA, level.width, level.height, 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, level.rgba.data());
    if (level.width == 1 && level.height == 1) {
      return name;
    }
    level = halved(level);
  }
}

}  // namespace zel::view
