#pragma once

/// @file
/// Rectangles in space (`RectangleD`): their standard position, points and segments against them.
///
/// "Standard position" is defined with the record. Functions that ask for it use x and y only.

#include "zel/core/api.h"
#include "zel/geometry/records.h"

/// Carries a rectangle into its own standard position.
/// @param[out] out  the rectangle there; may be r itself
/// @param[out] m    world to standard position, a motion matrix
/// @return 1; 0 with both outputs untouched when corners 0, 1 and 3 span no frame
///   (`slGenXYCoordSys`).
ZEL_API int slTransToStdRect(const RectangleD& r, RectangleD* out, float m[16]);
/// Transforms every corner by m. `out` may be r itself.
ZEL_API void slTransRectangleByMatrix(const RectangleD& r, const float m[16], RectangleD* out);

/// Whether p lies in a rectangle in standard position, of which corner1.x and corner3.y count.
/// @return 1 inside or less than 0.0001 off, else 0.
ZEL_API int slJudgePntInRectM(const RectangleD& r, const float p[2]);
/// Whether p lies strictly inside an axis-aligned rectangle, without tolerance.
/// @param origin  corner with the smallest x and y
/// @param size    extent in x and y
/// @return 1 inside; 0 outside or on an edge.
ZEL_API int slJudgePntInRectM(const float origin[2], const float size[2], const float p[2]);

/// Where the segment from a to b crosses the first edge that it crosses of a rectangle, the edges
/// being tried from corner 0 on (x and y only).
/// @param[out] hit  the point; untouched on 0
/// @return 1 found; 0 none. Segments that run along an edge do not cross it.
ZEL_API int slGetLineSegIntersectRect(const RectangleD& r, const float a[3], const float b[3],
                                      float hit[2]);

/// Joins two rectangles of the same direction, in x and y. Not a union:
///
/// corner0 of the result is that of a, moved out by f = half of (a.corner3 - b.corner0) less half
/// of (b.corner3 - b.corner0). The y of corner1 and corner2 are those of b, that of corner3 is a's
/// moved out by f; the x of corners 1, 2 and 3 is 0, and no z is written.
/// @param[out] out  may be a or b
ZEL_API void slMergeRectWithSameDir(const RectangleD& a, const RectangleD& b, RectangleD* out);
