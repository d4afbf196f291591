#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zel::view {

/// What a person can do in the viewer.
enum class Action {
  kOrbit,
  kPan,
  kZoomByDrag,
  kZoomByWheel,
  kViewFront,
  kViewRight,
  kViewTop,
  kViewOpposite,
  kToggleOrthographic,
  kFrameAll,
  kToggleEdges,
  kToggleBoundary,
  kToggleNormals,
  kToggleTexture,
  kToggleSmooth,
  kScreenshot,
  kOpenDropped,
  kToggleHelp,
  kQuit,
};

/// With what it is done.
enum class Input { kKey, kLeftDrag, kShiftLeftDrag, kMiddleDrag, kRightDrag, kWheel, kDrop };

/// One line of the table that code, on-screen help and manual share.
struct Binding {
  Action action;
  Input input;
  int key;       ///< SDL key code; 0 unless `input` is kKey
  bool control;  ///< whether Ctrl must be held
  const char* trigger;
  const char* effect;
};

/// The table, in the order of the help.
[[nodiscard]] std::span<const Binding> bindings();

/// @param key SDL key code; keys of the number pad count as digits.
[[nodiscard]] std::optional<Action> actionOfKey(int key, bool control);
/// @param input anything but kKey.
[[nodiscard]] std::optional<Action> actionOfInput(Input input);

/// The table as lines of plain text, triggers and effects in columns.
[[nodiscard]] std::vector<std::string> bindingLines();
/// The table in Markdown.
[[nodiscard]] std::string bindingMarkdown();

}  // namespace zel::view
