#pragma once

/// @file
/// Local frames as matrices, and rigid motions: matrices (layout in matrices.h) whose 3x3 block is
/// a rotation. The motion functions read only that block and the translation, and nothing checks
/// that axes are perpendicular and of unit length. What returns an int returns 1 where nothing else
/// is said.

#include "zel/core/api.h"
#include "zel/geometry/records.h"

// --- frames -----------------------------------------------------------------------------------

/// Local to world: the columns are the axes of `cs` and its origin.
ZEL_API void slGenMatrixToWorld(const XYCoordSysD& cs, float m[16]);
/// World to local: the rows of the 3x3 block are the axes of `cs`.
ZEL_API void slGenMatrixToLocal(const XYCoordSysD& cs, float m[16]);
/// World to local for a frame in four arrays.
ZEL_API void slGenMatrixToLocal(const float origin[3], const float x[3], const float y[3],
                                const float z[3], float m[16]);
/// A local direction in world terms: out = v.x x + v.y y + v.z z. @return 1.
ZEL_API int slTransToWorld(const float x[3], const float y[3], const float z[3], const float v[3],
                           float out[3]);

// --- the parts of a motion --------------------------------------------------------------------

/// The rotation of a motion, without its translation.
ZEL_API int slGetRotMatrixFromMotion(const float motion[16], float m[16]);
/// The inverse rotation of a motion: its block transposed, without translation.
ZEL_API int slGetRotTransMatrixFromMotion(const float motion[16], float m[16]);
/// The translation of a motion alone.
ZEL_API int slGetMoveMatrixFromMotion(const float motion[16], float m[16]);
/// The translation of a motion the other way.
ZEL_API int slGetInvMvMatrixFromMotion(const float motion[16], float m[16]);
/// The inverse of a rigid motion: the inverse rotation after the move back.
ZEL_API int slGetInverseMotionMatrix(const float motion[16], float m[16]);
/// Drops the translation of m in place.
ZEL_API int slSetMatrixByMvToOri(float m[16]);
/// Whether the z axes of two motions point to the same side.
/// @return 1 same side, -1 opposite, 0 perpendicular (their dot product is within 0.0001 of 0).
ZEL_API int slGetTwoMatrixSign(const float a[16], const float b[16]);
