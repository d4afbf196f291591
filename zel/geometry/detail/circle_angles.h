#pragma once

// Angles over the full turn from the tolerant arc cosine.

#include "zel/core/constants.h"
#include "zel/geometry/scalars.h"

namespace zel {

/// The angle with this cosine in [0, pi], or its mirror below the x axis.
inline double angleFromCosine(double cosine, bool mirrored) {
  const double angle = slAcos(cosine);
  return mirrored ? kTwoPi - angle : angle;
}

}  // namespace zel
