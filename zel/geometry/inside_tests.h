#pragma once

/// @file
/// Point in triangle, quadrilateral and polygon. What works in the plane uses x and y only;
/// vertices may be given in either order.

#include "zel/core/api.h"

/// Whether p lies in the triangle a, b, c.
/// @return 1 inside, 0 outside. A point on an edge is inside for a triangle given clockwise and may
///   be outside for the same triangle given counter-clockwise.
ZEL_API int slIsPntInsideOfTriangle(const float p[2], const float a[2], const float b[2],
                                    const float c[2]);
/// Whether p lies in the quadrilateral a, b, c, d, given in order. It is cut along a diagonal that
/// lies inside it, and each half is tested with `slIsPntInsideOfTriangle`.
/// @return 1 inside, 0 outside.
ZEL_API int slIsPntInsideOfTrapezium(const float p[2], const float a[2], const float b[2],
                                     const float c[2], const float d[2]);
/// One polygon edge a-b against the ray from (px, py) toward +x.
/// @param[out] hit, t  where the ray's line crosses the edge, and its parameter from a to b; both
///   are written only when the edge crosses the height of the ray strictly
/// @return 1 the ray crosses the edge; 2 the point lies on the edge; 3 the edge lies ahead on the
///   ray; 4 no crossing. An end exactly at the height of the ray is no crossing.
ZEL_API int slRightInter(float px, float py, const float a[2], const float b[2], float hit[2],
                         float* t);
/// Point in polygon by counting the crossings of a ray toward +x (`slRightInter`). The list may be
/// open or repeat its first point at the end.
///
/// A ray that meets a vertex exactly misses both edges there, so a point at exactly the height of a
/// vertex may be judged wrongly: the centre of a square standing on its corner is outside.
/// @return 1 inside, 0 outside or on an edge, and for count < 2.
ZEL_API int slPointInterFaceM(const float (*poly)[2], int count, const float p[2]);
/// The world origin against a polygon in space.
///
/// The polygon is turned about p so that n becomes +z and then tested in the plane, as by
/// `slPointInterFaceM`, against the point (0, 0), not against p itself. Give vertices relative to
/// the point in question to test that one.
/// @param n  unit normal of the polygon
/// @return 1 inside, 0 outside or on an edge, and for count < 1.
ZEL_API int slJudgePntInPolygon(int count, const float (*pts)[3], const float n[3],
                                const float p[3]);
