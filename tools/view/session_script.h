#pragma once

#include <SDL.h>

#include <string>
#include <vector>

namespace zel::view {

/// One step of a session that runs by itself, for tests and tours.
struct ScriptStep {
  std::string command;
  std::vector<std::string> words;  ///< what follows the command
};

/// Reads a script, one step a line; blank lines and lines that begin with '#' say nothing.
///
///     key Ctrl+Q | key F12            press and release a key
///     drag left|middle|right X1 Y1 X2 Y2 [shift]
///     click X Y | doubleclick X Y     press and release the left button
///     wheel NOTCHES
///     drop FILE                       as if dropped on the window
///     screenshot FILE                 what the window shows, as PNG
///     title | status                  print the window's title, or its status line
///     resize WIDTH HEIGHT             make the window so large
///     cursor X Y                      glide the cursor there, in pixels of the window
///     message TEXT                    show a message box
///     wait MILLISECONDS
///
/// @throws std::runtime_error naming the first line that is none of these.
[[nodiscard]] std::vector<ScriptStep> parseScript(const std::string& text);

/// @return a number that parseScript() has checked.
[[nodiscard]] int numberIn(const ScriptStep& step, std::size_t word);
/// @return all words as one text.
[[nodiscard]] std::string textIn(const ScriptStep& step);

/// Sends the input events of a step to a window.
/// @return false when the step is not about input.
bool pushInput(const ScriptStep& step, SDL_Window* window);

}  // namespace zel::view
