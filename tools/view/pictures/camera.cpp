#include "tools/view/pictures/camera.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace zel::view {
namespace {

// Half of the vertical field of view, 15 degrees: close to what a long lens shows.
const double kTanHalfView = std::tan(std::numbers::pi / 12);
constexpr double kMargin = 1.08;
constexpr double kDegreesPerPixel = 0.4;
constexpr double kMinDistance = 1e-3;
constexpr double kMaxDistance = 1e3;
// The unit sphere that holds the scene, and its shadow and grid on the ground around it.
constexpr double kSceneRadius = 1.95;

double radians(double degrees) { return degrees * std::numbers::pi / 180; }

// Greatest extent of points along an axis, seen in parallel (slope 0) or in perspective.
struct Extent {
  double low = -std::numeric_limits<double>::infinity();   // of -x + slope * z
  double high = -std::numeric_limits<double>::infinity();  // of x + slope * z

  void include(double x, double depth) {
    high = std::max(high, x + depth);
    low = std::max(low, -x + depth);
  }
  [[nodiscard]] double middle() const { return (high - low) / 2; }
  [[nodiscard]] double half() const { return (high + low) / 2; }
};

}  // namespace

void Camera::setAngles(double yaw, double pitch) {
  yaw_ = std::fmod(yaw, 360.0);
  pitch_ = std::clamp(pitch, -90.0, 90.0);
}

void Camera::setView(StandardView view) {
  // The isometric view shows the three axes equally long.
  static const double kIsometricPitch = std::atan(std::sqrt(0.5)) * 180 / std::numbers::pi;
  switch (view) {
    case StandardView::kFront:
      return setAngles(0, 0);
    case StandardView::kBack:
      return setAngles(180, 0);
    case StandardView::kRight:
      return setAngles(90, 0);
    case StandardView::kLeft:
      return setAngles(-90, 0);
    case StandardView::kTop:
      return setAngles(0, 90);
    case StandardView::kBottom:
      return setAngles(0, -90);
    case StandardView::kIsometric:
      return setAngles(45, kIsometricPitch);
  }
}

void Camera::setOppositeView() { setAngles(yaw_ + 180, -pitch_); }

std::array<Camera::Vector, 3> Camera::rotation() const {
  const double cy = std::cos(radians(yaw_));
  const double sy = std::sin(radians(yaw_));
  const double cp = std::cos(radians(pitch_));
  const double sp = std::sin(radians(pitch_));
  std::array<Vector, 3> rows{{{cy, 0, -sy}, {-sp * sy, cp, -sp * cy}, {cp * sy, sp, cp * cy}}};
  if (up_ == UpAxis::kZ) {
    // A mesh that stands on its xy plane is first laid back: (x, y, z) becomes (x, z, -y).
    for (Vector& row : rows) {
      row = {row[0], -row[2], row[1]};
    }
  }
  return rows;
}

// A point lies inside a side plane of the view when x + slope z <= slope distance + shift, so the
// tightest view follows from the greatest left sides on either side of each axis.
void Camera::frame(std::span<const std::array<float, 3>> points, ViewSize size) {
  const double tanY = kTanHalfView / kMargin;
  const double tanX = tanY * size.width / size.height;
  if (points.empty()) {
    pivot_ = {};
    shiftX_ = shiftY_ = 0;
    distance_ = 1 / std::min(tanX, tanY);
    return;
  }
  Extent x;
  Extent y;
  pivot_ = {};
  shiftX_ = shiftY_ = distance_ = 0;
  for (const auto& p : points) {
    const Vector q = inEye(p);
    const double depth = orthographic_ ? 0 : q[2];
    x.include(q[0], depth * tanX);
    y.include(q[1], depth * tanY);
  }
  shiftX_ = x.middle();
  shiftY_ = y.middle();
  distance_ = std::clamp(std::max(x.half() / tanX, y.half() / tanY), kMinDistance, kMaxDistance);
}

void Camera::centreOn(const std::array<float, 3>& point) {
  distance_ = std::clamp(-inEye(point)[2], kMinDistance, kMaxDistance);
  std::copy(point.begin(), point.end(), pivot_.begin());
  shiftX_ = shiftY_ = 0;
}

void Camera::adapt(ViewSize before, ViewSize after) {
  const auto shorterSide = [](ViewSize size) {
    return std::min(1.0, static_cast<double>(size.width) / size.height);
  };
  zoom(shorterSide(after) / shorterSide(before));
}

std::array<double, 3> Camera::inEye(const std::array<float, 3>& point) const {
  const std::array<Vector, 3> turn = rotation();
  Vector placed{-shiftX_, -shiftY_, -distance_};
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t k = 0; k < 3; ++k) {
      placed[row] += turn[row][k] * (static_cast<double>(point[k]) - pivot_[k]);
    }
  }
  return placed;
}

Camera::Vector Camera::inScene(const Vector& direction) const {
  const std::array<Vector, 3> turn = rotation();
  Vector turned{};
  for (std::size_t k = 0; k < 3; ++k) {
    turned[k] = turn[0][k] * direction[0] + turn[1][k] * direction[1] + turn[2][k] * direction[2];
  }
  return turned;
}

Ray Camera::rayThrough(double x, double y, ViewSize size) const {
  const double right = (2 * x - size.width) / size.height * kTanHalfView;
  const double upward = (size.height - 2 * y) / size.height * kTanHalfView;
  Vector from{shiftX_, shiftY_, distance_};
  Vector along{right, upward, -1};
  if (orthographic_) {
    // From before the scene, wherever the eye is; near it, so that no digits are lost.
    from = {shiftX_ + right * distance_, shiftY_ + upward * distance_,
            distance_ + inEye({})[2] + 2 * kSceneRadius};
    along = {0, 0, -1};
  }
  const Vector origin = inScene(from);
  const Vector direction = inScene(along);
  Ray ray{};
  for (std::size_t k = 0; k < 3; ++k) {
    ray.origin[k] = static_cast<float>(origin[k] + pivot_[k]);
    ray.direction[k] = static_cast<float>(direction[k]);
  }
  return ray;
}

bool Camera::isAbove(double level) const {
  const std::size_t axis = axisOf(up_);
  const Vector eye = inScene(orthographic_ ? Vector{0, 0, 1} : Vector{shiftX_, shiftY_, distance_});
  return orthographic_ ? eye[axis] > 0 : eye[axis] + pivot_[axis] > level;
}

void Camera::orbit(int dx, int dy) {
  setAngles(yaw_ - dx * kDegreesPerPixel, pitch_ + dy * kDegreesPerPixel);
}

void Camera::pan(double dx, double dy) {
  const double visibleHeight = 2 * distance_ * kTanHalfView;
  shiftX_ -= dx * visibleHeight;
  shiftY_ -= dy * visibleHeight;
}

void Camera::zoom(double factor) {
  if (factor > 0) {
    distance_ = std::clamp(distance_ / factor, kMinDistance, kMaxDistance);
  }
}

void Camera::loadProjection(ViewSize size) const {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glTranslated(2 * pixelShift_[0] / size.width, 2 * pixelShift_[1] / size.height, 0);
  const double aspect = static_cast<double>(size.width) / size.height;
  // Planes about the scene, wherever the point is that it turns about.
  const double depth = -inEye({})[2];
  const double farPlane = std::max(depth + kSceneRadius, distance_ / 100);
  if (orthographic_) {
    const double halfHeight = distance_ * kTanHalfView;
    glOrtho(-halfHeight * aspect, halfHeight * aspect, -halfHeight, halfHeight,
            depth - kSceneRadius, farPlane);
  } else {
    const double nearPlane = std::max(depth - kSceneRadius, std::min(0.01, distance_ / 2));
    const double halfHeight = nearPlane * kTanHalfView;
    glFrustum(-halfHeight * aspect, halfHeight * aspect, -halfHeight, halfHeight, nearPlane,
              farPlane);
  }
  glMatrixMode(GL_MODELVIEW);
}

void Camera::loadModelView() const {
  const std::array<Vector, 3> turn = rotation();
  const Vector origin = inEye({});
  const std::array<double, 16> columns{
      turn[0][0], turn[1][0], turn[2][0], 0, turn[0][1], turn[1][1], turn[2][1], 0,
      turn[0][2], turn[1][2], turn[2][2], 0, origin[0],  origin[1],  origin[2],  1};
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(columns.data());
}

}  // namespace zel::view
