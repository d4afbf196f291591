#pragma once

/// @file
/// The plain records that the geometry functions take and give. None of them checks its content.

/// A plane, held as one of its points and a normal.
struct PlaneD {
  float point[3];   ///< a point of the plane
  float normal[3];  ///< perpendicular to the plane, not necessarily of unit length
};

/// A right-handed local coordinate system (zAxis = xAxis x yAxis) placed in the world.
/// `slGenMatrixToWorld` and `slGenMatrixToLocal` convert between the two.
struct XYCoordSysD {
  float origin[3];  ///< where the system stands in the world
  float xAxis[3];   ///< unit
  float yAxis[3];   ///< unit
  float zAxis[3];   ///< unit
};

/// A rectangle in space by its four corners, in order around it.
///
/// The edge from corner0 to corner1 gives its x direction; corner3 lies on the y side. In standard
/// position corner0 is the origin, corner1 lies on +x, corner3 on +y, every z is 0, and corner2
/// therefore holds the largest x and y.
struct RectangleD {
  float corner0[3];  ///< the reference corner
  float corner1[3];  ///< the end of the x side that starts at corner0
  float corner2[3];  ///< opposite corner0
  float corner3[3];  ///< the end of the y side that starts at corner0
};

/// Input of `slJudgeBallAndPrism`: a ball, and a prism bounded along one axis and by two sloped
/// side limits. Axes are unit vectors, angles radians.
struct BallAndPrismD {
  float ballCentre[3];   ///< in the frame of the world
  float ballRadius;      ///< 0 or more; a length
  float prismOrigin[3];  ///< origin of the frame that the three axes span
  float sideAngle1;      ///< inclination of the limit across sideAxis1
  float sideAngle2;      ///< inclination of the limit across sideAxis2
  float lengthAxis[3];   ///< along the prism
  float lengthMin;       ///< where the prism starts along lengthAxis
  float lengthMax;       ///< where it ends
  float sideAxis2[3];    ///< across the second side limit (stored before the first)
  float sideAxis1[3];    ///< across the first side limit
};
