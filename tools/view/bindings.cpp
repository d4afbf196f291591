#include "tools/view/bindings.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <array>

namespace zel::view {
namespace {

// clang-format off
constexpr std::array kBindings{
    Binding{Action::kOrbit, Input::kLeftDrag, {}, false, "Left drag", "Turn the mesh"},
    Binding{Action::kPan, Input::kMiddleDrag, {}, false, "Middle drag", "Move the mesh"},
    Binding{Action::kPan, Input::kShiftLeftDrag, {}, false, "Shift+left", "Move the mesh"},
    Binding{Action::kZoomByWheel, Input::kWheel, {}, false, "Wheel", "Zoom"},
    Binding{Action::kZoomByDrag, Input::kRightDrag, {}, false, "Right drag", "Zoom in (right) or out (left)"},
    Binding{Action::kPick, Input::kClick, {}, false, "Click", "Tell about a node or face"},
    Binding{Action::kCentre, Input::kDoubleClick, {}, false, "Double click", "Centre on a place and turn about it"},
    Binding{Action::kViewFront, Input::kKey, {SDLK_1}, false, "1", "Look from the front"},
    Binding{Action::kViewBack, Input::kKey, {SDLK_1}, true, "Ctrl+1", "Look from the back"},
    Binding{Action::kViewRight, Input::kKey, {SDLK_3}, false, "3", "Look from the right"},
    Binding{Action::kViewLeft, Input::kKey, {SDLK_3}, true, "Ctrl+3", "Look from the left"},
    Binding{Action::kViewTop, Input::kKey, {SDLK_7}, false, "7", "Look from above"},
    Binding{Action::kViewBottom, Input::kKey, {SDLK_7}, true, "Ctrl+7", "Look from below"},
    Binding{Action::kViewIsometric, Input::kKey, {SDLK_9}, false, "9", "Look from an isometric corner"},
    Binding{Action::kViewOpposite, Input::kKey, {SDLK_0}, false, "0", "Look from the opposite side"},
    Binding{Action::kToggleOrthographic, Input::kKey, {SDLK_5, SDLK_p}, false, "5, P", "Orthographic view or perspective"},
    Binding{Action::kFrameAll, Input::kKey, {SDLK_f}, false, "F", "Frame the whole mesh"},
    Binding{Action::kStartView, Input::kKey, {SDLK_HOME, SDLK_RETURN}, false, "Home, Return", "Look as at the start"},
    Binding{Action::kToggleFaces, Input::kKey, {SDLK_w}, false, "W", "Wireframe or faces"},
    Binding{Action::kToggleEdges, Input::kKey, {SDLK_e}, false, "E", "Edges on or off"},
    Binding{Action::kToggleFeatures, Input::kKey, {SDLK_a}, false, "A", "Sharp edges on or off"},
    Binding{Action::kToggleBoundary, Input::kKey, {SDLK_b}, false, "B", "Boundary edges on or off"},
    Binding{Action::kToggleDefects, Input::kKey, {SDLK_d}, false, "D", "Defects in colour on or off"},
    Binding{Action::kToggleNormals, Input::kKey, {SDLK_n}, false, "N", "Normals on or off"},
    Binding{Action::kNextColouring, Input::kKey, {SDLK_c}, false, "C", "Colour by length, area or stretch"},
    Binding{Action::kToggleTexture, Input::kKey, {SDLK_t}, false, "T", "Texture on or off"},
    Binding{Action::kToggleSmooth, Input::kKey, {SDLK_s}, false, "S", "Smooth or flat faces"},
    Binding{Action::kToggleOcclusion, Input::kKey, {SDLK_q}, false, "Q", "Shade of hollows on or off"},
    Binding{Action::kToggleShadow, Input::kKey, {SDLK_o}, false, "O", "Shadow on the ground on or off"},
    Binding{Action::kToggleAxes, Input::kKey, {SDLK_x}, false, "X", "Axes on or off"},
    Binding{Action::kToggleGrid, Input::kKey, {SDLK_g}, false, "G", "Grid on the ground on or off"},
    Binding{Action::kToggleDark, Input::kKey, {SDLK_l}, false, "L", "Light or dark background"},
    Binding{Action::kPreviousFile, Input::kKey, {SDLK_LEFT, SDLK_PAGEUP}, false, "Left, PageUp", "Previous file"},
    Binding{Action::kNextFile, Input::kKey, {SDLK_RIGHT, SDLK_PAGEDOWN}, false, "Right, PageDown", "Next file"},
    Binding{Action::kReload, Input::kKey, {SDLK_UP, SDLK_F5}, false, "Up, F5", "Read the file again"},
    Binding{Action::kOpenDropped, Input::kDrop, {}, false, "Drop a file", "Open it"},
    Binding{Action::kScreenshot, Input::kKey, {SDLK_F12}, false, "F12", "Save a screenshot as PNG"},
    Binding{Action::kToggleHelp, Input::kKey, {SDLK_h, SDLK_QUESTION, SDLK_F1}, false, "H, ?, F1", "This help on or off"},
    Binding{Action::kEscape, Input::kKey, {SDLK_ESCAPE}, false, "Escape", "Close the help, unpick, or quit"},
    Binding{Action::kQuit, Input::kKey, {SDLK_q}, true, "Ctrl+Q", "Quit"},
};
// clang-format on

int withoutPad(int key) {
  if (key == SDLK_KP_0 || key == SDLK_KP_ENTER) {
    return key == SDLK_KP_0 ? SDLK_0 : SDLK_RETURN;
  }
  return key >= SDLK_KP_1 && key <= SDLK_KP_9 ? key - SDLK_KP_1 + SDLK_1 : key;
}

struct Line {
  std::string trigger;
  std::string effect;
};

// What two effects say, with their common start said once.
std::string bothEffects(const std::string& a, const std::string& b) {
  std::size_t common = 0;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()) && a[i] == b[i]; ++i) {
    common = a[i] == ' ' ? i + 1 : common;
  }
  return a == b ? a : a + " or " + b.substr(common);
}

// The table, in which a key with and without Ctrl, and inputs of one effect, share a line.
std::vector<Line> shortTable() {
  std::vector<Line> lines;
  const Binding* last = nullptr;
  for (const Binding& binding : kBindings) {
    const bool isPair = last != nullptr && (last->action == binding.action ||
                                            (last->keys == binding.keys && binding.control));
    if (isPair) {
      lines.back().trigger += std::string(", ") + binding.trigger;
      lines.back().effect = bothEffects(lines.back().effect, binding.effect);
    } else {
      lines.push_back({binding.trigger, binding.effect});
    }
    last = &binding;
  }
  return lines;
}

}  // namespace

std::span<const Binding> bindings() { return kBindings; }

std::optional<Action> actionOfKey(int key, bool control) {
  for (const Binding& binding : kBindings) {
    const auto& keys = binding.keys;
    if (binding.input == Input::kKey && binding.control == control && key != 0 &&
        std::find(keys.begin(), keys.end(), withoutPad(key)) != keys.end()) {
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
  const std::vector<Line> table = shortTable();
  std::size_t column = 0;
  for (const Line& line : table) {
    column = std::max(column, line.trigger.size() + 2);
  }
  std::vector<std::string> lines;
  for (const Line& line : table) {
    lines.push_back(line.trigger + std::string(column - line.trigger.size(), ' ') + line.effect);
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
