#pragma once

/// @file
/// Centres of triangles and point lists, and the small linear system behind them.

#include "zel/core/api.h"

/// Solves m x = r by Cramer's rule.
/// @param m  two rows of two values
/// @return 1; 0 with x untouched when the magnitude of the determinant is at most 0.0001. The bound
///   is absolute, whatever the size of the values.
ZEL_API int slLineEquation2(const float m[2][2], const float r[2], float x[2]);
/// Circumcentre of a triangle in the plane (x and y).
/// @return 1; 0 with `centre` untouched for collinear points, and for triangles so small that
///   `slLineEquation2` refuses them (sides of about 0.005).
ZEL_API int slCircumcenter(const float a[2], const float b[2], const float c[2], float centre[2]);
/// Circumcentre and circumradius of a triangle in space.
/// @return 1; 0 with both outputs untouched when `slPlaneNormal` or `slCircumcenter` gives 0.
ZEL_API int slCircumCenter3D(const float a[3], const float b[3], const float c[3], float centre[3],
                             float* radius);
/// @return 1 when no two of the three vertices coincide (all coordinates within 0.0001), else 0.
///   Collinear vertices pass.
ZEL_API int slJudgeIsTriangle(const float a[3], const float b[3], const float c[3]);
/// Sum of the first count - 2 points, divided by count: the last two points weigh nothing, although
/// they are counted. (0, 0, 0) for count <= 2.
ZEL_API void slPolygenCenterM(const float (*pts)[3], int count, float out[3]);
