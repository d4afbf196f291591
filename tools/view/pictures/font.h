#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace zel::view {

inline constexpr int kGlyphWidth = 8;    ///< pixels
inline constexpr int kGlyphHeight = 13;  ///< pixels
inline constexpr char kFirstGlyph = ' ';
inline constexpr int kGlyphCount = 95;

/// One character: a byte a row, the top row first, the leftmost pixel in the highest bit.
using Glyph = std::array<std::uint8_t, kGlyphHeight>;

/// The printable ASCII characters from the blank on.
extern const std::array<Glyph, kGlyphCount> kGlyphs;

/// Draws one line of text into the current OpenGL context, in the current raster colour.
/// @param x, y lower left corner in the units of the current matrices, which must be pixels.
/// @param text other characters than printable ASCII appear as '?'.
void drawText(int x, int y, std::string_view text);

}  // namespace zel::view
