#pragma once

/// @file
/// Local coordinate systems made from points.

#include "zel/core/api.h"
#include "zel/geometry/records.h"

/// The frame with origin o, its x axis toward p and q on the positive y side of its xy plane.
///
/// A cross product of (p - o) and (q - o) no longer than 0.0001 (sides of about 0.01) cannot be
/// normalised although it passes the tests below; such a frame has (1, 0, 0) as its z axis.
/// @param[out] cs  untouched on 0
/// @return 1; 0 when p or q is within about 0.0001 of o, or when the sine of the angle p-o-q is
///   below about 0.0001.
ZEL_API int slGenXYCoordSys(const float o[3], const float p[3], const float q[3], XYCoordSysD* cs);

/// The frame with origin o, the z axis n and its x axis toward p.
///
/// When p lies on o (within 0.0001) the x and y axes are those of `slOthPlane` for n.
/// @param n  unit vector perpendicular to p - o
/// @param[out] cs  untouched on 3
/// @return 1; 3 when p - o is not perpendicular to n (the cosine exceeds 0.0001).
ZEL_API int slGenXYCoordSysByNormal(const float o[3], const float p[3], const float n[3],
                                    XYCoordSysD* cs);
