#pragma once

// Inline forms of the small scalar functions, for callers inside the library.

#include <cmath>
#include <limits>

#include "zel/core/constants.h"

namespace zel {

// Random signs would defeat branch prediction, so these are written to compile without branches.

/// |x| above the tolerance, else 0, for NaN too; `slFabs`.
inline float deadAbs(float x) {
  const float magnitude = std::fabs(x);
  return magnitude > kTolerance ? magnitude : 0.0F;
}
inline double deadAbs(double x) {
  const double magnitude = std::fabs(x);
  return magnitude > kFineTolerance ? magnitude : 0.0;
}
/// The float dead band on a value computed in double.
inline float deadAbsF(double x) { return deadAbs(static_cast<float>(x)); }

/// Square root that is 0 below the fine tolerance; `slSqrt`.
inline double root(double x) { return x >= kFineTolerance ? std::sqrt(x) : 0.0; }

/// `slSign`.
inline int signOf(float x) { return (x > kTolerance ? 1 : 0) - (x >= -kTolerance ? 0 : 1); }

/// Cuts off toward zero; the smallest int when x is NaN or does not fit.
inline int truncateToInt(double x) {
  const bool fits = x > -2147483649.0 && x < 2147483648.0;
  return fits ? static_cast<int>(x) : std::numeric_limits<int>::min();
}

}  // namespace zel
