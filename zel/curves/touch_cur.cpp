#include "zel/curves/touch_cur.h"

#include "zel/core/constants.h"
#include "zel/curves/detail/touch_cur.h"

using zel::kFloatMark;
using zel::Vec3;

namespace {

bool isLine(int type) {
  return type == zel::kCurveLine || type == zel::kCurveRigidLine || type == zel::kCurveOtherLine;
}

bool runsFromStart(const TouchCurD& c) {
  return isLine(c.type) || c.direction == zel::kCurveForward;
}

enum class End { kStart, kFinish };

/// The stored point where travel begins or ends.
template <class Record>
auto& travelPoint(Record& c, End end) {
  return runsFromStart(c) == (end == End::kStart) ? c.startPnt : c.endPnt;
}

int getTravelPoint(const TouchCurD& c, End end, float p[3]) {
  Vec3(travelPoint(c, end)).store(p);
  return 1;
}

int setTravelPoint(TouchCurD& c, End end, Vec3 p) {
  p.store(travelPoint(c, end));
  return 1;
}

int setTravelPointOfExtent(TouchCurD& c, End end, Vec3 p) {
  if (!zel::isCollapsed(c)) {
    return setTravelPoint(c, end, p);
  }
  p.store(c.startPnt);
  p.store(c.endPnt);
  return 0;
}

}  // namespace

int slInitTouchCurD(TouchCurD* c) {
  *c = {.type = zel::kNoIndex,
        .direction = zel::kNoIndex,
        .centre = {kFloatMark, kFloatMark, kFloatMark},
        .startPnt = {kFloatMark, kFloatMark, kFloatMark},
        .endPnt = {kFloatMark, kFloatMark, kFloatMark},
        .auxPnt1 = {kFloatMark, kFloatMark, kFloatMark},
        .auxPnt2 = {kFloatMark, kFloatMark, kFloatMark},
        .radius1 = kFloatMark,
        .radius2 = kFloatMark,
        .startAng = kFloatMark,
        .endAng = kFloatMark};
  return 1;
}

int slSetLine(TouchCurD* c, int type, const float* p1, const float* p2) {
  const Vec3 start = p1;
  const Vec3 end = p2;
  c->type = type;
  start.store(c->startPnt);
  end.store(c->endPnt);
  return 1;
}

int slSetArc(TouchCurD* c, int type, int direction, const float* p1, const float* centre,
             const float* p2, float radius, float startAng, float endAng) {
  const Vec3 middle = centre;
  slSetLine(c, type, p1, p2);
  middle.store(c->centre);
  c->direction = direction;
  c->radius1 = radius;
  c->radius2 = radius;
  c->startAng = startAng;
  c->endAng = endAng;
  return 1;
}

int slTouchCurDCopy(const TouchCurD& from, TouchCurD* to) {
  *to = from;
  return 1;
}

int slGetStartPnt(const TouchCurD* c, float p[3]) { return getTravelPoint(*c, End::kStart, p); }

int slGetCurveStartPnt(const TouchCurD* c, float p[3]) { return slGetStartPnt(c, p); }

int slGetCurveEndPnt(const TouchCurD* c, float p[3]) { return getTravelPoint(*c, End::kFinish, p); }

int GetCurveEndPnt(const TouchCurD* c, float p[3]) { return slGetCurveEndPnt(c, p); }

int slSetCurveStartPnt(TouchCurD* c, const float p[3]) {
  return setTravelPoint(*c, End::kStart, p);
}

int slSetCurveEndPnt(TouchCurD* c, const float p[3]) { return setTravelPoint(*c, End::kFinish, p); }

int slSetStartPnt(TouchCurD* c, const float p[3]) {
  return setTravelPointOfExtent(*c, End::kStart, p);
}

int slSetEndPnt(TouchCurD* c, const float p[3]) {
  return setTravelPointOfExtent(*c, End::kFinish, p);
}
