#include "tools/view/view_controller.h"

#include <algorithm>
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

}  // namespace

ViewController::ViewController(UpAxis up, const DrawOptions& options)
    : camera_(up), options_(options) {
  camera_.setAngles(kFirstYaw, kFirstPitch);
}

void ViewController::setScene(std::vector<std::array<float, 3>> points) {
  points_ = std::move(points);
  frameAll();
}

void ViewController::frameAll() { camera_.frame(points_, size_); }

bool ViewController::perform(Action action) {
  switch (action) {
    case Action::kViewFront:
      camera_.setView(StandardView::kFront);
      break;
    case Action::kViewRight:
      camera_.setView(StandardView::kRight);
      break;
    case Action::kViewTop:
      camera_.setView(StandardView::kTop);
      break;
    case Action::kViewOpposite:
      camera_.setOppositeView();
      break;
    case Action::kToggleOrthographic:
      camera_.setOrthographic(!camera_.isOrthographic());
      break;
    case Action::kFrameAll:
      frameAll();
      break;
    case Action::kToggleEdges:
      options_.edges = !options_.edges;
      break;
    case Action::kToggleBoundary:
      options_.boundary = !options_.boundary;
      break;
    case Action::kToggleNormals:
      options_.normals = !options_.normals;
      break;
    case Action::kToggleTexture:
      options_.textured = !options_.textured;
      break;
    case Action::kToggleSmooth:
      options_.smooth = !options_.smooth;
      break;
    case Action::kToggleHelp:
      showsHelp_ = !showsHelp_;
      break;
    default:
      return false;
  }
  return true;
}

void ViewController::beginDrag(Action action, CPoint at) {
  isDragging_ = true;
  dragAction_ = action;
  dragStart_ = dragLast_ = at;
}

bool ViewController::drag(CPoint to) {
  if (!isDragging_) {
    return false;
  }
  if (dragAction_ == Action::kPan) {
    float dx = 0;
    float dy = 0;
    slGetPanDistance(dragLast_, to, &dx, &dy);
    // The helper's units are made fractions of the view's height, so the mesh follows the mouse.
    const double viewHeight = static_cast<double>(kPanPerPixel) * size_.height;
    camera_.pan(static_cast<double>(dx) / viewHeight, static_cast<double>(dy) / viewHeight);
  } else if (dragAction_ == Action::kZoomByDrag) {
    camera_.zoom(static_cast<double>(slGetScale(dragStart_, dragLast_, to)));
  } else {
    camera_.orbit(to.x - dragLast_.x, to.y - dragLast_.y);
  }
  dragLast_ = to;
  return true;
}

void ViewController::turnWheel(int notches) {
  const CPoint start;
  notches = std::clamp(notches, -kMaxNotches, kMaxNotches);
  for (int n = notches; n != 0; n += n > 0 ? -1 : 1) {
    const auto step = static_cast<double>(slGetScale(start, start, CPoint(kPixelsPerNotch, 0)));
    camera_.zoom(n > 0 ? step : 1 / step);
  }
}

}  // namespace zel::view
