#pragma once

#include <array>
#include <span>

namespace zel::view {

/// Which axis of the mesh points up on the screen.
enum class UpAxis { kY, kZ };

/// A named direction to look from.
enum class StandardView { kFront, kRight, kTop };

/// Size of a drawing area in pixels.
struct ViewSize {
  int width;
  int height;
};

/// How a scene is looked at. A scene lies within the unit sphere about the origin, which is also
/// what it turns about.
///
/// A point p of the scene stands at R p - (shift, distance) before an eye that looks down the
/// negative z axis, R being the turn to the present direction.
class Camera {
 public:
  explicit Camera(UpAxis up = UpAxis::kY) : up_(up) {}

  /// Turns to a direction.
  /// @param yaw degrees to the right of the front. @param pitch degrees above it, limited to
  ///            [-90, 90].
  void setAngles(double yaw, double pitch);
  void setView(StandardView view);
  /// Looks from the other side.
  void setOppositeView();
  void setOrthographic(bool orthographic) { orthographic_ = orthographic; }
  [[nodiscard]] bool isOrthographic() const { return orthographic_; }
  [[nodiscard]] double yaw() const { return yaw_; }
  [[nodiscard]] double pitch() const { return pitch_; }

  /// Moves and zooms so that the points just fill the view, with a margin, from the present
  /// direction. Without points the unit sphere fills it.
  void frame(std::span<const std::array<float, 3>> points, ViewSize size);
  /// Turns the scene with a mouse drag of so many pixels, y growing downward.
  void orbit(int dx, int dy);
  /// Moves the scene so that its origin follows a mouse drag.
  /// @param dx, dy the drag as fractions of the view's height, y growing upward.
  void pan(double dx, double dy);
  /// @param factor above 1 makes the scene larger.
  void zoom(double factor);

  /// Moves the whole picture by parts of a pixel, to the right and upward.
  void shiftPixels(double dx, double dy) { pixelShift_ = {dx, dy}; }

  /// Projection for the current OpenGL context.
  void loadProjection(ViewSize size) const;
  /// Model view for the current OpenGL context.
  void loadModelView() const;

 private:
  using Vector = std::array<double, 3>;

  [[nodiscard]] std::array<Vector, 3> rotation() const;

  UpAxis up_;
  double yaw_ = 0;
  double pitch_ = 0;
  bool orthographic_ = false;
  double shiftX_ = 0;
  double shiftY_ = 0;
  double distance_ = 4;
  std::array<double, 2> pixelShift_{};
};

}  // namespace zel::view
