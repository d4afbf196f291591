#pragma once

/// @file
/// Whether simple solids reach into each other.

#include "zel/core/api.h"
#include "zel/geometry/records.h"

/// Whether two cylinders meet: the distance of their axes is compared with the sum of their radii.
///
/// End caps are not considered, and the distance is that of `slGetLinesCoPerpenticular`, which does
/// not measure every end.
/// @param c1, c2  base points
/// @param u1, u2  unit axes
/// @param p1, p2  radius and length
/// @return 1 when they meet or touch (within 0.0001), else 0.
ZEL_API int slJudgeTwoCylinder(const float c1[3], const float c2[3], const float u1[3],
                               const float u2[3], const float p1[2], const float p2[2]);

/// Whether a ball reaches into a tapered prism.
///
/// With x, y1, y2 the ball's centre along lengthAxis, sideAxis1 and sideAxis2 of the prism's frame
/// and r its radius, it does when lengthMin - r <= x <= lengthMax + r and each y is at most
/// r / cos(angle) + x tan(angle) for its side angle. A side whose angle is within 0.0001 of a right
/// one in its cosine, or has a tangent of exactly 1e7, limits y to 1e7.
/// @param[out] result  1 when it does, else 0
/// @return 1.
ZEL_API int slJudgeBallAndPrism(const BallAndPrismD& d, int* result);
