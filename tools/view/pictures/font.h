#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "tools/view/pictures/picture.h"

namespace zel::view {

inline constexpr int kGlyphWidth = 10;   ///< pixels
inline constexpr int kGlyphHeight = 20;  ///< pixels
inline constexpr char kFirstGlyph = ' ';
inline constexpr int kGlyphCount = 95;

/// One character: a number a row, the top row first, the leftmost pixel in the highest bit.
using Glyph = std::array<std::uint16_t, kGlyphHeight>;

/// The printable ASCII characters from the blank on.
extern const std::array<Glyph, kGlyphCount> kGlyphs;

/// One line of text as a picture on a transparent ground.
/// @param text in UTF-8; a character that is not printable ASCII appears as '?'.
/// @param scale pixels a side for each pixel of the glyphs.
[[nodiscard]] Picture textPicture(std::string_view text, const Colour& colour, int scale = 1);

/// Draws one line of text into the current OpenGL context.
/// @param x, y lower left corner in pixels from the lower left corner of the drawing buffer.
void drawText(int x, int y, std::string_view text, const Colour& colour, int scale = 1);

}  // namespace zel::view
