#include "zel/geometry/matrices.h"

#include <algorithm>
#include <cstddef>

#include "zel/core/constants.h"
#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/determinants.h"

using zel::deadAbs;
using zel::kTolerance;

namespace {

/// What the counted differences of an identity may sum to: 0.0001 for each of 16 values.
constexpr double kIdentityTolerance = 16.0 * kTolerance;

/// m v, rounded once per component. `rowStep` and `columnStep` say how m is laid out, so that the
/// transposed product is the same code.
void multiplyVector4(const float m[16], std::ptrdiff_t rowStep, std::ptrdiff_t columnStep,
                     float v[4]) {
  const double x = v[0], y = v[1], z = v[2], w = v[3];
  for (std::ptrdiff_t row = 0; row < 4; ++row) {
    const float* r = m + row * rowStep;
    v[row] = static_cast<float>(r[0] * x + r[columnStep] * y + r[2 * columnStep] * z +
                                r[3 * columnStep] * w);
  }
}

void fillColumns(const float (*points)[3], float m[16]) {
  for (std::ptrdiff_t i = 0; i < 4; ++i) {
    std::copy_n(points[i], 3, m + 4 * i);
    m[4 * i + 3] = 1.0F;
  }
}

}  // namespace

void slSetIdentity(float m[16]) {
  for (int i = 0; i < 16; ++i) {
    m[i] = i % 5 == 0 ? 1.0F : 0.0F;
  }
}

void slGenerateMoveMatrix(const float v[3], float scale, float m[16]) {
  const float move[3]{scale * v[0], scale * v[1], scale * v[2]};
  slSetIdentity(m);
  std::copy_n(move, 3, m + 12);
}

void slGenScaleMatrix(const float centre[3], const float s[3], float m[16]) {
  const float factors[3]{s[0], s[1], s[2]};
  const float fixed[3]{centre[0], centre[1], centre[2]};
  slSetIdentity(m);
  for (std::ptrdiff_t i = 0; i < 3; ++i) {
    m[5 * i] = factors[i];
    m[12 + i] = static_cast<float>((1.0 - factors[i]) * fixed[i]);
  }
}

int slMultiMatrix(const float a[16], const float b[16], float c[16]) {
  float product[16];
  for (int column = 0; column < 16; column += 4) {
    float sums[4]{};
    for (int k = 0; k < 4; ++k) {
      const double factor = b[column + k];
      for (int row = 0; row < 4; ++row) {
        sums[row] = static_cast<float>(sums[row] + a[row + 4 * k] * factor);
      }
    }
    std::copy_n(sums, 4, product + column);
  }
  std::copy_n(product, 16, c);
  return 1;
}

int slSetMatrixByMulti(const float a[16], float b[16]) {
  float right[16];
  std::copy_n(b, 16, right);
  return slMultiMatrix(a, right, b);
}

int slSetMatrixByRightMulti(const float a[16], float b[16]) {
  float left[16];
  std::copy_n(b, 16, left);
  return slMultiMatrix(left, a, b);
}

int slMatrix16MultiVector4(const float m[16], float v[4]) {
  multiplyVector4(m, 1, 4, v);
  return 1;
}

int slMatrix16MultiVector3(const float m[16], float v[3]) {
  zel::transformDirection(m, v).store(v);
  return 1;
}

int slMatrix16MultiVector3(const float m[16], const float v[3], float out[3]) {
  zel::transformDirection(m, v).store(out);
  return 1;
}

int slMatrix16MultiPoint3(const float m[16], float p[3]) {
  zel::transformPoint(m, p).store(p);
  return 1;
}

int slMatrix16MultiPoint3(const float m[16], const float p[3], float out[3]) {
  zel::transformPoint(m, p).store(out);
  return 1;
}

int slMatrix16MultiPoint2(const float m[16], float p[2]) {
  const zel::Vec3 result = zel::transformPoint(m, {p[0], p[1], 0.0F});
  p[0] = result.x;
  p[1] = result.y;
  return 1;
}

int slMatrixTrans16MultiVector4(const float m[16], float v[4]) {
  multiplyVector4(m, 4, 1, v);
  return 1;
}

int slMatrixTrans16MultiVector3(const float m[16], float v[3]) {
  const zel::Vec3 columns[3]{m, m + 4, m + 8};
  const zel::Vec3 direction = v;
  for (int i = 0; i < 3; ++i) {
    v[i] = static_cast<float>(zel::dot(columns[i], direction));
  }
  return 1;
}

int slInverseMatrixM(const float a[16], float b[16]) {
  const double determinant = slValueOfTrainM(a, 4);
  if (zel::deadAbsF(determinant) < kTolerance) {
    return 0;
  }
  float inverse[16];
  for (int k = 0; k < 16; ++k) {
    const int row = k / 4;
    const int column = k % 4;
    float minor[9];
    slNewTrainM(a, column, row, 4, minor);
    const double sign = (row + column) % 2 == 0 ? 1.0 : -1.0;
    inverse[row + 4 * column] = static_cast<float>(slValueOfTrainM(minor, 3) * sign / determinant);
  }
  std::copy_n(inverse, 16, b);
  return 1;
}

int slChangeFourPntMatrixM(const float (*p)[3], const float (*q)[3], float m[16]) {
  float from[16];
  float to[16];
  fillColumns(p, from);
  fillColumns(q, to);
  return slInverseMatrixM(from, from) == 1 ? slMultiMatrix(to, from, m) : 0;
}

void slCheckMatrixError(float m[16]) {
  for (int column = 0; column < 12; column += 4) {
    for (float* value = m + column; value < m + column + 3; ++value) {
      const float magnitude = deadAbs(*value);
      if (magnitude < kTolerance) {
        *value = 0.0F;
      } else if (magnitude > 1.0 - kTolerance && magnitude < 1.0 + kTolerance) {
        *value = static_cast<float>(zel::signOf(*value));
      }
    }
  }
}

int slCheckIndentity(const float m[16]) {
  double sum = 0.0;
  for (int i = 0; i < 16; ++i) {
    sum += deadAbs(i % 5 == 0 ? m[i] - 1.0F : m[i]);
  }
  return sum <= kIdentityTolerance ? 1 : 0;
}

void slNormalizeMatrix(float m[16]) {
  const zel::Vec3 x = zel::normalized(m);
  const zel::Vec3 y = zel::normalized(m + 4);
  x.store(m);
  y.store(m + 4);
  zel::normalized(zel::cross(x, y)).store(m + 8);
}
