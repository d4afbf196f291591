#pragma once

/// @file
/// Two lines in space: whether they share a plane, their common perpendicular, their distance.
///
/// Lines run through a0, a1 and b0, b1. The parameters t (on a) and s (on b) are 0 at the first
/// point and 1 at the second.

#include "zel/core/api.h"

/// Whether two lines lie in one plane: that of a0, a1 and b0 is formed and b1 measured against it.
/// @param[out] n  normal of that plane as `slPlaneNormal` leaves it
/// @return 2 coplanar, also when a0, a1 and b0 lie on one line; 3 skew (b1 more than 0.0001 off).
ZEL_API int slJudgeLineCoPlane(const float a0[3], const float a1[3], const float b0[3],
                               const float b1[3], float n[3]);

// --- infinite lines ---------------------------------------------------------------------------

/// Closest approach of two infinite lines.
/// @param[out] t, s  parameters of the closest points; s is 0 for parallel lines
/// @param[out] dist  their distance
/// @return the code of `slJudgeLineCoPlane`.
ZEL_API int slGetInfLinesCoPerpenticular(const float a0[3], const float a1[3], const float b0[3],
                                         const float b1[3], float* t, float* s, float* dist);
/// The coplanar case of `slGetInfLinesCoPerpenticular`: their intersection at distance 0, or for
/// lines without one (`slIntersectLines3D`) the distance of b0 from the first, with s = 0.
ZEL_API void slGetCoPlaneInfLineDist(const float a0[3], const float a1[3], const float b0[3],
                                     const float b1[3], float* t, float* s, float* dist);
/// The skew case: the second line is moved along the common normal into the plane of the first.
/// The distance is 0 within 0.0001.
ZEL_API void slGetDifPlaneInfLineDist(const float a0[3], const float a1[3], const float b0[3],
                                      const float b1[3], float* t, float* s, float* dist);
/// Distance of two infinite lines. When their directions have no usable common normal (parallel or
/// very short) it is the distance of b0 from the first line, otherwise 0 within 0.0001.
ZEL_API float slGetLineDist(const float a0[3], const float a1[3], const float b0[3],
                            const float b1[3]);

// --- segments ---------------------------------------------------------------------------------

/// Closest approach of two segments, within the limits that `slGetCoPlaneLineDist` states.
/// @return the code of `slJudgeLineCoPlane`.
ZEL_API int slGetLinesCoPerpenticular(const float a0[3], const float a1[3], const float b0[3],
                                      const float b1[3], float* t, float* s, float* dist);
/// The coplanar case of `slGetLinesCoPerpenticular`.
///
/// Segments that cross have distance 0; a crossing counts with t in (-0.0001, 1.0002) and s in
/// (-0.0001, 1.0001). Otherwise the nearest of three end points counts, measured against the other
/// segment where its foot lies in (-0.0001, 1.0001): b0 (s is then 0), a0 and a1 (t is then 1 for
/// both of them). The end b1 is never measured. When none qualifies t, s and dist are 1e18.
ZEL_API void slGetCoPlaneLineDist(const float a0[3], const float a1[3], const float b0[3],
                                  const float b1[3], float* t, float* s, float* dist);
/// The skew case: the second segment is moved along the common normal into the plane of the first,
/// and t and s are those of `slGetCoPlaneLineDist`. When both lie in (-0.0001, 1.0001), dist is how
/// far it was moved; otherwise it is the distance found in the plane.
ZEL_API void slGetDifPlaneLineDist(const float a0[3], const float a1[3], const float b0[3],
                                   const float b1[3], float* t, float* s, float* dist);
