#pragma once

/// @file
/// 4x4 matrices: building the plain ones, products, application to points and directions,
/// inversion and repair.
///
/// A matrix is 16 floats in column-major order, as in OpenGL: row r, column c stands at r + 4 c.
/// The columns 0 to 2 hold the images of the x, y and z axes, 12 to 14 the translation, and 15
/// is 1. Points are columns on the right: p becomes M (p, 1), and A B applies B first. Products are
/// summed in double precision. Every builder writes all 16 values.

#include "zel/core/api.h"

// --- building ---------------------------------------------------------------------------------

/// The identity.
ZEL_API void slSetIdentity(float m[16]);
/// A move by scale times v; scale -1 gives the move back.
ZEL_API void slGenerateMoveMatrix(const float v[3], float scale, float m[16]);
/// Scaling by s.x, s.y, s.z along the axes, which leaves `centre` where it is.
ZEL_API void slGenScaleMatrix(const float centre[3], const float s[3], float m[16]);

// --- products ---------------------------------------------------------------------------------

/// c = a b. Each partial sum is rounded to float. @return 1.
ZEL_API int slMultiMatrix(const float a[16], const float b[16], float c[16]);
/// b = a b. @return 1.
ZEL_API int slSetMatrixByMulti(const float a[16], float b[16]);
/// b = b a. @return 1.
ZEL_API int slSetMatrixByRightMulti(const float a[16], float b[16]);

// --- application; each component is summed in double precision and rounded once --------------

/// v = m v. @return 1.
ZEL_API int slMatrix16MultiVector4(const float m[16], float v[4]);
/// Turns the direction v in place; the translation is ignored. @return 1.
ZEL_API int slMatrix16MultiVector3(const float m[16], float v[3]);
/// Turns the direction v into out; the translation is ignored. @return 1.
ZEL_API int slMatrix16MultiVector3(const float m[16], const float v[3], float out[3]);
/// Transforms the point p in place. The fourth component is dropped: no division takes place.
/// @return 1.
ZEL_API int slMatrix16MultiPoint3(const float m[16], float p[3]);
/// Transforms the point p into out, as the form in place. @return 1.
ZEL_API int slMatrix16MultiPoint3(const float m[16], const float p[3], float out[3]);
/// Transforms the point (p.x, p.y, 0) and keeps x and y of the result. @return 1.
ZEL_API int slMatrix16MultiPoint2(const float m[16], float p[2]);
/// v = transpose(m) v. @return 1.
ZEL_API int slMatrixTrans16MultiVector4(const float m[16], float v[4]);
/// Turns the direction v by the transposed 3x3 block; for a rotation that is its inverse.
/// @return 1.
ZEL_API int slMatrixTrans16MultiVector3(const float m[16], float v[3]);

// --- inversion and fitting --------------------------------------------------------------------

/// General inverse by cofactors.
/// @return 1, or 0 with b untouched when the magnitude of the determinant is at most 0.0001. That
///   bound is absolute: a scaling by 0.04 along all axes has no inverse here.
ZEL_API int slInverseMatrixM(const float a[16], float b[16]);
/// The matrix that carries four points onto four others.
/// @param p, q  four points each; p must not be coplanar
/// @return 1, or 0 with m untouched when the matrix of p cannot be inverted (`slInverseMatrixM`).
ZEL_API int slChangeFourPntMatrixM(const float (*p)[3], const float (*q)[3], float m[16]);

// --- checking and repairing -------------------------------------------------------------------

/// Cleans the 3x3 block in place: values within 0.0001 of 0, 1 and -1 become exactly that.
ZEL_API void slCheckMatrixError(float m[16]);
/// Whether m is the identity. Differences of up to 0.0001 in a value are not counted.
/// @return 1 when the counted differences sum to at most 0.0016, else 0.
ZEL_API int slCheckIndentity(const float m[16]);
/// Repairs a worn rotation in place: the x and y columns are normalised and the z column becomes
/// their normalised cross product. The y column is not made perpendicular to the x column.
ZEL_API void slNormalizeMatrix(float m[16]);
