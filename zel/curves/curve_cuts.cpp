#include <cmath>
#include <utility>

#include "zel/core/constants.h"
#include "zel/curves/detail/touch_cur.h"
#include "zel/geometry/scalars.h"

using zel::deadAbs;
using zel::deadAbsF;
using zel::kTolerance;
using zel::kTwoPi;
using zel::roundToFloat;
using zel::Vec3;

namespace {

/// Beyond this part of the radius a line is not said to cross the circle.
constexpr double kCrossingBound = 0.9999000000025262;  // 3FEFFF2E48E90000

/// Collects crossings in the layout of slFindIntPnt(): two points, then their parameters.
class Crossings {
 public:
  Crossings(float (*out)[3], int* count) : out_(out), count_(count) { *count_ = 0; }

  void add(Vec3 p) { p.store(out_[(*count_)++]); }
  void add(Vec3 p, double parameter) {
    out_[2][*count_] = roundToFloat(parameter);
    add(p);
  }

 private:
  float (*out_)[3];
  int* count_;
};

/// z of the line through the record's ends at x, the sum starting from the start's z.
double climbTo(const TouchCurD& line, float x) {
  const double rise = static_cast<double>(line.endPnt[2]) - line.startPnt[2];
  const double run = static_cast<double>(line.endPnt[0]) - line.startPnt[0];
  return rise * (static_cast<double>(x) - line.startPnt[0]) / run;
}

void crossLine(const TouchCurD& line, float x, Crossings& crossings) {
  const double before = static_cast<double>(line.startPnt[0]) - x;
  const double behind = static_cast<double>(line.endPnt[0]) - x;
  if (deadAbsF(before) < kTolerance) {
    crossings.add({x, line.startPnt[1], line.startPnt[2]}, 0.0);
  } else if (deadAbsF(behind) < kTolerance) {
    crossings.add({x, line.endPnt[1], line.endPnt[2]}, 1.0);
  } else if (before * behind < -kTolerance) {
    crossings.add({x, line.startPnt[1], roundToFloat(line.startPnt[2] + climbTo(line, x))});
  }
}

bool lieOnArc(const TouchCurD& arc, double angle) {
  return angle >= static_cast<double>(arc.startAng) - kTolerance &&
         angle <= static_cast<double>(arc.endAng) + kTolerance;
}

void addIfOnArc(const TouchCurD& arc, double angle, Crossings& crossings) {
  if (!lieOnArc(arc, angle)) {
    angle += kTwoPi;
    if (!lieOnArc(arc, angle)) {
      return;
    }
  }
  crossings.add({roundToFloat(arc.centre[0] + arc.radius1 * std::sin(angle)), arc.centre[1],
                 roundToFloat(arc.centre[2] + arc.radius1 * std::cos(angle))},
                angle);
}

void crossArc(TouchCurD& arc, float x, Crossings& crossings) {
  if (static_cast<double>(arc.startAng) - kTolerance > arc.endAng) {
    arc.endAng += kTwoPi;
  }
  const double part = (static_cast<double>(x) - arc.centre[0]) / arc.radius1;
  if (!(deadAbsF(part) < kCrossingBound)) {
    return;
  }
  double first = zel::kHalfPi - slAcos(std::fabs(part));
  double second = zel::kPi - first;
  if (part < 0.0) {
    first = kTwoPi - first;
    second = kTwoPi - second;
    std::swap(first, second);
  }
  addIfOnArc(arc, first, crossings);
  addIfOnArc(arc, second, crossings);
}

}  // namespace

void slProjToLineAlongXOnXZ(const float a[3], const float b[3], const float p[3], float out[3]) {
  const double rise = static_cast<double>(b[2]) - a[2];
  if (deadAbsF(rise) > kTolerance) {
    const double k = (static_cast<double>(p[2]) - a[2]) / rise;
    const Vec3 onLine{roundToFloat((1.0 - k) * a[0] + k * b[0]), 0.0F,
                      roundToFloat((1.0 - k) * a[2] + k * b[2])};
    onLine.store(out);
    return;
  }
  const bool endIsNearer = deadAbs(b[0] - p[0]) <= deadAbs(a[0] - p[0]);
  Vec3(endIsNearer ? b : a).store(out);
}

int slFindIntPnt(TouchCurD* c, float x, float (*out)[3], int* count) {
  Crossings crossings(out, count);
  if (c->type == zel::kCurveLine) {
    crossLine(*c, x, crossings);
  } else if (c->type == zel::kCurveArcZx) {
    crossArc(*c, x, crossings);
  }
  return 1;
}

int slZxIntCur(const TouchCurD* c, float x, float z, int sense, TouchCurD* out) {
  if (c->type != zel::kCurveLine && c->type != zel::kCurveOtherLine) {
    return 0;
  }
  const double before = static_cast<double>(c->startPnt[0]) - x;
  const double behind = static_cast<double>(c->endPnt[0]) - x;
  const bool crosses = !(before * behind >= -kTolerance);
  if (!crosses && !(deadAbsF(before) < kTolerance)) {
    return 0;
  }
  const double height = crosses ? climbTo(*c, x) + c->startPnt[2] : c->startPnt[2];
  if ((height - z) * sense > kTolerance) {
    out->type = c->type;
    out->startPnt[0] = x;
    out->startPnt[2] = roundToFloat(height);
    out->endPnt[0] = c->endPnt[0];
    out->endPnt[2] = c->endPnt[2];
  }
  return 0;
}
