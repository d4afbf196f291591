#pragma once

/// @file
/// Circles, in the plane and in space, against lines, segments and each other.

#include "zel/core/api.h"

/// The line through a and b against the circle (or sphere) of centre c and radius r. The circle
/// lies in the plane of c and the line.
/// @param[out] out  the points, first the one farther along b - a; out[1] is written on 2 only
/// @return 2 two points; 1 tangent, and for a line that misses: out[0] is the foot of the
///   perpendicular from c; 0 a = b (within 0.0001), out untouched.
ZEL_API int slIntersectLineCircle(const float c[3], float r, const float a[3], const float b[3],
                                  float out[2][3]);
/// The line through a and b against a sphere; the same as `slIntersectLineCircle`.
ZEL_API int slIntersectLineSphere(const float c[3], float r, const float a[3], const float b[3],
                                  float out[2][3]);

/// The segment from a to b against the circle of centre c and radius r, in the plane (x and y).
///
/// With t the parameter of the foot of c: for t in [0, 1] the ends count as inside when they lie on
/// the circle; for t < 0 or t > 1 the segment has a point when its near end is inside or on the
/// circle and its far end is outside or on it. Segments shorter than 0.01 count as having their
/// foot at a with t = 1 (`slGetLineFoot`). Where t is not a number there is no point.
/// @param[out] p1, t1, ang1  first point (x and y), its parameter on the segment and its angle on
///   the circle (`slGetCircleAng`); of two points the one farther from a
/// @param[out] p2, t2, ang2  second point
/// @param[out] count  number of points written: 0, 1 or 2
/// @return 0 when the line of the segment misses the circle, else 1, with or without points.
ZEL_API int slLineIntCircle(const float* a, const float* b, const float* c, float r, float* p1,
                            float* t1, float* ang1, float* p2, float* t2, float* ang2, int* count);

/// Two circles in one plane with the normal n.
///
/// The two-point case is worked out in the frame of c1 with x toward c2 (and y perpendicular). Let
/// q be c2 there, k the axis in which it is larger and j the other, L = (|q|^2 + r1^2 - r2^2) /
/// (2 q[k]) and g = q[j] / q[k]. A point has [j] = (2 L g +- S) / (2 (g + 1)) with
/// S = sqrt(4 L^2 g^2 - 4 (L^2 - r1^2) (g + 1)), and [k] = L - g y, where y is what the second
/// component of its own row of `out` held before the call. As g is 0 up to rounding this gives the
/// intersections, provided that `out` holds finite numbers of ordinary size.
/// @param[in,out] out  the points; untouched on 2147483647, 0 and -1, out[1] also on 1
/// @return 2 two points; 1 the circles touch (within 0.0001), from outside or inside; 2147483647
///   they are the same; 0 they do not meet; -1 c2 - c1 is not perpendicular to n.
ZEL_API int slIntersectCircle(const float c1[3], float r1, const float c2[3], float r2,
                              const float n[3], float out[2][3]);
