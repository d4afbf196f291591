#include <GL/gl.h>

#include <algorithm>

#include "tools/view/pictures/font.h"

namespace zel::view {

void drawText(int x, int y, std::string_view text) {
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glRasterPos2i(x, y);
  for (const char c : text) {
    const int place = c - kFirstGlyph;
    const bool printable = place >= 0 && place < kGlyphCount;
    Glyph glyph = kGlyphs[static_cast<std::size_t>(printable ? place : '?' - kFirstGlyph)];
    // OpenGL takes the bottom row first.
    std::reverse(glyph.begin(), glyph.end());
    glBitmap(kGlyphWidth, kGlyphHeight, 0, 0, kGlyphWidth, 0, glyph.data());
  }
}

}  // namespace zel::view
