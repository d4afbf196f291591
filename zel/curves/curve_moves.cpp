#include "zel/core/constants.h"
#include "zel/curves/detail/touch_cur.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/lengths.h"
#include "zel/geometry/scalars.h"
#include "zel/geometry/vectors.h"

using zel::dot;
using zel::kTolerance;
using zel::kTwoPi;
using zel::Vec3;
using zel::Vec3d;

namespace {

constexpr int kCarryLineAlong = 55;

void shift(Vec3d d, float p[3]) { zel::sum(p, d).store(p); }

float mirrored(float z, float axisZ) { return zel::roundToFloat(2.0 * axisZ - z); }

/// Keeps the angles of a mirrored arc in the order of its direction.
void orderAngles(TouchCurD& arc) {
  if (arc.direction == zel::kCurveForward && arc.startAng > arc.endAng) {
    arc.endAng += kTwoPi;
  } else if (arc.direction == zel::kCurveBackward && arc.startAng < arc.endAng) {
    arc.startAng += kTwoPi;
  }
}

int startLineAt(TouchCurD& line, bool carryAlong, Vec3 p, float* out) {
  if (carryAlong) {
    shift(zel::difference(p, line.startPnt), line.endPnt);
  }
  if (zel::isCollapsed(line)) {
    p.store(line.endPnt);
  }
  p.store(line.startPnt);
  Vec3(line.endPnt).store(out);
  return 1;
}

int startArcAt(TouchCurD& arc, Vec3 p, float* out) {
  const bool forward = arc.direction == zel::kCurveForward;
  float* start = forward ? arc.startPnt : arc.endPnt;
  float* finish = forward ? arc.endPnt : arc.startPnt;
  const Vec3d d = zel::difference(p, start);
  p.store(start);
  shift(d, finish);
  shift(d, arc.centre);
  Vec3(finish).store(out);
  return 1;
}

void offsetLine(float dist, Vec3 ref, TouchCurD& line) {
  float chord[3];
  slGetNormalVectBtPnts(line.startPnt, line.endPnt, chord);
  const Vec3 d = chord;
  Vec3 aside = zel::cross(zel::cross(d, ref), d);
  if (zel::normalize(aside)) {
    const float step[3]{dist * aside.x, dist * aside.y, dist * aside.z};
    slTouchCurDMove(step, &line);
  }
}

void offsetArc(float dist, Vec3 ref, TouchCurD& arc) {
  const Vec3 radius = Vec3(arc.startPnt) - Vec3(arc.centre);
  const int side = slSign(zel::roundToFloat(dot(radius, ref)));
  const double factor = static_cast<double>(side) * dist / arc.radius1;
  zel::along(arc.startPnt, factor, radius).store(arc.startPnt);
  const Vec3d toEnd = zel::difference(arc.endPnt, arc.centre);
  shift({factor * toEnd.x, factor * toEnd.y, factor * toEnd.z}, arc.endPnt);
  arc.radius1 += static_cast<float>(side) * dist;
}

}  // namespace

void slTouchCurDMove(const float d[3], TouchCurD* c) {
  const Vec3d step{d[0], d[1], d[2]};
  shift(step, c->startPnt);
  shift(step, c->endPnt);
  if (c->type != zel::kCurveLine) {
    shift(step, c->centre);
  }
}

int slTouchCurDMirror(TouchCurD* c, const float a[3], int mode) {
  if (mode != 0) {
    return 0;
  }
  const float axisZ = a[2];
  c->startPnt[2] = mirrored(c->startPnt[2], axisZ);
  c->endPnt[2] = mirrored(c->endPnt[2], axisZ);
  if (c->type == zel::kCurveArc) {
    c->centre[2] = mirrored(c->centre[2], axisZ);
    const bool forward = c->direction == zel::kCurveForward;
    c->direction = forward ? zel::kCurveBackward : zel::kCurveForward;
    slMirrorAngleAboutVerticalAxis(&c->startAng);
    slMirrorAngleAboutVerticalAxis(&c->endAng);
    orderAngles(*c);
  }
  return 0;
}

int slTouchCurTransCoord(TouchCurD* c, int mode, const float* /*ref*/, const float* p, float* out) {
  if (c->type == zel::kCurveLine) {
    return startLineAt(*c, mode == kCarryLineAlong, p, out);
  }
  if (c->type >= zel::kCurveArcXy && c->type <= zel::kCurveHelixZx) {
    return startArcAt(*c, p, out);
  }
  Vec3(p).store(out);
  return 0;
}

void slTouchCurDOffset(float dist, const float* ref, TouchCurD* c) {
  if (c->type == zel::kCurveLine || c->type == zel::kCurveOtherLine) {
    offsetLine(dist, ref, *c);
  } else if (c->type == zel::kCurveArc) {
    offsetArc(dist, ref, *c);
  }
}

int slCalCirPnt(const float centre[2], float r, float p[2]) {
  const float cx = centre[0];
  const float cy = centre[1];
  const float d = slDistance2(centre, p);
  if (d >= kTolerance) {
    p[0] = zel::roundToFloat(cx + (static_cast<double>(p[0]) - cx) * r / d);
    p[1] = zel::roundToFloat(cy + (static_cast<double>(p[1]) - cy) * r / d);
    return 1;
  }
  p[0] = cx + r;
  p[1] = cy;
  return 0;
}
