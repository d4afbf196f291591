#include "zel/geometry/lengths.h"

#include "zel/geometry/detail/scalars.h"
#include "zel/geometry/detail/vectors.h"

namespace {

template <class Real>
double sumOfSquares2(const Real* v) {
  const double x = v[0];
  const double y = v[1];
  return x * x + y * y;
}

double squareDistance2(const double* a, const double* b) {
  const double d[2]{a[0] - b[0], a[1] - b[1]};
  return sumOfSquares2(d);
}

double squareDistance2(const float* a, const float* b) {
  const double d[2]{static_cast<double>(a[0]) - b[0], static_cast<double>(a[1]) - b[1]};
  return sumOfSquares2(d);
}

}  // namespace

float slNorm2(const float v[3]) { return zel::length(v); }

double slLengthD(const float v[3]) { return zel::lengthD(v); }

double slLength(const double v[3]) { return zel::root(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

float slLength2(const float v[2]) { return static_cast<float>(zel::root(sumOfSquares2(v))); }

double slLength2(const double v[2]) { return zel::root(sumOfSquares2(v)); }

float slSquareLength2(const float v[2]) { return static_cast<float>(sumOfSquares2(v)); }

double slSquareLength2(const double v[2]) { return sumOfSquares2(v); }

float slDistance(float x1, float y1, float z1, float x2, float y2, float z2) {
  return static_cast<float>(zel::root(zel::squareDistanceD({x1, y1, z1}, {x2, y2, z2})));
}

float slDistance3(const float a[3], const float b[3]) { return zel::distance(a, b); }

float slSquareDistance3(const float a[3], const float b[3]) { return zel::squareDistance(a, b); }

float slDistance2(const float a[2], const float b[2]) {
  return static_cast<float>(zel::root(squareDistance2(a, b)));
}

double slDistanceD2(const double a[2], const double b[2]) {
  return zel::root(squareDistance2(a, b));
}

float slDistSquare2(float x1, float y1, float x2, float y2) {
  const float a[2]{x1, y1};
  const float b[2]{x2, y2};
  return static_cast<float>(squareDistance2(a, b));
}

float slPlaneDistSqr(const float* a, const float* b) { return zel::planeSquareDistance(a, b); }

float slDot2D(const float* a, const float* b) {
  return static_cast<float>(static_cast<double>(a[0]) * b[0] + static_cast<double>(a[1]) * b[1]);
}
