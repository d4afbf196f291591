#pragma once

/// @file
/// Planes, lines and circles through points.
///
/// All fits work on the points seen from their mean and scaled to a common size, so that neither
/// the unit nor the distance from the origin matters. Points that differ by less than two units in
/// the last place of their largest coordinate count as being in one place.
///
/// A *shape error* is the root of the summed squares of (distance - mean distance), divided by the
/// number of points.

#include <array>
#include <optional>
#include <span>

#include "zel/core/api.h"
#include "zel/core/plain_types.h"

namespace zel {

/// Three axes through the mean of a point set, by falling spread.
struct PrincipalAxes {
  Double3 mean;                     ///< of the points
  std::array<Double3, 3> axes;      ///< unit vectors, right-handed
  std::array<double, 3> variances;  ///< mean square distance from `mean` along each axis
};

/// A fitted plane: normal . X + d = 0.
struct FittedPlane {
  Double3 normal;     ///< unit
  double d;           ///< constant of the equation
  double shapeError;  ///< of the distances from the plane
};

/// A fitted line.
struct FittedLine {
  Double3 point;           ///< the mean of the points
  Double3 direction;       ///< unit
  double shapeError;       ///< of the distances from the line
  double averageDistance;  ///< mean distance of the points from the line
};

/// A fitted circle.
struct FittedCircle {
  Double3 centre;     ///< lies in its plane
  Double3 normal;     ///< unit, of its plane
  double radius;      ///< in the unit of the points
  double shapeError;  ///< of (distance from the centre) - radius
};

/// Principal axes of points, from the eigenvectors of their covariance (Jacobi rotations; W. H.
/// Press et al., Numerical Recipes, 11.1). Linear in the points.
/// @return zero means and variances for no points.
[[nodiscard]] ZEL_API PrincipalAxes principalAxesOf(std::span<const Float3> points);

/// Least-squares plane: distances are measured along the coordinate axis nearest to its normal.
/// @return nothing when the points lie on a line or in one place, or are not finite.
/// @throws Error (kExhausted).
[[nodiscard]] ZEL_API std::optional<FittedPlane> fitPlane(std::span<const Float3> points);
/// Line of the least squared distances.
/// @return nothing when all points lie in one place, or are not finite. @throws Error (kExhausted).
[[nodiscard]] ZEL_API std::optional<FittedLine> fitLine(std::span<const Float3> points);
/// Circle in the least-squares plane, fitted there by slGenVerticalTube().
/// @return nothing when the points lie on a line or in one place, or no circle comes near them.
/// @throws Error (kExhausted).
[[nodiscard]] ZEL_API std::optional<FittedCircle> fitCircle(std::span<const Float3> points);

}  // namespace zel
