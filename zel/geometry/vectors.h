#pragma once

/// @file
/// Normalising and building vectors. Points and vectors are `float[3]` (x, y, z) unless the
/// signature says otherwise; outputs may be the same arrays as inputs.

#include "zel/core/api.h"

// --- normalising ------------------------------------------------------------------------------

/// Makes v a unit vector in place.
/// @return 1; or 0 when its length (`slNorm2`) is at most 0.0001, and v is then (1, 0, 0). NaN in a
///   component has that result, too.
ZEL_API int slNormalize(float v[3]);
/// As the `float` form, with `slLength`.
ZEL_API int slNormalize(double v[3]);
/// As `slNormalize` in the plane; the fallback is (1, 0).
ZEL_API int slNormalize2D(double v[2]);
/// As the `double` form, on a copy in double precision.
ZEL_API int slNormalize2D(float v[2]);
/// Splits v into length and unit direction.
/// @param[out] dir  unit vector, or (1, 0, 0) when the length is at most 0.0001
/// @return the length, also when dir is the fallback.
ZEL_API float slLenAndDir(const float v[3], float dir[3]);
/// Unit vector from a to b. @return as `slNormalize`, whose fallback it shares.
ZEL_API int slGetNormalVectBtPnts(const float a[3], const float b[3], float out[3]);
/// As the `float` form, with the result normalised in double precision.
ZEL_API int slGetNormalVectBtPnts(const float a[3], const float b[3], double out[3]);

// --- building ---------------------------------------------------------------------------------

/// The two edges that leave the vertex b: u = a - b and w = c - b. @return 1.
ZEL_API int slVect(const float a[3], const float b[3], const float c[3], float u[3], float w[3]);
/// Divides v by d in place; d = 0 gives infinities or NaN.
ZEL_API void slSetPnt3DValueByDiv(float d, float v[3]);
/// A unit vector perpendicular to v. Of the components of v the first within 0.0001 of 0, x before
/// y before z, names the axis that is returned; when there is none it is (-v.y, v.x, 0) normalised.
ZEL_API void slOthVect(const float v[3], float out[3]);
/// Two unit vectors perpendicular to v: u by `slOthVect` and w = v x u. With a unit v, (u, w, v) is
/// a right-handed frame.
ZEL_API void slOthPlane(const float v[3], float u[3], float w[3]);
/// Unit vector along the bisector of the angle p-o-q: (p - o) + (q - o), so the longer side weighs
/// more.
ZEL_API void slGetPntsMidVect(const float o[3], const float p[3], const float q[3], float out[3]);

// --- comparing --------------------------------------------------------------------------------

/// @return 1 when the sine of the angle between a and b is below 0.0001, same or opposite sense;
///   0 otherwise and when either is no longer than 0.0001.
ZEL_API int slVectParallel(const float a[3], const float b[3]);
/// @return 1 when the squared distance of a and b is below 9.999999e-9 (they are about 0.0001
///   apart), else 0.
ZEL_API int slIsEqualPoint3D(const float a[3], const float b[3]);
/// @return index (0, 1, 2) of the component largest in magnitude, the lowest of equal ones.
///   Components within 0.0001 of 0 count as 0.
ZEL_API int slGetVectMaxDir(const float v[3]);
/// @return the coordinate axis (0, 1, 2) that v runs along, tested in that order, or -1. It does
///   when the squares of its other two components sum to less than 9.999999e-9; a zero vector
///   gives 0.
ZEL_API int slComparWithCoordAxis(const float v[3]);

// --- angles between vectors -------------------------------------------------------------------

/// Angle between a and b.
/// @param[out] angle  in [0, pi]; the dot product of a and b when the function returns 0
/// @return 1, or 0 when either vector is no longer than 0.0001.
ZEL_API int slGetVectAngle(const float a[3], const float b[3], float* angle);
/// Signed angle from a to b seen from the tip of ref: negative when (a x b) . ref is.
/// A vector too short to normalise counts as (1, 0, 0). @return radians in [-pi, pi].
ZEL_API float slCalAngleTwoVects(const float a[3], const float b[3], const float ref[3]);
/// As the `float` form on `double[3]`.
ZEL_API double slCalAngleTwoVects(const double a[3], const double b[3], const double ref[3]);
/// Direction of a unit 2D vector in degrees, counter-clockwise from +x; 0 for the zero vector.
/// For a vector that is not of unit length the result is the arc cosine of x over the *squared*
/// length, on the side that the sign of y tells. From 0 up to 360, which a tiny negative y reaches.
ZEL_API float slGetVectorAngle(const float v[2]);

// --- bounds -----------------------------------------------------------------------------------

/// Smallest x, y and z over the points of two lists; either may be empty (count below 1).
/// @param[out] out  (1e18, 1e18, 1e18) when both are; coordinates above that never win; may be one
///   of the points
ZEL_API void slGetMinXYZ(int count1, const float (*list1)[3], int count2, const float (*list2)[3],
                         float out[3]);
/// Largest x, y and z over the points of two lists, starting from -1e18; as `slGetMinXYZ`.
ZEL_API void slGetMaxXYZ(int count1, const float (*list1)[3], int count2, const float (*list2)[3],
                         float out[3]);
