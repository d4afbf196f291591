#include "zel/geometry/scalars.h"

#include <cmath>

#include "zel/core/constants.h"
#include "zel/geometry/detail/scalars.h"

using zel::deadAbs;
using zel::kFineTolerance;
using zel::kHalfPi;
using zel::kInfinity;
using zel::kPer180;
using zel::kPerPi;
using zel::kPi;
using zel::kThreePi;
using zel::kTolerance;
using zel::kTwoPi;

namespace {

/// Beyond this the inverse functions answer with the end of their range.
constexpr double kArcBound = 0.9999000000025262;  // 3FEFFF2E48E90000
constexpr double kFullTurn = kTwoPi - kFineTolerance;
constexpr double kHalfTurn = kPi + kFineTolerance;

/// A value within the tolerance of 0, 1 or -1 becomes exactly that.
float snapToAxis(double value) {
  const float t = static_cast<float>(value);
  const float magnitude = deadAbs(t);
  if (magnitude < kTolerance) {
    return 0.0F;
  }
  return deadAbs(magnitude - 1.0F) < kTolerance ? static_cast<float>(zel::signOf(t)) : t;
}

/// Brings an angle beyond [-pi, pi] back by whole multiples of pi. The result is the one that
/// subtracting pi over and over would reach, since the remainder is exact.
double reduceByPi(double x) {
  if (!(deadAbs(x) > kPi)) {
    return x;
  }
  const double rest = std::fmod(x, static_cast<double>(kPi));
  return rest == 0.0 ? std::copysign(static_cast<double>(kPi), x) : rest;
}

}  // namespace

float slFabs(float x) { return deadAbs(x); }

double slFabs(double x) { return deadAbs(x); }

double slSqrt(double x) { return zel::root(x); }

double slTan(double x) {
  if (deadAbs(x) < kTolerance || std::isinf(x)) {
    return 0.0;
  }
  const double angle = reduceByPi(x);
  return deadAbs(angle - kHalfPi) < kTolerance ? static_cast<double>(kInfinity) : std::tan(angle);
}

double slAcos(double x) {
  if (x > kArcBound) {
    return 0.0;
  }
  return x < -kArcBound ? static_cast<double>(kPi) : std::acos(x);
}

double slAsin(double x) {
  if (x > kArcBound) {
    return kHalfPi;
  }
  return x < -kArcBound ? -static_cast<double>(kHalfPi) : std::asin(x);
}

double slAtan(double x, double y) {
  return deadAbs(x) >= kTolerance ? std::atan(y / x) : static_cast<double>(kHalfPi);
}

float slCos(float angle) { return snapToAxis(std::cos(static_cast<double>(angle))); }

float slSin(float angle) { return snapToAxis(std::sin(static_cast<double>(angle))); }

int slSign(float x) { return zel::signOf(x); }

int slRound(float x) { return zel::truncateToInt(x + 0.5); }

float slKeepTwoDecimal(float x) {
  const double nudged = x * 100.0 + zel::signOf(x) * static_cast<double>(kTolerance);
  return static_cast<float>(zel::truncateToInt(nudged)) * 0.01F;
}

float slMod(float a, float b) {
  const float turns = a / b;
  if (deadAbs(turns) <= kTolerance) {
    return turns * b;
  }
  double fraction = turns - std::trunc(turns);
  if (fraction < kTolerance) {
    fraction += 1.0;
  }
  return static_cast<float>(fraction * b);
}

int slMaxI2(int a, int b) { return a > b ? a : b; }

int slMinI2(int a, int b) { return a < b ? a : b; }

int slFitI(int* v, int lo, int hi) {
  if (*v > hi) {
    *v = hi;
  } else if (*v < lo) {
    *v = lo;
  }
  return *v;
}

double slGetRatio(double a, double b, double c) {
  return deadAbs(b - a) <= kTolerance ? 1.0 : (c - a) / (b - a);
}

float slAngleToRadian(float degrees) {
  return static_cast<float>(static_cast<double>(degrees) * kPi * kPer180);
}

float slRadianToAngle(float radians) { return static_cast<float>(radians * 180.0 * kPerPi); }

int slMirrorAngleAboutVerticalAxis(float* angle) {
  float a = *angle;
  if (a < 0.0F) {
    a += kTwoPi;
  } else if (a > kFullTurn) {
    a -= kTwoPi;
  }
  *angle = a > -kFineTolerance && a < kHalfTurn ? kPi - a : kThreePi - a;
  return 1;
}
