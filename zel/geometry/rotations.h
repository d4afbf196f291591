#pragma once

/// @file
/// Rotation matrices (layout in matrices.h). Angles are radians, counter-clockwise when looking
/// from the positive end of the axis toward the origin. Sines and cosines are not snapped.

#include "zel/core/api.h"

// --- about the coordinate axes ----------------------------------------------------------------

/// Rotation about the x axis.
ZEL_API void slRotateByX(float angle, float m[16]);
/// Rotation about the y axis.
ZEL_API void slRotateByY(float angle, float m[16]);
/// Rotation about the z axis.
ZEL_API void slRotateByZ(float angle, float m[16]);
/// Rotation about the x axis by the angle with this cosine and sine.
ZEL_API void slRotateByXExt(float cos, float sin, float m[16]);
/// Rotation about the y axis by the angle with this cosine and sine (an overload, without "Ext").
ZEL_API void slRotateByY(float cos, float sin, float m[16]);
/// Rotation about the z axis by the angle with this cosine and sine.
ZEL_API void slRotateByZExt(float cos, float sin, float m[16]);

// --- about any axis ---------------------------------------------------------------------------

/// Rotation about an axis through the origin (O. Rodrigues, 1840).
/// @param axis  unit vector; it is not normalised here
ZEL_API void slGenerateRotateMatrix(const float axis[3], float angle, float m[16]);
/// Rotation about an axis through `point`. A point whose coordinates all lie within 0.0001 of 0
/// counts as the origin.
/// @param axis  unit vector; it is not normalised here
ZEL_API void slGetRotateMatrix(const float point[3], const float axis[3], float angle, float m[16]);

// --- onto an axis -----------------------------------------------------------------------------

/// Rotation that leaves `point` fixed and turns `dir` onto +z.
/// @param dir  unit vector. Within 0.0001 of the vertical the result is the identity, or, when it
///   points down, half a turn about the line through `point` along x.
ZEL_API void slGenVectToZMatrix(const float point[3], const float dir[3], float m[16]);
/// Rotation about the vertical line through `point` that turns `dir` onto +x.
/// @param dir  horizontal unit vector; its z is ignored and it is not normalised
ZEL_API void slGenVectToXMatrix(const float point[3], const float dir[3], float m[16]);
/// The two rotations that turn v onto +z, as cosines and sines: first by A about z, then by B
/// about x.
/// @param v  unit vector. Within 0.0001 of the vertical A is no turn, cosB is 1, 0 or -1 by the
///   sign of v.z, and sinB is 0.
ZEL_API void slGetAnglesRotToZ(const float v[3], float* cosA, float* sinA, float* cosB,
                               float* sinB);
/// Three perpendicular unit axes from two angles:
/// x = (cos b cos a, -cos b sin a, -sin b), y = (sin a, cos a, 0),
/// z = (sin b cos a, -sin b sin a, cos b).
ZEL_API void slGetAxes(float a, float b, float x[3], float y[3], float z[3]);

/// A matrix with the translation p - q and a block formed from the angles (`slGetAnglesRotToZ`) of
/// the directions u and w of two rays. It keeps only some terms of the product of the two turns:
/// it is not a rotation in general and is not made orthonormal.
ZEL_API void slGenMatrixToSpRadials(const float p[3], const float u[3], const float q[3],
                                    const float w[3], float m[16]);
/// `slGenMatrixToSpRadials` for the rays from a0 through a1 and from b0 through b1.
/// @return 1, or 0 with m untouched when either pair is no more than 0.0001 apart.
ZEL_API int slGenMatrixToSpLines(const float a0[3], const float a1[3], const float b0[3],
                                 const float b1[3], float m[16]);
