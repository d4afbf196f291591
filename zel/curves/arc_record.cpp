#include "zel/core/constants.h"
#include "zel/curves/detail/touch_cur.h"
#include "zel/geometry/lengths.h"

using zel::deadAbs;
using zel::kTolerance;
using zel::kTwoPi;
using zel::roundToFloat;
using zel::Vec3;

namespace {

/// Coordinates of an arc's plane: its angles run from axis u toward axis v.
struct PlaneAxes {
  int u, v, normal;
};

/// @return the axes of types 154, 155 and 156.
PlaneAxes axesOf(int type) {
  const int u = type - zel::kCurveArcXy;
  return {u, (u + 1) % 3, (u + 2) % 3};
}

float angleOf(const TouchCurD& arc, const float p[3], PlaneAxes axes) {
  return slGetArcAng2(arc.centre[axes.u], arc.centre[axes.v], p[axes.u], p[axes.v], arc.radius1);
}

/// Whether angles that lie close together mean nearly a full turn, not a short arc.
bool isNearlyFullTurn(const TouchCurD& arc, PlaneAxes axes) {
  const float start[2]{arc.startPnt[axes.u], arc.startPnt[axes.v]};
  const float end[2]{arc.endPnt[axes.u], arc.endPnt[axes.v]};
  const float chord = slDistance2(start, end);
  if (chord < kTolerance || !(arc.radius1 > kTolerance)) {
    return true;
  }
  const auto ratio = [](float to, float from, float divisor) {
    return roundToFloat((static_cast<double>(to) - from) / divisor);
  };
  const float radius[2]{ratio(start[0], arc.centre[axes.u], arc.radius1),
                        ratio(start[1], arc.centre[axes.v], arc.radius1)};
  const float along[2]{ratio(end[0], start[0], chord), ratio(end[1], start[1], chord)};
  return static_cast<double>(radius[0]) * along[1] - static_cast<double>(radius[1]) * along[0] <
         kTolerance;
}

void setAngles(TouchCurD& arc, PlaneAxes axes) {
  arc.startAng = angleOf(arc, arc.startPnt, axes);
  arc.endAng = angleOf(arc, arc.endPnt, axes);
  const bool farApart = deadAbs(arc.endAng - arc.startAng) >= zel::kSixDegrees;
  if (farApart ? arc.endAng < arc.startAng : isNearlyFullTurn(arc, axes)) {
    arc.endAng += kTwoPi;
  }
  if (arc.type == zel::kCurveArcZx &&
      !(static_cast<double>(arc.startAng) + kTolerance < arc.endAng)) {
    arc.endAng += kTwoPi;
  }
}

/// Turns an arc that climbs along its plane's normal into a helix.
void setClimb(TouchCurD& arc, int helixType, int normal) {
  const double climb = static_cast<double>(arc.endPnt[normal]) - arc.startPnt[normal];
  if (zel::deadAbsF(climb) > kTolerance) {
    arc.type = helixType;
    arc.radius2 = roundToFloat(climb * kTwoPi / (static_cast<double>(arc.endAng) - arc.startAng));
  }
}

}  // namespace

int slSetArcPara(TouchCurD* c, const float* p1, const float* p2, const float* centre, float r) {
  const Vec3 first = p1;
  const Vec3 last = p2;
  const Vec3 middle = centre;
  const bool forward = c->direction == zel::kCurveForward;
  (forward ? first : last).store(c->startPnt);
  (forward ? last : first).store(c->endPnt);
  middle.store(c->centre);
  c->radius1 = r;
  if (c->type < zel::kCurveArcXy || c->type > zel::kCurveArcZx) {
    return 0;
  }
  const PlaneAxes axes = axesOf(c->type);
  setAngles(*c, axes);
  if (c->type == zel::kCurveArcYz) {
    setClimb(*c, zel::kCurveHelixYz, axes.normal);
  } else if (c->type == zel::kCurveArcZx) {
    setClimb(*c, zel::kCurveHelixZx, axes.normal);
  }
  return 1;
}
