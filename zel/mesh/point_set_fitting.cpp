// Least-squares plane, shape errors and averages of a point set.

#include <algorithm>

#include "zel/containers/point3d_arr.h"
#include "zel/geometry/geometry.h"
#include "zel/mesh/detail/points/point_set_scan.h"

namespace {

/// Spread of the values about their mean: the root of the summed squares, divided by the
/// available count itself.
template <class Measure>
float shapeError(const Point3DArr& points, Measure measure) {
  const int count = points.GetAvailableNumM();
  if (count < 1) {
    return 0.0F;
  }
  double sum = 0.0;
  zel::scanAvailable(points, 0, -1,
                     [&](const float* point, int /*slot*/) { sum += measure(point); });
  const double mean = sum / count;
  double squares = 0.0;
  zel::scanAvailable(points, 0, -1, [&](const float* point, int /*slot*/) {
    const double deviation = measure(point) - mean;
    squares += deviation * deviation;
  });
  return static_cast<float>(slSqrt(squares) / count);
}

/// The mean over the available count of a measure summed over the points above the mark.
template <class Measure>
float average(const Point3DArr& points, Measure measure) {
  const int count = points.GetAvailableNumM();
  if (count < 1) {
    return 0.0F;
  }
  double sum = 0.0;
  zel::scanAboveMark(points, [&](const float* point) { sum += measure(point); });
  return static_cast<float>(sum / count);
}

}  // namespace

float Point3DArr::GetShapeErrorToLineM(const float* p, const float* dir) const {
  return shapeError(*this, [&](const float* point) {
    float parameter = 0.0F;
    return slGetPntLineDist(p, dir, point, &parameter);
  });
}

float Point3DArr::GetShapeErrorToPlaneM(const float* nrm, float d) const {
  return shapeError(*this, [&](const float* point) { return slGetPntPlaneDist(nrm, d, point); });
}

float Point3DArr::GetShapeErrorToCircleM(const float* centre, float r) const {
  return shapeError(*this, [&](const float* point) { return slDistance3(point, centre) - r; });
}

void Point3DArr::GenEquationGroupM(int a, int b, int c, double* m, double* rhs) const {
  std::fill_n(m, 9, 0.0);
  std::fill_n(rhs, 3, 0.0);
  if (std::min({a, b, c}) < 0 || std::max({a, b, c}) > 2) {
    return;
  }
  zel::scanAvailable(*this, 0, -1, [&](const float* point, int /*slot*/) {
    const double xa = point[a];
    const double xb = point[b];
    const double xc = point[c];
    m[0] += xa * xa;
    m[1] += xa * xb;
    m[2] += xa;
    m[4] += xb * xb;
    m[5] += xb;
    rhs[0] -= xa * xc;
    rhs[1] -= xb * xc;
    rhs[2] -= xc;
  });
  m[3] = m[1];
  m[6] = m[2];
  m[7] = m[5];
  m[8] = GetAvailableNumM();
}

int Point3DArr::GenPlaneByLeastSquareM(const float* dir, float* nrm, float* d) const {
  constexpr int kOtherAxes[3][2] = {{1, 2}, {2, 0}, {0, 1}};
  const int c = slGetVectMaxDir(dir);
  const int a = kOtherAxes[c][0];
  const int b = kOtherAxes[c][1];
  double m[9];
  double rhs[3];
  double solution[3];
  GenEquationGroupM(a, b, c, m, rhs);
  const int solved = slSolveEquationGroup3(m, rhs, solution);
  if (solved != 1) {
    return solved;
  }
  nrm[a] = static_cast<float>(solution[0]);
  nrm[b] = static_cast<float>(solution[1]);
  nrm[c] = 1.0F;
  const float length = slNorm2(nrm);
  slSetPnt3DValueByDiv(length, nrm);
  *d = static_cast<float>(solution[2] / length);
  return 1;
}

void Point3DArr::GetBaryCenterM(float* out) const {
  std::fill_n(out, 3, 0.0F);
  const int count = GetAvailableNumM();
  if (count < 1) {
    return;
  }
  double sum[3] = {0.0, 0.0, 0.0};
  zel::scanAboveMark(*this, [&](const float* point) {
    for (int axis = 0; axis < 3; ++axis) {
      sum[axis] += point[axis];
    }
  });
  for (int axis = 0; axis < 3; ++axis) {
    out[axis] = static_cast<float>(sum[axis]);
  }
  slSetPnt3DValueByDiv(static_cast<float>(count), out);
}

float Point3DArr::GetAverageDistToLineM(const float* p, const float* dir) const {
  return average(*this, [&](const float* point) {
    float parameter = 0.0F;
    return slGetPntLineDistByVect(p, dir, point, &parameter);
  });
}

float Point3DArr::GetAverageDistToPntM(const float* p) const {
  return average(*this, [&](const float* point) { return slDistance3(point, p); });
}
