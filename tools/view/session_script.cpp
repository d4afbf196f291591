#include "tools/view/session_script.h"

#include <array>
#include <charconv>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace zel::view {
namespace {

struct CommandShape {
  const char* name;
  std::size_t fewestWords;
  std::size_t mostWords;
};

constexpr std::size_t kAnyNumber = 1000;
constexpr std::array kCommands{
    CommandShape{"key", 1, 1},         CommandShape{"drag", 5, 6},
    CommandShape{"wheel", 1, 1},       CommandShape{"drop", 1, kAnyNumber},
    CommandShape{"screenshot", 1, 1},  CommandShape{"title", 0, 0},
    CommandShape{"cursor", 2, 2},      CommandShape{"message", 1, kAnyNumber},
    CommandShape{"wait", 1, 1},        CommandShape{"click", 2, 2},
    CommandShape{"doubleclick", 2, 2}, CommandShape{"status", 0, 0},
    CommandShape{"resize", 2, 2},
};

constexpr int kDragSteps = 8;

std::optional<int> number(const std::string& word) {
  int value = 0;
  const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
  if (result.ec != std::errc() || result.ptr != word.data() + word.size()) {
    return std::nullopt;
  }
  return value;
}

bool areNumbers(const std::vector<std::string>& words, std::size_t first, std::size_t end) {
  for (std::size_t i = first; i < end; ++i) {
    if (!number(words[i])) {
      return false;
    }
  }
  return true;
}

std::optional<Uint8> mouseButton(const std::string& name) {
  if (name == "left") {
    return static_cast<Uint8>(SDL_BUTTON_LEFT);
  }
  if (name == "middle") {
    return static_cast<Uint8>(SDL_BUTTON_MIDDLE);
  }
  if (name == "right") {
    return static_cast<Uint8>(SDL_BUTTON_RIGHT);
  }
  return std::nullopt;
}

SDL_Keysym keyNamed(const std::string& name) {
  constexpr std::string_view kControl = "Ctrl+";
  const bool control = name.rfind(kControl, 0) == 0;
  SDL_Keysym key{};
  key.sym = SDL_GetKeyFromName(control ? name.c_str() + kControl.size() : name.c_str());
  key.scancode = SDL_GetScancodeFromKey(key.sym);
  key.mod = control ? KMOD_LCTRL : KMOD_NONE;
  return key;
}

bool isWellFormed(const ScriptStep& step) {
  for (const CommandShape& shape : kCommands) {
    if (step.command != shape.name) {
      continue;
    }
    const std::size_t count = step.words.size();
    if (count < shape.fewestWords || count > shape.mostWords) {
      return false;
    }
    if (step.command == "key") {
      return keyNamed(step.words[0]).sym != SDLK_UNKNOWN;
    }
    if (step.command == "drag") {
      return mouseButton(step.words[0]) && areNumbers(step.words, 1, 5) &&
             (count == 5 || step.words[5] == "shift");
    }
    const bool takesText =
        step.command == "drop" || step.command == "screenshot" || step.command == "message";
    return takesText || areNumbers(step.words, 0, count);
  }
  return false;
}

void pushKey(Uint32 type, const SDL_Keysym& key, Uint32 window) {
  SDL_Event event{};
  event.type = type;
  event.key.windowID = window;
  event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
  event.key.keysym = key;
  SDL_PushEvent(&event);
}

void pushButton(Uint32 type, Uint8 button, int x, int y, Uint32 window, Uint8 clicks = 1) {
  SDL_Event event{};
  event.type = type;
  event.button.windowID = window;
  event.button.button = button;
  event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
  event.button.clicks = clicks;
  event.button.x = x;
  event.button.y = y;
  SDL_PushEvent(&event);
}

void pushClicks(const ScriptStep& step, Uint8 count, Uint32 window) {
  for (Uint8 click = 1; click <= count; ++click) {
    for (const Uint32 type : {SDL_MOUSEBUTTONDOWN, SDL_MOUSEBUTTONUP}) {
      pushButton(type, SDL_BUTTON_LEFT, numberIn(step, 0), numberIn(step, 1), window, click);
    }
  }
}

void pushDrag(const std::vector<std::string>& words, Uint32 window) {
  const Uint8 button = *mouseButton(words[0]);
  const int x = *number(words[1]);
  const int y = *number(words[2]);
  const int dx = *number(words[3]) - x;
  const int dy = *number(words[4]) - y;
  const bool withShift = words.size() == 6;
  const SDL_Keysym shift = keyNamed("Left Shift");
  if (withShift) {
    pushKey(SDL_KEYDOWN, shift, window);
  }
  pushButton(SDL_MOUSEBUTTONDOWN, button, x, y, window);
  for (int step = 1; step <= kDragSteps; ++step) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.windowID = window;
    event.motion.state = static_cast<Uint32>(SDL_BUTTON(button));
    event.motion.x = x + dx * step / kDragSteps;
    event.motion.y = y + dy * step / kDragSteps;
    SDL_PushEvent(&event);
  }
  pushButton(SDL_MOUSEBUTTONUP, button, x + dx, y + dy, window);
  if (withShift) {
    pushKey(SDL_KEYUP, shift, window);
  }
}

void pushWheel(int notches, Uint32 window) {
  SDL_Event event{};
  event.type = SDL_MOUSEWHEEL;
  event.wheel.windowID = window;
  event.wheel.y = notches;
  SDL_PushEvent(&event);
}

void pushDrop(const std::string& file, Uint32 window) {
  SDL_Event event{};
  event.type = SDL_DROPFILE;
  event.drop.windowID = window;
  event.drop.file = SDL_strdup(file.c_str());
  SDL_PushEvent(&event);
}

}  // namespace

std::vector<ScriptStep> parseScript(const std::string& text) {
  std::vector<ScriptStep> steps;
  std::istringstream lines(text);
  std::string line;
  for (int lineNumber = 1; std::getline(lines, line); ++lineNumber) {
    std::istringstream words(line);
    ScriptStep step;
    if (!(words >> step.command) || step.command.front() == '#') {
      continue;
    }
    for (std::string word; words >> word;) {
      step.words.push_back(word);
    }
    if (!isWellFormed(step)) {
      throw std::runtime_error("line " + std::to_string(lineNumber) + " is no step of a session");
    }
    steps.push_back(step);
  }
  return steps;
}

int numberIn(const ScriptStep& step, std::size_t word) { return number(step.words[word]).value(); }

std::string textIn(const ScriptStep& step) {
  std::string text;
  for (const std::string& word : step.words) {
    text += (text.empty() ? "" : " ") + word;
  }
  return text;
}

bool pushInput(const ScriptStep& step, SDL_Window* window) {
  const Uint32 id = SDL_GetWindowID(window);
  if (step.command == "key") {
    const SDL_Keysym key = keyNamed(step.words[0]);
    pushKey(SDL_KEYDOWN, key, id);
    pushKey(SDL_KEYUP, key, id);
  } else if (step.command == "drag") {
    pushDrag(step.words, id);
  } else if (step.command == "click" || step.command == "doubleclick") {
    pushClicks(step, step.command == "click" ? 1 : 2, id);
  } else if (step.command == "wheel") {
    pushWheel(numberIn(step, 0), id);
  } else if (step.command == "drop") {
    pushDrop(textIn(step), id);
  } else {
    return false;
  }
  return true;
}

}  // namespace zel::view
