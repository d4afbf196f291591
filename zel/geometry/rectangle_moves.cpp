#include "zel/geometry/rectangle_moves.h"

#include "zel/core/constants.h"
#include "zel/geometry/bounding_rectangles.h"
#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/detail/rectangles.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/lengths.h"
#include "zel/geometry/motions.h"
#include "zel/geometry/rectangles.h"

using zel::kTolerance;
using zel::Vec3;

namespace {

/// v shortened to `possible` of its length. @return 1 when nothing was cut.
int shorten(Vec3 v, double possible, double length, float* out) {
  if (!(length > 0.0)) {
    Vec3(0.0F, 0.0F, 0.0F).store(out);
    return 1;
  }
  const double part = possible / length;
  out[0] = static_cast<float>(part * v.x);
  out[1] = static_cast<float>(part * v.y);
  out[2] = static_cast<float>(part * v.z);
  return part >= 1.0 ? 1 : 0;
}

/// Moves a rectangle given in standard position and takes the result back to the world.
/// @param m  world to standard position
int displaceInWorld(const RectangleD& r, const float m[16], const RectangleD& local,
                    const float v[3], float out[3]) {
  float wanted[3], possible[3], toWorld[16];
  zel::transformDirection(m, v).store(wanted);
  wanted[2] = 0.0F;
  const int result = slGetStdRectMinPanDisplace(r, local, wanted, possible);
  slGetInverseMotionMatrix(m, toWorld);
  zel::transformDirection(toWorld, possible).store(out);
  return result;
}

void shift(RectangleD& r, int axis, double by) {
  for (float* corner : zel::corners(r)) {
    corner[axis] = static_cast<float>(corner[axis] + by);
  }
}

}  // namespace

int slGetStdRectMinPanDisplace(const RectangleD& r, const RectangleD& moving, const float v[3],
                               float out[3]) {
  const float length = zel::length(v);
  float possible = length;
  for (const float* corner : zel::corners(moving)) {
    const float target[3]{corner[0] + v[0], corner[1] + v[1], 0.0F};
    float hit[2];
    if (slJudgePntInRectM(r, target) == 1 ||
        slGetLineSegIntersectRect(r, corner, target, hit) == 0) {
      continue;
    }
    const float distance = slDistance2(hit, corner);
    if (distance < possible) {
      possible = distance;
    }
  }
  return shorten(v, possible, length, out);
}

int slGetRectMinPanDisplace(const RectangleD& r, const RectangleD& moving, const float v[3],
                            float out[3]) {
  RectangleD standard, local;
  float m[16];
  if (slTransToStdRect(r, &standard, m) == 0) {
    Vec3(0.0F, 0.0F, 0.0F).store(out);
    return 0;
  }
  slTransRectangleByMatrix(moving, m, &local);
  return displaceInWorld(standard, m, local, v, out);
}

int slGetStdRectMinPanDisp(const RectangleD& r, const float m[16], const RectangleD& moving,
                           const float v[3], float out[3]) {
  RectangleD local;
  slTransRectangleByMatrix(moving, m, &local);
  slCorrectRectContainError(r, &local);
  return displaceInWorld(r, m, local, v, out);
}

void slCorrectRectContainError(const RectangleD& r, RectangleD* b) {
  for (int axis = 0; axis < 2; ++axis) {
    if (b->corner0[axis] < r.corner0[axis]) {
      shift(*b, axis, static_cast<double>(r.corner0[axis]) - b->corner0[axis] + kTolerance);
    }
  }
  for (int axis = 0; axis < 2; ++axis) {
    if (b->corner2[axis] > r.corner2[axis]) {
      shift(*b, axis, static_cast<double>(r.corner2[axis]) - b->corner2[axis] - kTolerance);
    }
  }
}

int slCheckLineInRect(const RectangleD& r, const float a[3], const float b[3], const float v[3],
                      float out[3]) {
  const double length = zel::lengthD(v);
  double possible = length;
  for (const float* start : {a, b}) {
    const float end[3]{start[0] + v[0], start[1] + v[1], 0.0F};
    if (slJudgePntInRectM(r, end) == 1) {
      continue;
    }
    float hit[2]{start[0], start[1]};
    slGetLineSegIntersectRect(r, start, end, hit);
    const double distance = slDistance2(hit, start);
    if (distance < possible) {
      possible = distance;
    }
  }
  return shorten(v, possible, length, out);
}

int slCheckArcInRect(short dir, const RectangleD& r, const float a[3], const float b[3],
                     const float c[3], const float v[3], float out[3]) {
  RectangleD bounds;
  if (zel::distance(a, b) < kTolerance) {
    bounds.corner1[1] = static_cast<float>(static_cast<double>(c[1]) - zel::distance(c, a));
    slGetCircleRectangle(c, a, &bounds);
  } else {
    slGetArcRectangle(dir, a, b, c, &bounds);
  }
  return slGetStdRectMinPanDisplace(r, bounds, v, out);
}
