#pragma once

/// @file
/// Angles of points on circles, in radians, counter-clockwise from +x.

#include "zel/core/api.h"

/// Angle of the point p on the circle of centre c and radius r, from its x and the side of its y:
/// the arc cosine (`slAcos`) of (p.x - c.x) / r, taken from a full turn when (p.y - c.y) / r is
/// negative.
/// @return 0 to 6.283185, that value included: just below +x the arc cosine snaps to 0. NaN for
///   r = 0 with p straight above, straight below or at the centre.
ZEL_API float slGetCircleAng(const float c[2], const float p[2], float r);

/// Direction angle of v (x and y; a z counts for its length).
///
/// It is the arc cosine (`slAcos`) of v.x over the length of v. For v.y < 0 that is taken from a
/// full turn unless v.x is exactly 0: straight down gives pi/2 like straight up.
/// @return 0 to 6.283185, that value included: just below +x the arc cosine snaps to 0. For a
///   vector shorter than 0.0001 only the signs of x and y count, and x = 0 gives NaN.
ZEL_API float slGetCentralAngle(const float v[3]);
