#pragma once

#include <string>
#include <vector>

#include "tools/view/pictures/camera.h"

namespace zel::view {

/// @return pixels that a panel of these lines takes at the left of a drawing buffer.
[[nodiscard]] int panelWidth(const std::vector<std::string>& lines, int scale);

/// Draws lines of text on a panel at the left of the buffer. What does not fit is left out.
/// @param size  of the panel.
/// @param scale pixels a side for each pixel of the font.
void drawPanel(const std::vector<std::string>& lines, ViewSize size, int scale);

/// Draws one line of text on a strip in the lower left corner; what is too long is cut.
/// @param left pixels of the buffer to the left of the strip.
void drawStatus(const std::string& text, ViewSize size, int left, int scale);

}  // namespace zel::view
