#include "tools/view/bindings.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace zel::view {
namespace {

// clang-format off
constexpr std::array kBindings{
    Binding{Action::kOrbit, Input::kLeftDrag, 0, false, "Left drag", "Turn the mesh"},
    Binding{Action::kPan, Input::kMiddleDrag, 0, false, "Middle drag", "Move the mesh"},
    Binding{Action::kPan, Input::kShiftLeftDrag, 0, false, "Shift+left drag", "Move the mesh"},
    Binding{Action::kZoomByWheel, Input::kWheel, 0, false, "Wheel", "Zoom"},
    Binding{Action::kZoomByDrag, Input::kRightDrag, 0, false, "Right drag", "Zoom, to the right in, to the left out"},
    Binding{Action::kViewFront, Input::kKey, SDLK_1, false, "1", "Look from the front"},
    Binding{Action::kViewRight, Input::kKey, SDLK_3, false, "3", "Look from the right"},
    Binding{Action::kViewTop, Input::kKey, SDLK_7, false, "7", "Look from above"},
    Binding{Action::kViewOpposite, Input::kKey, SDLK_9, false, "9", "Look from the opposite side"},
    Binding{Action::kToggleOrthographic, Input::kKey, SDLK_5, false, "5", "Orthographic view on or off"},
    Binding{Action::kFrameAll, Input::kKey, SDLK_f, false, "F", "Frame the whole mesh"},
    Binding{Action::kToggleEdges, Input::kKey, SDLK_e, false, "E", "Edges on or off"},
    Binding{Action::kToggleBoundary, Input::kKey, SDLK_b, false, "B", "Boundary edges on or off"},
    Binding{Action::kToggleNormals, Input::kKey, SDLK_n, false, "N", "Normals on or off"},
    Binding{Action::kToggleTexture, Input::kKey, SDLK_t, false, "T", "Texture on or off"},
    Binding{Action::kToggleSmooth, Input::kKey, SDLK_s, false, "S", "Smooth or flat faces"},
    Binding{Action::kScreenshot, Input::kKey, SDLK_F12, false, "F12", "Save a screenshot as PNG"},
    Binding{Action::kOpenDropped, Input::kDrop, 0, false, "Drop a file", "Open it"},
    Binding{Action::kToggleHelp, Input::kKey, SDLK_h, false, "H", "This help on or off"},
    Binding{Action::kQuit, Input::kKey, SDLK_q, true, "Ctrl+Q", "Quit"},
};
// clang-format on

int digitOfPad(int key) {
  return key >= SDLK_KP_1 && key <= SDLK_KP_9 ? key - SDLK_KP_1 + SDLK_1 : key;
}

std::size_t widestTrigger() {
  std::size_t widest = 0;
  for (const Binding& binding : kBindings) {
    widest = std::max(widest, std::strlen(binding.trigger));
  }
  return widest;
}

}  // namespace

std::span<const Binding> bindings() { return kBindings; }

std::optional<Action> actionOfKey(int key, bool control) {
  for (const Binding& binding : kBindings) {
    if (binding.input == Input::kKey && binding.key == digitOfPad(key) &&
        binding.control == control) {
      return binding.action;
    }
  }
  return std::nullopt;
}

std::optional<Action> actionOfInput(Input input) {
  for (const Binding& binding : kBindings) {
    if (binding.input == input && input != Input::kKey) {
      return binding.action;
    }
  }
  return std::nullopt;
}

std::vector<std::string> bindingLines() {
  const std::size_t column = widestTrigger() + 2;
  std::vector<std::string> lines;
  for (const Binding& binding : kBindings) {
    std::string line = binding.trigger;
    line.resize(column, ' ');
    lines.push_back(line + binding.effect);
  }
  return lines;
}

std::string bindingMarkdown() {
  std::string table = "| Input | Effect |\n|---|---|\n";
  for (const Binding& binding : kBindings) {
    table += std::string("| ") + binding.trigger + " | " + binding.effect + " |\n";
  }
  return table;
}

}  // namespace zel::view
