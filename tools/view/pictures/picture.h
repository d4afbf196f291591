#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel::view {

/// Red, green, blue and alpha, each 0 to 255.
struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  std::uint8_t alpha = 255;
};

/// The colour of a surface that has none of its own.
inline constexpr Colour kClay{222, 203, 180, 255};

/// Pixels of four bytes (red, green, blue, alpha), the top row first, without row padding.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgba;

  [[nodiscard]] Colour at(int x, int y) const;
};

/// Averages blocks of `factor` x `factor` pixels into one, colours weighted by alpha, so that edges
/// become smooth.
/// @param picture its sides are multiples of `factor`.
[[nodiscard]] Picture shrunk(const Picture& picture, int factor);

/// Lays a picture over another one, as far as it lies within it.
/// @param left, top where its upper left corner comes to lie.
void paste(Picture& target, const Picture& source, int left, int top);

/// The picture as the bytes of a PNG file (8 bits a channel).
/// @throws std::runtime_error when libpng refuses it.
[[nodiscard]] std::string pngBytes(const Picture& picture);

}  // namespace zel::view
