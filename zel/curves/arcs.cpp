#include "zel/curves/arcs.h"

#include <cmath>

#include "zel/core/constants.h"
#include "zel/curves/detail/touch_cur.h"
#include "zel/geometry/detail/circle_angles.h"
#include "zel/geometry/vectors.h"

using zel::deadAbs;
using zel::deadAbsF;
using zel::kTolerance;
using zel::kTwoPi;
using zel::root;
using zel::roundToFloat;
using zel::Vec3;

namespace {

/// A chord turned to its left or right by a right angle.
struct Chord {
  float a, b;  ///< turned chord
  double midX, midY;
  double half;  ///< half its length
};

Chord turnedChord(bool toLeft, float x1, float y1, float x2, float y2) {
  const double side = toLeft ? 1.0 : -1.0;
  Chord chord{};
  chord.a = roundToFloat((static_cast<double>(y1) - y2) * side);
  chord.b = roundToFloat((static_cast<double>(x2) - x1) * side);
  chord.midX = (static_cast<double>(x1) + x2) * 0.5;
  chord.midY = (static_cast<double>(y1) + y2) * 0.5;
  chord.half =
      root(static_cast<double>(chord.a) * chord.a + static_cast<double>(chord.b) * chord.b) * 0.5;
  return chord;
}

}  // namespace

int slCalArcCent(int dir, float x1, float y1, float x2, float y2, float r, float* cx, float* cy) {
  const bool toLeft = (dir != zel::kCurveBackward) != (r < 0.0F);
  const Chord chord = turnedChord(toLeft, x1, y1, x2, y2);
  if (static_cast<double>(deadAbs(r)) + kTolerance < chord.half) {
    return 0;
  }
  if (chord.half <= kTolerance) {
    *cx = x1 + r;
    *cy = y1;
    return 1;
  }
  const double k = root(static_cast<double>(r) * r - chord.half * chord.half) / chord.half * 0.5;
  *cx = roundToFloat(chord.midX + k * chord.a);
  *cy = roundToFloat(chord.midY + k * chord.b);
  return 1;
}

int slCalArcCentRadius(int dir, float x1, float y1, float x2, float y2, float angle, float* r,
                       float* cx, float* cy) {
  const bool toLeft = (dir != zel::kCurveBackward) != (angle < 0.0F);
  const Chord chord = turnedChord(toLeft, x1, y1, x2, y2);
  const float half = roundToFloat(chord.half);
  const float sine = roundToFloat(std::sin(angle * 0.5));
  if (half <= kTolerance || deadAbs(sine) <= kTolerance) {
    return 0;
  }
  const double radius = static_cast<double>(half) / sine;
  const double cosine = std::cos(angle * 0.5);
  *cx = roundToFloat(radius * (chord.a * 0.5 / half) * cosine + chord.midX);
  *cy = roundToFloat(radius * (chord.b * 0.5 / half) * cosine + chord.midY);
  *r = roundToFloat(radius);
  return 1;
}

int slCalArcRadiusPnt(int dir, float x1, float y1, float x2, float y2, float angle, float* len,
                      float* px, float* py) {
  const bool clockwise = (dir != zel::kCurveForward) != (angle < 0.0F);
  const double dx = static_cast<double>(x2) - x1;
  const double dy = static_cast<double>(y2) - y1;
  const float length = roundToFloat(root(dx * dx + dy * dy));
  const double sn = roundToFloat(std::sin(angle * 0.5) * length);
  const double cs = roundToFloat(std::cos(angle * 0.5) * length);
  if (length < kTolerance) {
    return 0;
  }
  *len = length;
  if (deadAbsF(sn / length) <= kTolerance) {
    *px = x1;
    *py = y1;
    return 1;
  }
  double t = 0.0;
  double w = 0.0;
  if (clockwise) {
    t = (cs * y1 - cs * y2 - sn * x1 + sn * x2) / length / length;
    w = t * cs - y1 + y2;
  } else {
    t = (dy * cs - sn * x1 + sn * x2) / length / length;
    w = y2 - (t * cs + y1);
  }
  const float u = roundToFloat(w / sn);
  *px = roundToFloat(x1 + 2.0 * t * sn);
  *py = roundToFloat(y1 + 2.0 * u * sn);
  return 1;
}

float slGetArcAng2(float cx, float cy, float px, float py, float r) {
  const double cosine = (static_cast<double>(px) - cx) / r;
  const double sine = (static_cast<double>(py) - cy) / r;
  return roundToFloat(zel::angleFromCosine(cosine, !(sine >= 0.0)));
}

float slGetDirectAngleToZ(int mode, const float a[3], const float b[3]) {
  const float seenAlongX[3]{1.0F, 0.0F, 0.0F};
  const float seenAlongY[3]{0.0F, 1.0F, 0.0F};
  const float zAxis[3]{0.0F, 0.0F, 1.0F};
  float d[3];
  (Vec3(b) - Vec3(a)).store(d);
  const float angle = slCalAngleTwoVects(zAxis, d, mode == 1 ? seenAlongY : seenAlongX);
  return angle < 0.0F ? angle + kTwoPi : angle;
}
