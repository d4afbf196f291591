#include "tools/zel/point_fit.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zel::program {

namespace {

using Matrix = std::array<Vector, 3>;

Point rounded(const Vector& v) {
  return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

template <class Visit>
void forEachPoint(const Point3DArr& points, Visit visit) {
  float point[3];
  int slot = 0;
  for (int found = points.GetFirstM(point, &slot); found > 0;
       found = points.GetNextM(point, &slot, slot)) {
    visit(Vector{point[0], point[1], point[2]});
  }
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
  for (Vector& row : covariance) {
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

bool hasSpread(const PrincipalAxes& frame, std::size_t axis) {
  // Below this share of the largest coordinate, spread is the rounding of floats.
  constexpr double kFloatRounding = 1e-12;
  const double scale = frame.variances[0] + frame.mean[0] * frame.mean[0] +
                       frame.mean[1] * frame.mean[1] + frame.mean[2] * frame.mean[2];
  return frame.variances[axis] > kFloatRounding * scale;
}

}  // namespace

PrincipalAxes principalAxesOf(const Point3DArr& points) {
  PrincipalAxes frame{};
  double count = 0.0;
  forEachPoint(points, [&](const Vector& point) {
    count += 1.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      frame.mean[axis] += (point[axis] - frame.mean[axis]) / count;
    }
  });
  Matrix covariance{};
  forEachPoint(points, [&](const Vector& point) {
    for (std::size_t row = 0; row < 3; ++row) {
      for (std::size_t column = 0; column < 3; ++column) {
        covariance[row][column] +=
            (point[row] - frame.mean[row]) * (point[column] - frame.mean[column]) / count;
      }
    }
  });
  Matrix axes{Vector{1, 0, 0}, Vector{0, 1, 0}, Vector{0, 0, 1}};
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

bool fitPlane(const Point3DArr& points, FittedPlane& plane) {
  const PrincipalAxes frame = principalAxesOf(points);
  if (!hasSpread(frame, 1)) {
    return false;
  }
  // About their own mean the sums of the fit stay well conditioned wherever the points lie.
  Point3DArr centred(points);
  const Point mean = rounded(frame.mean);
  const XYCoordSysD atMean{{mean[0], mean[1], mean[2]}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  centred.TransToLocalCoordSysM(atMean);
  const Point direction = rounded(frame.axes[2]);
  float d = 0.0F;
  if (centred.GenPlaneByLeastSquareM(direction.data(), plane.normal.data(), &d) != 1) {
    return false;
  }
  const double shift = static_cast<double>(plane.normal[0]) * mean[0] +
                       static_cast<double>(plane.normal[1]) * mean[1] +
                       static_cast<double>(plane.normal[2]) * mean[2];
  plane.d = static_cast<float>(d - shift);
  plane.shapeError = centred.GetShapeErrorToPlaneM(plane.normal.data(), d);
  return true;
}

bool fitLine(const Point3DArr& points, FittedLine& line) {
  const PrincipalAxes frame = principalAxesOf(points);
  if (!hasSpread(frame, 0)) {
    return false;
  }
  line.point = rounded(frame.mean);
  line.direction = rounded(frame.axes[0]);
  Point second{};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    second[axis] = line.point[axis] + line.direction[axis];
  }
  line.shapeError = points.GetShapeErrorToLineM(line.point.data(), second.data());
  line.averageDistance = points.GetAverageDistToLineM(line.point.data(), line.direction.data());
  return true;
}

bool fitCircle(const Point3DArr& points, FittedCircle& circle) {
  FittedPlane plane{};
  if (!fitPlane(points, plane)) {
    return false;
  }
  const PrincipalAxes frame = principalAxesOf(points);
  XYCoordSysD local{};
  std::copy_n(rounded(frame.mean).data(), 3, local.origin);
  std::copy_n(plane.normal.data(), 3, local.zAxis);
  slOthPlane(local.zAxis, local.xAxis, local.yAxis);
  Point3DArr flat(points);
  flat.TransToLocalCoordSysM(local);
  float centre[2];
  if (slGenVerticalTube(flat, centre, &circle.radius) != 1) {
    return false;
  }
  for (std::size_t axis = 0; axis < 3; ++axis) {
    circle.centre[axis] =
        local.origin[axis] + centre[0] * local.xAxis[axis] + centre[1] * local.yAxis[axis];
  }
  circle.normal = plane.normal;
  circle.shapeError = points.GetShapeErrorToCircleM(circle.centre.data(), circle.radius);
  return true;
}

}  // namespace zel::program
