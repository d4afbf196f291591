#pragma once

/// @file
/// How far apart two points may lie and still count as one.

#include "zel/core/api.h"

namespace zel {

struct Bounds;
struct Mesh;

/// A distance, either in the unit of the mesh or as a fraction of the mesh's size.
struct Tolerance {
  double value = 0.0;       ///< 0 or more
  bool isRelative = false;  ///< whether `value` is a fraction of the diagonal of the bounds
};

/// A distance in the unit of the mesh. 0 takes equal positions only.
[[nodiscard]] constexpr Tolerance Absolute(double distance) { return {distance, false}; }

/// A fraction of the diagonal of the mesh's bounds.
[[nodiscard]] constexpr Tolerance Relative(double fraction) { return {fraction, true}; }

/// What is used unless something else is asked for: far below any detail, whatever the unit.
inline constexpr Tolerance kDefaultTolerance = Relative(1e-6);

/// The distance that a tolerance stands for in a mesh of the given bounds. A relative tolerance
/// above 0 is never less than two units in the last place of the largest coordinate, below which
/// single-precision positions cannot differ in a meaningful way; an absolute one is taken as it is.
/// @return a distance >= 0 in the unit of the mesh.
/// @throws Error code kArgument when the value is negative or not finite.
[[nodiscard]] ZEL_API double resolve(Tolerance tolerance, const Bounds& bounds);
/// As above with the bounds of a mesh, in linear time for a relative tolerance.
[[nodiscard]] ZEL_API double resolve(Tolerance tolerance, const Mesh& mesh);

}  // namespace zel
