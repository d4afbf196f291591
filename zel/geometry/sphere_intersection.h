#pragma once

/// @file
/// Spheres and cones: with each other and with planes. Spheres and lines are in
/// circle_intersection.h.

#include "zel/core/api.h"

/// Two spheres, given by centres and radii.
///
/// One sphere inside the other is not told apart: it gives 3 with radius 0. Coincident centres
/// divide by 0.
/// @param[out] centre  of the circle, or the point of contact; untouched on 0
/// @param[out] normal  of the circle's plane: unit vector from c1 to c2; written on 3
/// @param[out] radius  of the circle; written on 3
/// @return 3 they meet in a circle; 1 they touch from outside (within 0.0001); 0 apart.
ZEL_API int slGetShereIntersect(const float c1[3], float r1, const float c2[3], float r2,
                                float centre[3], float normal[3], float* radius);

/// The plane through p with the unit normal n, and the sphere of centre c and radius r.
/// @param[out] centre  c projected on the plane; untouched on 0
/// @param[out] radius  of the circle; written on 3
/// @return 3 they meet in a circle; 1 the plane touches (within 0.0001); 0 apart.
ZEL_API int slIntersectPlaneSphereM(const float p[3], const float n[3], const float c[3], float r,
                                    float centre[3], float* radius);

/// The plane through p with the unit normal n, and a cone whose axis is taken as perpendicular to
/// it.
/// @param axis       unit vector from the base of the cone toward its apex
/// @param halfAngle  radians, between the axis and the surface
/// @param[out] centre  of the circle; the apex on 1; untouched on 0
/// @param[out] radius  of the circle; written on 3
/// @return 3 they meet in a circle (of radius 0 for an apex at p); 1 the apex lies on the plane
///   (it is seen from p at a sine below 0.0001); 0 the plane lies beyond the apex.
ZEL_API int slIntersectPlaneCone(const float p[3], const float n[3], const float apex[3],
                                 const float axis[3], float halfAngle, float centre[3],
                                 float* radius);
