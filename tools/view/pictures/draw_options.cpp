#include "tools/view/pictures/draw_options.h"

namespace zel::view {
namespace {

constexpr Colour kLightTop{243, 246, 250, 255};
constexpr Colour kLightBottom{196, 206, 218, 255};
constexpr Colour kDarkTop{52, 58, 68, 255};
constexpr Colour kDarkBottom{22, 25, 30, 255};

// Rec. 709 weights, times ten thousand.
int brightness(const Colour& colour) {
  return 2126 * colour.red + 7152 * colour.green + 722 * colour.blue;
}

}  // namespace

bool DrawOptions::isDark() const {
  // A transparent ground will most often lie on white paper.
  return backgroundTop.alpha != 0 &&
         brightness(backgroundTop) + brightness(backgroundBottom) < 2 * 110 * 10000;
}

void DrawOptions::setDark(bool dark) {
  backgroundTop = dark ? kDarkTop : kLightTop;
  backgroundBottom = dark ? kDarkBottom : kLightBottom;
}

}  // namespace zel::view
