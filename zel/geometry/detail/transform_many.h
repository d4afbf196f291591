#pragma once

// Many points or directions through one matrix. Results are those of slMatrix16MultiPoint3 and
// slMatrix16MultiVector3, bit for bit; only the order in which vectors are taken differs.

#include <cstddef>

namespace zel {

/// `count` vectors of three floats that stand `stride` bytes apart, in place inside whatever
/// records hold them.
struct VectorRun {
  float* first;
  std::size_t count;
  std::size_t stride = 3 * sizeof(float);
};

/// Transforms every point in place. The matrix must lie outside the run.
void transformPoints(const float m[16], VectorRun points);
/// Turns every direction in place, without the translation.
void transformDirections(const float m[16], VectorRun directions);
/// Transforms every point and turns the direction that belongs to it, in one pass over memory.
/// @param firstDirection  the first point's; every other one stands as far behind its point
void transformPointsAndDirections(const float m[16], VectorRun points, float* firstDirection);

}  // namespace zel
