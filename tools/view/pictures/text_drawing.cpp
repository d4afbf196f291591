#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>

#include "tools/view/pictures/font.h"

namespace zel::view {
namespace {

// The glyphs of a text: one for each character of one or more bytes.
std::vector<std::size_t> glyphsOf(std::string_view text) {
  std::vector<std::size_t> glyphs;
  for (const char c : text) {
    const bool continuesCharacter = (static_cast<unsigned char>(c) & 0xC0) == 0x80;
    const int place = c - kFirstGlyph;
    const bool printable = place >= 0 && place < kGlyphCount;
    if (!continuesCharacter) {
      glyphs.push_back(static_cast<std::size_t>(printable ? place : '?' - kFirstGlyph));
    }
  }
  return glyphs;
}

}  // namespace

Picture textPicture(std::string_view text, const Colour& colour, int scale) {
  const std::vector<std::size_t> glyphs = glyphsOf(text);
  Picture picture{static_cast<int>(glyphs.size()) * kGlyphWidth * scale, kGlyphHeight * scale, {}};
  picture.rgba.reserve(static_cast<std::size_t>(picture.width) *
                       static_cast<std::size_t>(picture.height) * 4);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const int column = x / scale;
      const Glyph& glyph = kGlyphs[glyphs[static_cast<std::size_t>(column / kGlyphWidth)]];
      const int bits = glyph[static_cast<std::size_t>(y / scale)];
      const bool isSet = (bits >> (15 - column % kGlyphWidth) & 1) != 0;
      picture.rgba.insert(picture.rgba.end(), {colour.red, colour.green, colour.blue,
                                               isSet ? colour.alpha : std::uint8_t{0}});
    }
  }
  return picture;
}

void drawText(int x, int y, std::string_view text, const Colour& colour, int scale) {
  const Picture picture = textPicture(text, colour, scale);
  glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_PIXEL_MODE_BIT);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_TEXTURE_2D);
  glEnable(GL_BLEND);
  glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  // Rows run from the top down.
  glPixelZoom(1, -1);
  glWindowPos2i(x, y + picture.height);
  glDrawPixels(picture.width, picture.height, GL_RGBA, GL_UNSIGNED_BYTE, picture.rgba.data());
  glPopAttrib();
}

}  // namespace zel::view
