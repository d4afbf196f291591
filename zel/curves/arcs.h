#pragma once

/// @file
/// Arcs from chords, angles on circles, and curve elements cut by lines of constant x. Chapter of
/// zel/curves/touch_cur.h, where record, angles and direction codes are described.
///
/// The chord functions take the two coordinates of the profile plane as x and y. Of their sense
/// codes only 144 (in slCalArcRadiusPnt() only 143) is told apart from all other values. Outputs
/// are written only where the result is 1.

#include "zel/core/api.h"

struct TouchCurD;

// --- arcs from chords ---------------------------------------------------------------------------

/// Centre of the arc of radius |r| from (x1, y1) to (x2, y2).
/// With dir 143 and r > 0 the centre lies to the left of the chord; dir 144 and a negative radius
/// each exchange the sides.
/// @return 1; 0 when the points are more than 2 |r| + 0.0002 apart. Points at most 0.0002 apart get
///         the centre (x1 + r, y1).
ZEL_API int slCalArcCent(int dir, float x1, float y1, float x2, float y2, float r, float* cx,
                         float* cy);

/// Radius and centre of the arc from (x1, y1) to (x2, y2) with a given central angle. Sides as
/// slCalArcCent() takes them for a positive radius.
/// @param[out] r negative when the angle is, which does not move the centre.
/// @return 1; 0 when the points are at most 0.0002 apart or sin(angle / 2) is within 0.0001 of 0.
ZEL_API int slCalArcCentRadius(int dir, float x1, float y1, float x2, float y2, float angle,
                               float* r, float* cx, float* cy);

/// The point (x1, y1) turned about (x2, y2) by |angle|: clockwise, or the other way when dir is
/// 143. Note that here 143 is the special value, not 144.
/// @param[out] len distance of the two points, the radius of that turn.
/// @return 1, and where sin(|angle| / 2) is within 0.0001 of 0 the point stays; 0 when the points
///         are less than 0.0001 apart.
ZEL_API int slCalArcRadiusPnt(int dir, float x1, float y1, float x2, float y2, float angle,
                              float* len, float* px, float* py);

/// Circle of a given radius that touches two lines in space.
/// The lines a-b and c-d must meet in a point; the circle lies in the angle between the directions
/// from there to b and to d. Where b (or d) is that point itself, the direction is the one to a (or
/// c), so two lines that join at a corner are rounded off inside.
/// @param radius above 0.0001.
/// @param[out] centre, touch1, touch2 `float[3]`: the centre and where it touches a-b and c-d; the
///             points of touch may lie beyond the ends of the segments.
/// @return 1; 0 with the outputs untouched when a line is no longer than 0.0001, the lines are
///         parallel (sine of the angle below 0.0001) or pass each other by 0.0001 or more, or the
///         radius is of no use.
ZEL_API int slGetTangentCircle(const float* a, const float* b, const float* c, const float* d,
                               float radius, float* centre, float* touch1, float* touch2);

// --- angles -------------------------------------------------------------------------------------

/// Angle of the point (px, py) on the circle of centre (cx, cy) and radius r, from the first axis
/// toward the second. On a profile the first axis is z and the second x. slGetCircleAng() takes the
/// same on arrays.
/// @return radians from 0 to 6.283185: slAcos() of the first coordinate over r, taken from 6.283185
///         where the second is negative. Within 0.8 degrees of the first axis it snaps to 0 or
///         6.283185, and opposite to pi.
ZEL_API float slGetArcAng2(float cx, float cy, float px, float py, float r);

/// Direction of the segment from a to b, from +z: toward +x in the plane seen along y when mode is
/// 1, toward -y in the plane seen along x otherwise.
/// @return radians from 0 up to 6.283185.
ZEL_API float slGetDirectAngleToZ(int mode, const float a[3], const float b[3]);

/// Fills an arc whose type (154 xy, 155 yz, 156 zx) and direction are already set, from its ends in
/// the direction of travel.
/// Stored are the points (p1 and p2 exchanged unless the direction is 143), centre, radius1 and the
/// angles from slGetArcAng2() in the plane's coordinates (x, y), (y, z) or (z, x). endAng gains a
/// turn when it is below startAng; angles less than 0.10471975 (6 degrees) apart are a full turn
/// when the points coincide in the plane or r is at most 0.0001, and else when the chord does not
/// turn left from the radius. Angles of type 156 always end with startAng + 0.0001 < endAng.
/// An arc of type 155 or 156 whose ends differ by more than 0.0001 along the plane's normal becomes
/// a helix, 158 or 159, with radius2 its climb per turn.
/// @return 1; 0 for any other type, with points, centre and radius1 set.
ZEL_API int slSetArcPara(TouchCurD* c, const float* p1, const float* p2, const float* centre,
                         float r);

// --- cutting ------------------------------------------------------------------------------------

/// The point of the line ab at the height of p, as if p moved along x; its y is 0. A line no more
/// than 0.0001 high gives the one of a and b that is nearer to p in x, b when both are.
ZEL_API void slProjToLineAlongXOnXZ(const float a[3], const float b[3], const float p[3],
                                    float out[3]);

/// Where an element crosses the line of constant x in the profile plane.
/// - A line (type 1) has at most one crossing: its start when within 0.0001 of x (parameter 0),
///   else its end (parameter 1), else a point between (no parameter written); its y is the start's.
/// - An arc of type 156 has up to two, with their angles as parameters, first the one whose angle
/// is
///   smaller before a turn is added; none where |x - centre.x| reaches 0.9999 radius1. The angles
///   of the record are tested with 0.0001 to spare. When endAng is more than that below startAng,
///   it gains a turn in the record itself.
/// - Other types have none.
/// @param[out] out   eight floats: out[0] and out[1] are points; out[2][0] and out[2][1], the two
///                   floats after them, are their parameters.
/// @param[out] count crossings found, 0 to 2; the outputs of the others are untouched.
/// @return always 1.
ZEL_API int slFindIntPnt(TouchCurD* c, float x, float (*out)[3], int* count);

/// Keeps the part of a line (types 1 and 164) from x to its end, when it starts there above z.
/// @param sense 1 for above z, -1 for below.
/// @param[out] out receives type, x and z of both points and nothing else: for a line that crosses
///             x the crossing and the end; for one that does not, but starts within 0.0001 of x,
///             its start (with this x) and its end. Untouched when the start is not above z by
///             more than 0.0001.
/// @return always 0.
ZEL_API int slZxIntCur(const TouchCurD* c, float x, float z, int sense, TouchCurD* out);
