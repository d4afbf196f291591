#include "zel/geometry/bounding_rectangles.h"

#include <algorithm>
#include <cmath>

#include "zel/core/constants.h"
#include "zel/geometry/circle_angles.h"
#include "zel/geometry/detail/rectangles.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/vectors.h"

using zel::deadAbs;
using zel::kTolerance;
using zel::kTwoPi;

namespace {

constexpr short kCounterClockwise = 147;
/// A turn, in quarters.
constexpr int kFullTurn = 4;

/// The stretch of angles that an arc covers, whichever way it runs.
struct Sweep {
  float low;
  float high;

  bool passes(double angle) const {
    return low < static_cast<float>(angle + kTolerance) &&
           high > static_cast<float>(angle - kTolerance);
  }
  /// Whether it passes a half axis, or the same one a turn away.
  /// @param quarter  quarter turns from +x to the half axis
  /// @param turn     quarter turns to the other one: 4 or -4
  bool passesAxis(int quarter, int turn) const {
    const auto angleOf = [](int quarters) {
      return static_cast<float>(quarters * static_cast<double>(zel::kHalfPi));
    };
    return passes(angleOf(quarter)) || passes(angleOf(quarter + turn));
  }
};

/// Extent of an arc from its end points and the half axes that it passes.
void boundArc(const float* s, const float* e, const Sweep& sweep, int turn, float r, float* min,
              float* max) {
  const float low[2]{std::min(s[0], e[0]), std::min(s[1], e[1])};
  const float high[2]{std::max(s[0], e[0]), std::max(s[1], e[1])};
  for (int axis = 0; axis < 2; ++axis) {
    min[axis] = sweep.passesAxis(axis + 2, turn) ? -r : low[axis];
    max[axis] = sweep.passesAxis(axis, turn) ? r : high[axis];
  }
}

}  // namespace

void slGetCircleRectangle(const float c[3], const float p[3], RectangleD* out) {
  const float r = zel::distance(c, p);
  const float maxX = c[0] + r;
  const float maxY = c[1] + r;
  out->corner0[0] = c[0] - r;
  out->corner0[1] = c[1] - r;
  out->corner1[0] = out->corner2[0] = out->corner3[0] = maxX;
  out->corner2[1] = out->corner3[1] = maxY;
  for (float* corner : zel::corners(*out)) {
    corner[2] = 0.0F;
  }
}

void slGetArcRectangle(short dir, const float a[3], const float b[3], const float c[3],
                       RectangleD* out) {
  const float s[2]{a[0] - c[0], a[1] - c[1]};
  const float e[2]{b[0] - c[0], b[1] - c[1]};
  const float r = zel::length({s[0], s[1], e[0]});
  const auto bound = dir == kCounterClockwise ? slGetCCWArcRectangle : slGetCWArcRectangle;
  float min[2], max[2];
  bound(s, e, slGetCentralAngle(a), slGetCentralAngle(b), r, min, max);
  *out = zel::rectangleBetween(c[0] + min[0], c[1] + min[1], c[0] + max[0], c[1] + max[1]);
}

void slGetCCWArcRectangle(const float s[2], const float e[2], float startAng, float endAng, float r,
                          float min[2], float max[2]) {
  if (startAng > endAng) {
    endAng += kTwoPi;
  }
  boundArc(s, e, {startAng, endAng}, kFullTurn, r, min, max);
}

void slGetCWArcRectangle(const float s[2], const float e[2], float startAng, float endAng, float r,
                         float min[2], float max[2]) {
  if (startAng < endAng) {
    endAng -= kTwoPi;
  }
  boundArc(s, e, {endAng, startAng}, -kFullTurn, r, min, max);
}

void slGetSphereProjRect(const float c[3], float r, const float dir[3], RectangleD* out) {
  if (static_cast<double>(deadAbs(dir[0])) + deadAbs(dir[1]) < kTolerance) {
    *out = zel::rectangleBetween(c[0] - r, c[1] - r, c[0] + r, c[1] + r);
    return;
  }
  float u[2]{dir[0], dir[1]};
  slNormalize2D(u);
  const double x = c[0], y = c[1];
  const auto corner = [&](double along, double across, float* p) {
    p[0] = static_cast<float>(x + along * u[0] - across * u[1]);
    p[1] = static_cast<float>(y + along * u[1] + across * u[0]);
    p[2] = 0.0F;
  };
  corner(-r, -r, out->corner0);
  corner(r, -r, out->corner1);
  corner(r, r, out->corner2);
  corner(-r, r, out->corner3);
}

void slGetCylinderProjRect(const float* base, const float* axis, float radius, float length,
                           RectangleD* out) {
  float min[2], max[2];
  for (int i = 0; i < 2; ++i) {
    const double start = base[i];
    const double end = start + static_cast<double>(length) * axis[i];
    // For a unit axis this is sqrt(1 - axis[i]^2), without its loss of digits near the axis.
    const double side = std::fabs(static_cast<double>(radius)) *
                        std::hypot(static_cast<double>(axis[1 - i]), static_cast<double>(axis[2]));
    min[i] = static_cast<float>(std::min(start, end) - side);
    max[i] = static_cast<float>(std::max(start, end) + side);
  }
  *out = zel::rectangleBetween(min[0], min[1], max[0], max[1]);
}
