#pragma once

#include <string>
#include <vector>

#include "tools/view/pictures/camera.h"

namespace zel::view {

/// Draws lines of text on a panel in the upper left corner of the current drawing area.
void drawPanel(const std::vector<std::string>& lines, ViewSize size);

/// Draws one line of text in the lower left corner.
void drawStatus(const std::string& text, ViewSize size);

}  // namespace zel::view
