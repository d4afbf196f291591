#pragma once

/// @file
/// Planar curves of lines and circular arcs: one record per element and its editing. Arcs are
/// constructed and cut in zel/curves/arcs.h, which this header brings along; docs/curves.md shows
/// both with figures.
///
/// Profiles lie in the xz plane. A point of an arc at angle t is
/// centre + radius1 (sin t, 0, cos t): angles run from +z toward +x, in radians. Points are
/// `float[3]`, and arguments may be fields of the record that is being changed.

#include "zel/core/api.h"
#include "zel/curves/arcs.h"

namespace zel {

// Values of TouchCurD::type. Every other value belongs to the application.
inline constexpr int kCurveLine = 1;         ///< straight line
inline constexpr int kCurveArc = 146;        ///< arc of a profile that can be offset and mirrored
inline constexpr int kCurveArcXy = 154;      ///< arc in the xy plane
inline constexpr int kCurveArcYz = 155;      ///< arc in the yz plane
inline constexpr int kCurveArcZx = 156;      ///< arc in the zx plane, which can be cut
inline constexpr int kCurveHelixYz = 158;    ///< arc about x that climbs along x
inline constexpr int kCurveHelixZx = 159;    ///< arc about y that climbs along y
inline constexpr int kCurveRigidLine = 163;  ///< line that slTouchCurDOffset() leaves alone
inline constexpr int kCurveOtherLine = 164;  ///< line whose `centre` moves along

// Values of TouchCurD::direction; any other value counts as kCurveBackward.
inline constexpr int kCurveForward = 143;   ///< travel from startPnt to endPnt
inline constexpr int kCurveBackward = 144;  ///< travel from endPnt to startPnt

}  // namespace zel

/// One element of a planar curve. A plain record: copying it copies everything.
struct TouchCurD {
  int type;           ///< what the element is, see zel::kCurveLine and those that follow
  int direction;      ///< sense of travel of an arc; lines always run from startPnt to endPnt
  float centre[3];    ///< centre of an arc
  float startPnt[3];  ///< one end
  float endPnt[3];    ///< the other end
  float auxPnt1[3];   ///< the application's
  float auxPnt2[3];   ///< the application's
  float radius1;      ///< radius of an arc
  float radius2;      ///< climb of a helical arc per turn of 6.283185
  float startAng;     ///< angle of startPnt about the centre
  float endAng;       ///< angle of endPnt about the centre
};

// --- filling ----------------------------------------------------------------------------------

/// Makes the record empty: type and direction -2147483647, every other field -1e18. @return 1.
ZEL_API int slInitTouchCurD(TouchCurD* c);
/// Sets type, startPnt and endPnt and nothing else. @return 1.
ZEL_API int slSetLine(TouchCurD* c, int type, const float* p1, const float* p2);
/// Sets all fields of an arc except the auxiliary points; startPnt = p1, endPnt = p2 in either
/// direction. The radius goes to radius1 and to radius2. @return 1.
ZEL_API int slSetArc(TouchCurD* c, int type, int direction, const float* p1, const float* centre,
                     const float* p2, float radius, float startAng, float endAng);
/// Copies every field. @return 1.
ZEL_API int slTouchCurDCopy(const TouchCurD& from, TouchCurD* to);

// --- ends in the direction of travel ------------------------------------------------------------

/// Where travel begins: startPnt of a line (types 1, 163, 164) and of a forward arc, else endPnt.
/// Every type that is no line counts as an arc. @return 1.
ZEL_API int slGetStartPnt(const TouchCurD* c, float p[3]);
/// Same as slGetStartPnt().
ZEL_API int slGetCurveStartPnt(const TouchCurD* c, float p[3]);
/// Where travel ends, the other point than slGetStartPnt() gives. @return 1.
ZEL_API int slGetCurveEndPnt(const TouchCurD* c, float p[3]);
/// Same as slGetCurveEndPnt().
ZEL_API int GetCurveEndPnt(const TouchCurD* c, float p[3]);
/// Writes the point that slGetStartPnt() reads. @return 1.
ZEL_API int slSetCurveStartPnt(TouchCurD* c, const float p[3]);
/// Writes the point that slGetCurveEndPnt() reads. @return 1.
ZEL_API int slSetCurveEndPnt(TouchCurD* c, const float p[3]);
/// As slSetCurveStartPnt() with result 1, unless startPnt and endPnt coincide (no component more
/// than 0.0001 apart): then both become p and the result is 0.
ZEL_API int slSetStartPnt(TouchCurD* c, const float p[3]);
/// As slSetCurveEndPnt(), with the rule of slSetStartPnt() for an element without extent.
ZEL_API int slSetEndPnt(TouchCurD* c, const float p[3]);

// --- moving -------------------------------------------------------------------------------------

/// Moves the element by d. The centre moves, too, unless the type is 1.
ZEL_API void slTouchCurDMove(const float d[3], TouchCurD* c);

/// Mirrors the element in the line z = a.z of the profile plane.
/// An arc of type 146 also has its centre mirrored, its direction reversed (whatever is not 143
/// becomes 143) and its angles replaced by those of the mirrored points, as
/// slMirrorAngleAboutVerticalAxis() gives them; then endAng gains a turn when the arc is forward
/// and startAng exceeds it, startAng when it is backward and below endAng. Of other types only the
/// end points are mirrored.
/// @param mode 0 mirrors; any other value does nothing.
/// @return always 0.
ZEL_API int slTouchCurDMirror(TouchCurD* c, const float a[3], int mode);

/// Gives an element a new start and tells its end.
/// - Type 1: startPnt becomes p and `out` receives endPnt. With mode 55 endPnt has first been
///   carried along by p - startPnt. When endPnt then coincides with the old startPnt (no component
///   more than 0.0001 apart), both become p, and `out` too.
/// - Types 154 to 159: the arc is moved so that travel begins at p; `out` receives where it ends.
/// - Any other type: `out` receives p.
/// @param ref not used.
/// @return 1, or 0 for any other type.
ZEL_API int slTouchCurTransCoord(TouchCurD* c, int mode, const float* ref, const float* p,
                                 float* out);

/// Shifts an element sideways, parallel to itself.
/// - Types 1 and 164: moves the line by `dist` along the part of `ref` that is perpendicular to it;
///   nothing happens when `ref` is parallel to the line.
/// - Type 146: the radius grows by `dist` when `ref` points outward at startPnt and shrinks when
///   inward; nothing happens when it does neither (their dot product within 0.0001 of 0). Both ends
///   move along their radii. Centre, radius2 and angles stay. A radius of 0 gives infinities or
///   NaN.
/// - Any other type, 163 among them, is left alone.
ZEL_API void slTouchCurDOffset(float dist, const float* ref, TouchCurD* c);

/// Moves p radially onto a circle in the plane.
/// @return 1; or 0 when p is closer than 0.0001 to the centre, and p is then the circle's point in
///         the direction of +x.
ZEL_API int slCalCirPnt(const float centre[2], float r, float p[2]);
