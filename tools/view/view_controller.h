#pragma once

#include <array>
#include <vector>

#include "tools/view/bindings.h"
#include "tools/view/pictures/camera.h"
#include "tools/view/pictures/draw_options.h"
#include "zel/core/desktop_types.h"

namespace zel::view {

/// The state of a view and what input does to it, without any window.
class ViewController {
 public:
  explicit ViewController(UpAxis up, const DrawOptions& options);

  /// Takes another scene in hand and frames it. @param points what is to be seen of it.
  void setScene(std::vector<std::array<float, 3>> points, UpAxis up);
  /// Takes another state of the same scene in hand; the view stays as it is.
  void replaceScene(std::vector<std::array<float, 3>> points) { points_ = std::move(points); }
  /// The drawing area has a new size. A framed scene stays framed.
  void resize(ViewSize size);

  /// Carries out what a key does. @return whether the view must be drawn again.
  bool perform(Action action);
  /// A drag begins at a position of the window.
  void beginDrag(Action action, CPoint at);
  /// The mouse moved. @return whether a drag is under way.
  bool drag(CPoint to);
  /// @return whether the mouse had hardly moved, so that it was a click.
  bool endDrag();
  /// The wheel turned. @param notches positive: away from the person, which zooms in.
  void turnWheel(int notches);
  /// Puts a point of the scene into the middle.
  void centreOn(const std::array<float, 3>& point);

  [[nodiscard]] const Camera& camera() const { return camera_; }
  [[nodiscard]] Camera& camera() { return camera_; }
  [[nodiscard]] const DrawOptions& options() const { return options_; }
  [[nodiscard]] ViewSize size() const { return size_; }
  [[nodiscard]] bool showsHelp() const { return showsHelp_; }

 private:
  void frameAll();
  bool changeView(Action action);
  bool changeOptions(Action action);

  Camera camera_;
  DrawOptions options_;
  ViewSize size_{1, 1};
  std::vector<std::array<float, 3>> points_;
  bool isFramed_ = true;  ///< since the last framing nobody has moved or zoomed
  bool showsHelp_ = false;
  bool isDragging_ = false;
  bool hasMoved_ = false;  ///< the drag is more than a click
  Action dragAction_ = Action::kOrbit;
  CPoint dragStart_;
  CPoint dragLast_;
};

}  // namespace zel::view
