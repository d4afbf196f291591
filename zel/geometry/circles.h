#pragma once

/// @file
/// Circles and spheres through given points.

#include "zel/core/api.h"

/// Radius of the circle or sphere of centre c through p.
ZEL_API float slGetCircleRadius(const float c[3], const float p[3]);

/// The circle through three points.
/// @param[out] normal  unit normal of its plane; a, b, c run counter-clockwise about it
/// @return 1; 0 with the outputs untouched when the points lie on one line (`slGenXYCoordSys`) or
///   are so close together that `slCircumcenter` refuses them.
ZEL_API int slGenCircle(const float a[3], const float b[3], const float c[3], float centre[3],
                        float normal[3], float* radius);

/// The sphere through four points: where the axes of the circles through a, b, c and through a, b,
/// d meet, or half way between the points in which they come closest. Four points of one circle
/// give the sphere around its centre; other four points of a plane have no sphere and give one
/// half way between the two centres.
/// @return 1; 0 with the outputs untouched when either circle does not exist (`slGenCircle`).
ZEL_API int slGenSphere(const float a[3], const float b[3], const float c[3], const float d[3],
                        float centre[3], float* radius);
