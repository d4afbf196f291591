#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include "tools/view/overlay.h"
#include "tools/view/pictures/lighting.h"
#include "tools/view/pictures/offscreen_context.h"
#include "tools/view/pictures/picture_mean.h"
#include "tools/view/viewer.h"

namespace zel::view {
namespace {

// At least this share of the window's width is left to the scene beside the help.
constexpr int kSceneShare = 3;

}  // namespace

int Viewer::textScale() const {
  return std::max(1, static_cast<int>(std::lround(window_.pixelScale())));
}

int Viewer::panelLeft() const {
  const int width = window_.drawableSize().width;
  return controller_.showsHelp()
             ? std::min(panelWidth(bindingLines(), textScale()), width - width / kSceneShare)
             : 0;
}

void Viewer::noteSize() {
  const ViewSize whole = window_.drawableSize();
  const ViewSize size{std::max(whole.width - panelLeft(), 1), whole.height};
  if (size.width != controller_.size().width || size.height != controller_.size().height) {
    controller_.resize(size);
  }
  mustDraw_ = true;
}

void Viewer::takeScene(std::unique_ptr<SceneMesh> scene, UpAxis up) {
  work_.reset();
  picker_.reset();
  painter_.reset();
  scene_ = std::move(scene);
  painter_ = std::make_unique<ScenePainter>(*scene_, texture_);
  controller_.camera().setUp(up);
  isShaded_ = false;
  hasSelection_ = false;
  mustDraw_ = true;
}

void Viewer::takeOcclusion() {
  painter_->setOcclusion(work_->take());
  work_.reset();
  mustDraw_ = true;
}

void Viewer::saveScreenshot() {
  std::string name;
  for (int number = 1; name.empty() || std::filesystem::exists(name); ++number) {
    name = "zel-" + std::to_string(number) + ".png";
  }
  const int left = panelLeft();
  drawSmooth(true);
  const ViewSize size = controller_.size();
  const bool isSaved = services_.save(readPixels(size.width, size.height, left), name);
  status_ = isSaved ? "saved " + name : "cannot write " + name;
  mustDraw_ = true;
}

void Viewer::saveShot(const std::string& file) {
  const ViewSize size = window_.drawableSize();
  drawSmooth(true);
  drawOverlay();
  if (!services_.save(readPixels(size.width, size.height), file)) {
    failScript();
  }
  mustDraw_ = true;
}

void Viewer::present() {
  drawScene(0, 0);
  drawOverlay();
  SDL_GL_SwapWindow(window_.handle());
  mustDraw_ = false;
  mustSmooth_ = window_.smoothsAtRest();
  const DrawOptions& options = controller_.options();
  if (painter_ != nullptr && !isShaded_ && (options.occlusion || options.shadow)) {
    isShaded_ = true;
    work_ =
        std::make_unique<OcclusionWork>(*scene_, painter_->surface(), controller_.camera().up());
  }
}

void Viewer::presentSmooth() {
  if (drawSmooth(false)) {
    drawOverlay();
    SDL_GL_SwapWindow(window_.handle());
    mustSmooth_ = false;
  }
}

bool Viewer::drawSmooth(bool patient) {
  if (patient && work_ != nullptr) {
    takeOcclusion();
  }
  if (!window_.smoothsAtRest()) {
    drawScene(0, 0);
    return true;
  }
  PictureMean mean(window_.drawableSize());
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
  DrawOptions options = controller_.options();
  options.lineScale = static_cast<float>(window_.pixelScale());
  Camera camera = controller_.camera();
  camera.shiftPixels(shiftX, shiftY);
  if (painter_ != nullptr) {
    painter_->draw(options, camera, controller_.size(), panelLeft());
  } else {
    paintBackground(options.backgroundTop, options.backgroundBottom);
  }
}

void Viewer::drawOverlay() {
  const ViewSize whole = window_.drawableSize();
  if (controller_.showsHelp()) {
    drawPanel(bindingLines(), {panelLeft(), whole.height}, textScale());
  }
  drawStatus(status_, whole, panelLeft(), textScale());
}

}  // namespace zel::view
