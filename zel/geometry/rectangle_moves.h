#pragma once

/// @file
/// How far something may be moved before it leaves a rectangle.
///
/// Each function takes a wanted displacement v and writes the possible one, a shortened v, to
/// `out`, which may be v itself. What lies outside to begin with and crosses no edge on its way is
/// not held back. A v without length gives (0, 0, 0) and 1.

#include "zel/core/api.h"
#include "zel/geometry/records.h"

/// A rectangle inside a rectangle, both in the standard position of r.
///
/// Every corner of `moving` that v would take out of r limits the move to the first edge that its
/// path meets (`slGetLineSegIntersectRect`).
/// @param[out] out  the part of v that is possible
/// @return 1 when that is all of v, else 0.
ZEL_API int slGetStdRectMinPanDisplace(const RectangleD& r, const RectangleD& moving,
                                       const float v[3], float out[3]);
/// As `slGetStdRectMinPanDisplace`, with rectangles and v in the world. The part of v perpendicular
/// to r is dropped.
/// @param[out] out  displacement in the world; (0, 0, 0) when r has no standard position
/// @return as there; 0 when r has no standard position.
ZEL_API int slGetRectMinPanDisplace(const RectangleD& r, const RectangleD& moving, const float v[3],
                                    float out[3]);
/// As `slGetRectMinPanDisplace` for an r that is already in standard position. `moving` is first
/// pushed into r by `slCorrectRectContainError`.
/// @param m  world to standard position of r, a motion matrix
ZEL_API int slGetStdRectMinPanDisp(const RectangleD& r, const float m[16], const RectangleD& moving,
                                   const float v[3], float out[3]);

/// Pushes a rectangle that sticks out by rounding 0.0001 inside another, both in standard position
/// of r: by its corner0 at the left and at the bottom, then by its corner2 at the right and at the
/// top. It is moved as a whole; one too large for r ends inside at the right and at the top.
/// @param[in,out] b  the rectangle that should be inside
ZEL_API void slCorrectRectContainError(const RectangleD& r, RectangleD* b);

/// A segment inside a rectangle in standard position (x and y only).
///
/// An end that v would take out of r limits the move to the first edge that its path meets. An end
/// whose path meets none does not move at all.
/// @param[out] out  the part of v that is possible, all three components
/// @return 1 when that is all of v, else 0.
ZEL_API int slCheckLineInRect(const RectangleD& r, const float a[3], const float b[3],
                              const float v[3], float out[3]);
/// An arc inside a rectangle in standard position: its bounding rectangle (`slGetArcRectangle`) is
/// moved as by `slGetStdRectMinPanDisplace`; that of the whole circle (`slGetCircleRectangle`) when
/// a and b are closer than 0.0001.
/// @param dir  147 counter-clockwise from a to b about c, otherwise clockwise
ZEL_API int slCheckArcInRect(short dir, const RectangleD& r, const float a[3], const float b[3],
                             const float c[3], const float v[3], float out[3]);
