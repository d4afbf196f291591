#pragma once

#include <array>

#include "tools/zel/mesh_document.h"

namespace zel::program {

/// Three axes through the mean of a point set, by falling spread.
struct PrincipalAxes {
  Vector mean;
  std::array<Vector, 3> axes;       ///< unit vectors, right-handed
  std::array<double, 3> variances;  ///< mean square distance from `mean` along each axis
};

/// Principal axes of the available points, from the eigenvectors of their covariance (Jacobi
/// rotations; W. H. Press et al., Numerical Recipes, 11.1).
[[nodiscard]] PrincipalAxes principalAxesOf(const Point3DArr& points);

struct FittedPlane {
  Point normal;
  float d;           ///< normal . X + d = 0
  float shapeError;  ///< as Point3DArr::GetShapeErrorToPlaneM()
};

struct FittedLine {
  Point point;
  Point direction;
  float shapeError;       ///< as Point3DArr::GetShapeErrorToLineM()
  float averageDistance;  ///< of the points from the line
};

struct FittedCircle {
  Point centre;
  Point normal;
  float radius;
  float shapeError;  ///< as Point3DArr::GetShapeErrorToCircleM()
};

/// Least-squares plane: distances are measured along the coordinate axis nearest to its normal.
/// @return false when the points lie on a line or in one place.
bool fitPlane(const Point3DArr& points, FittedPlane& plane);
/// Line of the least squared distances. @return false when all points lie in one place.
bool fitLine(const Point3DArr& points, FittedLine& line);
/// Circle in the least-squares plane, fitted there by the library's vertical tube.
/// @return false when the points lie on a line or in one place.
bool fitCircle(const Point3DArr& points, FittedCircle& circle);

}  // namespace zel::program
