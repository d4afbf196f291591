#include "zel/algorithms/tolerance.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "zel/algorithms/measure.h"
#include "zel/core/error.h"

namespace zel {

double resolve(Tolerance tolerance, const Bounds& bounds) {
  if (!(tolerance.value >= 0.0) || !std::isfinite(tolerance.value)) {
    throw Error(ErrorCode::kArgument, "cannot use the tolerance",
                "it must be finite and not negative");
  }
  if (!tolerance.isRelative || tolerance.value == 0.0) {
    return tolerance.value;
  }
  float largest = 0.0F;
  for (const Float3& corner : {bounds.low, bounds.high}) {
    for (const float coordinate : corner) {
      largest = std::max(largest, std::fabs(coordinate));
    }
  }
  const double next = std::nextafter(largest, std::numeric_limits<float>::infinity());
  const double lastPlace = std::isfinite(next) ? next - largest : std::ldexp(1.0, 104);
  return std::max(tolerance.value * bounds.diagonal(), 2.0 * lastPlace);
}

double resolve(Tolerance tolerance, const Mesh& mesh) {
  return resolve(tolerance, tolerance.isRelative ? boundsOf(mesh) : Bounds{});
}

}  // namespace zel
