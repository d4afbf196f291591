#pragma once

/// @file
/// Tolerant scalar functions. The rest of the geometry calls these instead of the standard ones, so
/// their snapping (tiny values become 0, values near 1 become 1) shows in every result.
/// Angles are radians unless a function says degrees. No function fails or keeps state; a NaN falls
/// to the last case that a function names.

#include "zel/core/api.h"

/// Absolute value with a dead band.
/// @return |x| when it is above 0.0001, otherwise 0 (at exactly 0.0001 and for NaN, too).
ZEL_API float slFabs(float x);
/// Absolute value with a dead band a thousand times finer than that of the `float` form.
/// @return |x| when it is above 1e-8, otherwise 0.
ZEL_API double slFabs(double x);

/// @return the square root of x when x >= 1e-8; 0 for everything smaller, negative or NaN.
ZEL_API double slSqrt(double x);

/// Tangent of an angle, first brought into [-pi, pi] by whole multiples of the library's pi.
/// @return 0 within 0.0001 of 0 and for infinite x; 1e18 within 0.0001 of +pi/2. An angle near
///   -pi/2 is not caught and gives a large negative value.
ZEL_API double slTan(double x);
/// @return the arc cosine; 0 for x > 0.9999 and the library's pi for x < -0.9999, also outside
///   [-1, 1].
ZEL_API double slAcos(double x);
/// @return the arc sine; plus or minus half the library's pi for x beyond plus or minus 0.9999.
ZEL_API double slAsin(double x);
/// Arc tangent of y / x. This is not the two-argument arc tangent: quadrants are not told apart.
/// @return within (-pi/2, pi/2); +pi/2 when |x| <= 0.0001, whatever the sign of y.
ZEL_API double slAtan(double x, double y);

/// @return the cosine; within 0.0001 of 0, 1 and -1 it is exactly that value.
ZEL_API float slCos(float angle);
/// @return the sine; within 0.0001 of 0, 1 and -1 it is exactly that value.
ZEL_API float slSin(float angle);

/// @return 1 for x > 0.0001, 0 for x >= -0.0001, otherwise -1 (NaN too).
ZEL_API int slSign(float x);
/// Rounds halves up for positive x; negative x goes toward zero (-2.7 gives -2, -0.7 gives 0).
/// @return x + 0.5 cut off toward zero; -2147483648 when an int cannot hold it, and for NaN.
ZEL_API int slRound(float x);
/// Cuts off (does not round) after two decimals: 1.239 gives 1.23. Values stored just below their
/// decimal form are saved from losing a hundredth.
/// @return a multiple of 0.01F; -2147483648 hundredths when x is too large for an int of them.
ZEL_API float slKeepTwoDecimal(float x);

/// Remainder for angles: for positive b it lies above 0 and a whole multiple of b gives b, not 0;
/// negative a wraps to the positive side. slMod(720, 360) is 360, slMod(-90, 360) is 270.
/// @return about a itself when |a / b| <= 0.0001, so that 0 stays 0. Division by b = 0 follows the
///   rules of IEEE 754.
ZEL_API float slMod(float a, float b);

/// @return the larger of the two.
ZEL_API int slMaxI2(int a, int b);
/// @return the smaller of the two.
ZEL_API int slMinI2(int a, int b);
/// Brings *v into [lo, hi]; the upper bound is tested first and only one of them is applied.
/// @return the new *v.
ZEL_API int slFitI(int* v, int lo, int hi);
/// Where c lies on the range from a (0) to b (1); not clamped.
/// @return 1 when the range is no longer than 0.0001.
ZEL_API double slGetRatio(double a, double b, double c);

/// Degrees to radians, with the library's pi.
ZEL_API float slAngleToRadian(float degrees);
/// Radians to degrees, with the library's pi.
ZEL_API float slRadianToAngle(float radians);

/// Mirrors an angle about the vertical (y) axis in place: half a turn minus the angle.
/// Only one full turn is added or taken away first. @return 1.
ZEL_API int slMirrorAngleAboutVerticalAxis(float* angle);
