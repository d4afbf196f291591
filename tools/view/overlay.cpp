#include "tools/view/overlay.h"

#include <GL/gl.h>

#include <algorithm>
#include <string_view>

#include "tools/view/pictures/font.h"

namespace zel::view {
namespace {

constexpr int kPadding = 10;  // pixels from the edge of a panel to its text
constexpr int kLineGap = 1;
constexpr int kStatusPadding = 4;
constexpr Colour kText{238, 242, 248, 255};

// Coordinates become pixels from the lower left corner; nothing but plain colour is drawn.
void usePixels(ViewSize size) {
  glViewport(0, 0, size.width, size.height);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_TEXTURE_2D);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, size.width, 0, size.height, -1, 1);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

void fillRectangle(int left, int bottom, int right, int top, float opacity) {
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glColor4f(0.10F, 0.13F, 0.18F, opacity);
  glRecti(left, bottom, right, top);
  glDisable(GL_BLEND);
}

// The text, or as much of its start as there are pixels for.
std::string shortened(const std::string& text, int pixels, int scale) {
  constexpr std::string_view kCut = "...";
  const auto most = static_cast<std::size_t>(std::max(pixels / (kGlyphWidth * scale), 0));
  if (text.size() <= most) {
    return text;
  }
  return text.substr(0, most - std::min(most, kCut.size())) + std::string(kCut);
}

}  // namespace

int panelWidth(const std::vector<std::string>& lines, int scale) {
  std::size_t longest = 0;
  for (const std::string& line : lines) {
    longest = std::max(longest, line.size());
  }
  return (static_cast<int>(longest) * kGlyphWidth + 2 * kPadding) * scale;
}

void drawPanel(const std::vector<std::string>& lines, ViewSize size, int scale) {
  usePixels(size);
  fillRectangle(0, 0, size.width, size.height, 1);
  int baseline = size.height - (kPadding + kGlyphHeight) * scale;
  for (const std::string& line : lines) {
    if (baseline < 0) {
      return;
    }
    drawText(kPadding * scale, baseline, shortened(line, size.width - kPadding * scale, scale),
             kText, scale);
    baseline -= (kGlyphHeight + kLineGap) * scale;
  }
}

void drawStatus(const std::string& text, ViewSize size, int left, int scale) {
  if (text.empty()) {
    return;
  }
  usePixels(size);
  const std::string shown = shortened(text, size.width - left - 2 * kPadding * scale, scale);
  const int width = static_cast<int>(shown.size()) * kGlyphWidth * scale;
  fillRectangle(left, 0, left + width + 2 * kPadding * scale,
                (kGlyphHeight + 2 * kStatusPadding) * scale, 0.72F);
  drawText(left + kPadding * scale, kStatusPadding * scale, shown, kText, scale);
}

}  // namespace zel::view
