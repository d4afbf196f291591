#include "zel/geometry/rotations.h"

#include <cmath>

#include "zel/core/constants.h"
#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/matrices.h"
#include "zel/geometry/vectors.h"

using zel::kTolerance;
using zel::Vec3;

namespace {

float cosine(float angle) { return static_cast<float>(std::cos(static_cast<double>(angle))); }
float sine(float angle) { return static_cast<float>(std::sin(static_cast<double>(angle))); }

bool isAtOrigin(Vec3 p) {
  const double sum = static_cast<double>(zel::deadAbs(p.x)) + zel::deadAbs(p.y) + zel::deadAbs(p.z);
  return sum <= kTolerance;
}

/// Makes a rotation about the origin one about `point`: T(point) m T(-point).
void moveCentreTo(Vec3 centre, float m[16]) {
  const float point[3]{centre.x, centre.y, centre.z};
  float move[16];
  float moved[16];
  slGenerateMoveMatrix(point, 1.0F, move);
  slMultiMatrix(move, m, moved);
  slGenerateMoveMatrix(point, -1.0F, move);
  slMultiMatrix(moved, move, m);
}

/// Sets the translation so that `p` stays where it is.
void keepFixed(Vec3 p, float m[16]) {
  const double x = p.x, y = p.y, z = p.z;
  m[12] = static_cast<float>(x - (m[0] * x + m[4] * y + m[8] * z));
  m[13] = static_cast<float>(y - (m[1] * x + m[5] * y + m[9] * z));
  m[14] = static_cast<float>(z - (m[2] * x + m[6] * y + m[10] * z));
}

/// Length of the horizontal part of v; 0 when that is too short to have a direction.
double horizontalLength(Vec3 v) {
  return zel::root(static_cast<double>(v.x) * v.x + static_cast<double>(v.y) * v.y);
}

/// The two turns that bring a direction onto +z.
struct TurnsToZ {
  float cosA, sinA, cosB, sinB;

  explicit TurnsToZ(const float v[3]) { slGetAnglesRotToZ(v, &cosA, &sinA, &cosB, &sinB); }
};

}  // namespace

void slRotateByX(float angle, float m[16]) { slRotateByXExt(cosine(angle), sine(angle), m); }

void slRotateByY(float angle, float m[16]) { slRotateByY(cosine(angle), sine(angle), m); }

void slRotateByZ(float angle, float m[16]) { slRotateByZExt(cosine(angle), sine(angle), m); }

void slRotateByXExt(float cos, float sin, float m[16]) {
  slSetIdentity(m);
  m[5] = m[10] = cos;
  m[6] = sin;
  m[9] = -sin;
}

void slRotateByY(float cos, float sin, float m[16]) {
  slSetIdentity(m);
  m[0] = m[10] = cos;
  m[8] = sin;
  m[2] = -sin;
}

void slRotateByZExt(float cos, float sin, float m[16]) {
  slSetIdentity(m);
  m[0] = m[5] = cos;
  m[1] = sin;
  m[4] = -sin;
}

void slGenerateRotateMatrix(const float axis[3], float angle, float m[16]) {
  const double c = cosine(angle);
  const double s = sine(angle);
  const double t = static_cast<float>(1.0 - c);
  const double x = axis[0], y = axis[1], z = axis[2];
  slSetIdentity(m);
  m[0] = static_cast<float>(x * x * t + c);
  m[1] = static_cast<float>(t * x * y + s * z);
  m[2] = static_cast<float>(x * z * t - s * y);
  m[4] = static_cast<float>(t * x * y - s * z);
  m[5] = static_cast<float>(y * y * t + c);
  m[6] = static_cast<float>(t * z * y + s * x);
  m[8] = static_cast<float>(x * z * t + s * y);
  m[9] = static_cast<float>(t * z * y - s * x);
  m[10] = static_cast<float>(z * z * t + c);
}

void slGetRotateMatrix(const float point[3], const float axis[3], float angle, float m[16]) {
  const Vec3 centre = point;
  slGenerateRotateMatrix(axis, angle, m);
  if (!isAtOrigin(centre)) {
    moveCentreTo(centre, m);
  }
}

void slGenVectToZMatrix(const float point[3], const float dir[3], float m[16]) {
  const Vec3 d = dir;
  const Vec3 centre = point;
  const double r = horizontalLength(d);
  slSetIdentity(m);
  if (r > kTolerance) {
    const double c = d.y / r;
    const double s = d.x / r;
    m[0] = static_cast<float>(c);
    m[1] = static_cast<float>(d.z * s);
    m[4] = static_cast<float>(-s);
    m[5] = static_cast<float>(d.z * c);
    m[9] = static_cast<float>(-r);
    m[2] = d.x;
    m[6] = d.y;
    m[10] = d.z;
    keepFixed(centre, m);
  } else if (d.z < -kTolerance) {
    m[5] = m[10] = -1.0F;
    m[13] = 2.0F * centre.y;
    m[14] = 2.0F * centre.z;
  }
}

void slGenVectToXMatrix(const float point[3], const float dir[3], float m[16]) {
  const Vec3 centre = point;
  slRotateByZExt(dir[0], -dir[1], m);
  if (!isAtOrigin(centre)) {
    moveCentreTo(centre, m);
  }
}

void slGetAnglesRotToZ(const float v[3], float* cosA, float* sinA, float* cosB, float* sinB) {
  const Vec3 d = v;
  const double r = horizontalLength(d);
  const bool vertical = r <= kTolerance;
  *cosA = vertical ? 1.0F : static_cast<float>(d.y / r);
  *sinA = vertical ? 0.0F : static_cast<float>(d.x / r);
  *cosB = vertical ? static_cast<float>(zel::signOf(d.z)) : d.z;
  *sinB = vertical ? 0.0F : static_cast<float>(r);
}

void slGetAxes(float a, float b, float x[3], float y[3], float z[3]) {
  const double cosA = std::cos(static_cast<double>(a)), sinA = std::sin(static_cast<double>(a));
  const double cosB = std::cos(static_cast<double>(b)), sinB = std::sin(static_cast<double>(b));
  const auto store = [](double first, double second, double third, float* out) {
    out[0] = static_cast<float>(first);
    out[1] = static_cast<float>(second);
    out[2] = static_cast<float>(third);
  };
  store(cosB * cosA, -cosB * sinA, -sinB, x);
  store(sinA, cosA, 0.0, y);
  store(sinB * cosA, -sinB * sinA, cosB, z);
}

void slGenMatrixToSpRadials(const float p[3], const float u[3], const float q[3], const float w[3],
                            float m[16]) {
  const TurnsToZ of(u);
  const TurnsToZ to(w);
  const Vec3 move = Vec3(p) - q;
  const auto product = [](double a, double b, double c) { return static_cast<float>(a * b * c); };
  slSetIdentity(m);
  move.store(m + 12);
  m[0] = of.cosA * to.cosA;
  m[1] = -product(of.sinA, to.sinA, to.cosB);
  m[4] = -product(of.sinA, of.cosB, to.sinA);
  m[5] = static_cast<float>(static_cast<double>(of.cosA) * of.cosB * to.cosA * to.cosB);
  m[6] = -product(of.sinB, to.cosA, to.sinB);
  m[9] = -product(of.cosA, of.sinB, to.sinB);
  m[10] = of.cosB * to.cosB;
}

int slGenMatrixToSpLines(const float a0[3], const float a1[3], const float b0[3], const float b1[3],
                         float m[16]) {
  float u[3];
  float w[3];
  if (slGetNormalVectBtPnts(a0, a1, u) == 0 || slGetNormalVectBtPnts(b0, b1, w) == 0) {
    return 0;
  }
  slGenMatrixToSpRadials(a0, u, b0, w, m);
  return 1;
}
