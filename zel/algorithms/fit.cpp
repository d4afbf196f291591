#include "zel/algorithms/fit.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "zel/algorithms/detail/double_vectors.h"
#include "zel/containers/point3d_arr.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/checked_lists.h"

namespace zel {
namespace {

using Matrix = std::array<Double3, 3>;

/// a + t u
Double3 along(const Double3& a, double t, const Double3& u) {
  return {a[0] + t * u[0], a[1] + t * u[1], a[2] + t * u[2]};
}

/// Turns the plane of axes p and q so that their covariance vanishes.
void rotate(Matrix& covariance, Matrix& axes, std::size_t p, std::size_t q) {
  if (covariance[p][q] == 0.0) {
    return;
  }
  const double theta = 0.5 * (covariance[q][q] - covariance[p][p]) / covariance[p][q];
  const double t = (theta < 0.0 ? -1.0 : 1.0) / (std::fabs(theta) + std::sqrt(theta * theta + 1.0));
  const double c = 1.0 / std::sqrt(t * t + 1.0);
  const double s = t * c;
  for (Double3& row : covariance) {
    const double left = row[p];
    row[p] = c * left - s * row[q];
    row[q] = s * left + c * row[q];
  }
  for (Matrix* const matrix : {&covariance, &axes}) {
    for (std::size_t column = 0; column < 3; ++column) {
      const double upper = (*matrix)[p][column];
      (*matrix)[p][column] = c * upper - s * (*matrix)[q][column];
      (*matrix)[q][column] = s * upper + c * (*matrix)[q][column];
    }
  }
}

/// Points seen along the principal axes from their mean, scaled by a power of two to about 1000.
class Normalised {
 public:
  explicit Normalised(std::span<const Float3> points) : frame(principalAxesOf(points)) {
    for (const Float3& point : points) {
      for (const float coordinate : point) {
        largest_ = std::max(largest_, std::fabs(coordinate));
      }
    }
    constexpr int kSize = 10;  // far above the tolerance of the calls that fit
    const double extent = std::sqrt(frame.variances[0]);
    unit = hasSpread(0) ? std::ldexp(1.0, std::ilogb(extent) - kSize) : 1.0;
  }

  /// Whether the points differ along an axis by more than their rounding.
  [[nodiscard]] bool hasSpread(std::size_t axis) const {
    constexpr double kTwoLastPlaces = 0x1p-22;
    constexpr double kSumRounding = 1e-14;
    const double least = kTwoLastPlaces * largest_;
    return frame.variances[axis] > least * least + kSumRounding * frame.variances[0] &&
           std::isfinite(frame.variances[axis]);
  }
  /// The points along three axes from the mean.
  [[nodiscard]] Point3DArr seenAlong(std::span<const Float3> points, const Matrix& axes) const {
    auto seen = listWithRoomFor<Point3DArr>(static_cast<int>(points.size()));
    for (const Float3& point : points) {
      const Double3 offset = {point[0] - frame.mean[0], point[1] - frame.mean[1],
                              point[2] - frame.mean[2]};
      float place[3];
      for (std::size_t axis = 0; axis < 3; ++axis) {
        place[axis] = static_cast<float>(dot(offset, axes[axis]) / unit);
      }
      append(seen, static_cast<const float*>(place));
    }
    return seen;
  }

  PrincipalAxes frame;
  double unit = 1.0;  ///< the length that is seen as 1

 private:
  float largest_ = 0.0F;
};

constexpr Matrix kWorld{Double3{1, 0, 0}, Double3{0, 1, 0}, Double3{0, 0, 1}};

/// A plane through the points as they are seen, and the points.
struct SeenPlane {
  Point3DArr points;
  Float3 normal;
  float d;
};

std::optional<SeenPlane> planeThrough(const Normalised& seen, std::span<const Float3> points) {
  if (!seen.hasSpread(1)) {
    return std::nullopt;
  }
  SeenPlane plane{seen.seenAlong(points, kWorld), {}, 0.0F};
  float direction[3];
  for (std::size_t axis = 0; axis < 3; ++axis) {
    direction[axis] = static_cast<float>(seen.frame.axes[2][axis]);
  }
  const bool isFitted =
      plane.points.GenPlaneByLeastSquareM(direction, plane.normal.data(), &plane.d) == 1;
  return isFitted ? std::optional(std::move(plane)) : std::nullopt;
}

}  // namespace

PrincipalAxes principalAxesOf(std::span<const Float3> points) {
  PrincipalAxes frame{};
  double count = 0.0;
  for (const Float3& point : points) {
    count += 1.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      frame.mean[axis] += (point[axis] - frame.mean[axis]) / count;
    }
  }
  Matrix covariance{};
  for (const Float3& point : points) {
    for (std::size_t row = 0; row < 3; ++row) {
      for (std::size_t column = 0; column < 3; ++column) {
        covariance[row][column] +=
            (point[row] - frame.mean[row]) * (point[column] - frame.mean[column]) / count;
      }
    }
  }
  Matrix axes = kWorld;
  constexpr int kSweeps = 32;  // converges quadratically; ten are plenty
  for (int sweep = 0; sweep < kSweeps; ++sweep) {
    rotate(covariance, axes, 0, 1);
    rotate(covariance, axes, 0, 2);
    rotate(covariance, axes, 1, 2);
  }
  std::array<std::size_t, 3> order{0, 1, 2};
  std::sort(order.begin(), order.end(),
            [&](std::size_t a, std::size_t b) { return covariance[a][a] > covariance[b][b]; });
  for (std::size_t k = 0; k < 3; ++k) {
    frame.axes[k] = axes[order[k]];
    frame.variances[k] = std::max(covariance[order[k]][order[k]], 0.0);
  }
  frame.axes[2] = cross(frame.axes[0], frame.axes[1]);
  return frame;
}

std::optional<FittedPlane> fitPlane(std::span<const Float3> points) {
  const Normalised seen(points);
  const auto plane = planeThrough(seen, points);
  if (!plane) {
    return std::nullopt;
  }
  FittedPlane fitted{};
  fitted.normal = {plane->normal[0], plane->normal[1], plane->normal[2]};
  fitted.d = plane->d * seen.unit - dot(fitted.normal, seen.frame.mean);
  fitted.shapeError =
      plane->points.GetShapeErrorToPlaneM(plane->normal.data(), plane->d) * seen.unit;
  return fitted;
}

std::optional<FittedLine> fitLine(std::span<const Float3> points) {
  const Normalised seen(points);
  if (!seen.hasSpread(0)) {
    return std::nullopt;
  }
  const Point3DArr alongAxes = seen.seenAlong(points, seen.frame.axes);
  constexpr float kMean[3] = {0, 0, 0};
  constexpr float kAlong[3] = {1, 0, 0};
  FittedLine fitted{};
  fitted.point = seen.frame.mean;
  fitted.direction = seen.frame.axes[0];
  fitted.shapeError = alongAxes.GetShapeErrorToLineM(kMean, kAlong) * seen.unit;
  fitted.averageDistance = alongAxes.GetAverageDistToLineM(kMean, kAlong) * seen.unit;
  return fitted;
}

std::optional<FittedCircle> fitCircle(std::span<const Float3> points) {
  const Normalised seen(points);
  const auto plane = planeThrough(seen, points);
  if (!plane) {
    return std::nullopt;
  }
  float x[3];
  float y[3];
  slOthPlane(plane->normal.data(), x, y);
  const Matrix axes{Double3{x[0], x[1], x[2]}, Double3{y[0], y[1], y[2]},
                    Double3{plane->normal[0], plane->normal[1], plane->normal[2]}};
  const Point3DArr flat = seen.seenAlong(points, axes);
  float centre[3] = {};
  float radius = 0.0F;
  if (slGenVerticalTube(flat, centre, &radius) != 1) {
    return std::nullopt;
  }
  FittedCircle fitted{};
  fitted.centre =
      along(along(seen.frame.mean, centre[0] * seen.unit, axes[0]), centre[1] * seen.unit, axes[1]);
  fitted.normal = axes[2];
  fitted.radius = radius * seen.unit;
  fitted.shapeError = flat.GetShapeErrorToCircleM(centre, radius) * seen.unit;
  return fitted;
}

}  // namespace zel
