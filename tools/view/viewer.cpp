#include "tools/view/viewer.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <string_view>

#include "tools/view/overlay.h"
#include "tools/view/pictures/graphics_error.h"
#include "tools/view/pictures/offscreen_context.h"
#include "tools/view/pictures/picture_mean.h"
#include "zel/core/desktop.h"

namespace zel::view {
namespace {

constexpr int kIdleMilliseconds = 200;
// So long without input the view counts as at rest.
constexpr int kRestMilliseconds = 60;
constexpr int kSamples = 4;

SDL_Window* openWindow(ViewSize size, int samples) {
  SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
  SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
  SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, samples > 0 ? 1 : 0);
  SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, samples);
  return SDL_CreateWindow("zel", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, size.width,
                          size.height,
                          SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_HIDDEN);
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

// SDL, the window and its OpenGL context, released in the reverse order.
struct Viewer::Window {
  explicit Window(ViewSize size) {
    if (SDL_Init(SDL_INIT_VIDEO) != 0) {
      throw GraphicsError(std::string("no display can be opened: ") + SDL_GetError());
    }
    if (!hasDisplay()) {
      SDL_Quit();
      throw GraphicsError("there is no display");
    }
    for (const int samples : {kSamples, 0}) {
      handle = openWindow(size, samples);
      context = handle != nullptr ? SDL_GL_CreateContext(handle) : nullptr;
      smoothsAtRest = context != nullptr && isSoftware();
      if (context != nullptr && !(smoothsAtRest && samples > 0)) {
        SDL_ShowWindow(handle);
        return;
      }
      SDL_GL_DeleteContext(context);
      SDL_DestroyWindow(handle);
    }
    const std::string reason = SDL_GetError();
    SDL_Quit();
    throw GraphicsError("no window with OpenGL can be opened: " + reason);
  }
  ~Window() {
    SDL_GL_DeleteContext(context);
    SDL_DestroyWindow(handle);
    SDL_Quit();
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  SDL_Window* handle = nullptr;
  SDL_GLContext context = nullptr;
  // Multisampling would slow every frame down; the view at rest is drawn several times instead.
  bool smoothsAtRest = false;
};

Viewer::Viewer(const ViewerSetup& setup, ViewerServices services)
    : window_(std::make_unique<Window>(setup.size)),
      services_(std::move(services)),
      controller_(setup.up, setup.draw),
      texture_(setup.texture),
      script_(setup.script.begin(), setup.script.end()),
      isScripted_(!setup.script.empty()) {
  platform_.setWindow(window_->handle);
  SDL_EventState(SDL_DROPFILE, SDL_ENABLE);
  noteSize();
}

Viewer::~Viewer() = default;

void Viewer::noteSize() {
  ViewSize size{};
  SDL_GL_GetDrawableSize(window_->handle, &size.width, &size.height);
  controller_.resize({std::max(size.width, 1), std::max(size.height, 1)});
  mustDraw_ = true;
}

void Viewer::show(OpenedScene opened) {
  painter_.reset();
  scene_ = std::move(opened.scene);
  painter_ = std::make_unique<ScenePainter>(*scene_, texture_);
  controller_.setScene(scene_->shownPoints());
  SDL_SetWindowTitle(window_->handle, opened.title.c_str());
  describe(controller_.options().boundary ? Action::kToggleBoundary : Action::kFrameAll);
  mustDraw_ = true;
}

void Viewer::run() {
  while (!mustQuit_) {
    if (mustDraw_) {
      present();
    }
    if (!isScripted_) {
      waitForInput();
    }
    SDL_Event event;
    while (!mustQuit_ && SDL_PollEvent(&event) != 0) {
      handle(event);
    }
    if (isScripted_ && !mustQuit_) {
      if (script_.empty()) {
        return;
      }
      const ScriptStep step = script_.front();
      script_.pop_front();
      playStep(step);
    }
  }
}

void Viewer::waitForInput() {
  SDL_Event event;
  if (SDL_WaitEventTimeout(&event, mustSmooth_ ? kRestMilliseconds : kIdleMilliseconds) != 0) {
    handle(event);
  } else if (mustSmooth_) {
    presentSmooth();
  }
}

void Viewer::handle(const SDL_Event& event) {
  switch (event.type) {
    case SDL_QUIT:
      mustQuit_ = true;
      break;
    case SDL_WINDOWEVENT:
      noteSize();
      shiftHeld_ = shiftHeld_ && event.window.event != SDL_WINDOWEVENT_FOCUS_LOST;
      break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      handleKey(event.key);
      break;
    case SDL_MOUSEBUTTONDOWN:
      handleButton(event.button);
      break;
    case SDL_MOUSEBUTTONUP:
      controller_.endDrag();
      break;
    case SDL_MOUSEMOTION:
      mustDraw_ |= controller_.drag({event.motion.x, event.motion.y});
      break;
    case SDL_MOUSEWHEEL:
      controller_.turnWheel(event.wheel.y);
      mustDraw_ = true;
      break;
    case SDL_DROPFILE:
      openDropped(event.drop.file);
      SDL_free(event.drop.file);
      break;
    default:
      break;
  }
}

void Viewer::handleKey(const SDL_KeyboardEvent& key) {
  if (key.keysym.sym == SDLK_LSHIFT || key.keysym.sym == SDLK_RSHIFT) {
    shiftHeld_ = key.state == SDL_PRESSED;
  }
  if (key.state != SDL_PRESSED || key.repeat != 0) {
    return;
  }
  if (const auto action = actionOfKey(key.keysym.sym, (key.keysym.mod & KMOD_CTRL) != 0)) {
    perform(*action);
  }
}

void Viewer::handleButton(const SDL_MouseButtonEvent& button) {
  Input input = Input::kMiddleDrag;
  if (button.button == SDL_BUTTON_LEFT) {
    input = shiftHeld_ ? Input::kShiftLeftDrag : Input::kLeftDrag;
  } else if (button.button == SDL_BUTTON_RIGHT) {
    input = Input::kRightDrag;
  } else if (button.button != SDL_BUTTON_MIDDLE) {
    return;
  }
  if (const auto action = actionOfInput(input)) {
    controller_.beginDrag(*action, {button.x, button.y});
  }
}

void Viewer::perform(Action action) {
  if (action == Action::kQuit) {
    mustQuit_ = true;
  } else if (action == Action::kScreenshot) {
    saveScreenshot();
  } else if (controller_.perform(action)) {
    describe(action);
    mustDraw_ = true;
  }
}

void Viewer::describe(Action action) {
  const DrawOptions& options = controller_.options();
  status_ = "H: help";
  if (painter_ == nullptr) {
    return;
  }
  if (action == Action::kToggleBoundary && options.boundary) {
    status_ = std::to_string(painter_->boundaryCount()) + " boundary edges";
  } else if (action == Action::kToggleTexture && scene_->textureCoords.empty()) {
    status_ = "the mesh has no texture coordinates";
  }
}

void Viewer::openDropped(const std::string& file) {
  OpenedScene opened = services_.open(file);
  if (opened.scene == nullptr) {
    platform_.showNotice(opened.problem);
  } else {
    show(std::move(opened));
  }
}

void Viewer::saveScreenshot() {
  std::string name;
  for (int number = 1; name.empty() || std::filesystem::exists(name); ++number) {
    name = "zel-" + std::to_string(number) + ".png";
  }
  drawSmooth(true);
  const ViewSize size = controller_.size();
  status_ = services_.save(readPixels(size.width, size.height), name) ? "saved " + name
                                                                      : "cannot write " + name;
  mustDraw_ = true;
}

void Viewer::present() {
  drawScene(0, 0);
  drawOverlay();
  SDL_GL_SwapWindow(window_->handle);
  mustDraw_ = false;
  mustSmooth_ = window_->smoothsAtRest;
}

void Viewer::presentSmooth() {
  if (drawSmooth(false)) {
    drawOverlay();
    SDL_GL_SwapWindow(window_->handle);
    mustSmooth_ = false;
  }
}

bool Viewer::drawSmooth(bool patient) {
  if (!window_->smoothsAtRest) {
    drawScene(0, 0);
    return true;
  }
  PictureMean mean(controller_.size());
  for (const auto& [x, y] : kSamplePlaces) {
    SDL_PumpEvents();
    if (!patient && SDL_HasEvents(SDL_FIRSTEVENT, SDL_LASTEVENT) == SDL_TRUE) {
      return false;
    }
    drawScene(-x, -y);
    mean.add();
  }
  mean.paint();
  return true;
}

void Viewer::drawScene(double shiftX, double shiftY) {
  if (painter_ != nullptr) {
    Camera camera = controller_.camera();
    camera.shiftPixels(shiftX, shiftY);
    painter_->draw(controller_.options(), camera, controller_.size());
  }
}

void Viewer::drawOverlay() {
  const ViewSize size = controller_.size();
  drawStatus(status_, size);
  if (controller_.showsHelp()) {
    drawPanel(bindingLines(), size);
  }
}

void Viewer::playStep(const ScriptStep& step) {
  if (pushInput(step, window_->handle)) {
    return;
  }
  if (step.command == "screenshot") {
    const ViewSize size = controller_.size();
    drawSmooth(true);
    drawOverlay();
    services_.save(readPixels(size.width, size.height), step.words[0]);
    mustDraw_ = true;
  } else if (step.command == "title") {
    std::printf("%s\n", SDL_GetWindowTitle(window_->handle));
  } else if (step.command == "cursor") {
    POINT corner{};
    SDL_GetWindowPosition(window_->handle, &corner.x, &corner.y);
    slSetCursorPos(CPoint(corner.x + numberIn(step, 0), corner.y + numberIn(step, 1)));
  } else if (step.command == "message") {
    platform().showMessage(textIn(step).c_str());
  } else if (step.command == "wait") {
    SDL_Delay(static_cast<Uint32>(std::max(numberIn(step, 0), 0)));
  }
}

}  // namespace zel::view
