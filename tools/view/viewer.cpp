#include "tools/view/viewer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "zel/core/desktop.h"

namespace zel::view {
namespace {

constexpr int kIdleMilliseconds = 150;
// So long without input the view counts as at rest.
constexpr int kRestMilliseconds = 60;
constexpr const char* kGreeting = "?: help";

}  // namespace

Viewer::Viewer(const ViewerSetup& setup, ViewerServices services)
    : window_(setup.size),
      services_(std::move(services)),
      controller_(UpAxis::kY, setup.draw),
      texture_(setup.texture),
      files_(setup.files),
      script_(setup.script.begin(), setup.script.end()),
      isScripted_(!setup.script.empty()),
      status_(kGreeting) {
  platform_.setWindow(window_.handle());
  SDL_EventState(SDL_DROPFILE, SDL_ENABLE);
  noteSize();
}

Viewer::~Viewer() = default;

void Viewer::show(OpenedScene opened) {
  watch_ = files_.empty() ? FileWatch() : FileWatch(files_[place_]);
  if (opened.scene == nullptr) {
    tellProblem(opened.problem);
    return;
  }
  takeScene(std::move(opened.scene), opened.up);
  controller_.setScene(scene_->shownPoints(), opened.up);
  if (!scene_->textures.empty() && !controller_.options().textured) {
    controller_.perform(Action::kToggleTexture);
  }
  SDL_SetWindowTitle(window_.handle(), opened.title.c_str());
  describe(controller_.options().boundary ? Action::kToggleBoundary : Action::kFrameAll);
}

void Viewer::showReloaded(OpenedScene opened) {
  if (opened.scene == nullptr) {
    tellProblem(opened.problem);
    return;
  }
  takeScene(std::move(opened.scene), opened.up);
  controller_.replaceScene(scene_->shownPoints());
  SDL_SetWindowTitle(window_.handle(), opened.title.c_str());
  status_ = "read again";
}

void Viewer::tellProblem(const std::string& problem) {
  status_ = problem;
  mustDraw_ = true;
  failScript();
}

void Viewer::failScript() {
  hasFailed_ = hasFailed_ || isScripted_;
  mustQuit_ = mustQuit_ || isScripted_;
}

bool Viewer::run() {
  while (!mustQuit_ && !SdlWindow::mustEnd()) {
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
    serveTime();
    if (isScripted_ && !mustQuit_) {
      if (script_.empty()) {
        break;
      }
      const ScriptStep step = script_.front();
      script_.pop_front();
      playStep(step);
    }
  }
  return !hasFailed_;
}

void Viewer::waitForInput() {
  SDL_Event event;
  if (SDL_WaitEventTimeout(&event, mustSmooth_ ? kRestMilliseconds : kIdleMilliseconds) != 0) {
    handle(event);
  } else if (mustSmooth_) {
    presentSmooth();
  }
}

void Viewer::serveTime() {
  if (work_ != nullptr && work_->isDone()) {
    takeOcclusion();
  }
  if (watch_.hasChanged(std::chrono::steady_clock::now())) {
    reload();
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
    case SDL_TEXTINPUT:
      // Which key makes a question mark is the keyboard's affair.
      if (event.text.text[0] == '?') {
        perform(Action::kToggleHelp);
      }
      break;
    case SDL_MOUSEBUTTONDOWN:
      handleButton(event.button);
      break;
    case SDL_MOUSEBUTTONUP:
      endPress(event.button);
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

void Viewer::endPress(const SDL_MouseButtonEvent& button) {
  if (controller_.endDrag() && button.button == SDL_BUTTON_LEFT) {
    pick(button.x, button.y, button.clicks > 1);
  }
}

void Viewer::pick(int x, int y, bool centre) {
  if (scene_ == nullptr) {
    return;
  }
  if (picker_ == nullptr) {
    picker_ = std::make_unique<Picker>(*scene_);
  }
  const double scale = window_.pixelScale();
  const auto picked = picker_->pick(
      controller_.camera().rayThrough(x * scale - panelLeft(), y * scale, controller_.size()));
  hasSelection_ = picked.has_value();
  painter_->setSelection(picked ? picked->selection : Selection{});
  status_ = picked ? picked->text : kGreeting;
  if (picked && centre) {
    controller_.centreOn(picked->place);
  }
  mustDraw_ = true;
}

void Viewer::perform(Action action) {
  if (action == Action::kQuit) {
    mustQuit_ = true;
  } else if (action == Action::kEscape) {
    escape();
  } else if (action == Action::kScreenshot) {
    saveScreenshot();
  } else if (!performOnFiles(action) && controller_.perform(action)) {
    if (action == Action::kToggleHelp) {
      noteSize();
    }
    describe(action);
    mustDraw_ = true;
  }
}

bool Viewer::performOnFiles(Action action) {
  if (action == Action::kReload) {
    reload();
  } else if (action == Action::kNextFile && !files_.empty()) {
    openFile((place_ + 1) % files_.size());
  } else if (action == Action::kPreviousFile && !files_.empty()) {
    openFile((place_ + files_.size() - 1) % files_.size());
  } else {
    return false;
  }
  return true;
}

void Viewer::escape() {
  if (controller_.showsHelp()) {
    perform(Action::kToggleHelp);
  } else if (hasSelection_) {
    painter_->setSelection({});
    hasSelection_ = false;
    status_ = kGreeting;
    mustDraw_ = true;
  } else {
    mustQuit_ = true;
  }
}

void Viewer::describe(Action action) {
  const DrawOptions& options = controller_.options();
  status_ = kGreeting;
  if (painter_ == nullptr) {
    return;
  }
  if (files_.size() > 1) {
    status_ = "file " + std::to_string(place_ + 1) + " of " + std::to_string(files_.size()) + "  " +
              kGreeting;
  }
  if (action == Action::kToggleBoundary && options.boundary) {
    status_ = std::to_string(painter_->edges().boundary.size()) + " boundary edges";
  } else if (action == Action::kToggleTexture && scene_->textureCoords.empty()) {
    status_ = "the mesh has no texture coordinates";
  } else if (action == Action::kToggleGrid && options.grid) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "the grid's lines are %g apart", gridStep(*scene_));
    status_ = text.data();
  } else if (action == Action::kNextColouring && options.colouring != Colouring::kOwn) {
    const ScalarField& field = painter_->scalars(options.colouring);
    status_ =
        field.corners.empty() ? field.name + ": nothing to measure" : "colours: " + field.name;
  }
}

void Viewer::openFile(std::size_t place) {
  place_ = place;
  show(services_.open(files_[place]));
}

void Viewer::openDropped(const std::string& file) {
  OpenedScene opened = services_.open(file);
  if (opened.scene == nullptr) {
    tellProblem(opened.problem);
    return;
  }
  const auto known = std::find(files_.begin(), files_.end(), file);
  place_ = static_cast<std::size_t>(known - files_.begin());
  if (known == files_.end()) {
    files_.push_back(file);
  }
  show(std::move(opened));
}

void Viewer::reload() {
  if (!files_.empty()) {
    watch_ = FileWatch(files_[place_]);
    showReloaded(services_.open(files_[place_]));
  }
}

void Viewer::playStep(const ScriptStep& step) {
  if (pushInput(step, window_.handle())) {
    return;
  }
  if (step.command == "screenshot") {
    saveShot(step.words[0]);
  } else if (step.command == "title") {
    std::printf("%s\n", SDL_GetWindowTitle(window_.handle()));
  } else if (step.command == "status") {
    std::printf("%s\n", status_.c_str());
  } else if (step.command == "resize") {
    SDL_SetWindowSize(window_.handle(), std::max(numberIn(step, 0), 1),
                      std::max(numberIn(step, 1), 1));
  } else if (step.command == "cursor") {
    POINT corner{};
    SDL_GetWindowPosition(window_.handle(), &corner.x, &corner.y);
    slSetCursorPos(CPoint(corner.x + numberIn(step, 0), corner.y + numberIn(step, 1)));
  } else if (step.command == "message") {
    platform().showMessage(textIn(step).c_str());
  } else if (step.command == "wait") {
    SDL_Delay(static_cast<Uint32>(std::max(numberIn(step, 0), 0)));
  }
}

}  // namespace zel::view
