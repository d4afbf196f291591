#pragma once

/// @file
/// A point against a line: parameters, feet of perpendiculars, distances.
///
/// A line is given by two distinct points a and b; its parameter is 0 at a and 1 at b and not
/// limited to that range. Where a and b coincide and nothing else is said, the parameter is NaN.

#include "zel/core/api.h"

/// Foot of the perpendicular from p on the line.
/// @return its distance from a toward b; -1e18 with out untouched when a and b are no more than
///   0.0001 apart.
ZEL_API float slProjectPntToLine(const float a[3], const float b[3], const float p[3],
                                 float out[3]);
/// Distance of p from the line through a along the unit direction u.
/// @param[out] t  distance from a to the foot of the perpendicular
ZEL_API float slGetPntLineDistByVect(const float a[3], const float u[3], const float p[3],
                                     float* t);
/// Distance of p from the line; 0 when a = b.
/// @param[out] t  parameter of the foot of the perpendicular
ZEL_API float slGetPntLineDist(const float a[3], const float b[3], const float p[3], float* t);
/// Squared distance of p from the line; NaN when a = b.
/// @param[out] t  parameter of the foot of the perpendicular
ZEL_API float slGetPntLineSquareDist(const float a[3], const float b[3], const float p[3],
                                     float* t);
/// Distance of p from the line in the plane (x and y): positive to the left of a to b, negative to
/// the right; 0 when a = b.
/// @param[out] t  parameter of the foot of the perpendicular
ZEL_API float slGetPntLineDist2D(const float a[2], const float b[2], const float p[2], float* t);
/// Foot of the perpendicular from p in the plane (x and y).
/// @param[out] foot  foot of the perpendicular; a when a and b are less than 0.01 apart
/// @param[out] t  its parameter; 1 when a and b are less than 0.01 apart
/// @return 1.
ZEL_API int slGetLineFoot(const float a[2], const float b[2], const float p[2], float foot[2],
                          float* t);
/// The closest two of four points. The pairs are visited as 01, 02, 03, 12, 13, 23 and the first of
/// equal ones wins.
/// @param[out] out  the two points; untouched when no squared distance is below 1e18
ZEL_API void slGetNearestPair(const float p0[3], const float p1[3], const float p2[3],
                              const float p3[3], float out[2][3]);
