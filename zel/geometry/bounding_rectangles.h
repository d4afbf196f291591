#pragma once

/// @file
/// Bounding rectangles, in the xy plane, of circles and arcs and of the projections of spheres and
/// cylinders. All four corners are written with z = 0.

#include "zel/core/api.h"
#include "zel/geometry/records.h"

/// Bounding rectangle of the circle of centre c through p.
///
/// corner0 holds the smallest and corner2 the largest x and y, but corner3 equals corner2, and of
/// corner1 only the x (the largest) and the z are written.
ZEL_API void slGetCircleRectangle(const float c[3], const float p[3], RectangleD* out);

/// Bounding rectangle of the arc from a to b about c, in x and y.
///
/// Where the arc runs is told by the directions (`slGetCentralAngle`) of the points a and b
/// themselves, so c should be the origin. Where it passes an axis it is taken to reach as far as
/// the length of (s.x, s.y, e.x), with s = a - c and e = b - c: the radius when b lies straight
/// above or below c, more otherwise.
/// @param dir  147 counter-clockwise, any other value clockwise
ZEL_API void slGetArcRectangle(short dir, const float a[3], const float b[3], const float c[3],
                               RectangleD* out);

/// Extent of a counter-clockwise arc relative to its centre.
///
/// Where the arc passes a half axis, or ends less than 0.0001 short of it, the extent is r;
/// elsewhere it is that of the end points.
/// @param s, e              start and end, relative to the centre
/// @param startAng, endAng  their angles in radians from +x; a smaller endAng is taken a turn on
/// @param[out] min, max     smallest and largest x and y
ZEL_API void slGetCCWArcRectangle(const float s[2], const float e[2], float startAng, float endAng,
                                  float r, float min[2], float max[2]);
/// Extent of a clockwise arc, as `slGetCCWArcRectangle`; a larger endAng is taken a turn back.
ZEL_API void slGetCWArcRectangle(const float s[2], const float e[2], float startAng, float endAng,
                                 float r, float min[2], float max[2]);

/// Rectangle around the projection of a sphere on the xy plane: a square of half-width r about c.
///
/// Seen along z (|dir.x| + |dir.y| below 0.0001) it stands along the axes. Otherwise it is turned:
/// with u the unit direction of (dir.x, dir.y) and w the direction a quarter turn to its left, the
/// corners 0 to 3 are c - u - w, c + u - w, c + u + w and c - u + w, each with r times u and w, so
/// that the edge from corner0 to corner1 runs along u.
ZEL_API void slGetSphereProjRect(const float c[3], float r, const float dir[3], RectangleD* out);

/// The smallest rectangle along the axes around the projection of a cylinder with flat ends on the
/// xy plane; corner0 holds the smallest and corner2 the largest x and y, corner1 the largest x with
/// the smallest y.
///
/// Each end is a disc, which reaches radius * sqrt(1 - axis.x^2) to both sides in x, and
/// correspondingly in y.
/// @param base  centre of one end
/// @param axis  unit vector toward the other end
/// @param radius, length  of the cylinder; signs of the radius do not matter
ZEL_API void slGetCylinderProjRect(const float* base, const float* axis, float radius, float length,
                                   RectangleD* out);
