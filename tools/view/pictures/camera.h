#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace zel::view {

/// Which axis of the mesh points up on the screen.
enum class UpAxis { kY, kZ };

/// @return 1 or 2: the place of the axis among the coordinates.
[[nodiscard]] constexpr std::size_t axisOf(UpAxis up) { return up == UpAxis::kZ ? 2 : 1; }

/// A named direction to look from.
enum class StandardView { kFront, kBack, kRight, kLeft, kTop, kBottom, kIsometric };

/// Size of a drawing area in pixels.
struct ViewSize {
  int width;
  int height;
};

/// Where a ray begins and where it goes.
struct Ray {
  std::array<float, 3> origin;
  std::array<float, 3> direction;  ///< of any length but zero
};

/// How a scene is looked at. A scene lies within the unit sphere about the origin.
///
/// A point p of the scene stands at R (p - pivot) - (shift, distance) before an eye that looks down
/// the negative z axis, R being the turn to the present direction.
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
  /// How far before the eye the middle of the view lies; in parallel, what the view's height shows
  /// grows in step with it.
  [[nodiscard]] double distance() const { return distance_; }
  [[nodiscard]] UpAxis up() const { return up_; }
  void setUp(UpAxis up) { up_ = up; }

  /// Moves and zooms so that the points just fill the view, with a margin, from the present
  /// direction. Without points the unit sphere fills it. The scene turns about its middle again.
  void frame(std::span<const std::array<float, 3>> points, ViewSize size);
  /// Puts a point of the scene into the middle of the view; the scene turns about it from now on.
  void centreOn(const std::array<float, 3>& point);
  /// Turns the scene with a mouse drag of so many pixels, y growing downward.
  void orbit(int dx, int dy);
  /// Moves the scene so that its origin follows a mouse drag.
  /// @param dx, dy the drag as fractions of the view's height, y growing upward.
  void pan(double dx, double dy);
  /// @param factor above 1 makes the scene larger.
  void zoom(double factor);

  /// The view has another shape: what filled the shorter side goes on filling the shorter side.
  void adapt(ViewSize before, ViewSize after);

  /// The ray into the scene through a place of the view.
  /// @param x, y pixels from the upper left corner.
  [[nodiscard]] Ray rayThrough(double x, double y, ViewSize size) const;
  /// Where a point of the scene stands before the eye.
  [[nodiscard]] std::array<double, 3> inEye(const std::array<float, 3>& point) const;
  /// @return whether the eye is above a level of the scene, measured along the up axis.
  [[nodiscard]] bool isAbove(double level) const;

  /// Moves the whole picture by parts of a pixel, to the right and upward.
  void shiftPixels(double dx, double dy) { pixelShift_ = {dx, dy}; }

  /// Projection for the current OpenGL context.
  void loadProjection(ViewSize size) const;
  /// Model view for the current OpenGL context.
  void loadModelView() const;

 private:
  using Vector = std::array<double, 3>;

  [[nodiscard]] std::array<Vector, 3> rotation() const;
  /// A direction before the eye, as the scene has it.
  [[nodiscard]] Vector inScene(const Vector& direction) const;

  UpAxis up_;
  double yaw_ = 0;
  double pitch_ = 0;
  bool orthographic_ = false;
  Vector pivot_{};
  double shiftX_ = 0;
  double shiftY_ = 0;
  double distance_ = 4;
  std::array<double, 2> pixelShift_{};
};

}  // namespace zel::view
