#pragma once

/// @file
/// Planes: normals and equations from points, distances, projections, coplanarity.
///
/// An equation is a unit normal n (`float[3]`) and a float d with n.x + d = 0 for the points x of
/// the plane. Points are `float[3]`.

#include "zel/core/api.h"
#include "zel/geometry/records.h"

// --- from points ------------------------------------------------------------------------------

/// Unit normal of the plane through three points, along (p1 - p0) x (p2 - p0).
/// @return 1; or 0 when two of them coincide with p0 (n is untouched) or when the sine of the angle
///   at p0 is below about 0.0001 (n holds the cross product, not normalised).
ZEL_API int slPlaneNormal(const float p0[3], const float p1[3], const float p2[3], float n[3]);
/// Equation of the plane through three points.
/// @return as `slPlaneNormal`; *d is untouched on 0.
ZEL_API int slGetPlaneEquation(const float p0[3], const float p1[3], const float p2[3], float n[3],
                               float* d);
/// @return the d of the plane through p with the unit normal n: -(p . n).
ZEL_API float slGetPlaneEquation(const float p[3], const float n[3]);
/// Unit normal of the plane through four points. When p0, p1 and p2 have no plane, that of p0, p1
/// and p3 is taken and nothing else is tested.
/// @return 1 coplanar; 0 when p3 is off the plane (its direction from p0 leaves it by a sine above
///   0.0001) or when there is no plane.
ZEL_API int slGetPlaneFourPnt(const float p0[3], const float p1[3], const float p2[3],
                              const float p3[3], float n[3]);
/// The plane half way between a and b. Its normal is a - b, not normalised. @return 1.
ZEL_API int slGetAveragePlane(const float a[3], const float b[3], PlaneD* out);

// --- distance and projection ------------------------------------------------------------------

/// @return the unsigned distance of p from the plane, 0 within 0.0001.
ZEL_API float slGetPntPlaneDist(const float n[3], float d, const float p[3]);
/// Foot of the perpendicular from p on the plane.
/// @return the distance of p, positive on the side that n points to; 0 is not snapped.
ZEL_API float slProjectPntToPlane(const float n[3], float d, const float p[3], float out[3]);
/// Takes a point into the xy plane of a frame, in place: (w . xAxis, w . yAxis, 0) with
/// w = p - origin.
ZEL_API void slTransPntToPlane(float p[3], const XYCoordSysD& cs);
/// Takes a direction into the plane of two axes, in place: (v . x, v . y, 0).
ZEL_API void slTransVectToPlane(float v[3], const float x[3], const float y[3]);

// --- coplanarity ------------------------------------------------------------------------------

/// Whether the points lie in one plane.
/// @param[out] n  unit normal on 2 and 3; untouched on 4; on 5 the last cross product tried,
///   if any
/// @return 2 coplanar, 3 not, 4 all coincide (and for count below 1), 5 all on one line.
ZEL_API int slJudgePntCoPlane(int count, const float (*pts)[3], float n[3]);
/// Direction from `base` to the next point that is not closer than 0.0001.
/// @param[in,out] next  index to go on from; afterwards one past the last point looked at. A
///   negative one counts as 0.
/// @param[out] v  unit direction; (1, 0, 0) for a point at exactly 0.0001
/// @return 1 found, 0 when the list ends (v is then the last difference, if any).
ZEL_API int slGetVectBtPntsNZero(const float base[3], int count, const float (*pts)[3], int* next,
                                 float v[3]);
/// Normal of `dir` and the next direction (`slGetVectBtPntsNZero`) that is not parallel to it.
/// @param dir  unit direction
/// @param[out] n  unit normal
/// @return 1 found, 0 when the list ends (n is then the last cross product, if any).
ZEL_API int slGetNormNZero(const float base[3], const float dir[3], int count,
                           const float (*pts)[3], int* next, float n[3]);
