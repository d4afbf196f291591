#pragma once

/// @file
/// Lines, rays and segments against each other, planes and polygons, and planes against planes.
///
/// Points and vectors are `float[3]` unless the signature says `float[2]`. A line given by two
/// points has the parameter 0 at the first and 1 at the second; on a line or ray given by a point
/// and a direction u the parameter counts lengths of u, and a ray runs toward positive ones.
/// Outputs are untouched where a result code does not name them.

#include "zel/core/api.h"
#include "zel/geometry/records.h"

// --- line with line ---------------------------------------------------------------------------

/// Intersection of the lines through a0, a1 and b0, b1, which are taken to lie in one plane: only
/// the two coordinates that suit best are solved, so skew lines give 1 as well.
/// @param[out] t, s  parameters on a and b, 0 at the first point and 1 at the second; written on 1
/// @return 1 found; 2147483647 parallel and b0 less than 0.0001 from the first line (one line);
///   0 parallel and apart, or so short that no two coordinates can be solved.
ZEL_API int slIntersectLines3D(const float a0[3], const float a1[3], const float b0[3],
                               const float b1[3], float* t, float* s);

/// Intersection of the lines through a0 along u and through b0 along v.
///
/// Whether they are coplanar is judged, by `slJudgeLineCoPlane`, on stretches of ten u and ten v.
/// @param[in,out] t, s  parameters in lengths of u and v: of the intersection on 1, of the closest
///   approach on -1; on 0 and 2147483647 ten times what they held before the call
/// @return -1 skew, otherwise the code of `slIntersectLines3D`.
ZEL_API int slIntersectInfLines(const float a0[3], const float u[3], const float b0[3],
                                const float v[3], float* t, float* s);

/// Intersection of a ray with a segment in the plane (x and y).
///
/// A ray parallel to the segment is taken to run along its line, which is not tested: it meets b0,
/// or b1 when b0 lies behind it.
/// @param u  unit direction of the ray
/// @param[out] t, s  parameters on the ray and on the segment; also written on a 0 that is not due
///   to parallels. For parallels t is the distance to b0 and s is 0, or t is 0 and s is 1.
/// @return 1 when t > -0.0001 and -0.0001 < s < 1.0001; 2147483647 parallel with b0 or b1 ahead;
///   0 no intersection.
ZEL_API int slIntersectLines2D(const float p[2], const float u[2], const float b0[2],
                               const float b1[2], float* t, float* s);

/// The point of the segment from b0 to b1 that belongs to the line through a0 along u.
///
/// With e = b1 - b0, w = a0 - b0, m = -(e.u), D = |e|^2 |u|^2 - m^2, A = w.e, B = w.u and
/// k = (B |e|^2 - A m) / D, the parameter on the segment is s = (A |u|^2 - B m) / D when k > 0 and
/// sDefault otherwise. It is that of the closest point where e and u are perpendicular; an oblique
/// line is answered by the formula as it stands. For parallels D vanishes, and the result is 0
/// when B > 0.
/// @param[out] out  (1 - s) b0 + s b1, written on 1
/// @return 1; 0 when s is not in (-0.0001, 1.0001).
ZEL_API int slIntersecLines(const float a0[3], const float u[3], const float b0[3],
                            const float b1[3], float out[3], float sDefault);

/// How a polygon passes a vertex that lies on the horizontal line through p (in the plane).
/// @param i      index of the vertex
/// @param count  number of points; the list is closed, its last point repeats the first
/// @param step   how far the next neighbour is from i; the previous one is always i - 1
/// @return 1 crossing: the neighbours lie on opposite sides of the line, or one lies on it;
///   2 touch: both on the same side, and when i or a neighbour is not in the list.
ZEL_API int slGetIntersectType(const float p[2], int i, int count, const float (*poly)[2],
                               int step);

/// The perpendicular offset from one of two parallel lines to the other; a0 and b0 are points of
/// the lines, u and v their directions.
/// @param[out] out  from a0 to the nearest point of the second line; written on 1
/// @return 1; 0 when the lines are not parallel (`slVectParallel`) or are one and the same.
ZEL_API int slCalculateVectTwoParallel(const float (&a0)[3], const float (&u)[3],
                                       const float (&b0)[3], const float (&v)[3], float out[3]);

// --- line and ray with plane and polygon ------------------------------------------------------

/// Intersection of the line through p along u with the plane n.x + d = 0.
/// @param n  unit normal
/// @return 1 with the point in out; 3 when the line lies in the plane (both u.n and the distance of
///   p are within 0.0001 of 0). A line parallel to the plane but off it is not told apart: the
///   division is carried out, and out is far away or infinite.
ZEL_API int slLineIntersectPlane(const float p[3], const float u[3], const float n[3], float d,
                                 float out[3]);

/// Intersection of the ray from p along u with the plane n.x + d = 0.
/// @param n  unit normal
/// @param[out] out  the point, p itself when that lies on the plane; written on 1 and -1
/// @return 1 the plane is met ahead or at p; -1 it lies behind; 3 the ray lies in it. A ray that is
///   parallel to the plane but off it is not told apart, as in `slLineIntersectPlane`.
ZEL_API int slRadialIntersectPlane(const float p[3], const float u[3], const float n[3], float d,
                                   float out[3]);

/// The ray from p along u against a plane polygon, given by at least three points.
///
/// Where the ray meets the plane is asked of `slJudgePntInPolygon`, which turns the polygon about
/// that point but then tests the place of the world origin: the answer is about the meeting point
/// when the polygon's coordinates are relative to it.
/// @param[out] out  where the ray meets the polygon's plane; untouched on 3, 4 and 5
/// @return 0 inside; 1 outside or on an edge; -1 the plane lies behind; 3 the points are not
///   coplanar, or the ray lies in their plane; 4 all points coincide (also for count < 1); 5 all
///   lie on one line.
ZEL_API int slRadialIntersectFaceM(const float p[3], const float u[3], const float (*pts)[3],
                                   int count, float out[3]);

/// Whether a ray passes a point of a frame's xy plane more closely than r.
/// @param p, u    the ray, in the world
/// @param q       point in the frame's plane, local
/// @param motion  places the frame in the world
/// @return 1 when the ray meets the plane ahead (or starts on it) at a distance below r from q,
///   else 0.
ZEL_API int slJudgeRadialThroughPntM(const float p[3], const float u[3], const float q[2], float r,
                                     const float (&motion)[16]);

/// Whether a ray passes a segment of a frame's xy plane.
///
/// With h where the ray meets the plane, e = b - a and w = h - a: L is the length of
/// (e.x, e.y, w.x), three components, and c = (e.w) / (|w| L). The ray passes when 0 < c < 1 and
/// r^2 > L^2 - c^2. This is not the distance of h from the segment.
/// @param a, b    ends of the segment in the frame's plane, local
/// @return 1 when it passes, else 0.
ZEL_API int slJudgeRadialThroughLineM(const float p[3], const float u[3], const float a[2],
                                      const float b[2], float r, const float (&motion)[16]);

// --- plane with plane -------------------------------------------------------------------------

/// The line in which two planes meet, each given by a point and a unit normal.
/// @param[out] pt   a point of the line, in the plane through pa perpendicular to it; written on 3
/// @param[out] dir  its unit direction, along na x nb; (1, 0, 0) on 1 and 2
/// @return 3 they meet; 1 parallel, pb more than 0.0001 off the first plane; 2 the same plane.
ZEL_API int slGetPlaneIntersectM(const float pa[3], const float na[3], const float pb[3],
                                 const float nb[3], float pt[3], float dir[3]);

/// A point that two planes have in common: the one with x = 0 if there is one, otherwise with
/// y = 0, otherwise with z = 0 (`slLineEquation2` decides).
/// @param[out] out  the point; (0, 0, 0) on 0
/// @return 1, or 0 when the planes are parallel.
ZEL_API int slGetPointOnIntersectLine(const PlaneD& a, const PlaneD& b, float out[3]);
