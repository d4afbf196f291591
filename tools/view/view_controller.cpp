#include "tools/view/view_controller.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "zel/core/constants.h"
#include "zel/core/desktop.h"

namespace zel::view {
namespace {

// A notch of the wheel zooms as much as a drag of so many pixels.
constexpr int kPixelsPerNotch = 50;
constexpr int kMaxNotches = 100;
// Where a person looks from at first: a little from the right and from above.
constexpr double kFirstYaw = 30;
constexpr double kFirstPitch = 20;
// A press that moves the mouse by no more pixels is a click.
constexpr int kClickSlack = 3;

constexpr std::pair<Action, StandardView> kStandardViews[] = {
    {Action::kViewFront, StandardView::kFront},
    {Action::kViewBack, StandardView::kBack},
    {Action::kViewRight, StandardView::kRight},
    {Action::kViewLeft, StandardView::kLeft},
    {Action::kViewTop, StandardView::kTop},
    {Action::kViewBottom, StandardView::kBottom},
    {Action::kViewIsometric, StandardView::kIsometric},
};

constexpr std::pair<Action, bool DrawOptions::*> kToggles[] = {
    {Action::kToggleEdges, &DrawOptions::edges},
    {Action::kToggleFeatures, &DrawOptions::features},
    {Action::kToggleBoundary, &DrawOptions::boundary},
    {Action::kToggleDefects, &DrawOptions::defects},
    {Action::kToggleNormals, &DrawOptions::normals},
    {Action::kToggleTexture, &DrawOptions::textured},
    {Action::kToggleSmooth, &DrawOptions::smooth},
    {Action::kToggleOcclusion, &DrawOptions::occlusion},
    {Action::kToggleShadow, &DrawOptions::shadow},
    {Action::kToggleAxes, &DrawOptions::axes},
    {Action::kToggleGrid, &DrawOptions::grid},
};

}  // namespace

ViewController::ViewController(UpAxis up, const DrawOptions& options)
    : camera_(up), options_(options) {
  camera_.setAngles(kFirstYaw, kFirstPitch);
}

void ViewController::setScene(std::vector<std::array<float, 3>> points, UpAxis up) {
  points_ = std::move(points);
  camera_.setUp(up);
  frameAll();
}

void ViewController::resize(ViewSize size) {
  const ViewSize before = size_;
  size_ = size;
  if (isFramed_) {
    frameAll();
  } else {
    camera_.adapt(before, size);
  }
}

void ViewController::frameAll() {
  camera_.frame(points_, size_);
  isFramed_ = true;
}

void ViewController::centreOn(const std::array<float, 3>& point) {
  camera_.centreOn(point);
  isFramed_ = false;
}

bool ViewController::perform(Action action) { return changeView(action) || changeOptions(action); }

bool ViewController::changeView(Action action) {
  for (const auto& [viewAction, view] : kStandardViews) {
    if (action == viewAction) {
      camera_.setView(view);
      frameAll();
      return true;
    }
  }
  switch (action) {
    case Action::kViewOpposite:
      camera_.setOppositeView();
      break;
    case Action::kToggleOrthographic:
      camera_.setOrthographic(!camera_.isOrthographic());
      return true;
    case Action::kStartView:
      camera_.setAngles(kFirstYaw, kFirstPitch);
      break;
    case Action::kFrameAll:
      break;
    default:
      return false;
  }
  frameAll();
  return true;
}

bool ViewController::changeOptions(Action action) {
  for (const auto& [toggle, option] : kToggles) {
    if (action == toggle) {
      options_.*option = !(options_.*option);
      return true;
    }
  }
  switch (action) {
    case Action::kToggleFaces:
      options_.faces = !options_.faces;
      options_.edges = !options_.faces;
      return true;
    case Action::kNextColouring:
      options_.colouring = static_cast<Colouring>((static_cast<int>(options_.colouring) + 1) %
                                                  (static_cast<int>(Colouring::kStretch) + 1));
      return true;
    case Action::kToggleDark:
      options_.setDark(!options_.isDark());
      return true;
    case Action::kToggleHelp:
      showsHelp_ = !showsHelp_;
      return true;
    default:
      return false;
  }
}

void ViewController::beginDrag(Action action, CPoint at) {
  isDragging_ = true;
  hasMoved_ = false;
  dragAction_ = action;
  dragStart_ = dragLast_ = at;
}

bool ViewController::endDrag() {
  const bool isClick = isDragging_ && !hasMoved_;
  isDragging_ = false;
  return isClick;
}

bool ViewController::drag(CPoint to) {
  hasMoved_ = hasMoved_ || std::abs(to.x - dragStart_.x) > kClickSlack ||
              std::abs(to.y - dragStart_.y) > kClickSlack;
  if (!isDragging_ || !hasMoved_) {
    return false;
  }
  if (dragAction_ == Action::kPan) {
    float dx = 0;
    float dy = 0;
    slGetPanDistance(dragLast_, to, &dx, &dy);
    // The helper's units are made fractions of the view's height, so the mesh follows the mouse.
    const double viewHeight = static_cast<double>(kPanPerPixel) * size_.height;
    isFramed_ = false;
    camera_.pan(static_cast<double>(dx) / viewHeight, static_cast<double>(dy) / viewHeight);
  } else if (dragAction_ == Action::kZoomByDrag) {
    isFramed_ = false;
    camera_.zoom(static_cast<double>(slGetScale(dragStart_, dragLast_, to)));
  } else {
    camera_.orbit(to.x - dragLast_.x, to.y - dragLast_.y);
  }
  dragLast_ = to;
  return true;
}

void ViewController::turnWheel(int notches) {
  const CPoint start;
  isFramed_ = false;
  notches = std::clamp(notches, -kMaxNotches, kMaxNotches);
  for (int n = notches; n != 0; n += n > 0 ? -1 : 1) {
    const auto step = static_cast<double>(slGetScale(start, start, CPoint(kPixelsPerNotch, 0)));
    camera_.zoom(n > 0 ? step : 1 / step);
  }
}

}  // namespace zel::view
