#include "zel/geometry/circumcentres.h"

#include "zel/core/constants.h"
#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/lengths.h"
#include "zel/geometry/motions.h"
#include "zel/geometry/planes.h"
#include "zel/geometry/rotations.h"

using zel::kTolerance;

namespace {

double planeSquare(const float* p) {
  return static_cast<double>(p[0]) * p[0] + static_cast<double>(p[1]) * p[1];
}

bool differ(const float* a, const float* b) {
  double sum = 0.0;
  for (int i = 0; i < 3; ++i) {
    sum += zel::deadAbs(a[i] - b[i]);
  }
  return sum >= kTolerance;
}

}  // namespace

int slLineEquation2(const float m[2][2], const float r[2], float x[2]) {
  const double a = m[0][0], b = m[0][1];
  const double c = m[1][0], d = m[1][1];
  const double determinant = a * d - b * c;
  if (zel::deadAbsF(determinant) < kTolerance) {
    return 0;
  }
  const float first = static_cast<float>((d * r[0] - b * r[1]) / determinant);
  x[1] = static_cast<float>((a * r[1] - c * r[0]) / determinant);
  x[0] = first;
  return 1;
}

int slCircumcenter(const float a[2], const float b[2], const float c[2], float centre[2]) {
  const float edges[2][2]{{2.0F * (a[0] - b[0]), 2.0F * (a[1] - b[1])},
                          {2.0F * (b[0] - c[0]), 2.0F * (b[1] - c[1])}};
  const double squareB = planeSquare(b);
  const float squares[2]{static_cast<float>(planeSquare(a) - squareB),
                         static_cast<float>(squareB - planeSquare(c))};
  return slLineEquation2(edges, squares, centre);
}

int slCircumCenter3D(const float a[3], const float b[3], const float c[3], float centre[3],
                     float* radius) {
  float normal[3];
  if (const int result = slPlaneNormal(a, b, c, normal); result != 1) {
    return result;
  }
  float toPlane[16];
  slGenVectToZMatrix(a, normal, toPlane);
  float corners[3][3];
  zel::transformPoint(toPlane, a).store(corners[0]);
  zel::transformPoint(toPlane, b).store(corners[1]);
  zel::transformPoint(toPlane, c).store(corners[2]);
  float flat[3]{0.0F, 0.0F, corners[0][2]};
  if (const int result = slCircumcenter(corners[0], corners[1], corners[2], flat); result != 1) {
    return result;
  }
  *radius = slDistance2(corners[0], flat);
  float back[16];
  slGetInverseMotionMatrix(toPlane, back);
  zel::transformPoint(back, flat).store(centre);
  return 1;
}

int slJudgeIsTriangle(const float a[3], const float b[3], const float c[3]) {
  return differ(a, b) && differ(a, c) && differ(b, c) ? 1 : 0;
}

void slPolygenCenterM(const float (*pts)[3], int count, float out[3]) {
  double sum[3]{};
  for (int i = 0; i < count - 2; ++i) {
    for (int axis = 0; axis < 3; ++axis) {
      sum[axis] += pts[i][axis];
    }
  }
  for (int axis = 0; axis < 3; ++axis) {
    out[axis] = count > 2 ? static_cast<float>(sum[axis] / count) : 0.0F;
  }
}
