#pragma once

/// @file
/// Lengths and distances. Sums are formed in double precision. Every root is taken by `slSqrt`, so
/// a squared length below 1e-8 gives a length of exactly 0: lengths are 0 or at least 0.0001.

#include "zel/core/api.h"

/// Euclidean length of `float[3]`.
ZEL_API float slNorm2(const float v[3]);
/// Length of `float[3]`, not rounded to single precision.
ZEL_API double slLengthD(const float v[3]);
/// Length of `double[3]`.
ZEL_API double slLength(const double v[3]);
/// Length of `float[2]`.
ZEL_API float slLength2(const float v[2]);
/// Length of `double[2]`.
ZEL_API double slLength2(const double v[2]);
/// Squared length of `float[2]`; no root, so nothing snaps to 0.
ZEL_API float slSquareLength2(const float v[2]);
/// Squared length of `double[2]`; no root, so nothing snaps to 0.
ZEL_API double slSquareLength2(const double v[2]);

/// Distance of the points (x1, y1, z1) and (x2, y2, z2), rounded once. `slDistance3` may differ
/// from it in the last place.
ZEL_API float slDistance(float x1, float y1, float z1, float x2, float y2, float z2);
/// Distance of two points: the root of `slSquareDistance3`, which has been rounded to float.
ZEL_API float slDistance3(const float a[3], const float b[3]);
/// Squared distance of two points; no root, so nothing snaps to 0.
ZEL_API float slSquareDistance3(const float a[3], const float b[3]);
/// Distance of two 2D points.
ZEL_API float slDistance2(const float a[2], const float b[2]);
/// Distance of two 2D points in double precision.
ZEL_API double slDistanceD2(const double a[2], const double b[2]);
/// Squared distance of the 2D points (x1, y1) and (x2, y2).
ZEL_API float slDistSquare2(float x1, float y1, float x2, float y2);
/// Squared distance of the x and y components only; a z that is there is ignored.
ZEL_API float slPlaneDistSqr(const float* a, const float* b);
/// a.x b.x + a.y b.y
ZEL_API float slDot2D(const float* a, const float* b);
