#include "tools/view/sdl_window.h"

#include <GL/gl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "tools/view/pictures/graphics_error.h"

namespace zel::view {
namespace {

constexpr int kSamples = 4;
constexpr unsigned kGraceSeconds = 3;

volatile sig_atomic_t endIsWanted = 0;

// What hangs, in a driver or a modal box, is then ended by the alarm, whose default ends a process.
void noteEnd(int /*signal*/) {
  endIsWanted = 1;
  alarm(kGraceSeconds);
}

void takeSignals() {
  endIsWanted = 0;
  for (const int signal : {SIGTERM, SIGINT}) {
    struct sigaction action {};
    action.sa_handler = noteEnd;
    sigaction(signal, &action, nullptr);
  }
}

void returnSignals() {
  alarm(0);
  for (const int signal : {SIGTERM, SIGINT}) {
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    sigaction(signal, &action, nullptr);
  }
}

SDL_Window* openWindow(ViewSize size, int samples) {
  SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
  SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
  SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, samples > 0 ? 1 : 0);
  SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, samples);
  return SDL_CreateWindow(
      "zel", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, size.width, size.height,
      SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_HIDDEN | SDL_WINDOW_ALLOW_HIGHDPI);
}

// SDL falls back on drivers whose windows nobody sees.
bool hasDisplay() {
  const char* const chosen = SDL_getenv("SDL_VIDEODRIVER");
  const std::string_view driver = SDL_GetCurrentVideoDriver();
  return (chosen != nullptr && *chosen != '\0') || (driver != "offscreen" && driver != "dummy");
}

// Whether the current context draws without a graphics card.
bool isSoftware() {
  const auto* const name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
  const std::string_view renderer = name != nullptr ? name : "";
  constexpr std::array<std::string_view, 4> kNames{"llvmpipe", "softpipe", "swrast", "Software"};
  return std::any_of(kNames.begin(), kNames.end(), [renderer](std::string_view part) {
    return renderer.find(part) != std::string_view::npos;
  });
}

}  // namespace

SdlWindow::SdlWindow(ViewSize size) {
  // SDL's own handlers only leave a message that a loop at work would not read.
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  if (SDL_Init(SDL_INIT_VIDEO) != 0) {
    throw GraphicsError(std::string("no display can be opened: ") + SDL_GetError());
  }
  if (!hasDisplay()) {
    SDL_Quit();
    throw GraphicsError("there is no display");
  }
  for (const int samples : {kSamples, 0}) {
    handle_ = openWindow(size, samples);
    context_ = handle_ != nullptr ? SDL_GL_CreateContext(handle_) : nullptr;
    smoothsAtRest_ = context_ != nullptr && isSoftware();
    if (context_ != nullptr && !(smoothsAtRest_ && samples > 0)) {
      SDL_ShowWindow(handle_);
      takeSignals();
      return;
    }
    SDL_GL_DeleteContext(context_);
    SDL_DestroyWindow(handle_);
  }
  const std::string reason = SDL_GetError();
  SDL_Quit();
  throw GraphicsError("no window with OpenGL can be opened: " + reason);
}

SdlWindow::~SdlWindow() {
  SDL_GL_DeleteContext(context_);
  SDL_DestroyWindow(handle_);
  SDL_Quit();
  returnSignals();
}

ViewSize SdlWindow::drawableSize() const {
  ViewSize size{};
  SDL_GL_GetDrawableSize(handle_, &size.width, &size.height);
  return {std::max(size.width, 1), std::max(size.height, 1)};
}

double SdlWindow::pixelScale() const {
  int width = 0;
  SDL_GetWindowSize(handle_, &width, nullptr);
  return static_cast<double>(drawableSize().width) / std::max(width, 1);
}

bool SdlWindow::mustEnd() { return endIsWanted != 0; }

}  // namespace zel::view
