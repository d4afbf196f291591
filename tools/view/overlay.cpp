#include "tools/view/overlay.h"

#include <GL/gl.h>

#include <algorithm>

#include "tools/view/pictures/font.h"

namespace zel::view {
namespace {

constexpr int kInset = 12;    // pixels from the edge of the area to a panel
constexpr int kPadding = 10;  // pixels from the edge of a panel to its text
constexpr int kLineHeight = kGlyphHeight + 4;

// Coordinates become pixels from the lower left corner; nothing but plain colour is drawn.
void usePixels(ViewSize size) {
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_TEXTURE_2D);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, size.width, 0, size.height, -1, 1);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

}  // namespace

void drawPanel(const std::vector<std::string>& lines, ViewSize size) {
  std::size_t longest = 0;
  for (const std::string& line : lines) {
    longest = std::max(longest, line.size());
  }
  usePixels(size);
  const int width = static_cast<int>(longest) * kGlyphWidth + 2 * kPadding;
  const int height = static_cast<int>(lines.size()) * kLineHeight + 2 * kPadding;
  const int top = size.height - kInset;
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glColor4f(0.10F, 0.13F, 0.18F, 0.82F);
  glRecti(kInset, top - height, kInset + width, top);
  glDisable(GL_BLEND);
  glColor3f(0.93F, 0.95F, 0.98F);
  int baseline = top - kPadding - kGlyphHeight;
  for (const std::string& line : lines) {
    drawText(kInset + kPadding, baseline, line);
    baseline -= kLineHeight;
  }
}

void drawStatus(const std::string& text, ViewSize size) {
  usePixels(size);
  glColor3f(0.25F, 0.30F, 0.38F);
  drawText(kInset, kInset, text);
}

}  // namespace zel::view
