#include "zel/geometry/circles.h"

#include "zel/geometry/circumcentres.h"
#include "zel/geometry/coordinate_systems.h"
#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/intersections.h"
#include "zel/geometry/motions.h"

using zel::Vec3;

namespace {

/// a + u x + v y
Vec3 placed(Vec3 a, double u, Vec3 x, double v, Vec3 y) {
  return {zel::roundToFloat(a.x + u * x.x + v * y.x), zel::roundToFloat(a.y + u * x.y + v * y.y),
          zel::roundToFloat(a.z + u * x.z + v * y.z)};
}

/// Half way between a + t u and b + s v.
float halfWay(double a, double t, double u, double b, double s, double v) {
  return static_cast<float>((a + t * u + (b + s * v)) * 0.5);
}

}  // namespace

float slGetCircleRadius(const float c[3], const float p[3]) { return zel::distance(c, p); }

int slGenCircle(const float a[3], const float b[3], const float c[3], float centre[3],
                float normal[3], float* radius) {
  XYCoordSysD frame;
  const int result = slGenXYCoordSys(a, b, c, &frame);
  if (result != 1) {
    return result;
  }
  constexpr float kOrigin[2]{0.0F, 0.0F};
  float m[16], localB[3], localC[3], middle[2];
  slGenMatrixToLocal(frame, m);
  zel::transformPoint(m, b).store(localB);
  zel::transformPoint(m, c).store(localC);
  if (slCircumcenter(kOrigin, localB, localC, middle) != 1) {
    return 0;
  }
  const Vec3 found = placed(frame.origin, middle[0], frame.xAxis, middle[1], frame.yAxis);
  *radius = zel::distance(frame.origin, found);
  found.store(centre);
  Vec3(frame.zAxis).store(normal);
  return 1;
}

int slGenSphere(const float a[3], const float b[3], const float c[3], const float d[3],
                float centre[3], float* radius) {
  float centre1[3], normal1[3], centre2[3], normal2[3], unused;
  int result = slGenCircle(a, b, c, centre1, normal1, &unused);
  if (result == 1) {
    result = slGenCircle(a, b, d, centre2, normal2, &unused);
  }
  if (result != 1) {
    return result;
  }
  const Vec3 onSphere = a;
  float t = 0.0F;
  float s = 0.0F;
  if (slIntersectInfLines(centre1, normal1, centre2, normal2, &t, &s) == 1) {
    zel::along(centre1, t, normal1).store(centre);
  } else {
    for (int i = 0; i < 3; ++i) {
      centre[i] = halfWay(centre1[i], t, normal1[i], centre2[i], s, normal2[i]);
    }
  }
  *radius = zel::distance(centre, onSphere);
  return 1;
}
