#pragma once

#include <array>
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
  kPick,
  kCentre,
  kViewFront,
  kViewBack,
  kViewRight,
  kViewLeft,
  kViewTop,
  kViewBottom,
  kViewIsometric,
  kViewOpposite,
  kToggleOrthographic,
  kFrameAll,
  kStartView,
  kToggleFaces,
  kToggleEdges,
  kToggleFeatures,
  kToggleBoundary,
  kToggleDefects,
  kToggleNormals,
  kNextColouring,
  kToggleTexture,
  kToggleSmooth,
  kToggleOcclusion,
  kToggleShadow,
  kToggleAxes,
  kToggleGrid,
  kToggleDark,
  kPreviousFile,
  kNextFile,
  kReload,
  kOpenDropped,
  kScreenshot,
  kToggleHelp,
  kEscape,
  kQuit,
};

/// With what it is done.
enum class Input {
  kKey,
  kLeftDrag,
  kShiftLeftDrag,
  kMiddleDrag,
  kRightDrag,
  kWheel,
  kClick,
  kDoubleClick,
  kDrop
};

/// One line of the table that code, on-screen help and manual share.
struct Binding {
  Action action;
  Input input;
  std::array<int, 3> keys;  ///< SDL key codes, any of them, then 0; all 0 unless `input` is kKey
  bool control;             ///< whether Ctrl must be held
  const char* trigger;
  const char* effect;
};

/// The table, in the order of the help.
[[nodiscard]] std::span<const Binding> bindings();

/// @param key SDL key code; keys of the number pad count as digits and Enter.
[[nodiscard]] std::optional<Action> actionOfKey(int key, bool control);
/// @param input anything but kKey.
[[nodiscard]] std::optional<Action> actionOfInput(Input input);

/// The table as lines of plain text, triggers and effects in columns; what belongs together shares
/// a line.
[[nodiscard]] std::vector<std::string> bindingLines();
/// The table in Markdown.
[[nodiscard]] std::string bindingMarkdown();

}  // namespace zel::view
