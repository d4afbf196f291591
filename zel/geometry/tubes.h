#pragma once

/// @file
/// Tubes fitted to points.

#include "zel/core/api.h"

class Point3DArr;

/// Fits a vertical tube to the live points of an array: the circle in x and y from which their
/// distances have the smallest sum of squares. Heights do not matter.
///
/// An algebraic fit is refined on the geometric distances, in time proportional to the number of
/// points and with no memory of its own.
/// @param[out] centre  x and y of the axis
/// @param[out] radius  of the tube
/// @return 1; 0 with both outputs untouched when the points, seen from above, all lie within about
///   0.0001 of each other or on one line (their spread across it is at most 0.0001 of that along
///   it), when there are fewer than three, or when a coordinate is not a finite number; also when
///   the circle is none of theirs: it misses them by more than a tenth of their extent (root mean
///   square), or its radius exceeds 10,000 times that extent. The extent is the larger side of the
///   rectangle around them.
/// @see I. Kasa, A circle fitting procedure and its error analysis, 1976; N. Chernov, Circular and
///   Linear Regression, 2010, chapter 4.
ZEL_API int slGenVerticalTube(const Point3DArr& pts, float* centre, float* radius);
