#include "zel/geometry/rectangles.h"

#include "zel/core/constants.h"
#include "zel/geometry/coordinate_systems.h"
#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/detail/rectangles.h"
#include "zel/geometry/intersections.h"
#include "zel/geometry/lengths.h"
#include "zel/geometry/motions.h"
#include "zel/geometry/vectors.h"

using zel::kTolerance;

int slTransToStdRect(const RectangleD& r, RectangleD* out, float m[16]) {
  XYCoordSysD frame;
  const int result = slGenXYCoordSys(r.corner0, r.corner1, r.corner3, &frame);
  if (result == 0) {
    return 0;
  }
  slGenMatrixToLocal(frame, m);
  slTransRectangleByMatrix(r, m, out);
  return result;
}

void slTransRectangleByMatrix(const RectangleD& r, const float m[16], RectangleD* out) {
  const auto from = zel::corners(r);
  const auto to = zel::corners(*out);
  for (std::size_t i = 0; i < from.size(); ++i) {
    zel::transformPoint(m, from[i]).store(to[i]);
  }
}

int slJudgePntInRectM(const RectangleD& r, const float p[2]) {
  constexpr double kMargin = kTolerance;
  const bool inside = p[0] > -kMargin && p[0] < r.corner1[0] + kMargin && p[1] > -kMargin &&
                      p[1] < r.corner3[1] + kMargin;
  return inside ? 1 : 0;
}

int slJudgePntInRectM(const float origin[2], const float size[2], const float p[2]) {
  const auto isBetween = [=](int i) {
    return p[i] > origin[i] && p[i] < static_cast<double>(origin[i]) + size[i];
  };
  return isBetween(0) && isBetween(1) ? 1 : 0;
}

int slGetLineSegIntersectRect(const RectangleD& r, const float a[3], const float b[3],
                              float hit[2]) {
  const auto corner = zel::corners(r);
  for (std::size_t i = 0; i < corner.size(); ++i) {
    const float* start = corner[i];
    const float* end = corner[(i + 1) % corner.size()];
    float e[2]{end[0] - start[0], end[1] - start[1]};
    const double edge = slLength2(e);
    slNormalize2D(e);
    float t, s;
    if (slIntersectLines2D(start, e, a, b, &t, &s) == 1 && t < edge + kTolerance) {
      const double along = t;
      hit[0] = static_cast<float>(start[0] + along * e[0]);
      hit[1] = static_cast<float>(start[1] + along * e[1]);
      return 1;
    }
  }
  return 0;
}

void slMergeRectWithSameDir(const RectangleD& a, const RectangleD& b, RectangleD* out) {
  const RectangleD first = a;
  const RectangleD second = b;
  for (int i = 0; i < 2; ++i) {
    const float widen = (second.corner3[i] - second.corner0[i]) * 0.5F -
                        (first.corner3[i] - second.corner0[i]) * 0.5F;
    out->corner0[i] = first.corner0[i] - widen;
    out->corner1[i] = second.corner1[i];
    out->corner2[i] = second.corner2[i];
    out->corner3[i] = first.corner3[i] + widen;
  }
  out->corner1[0] = out->corner2[0] = out->corner3[0] = 0.0F;
}
