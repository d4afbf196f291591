#pragma once

/// @file
/// Intersections.

#include "zel/core/api.h"

// --- line with line ---------------------------------------------------------------------------

/// Intersection of the lines through a0, a1 and b0, b1, which are taken to lie in one plane: only
/// the two coordinates that suit best are solved, so skew lines give 1 as well.
/// @param[out] t, s  parameters on a and b, 0 at the first point and 1 at the second; written on 1
/// @return 1 found; 2147483647 parallel and b0 less than 0.0001 from the first line (one line);
///   0 parallel and apart, or so short that no two coordinates can be solved.
ZEL_API int slIntersectLines3D(const float a0[3], const float a1[3], const float b0[3],
                               const float b1[3], float* t, float* s);
