#include "zel/geometry/motions.h"

#include <algorithm>

#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/matrices.h"

namespace {

/// The identity with the 3x3 block of `motion`, transposed or not.
void copyBlock(const float motion[16], bool transposed, float m[16]) {
  float block[16];
  slSetIdentity(block);
  for (int column = 0; column < 3; ++column) {
    for (int row = 0; row < 3; ++row) {
      block[row + 4 * column] = transposed ? motion[4 * row + column] : motion[row + 4 * column];
    }
  }
  std::copy_n(block, 16, m);
}

}  // namespace

void slGenMatrixToWorld(const XYCoordSysD& cs, float m[16]) {
  slSetIdentity(m);
  std::copy_n(cs.xAxis, 3, m);
  std::copy_n(cs.yAxis, 3, m + 4);
  std::copy_n(cs.zAxis, 3, m + 8);
  std::copy_n(cs.origin, 3, m + 12);
}

void slGenMatrixToLocal(const XYCoordSysD& cs, float m[16]) {
  slGenMatrixToLocal(cs.origin, cs.xAxis, cs.yAxis, cs.zAxis, m);
}

void slGenMatrixToLocal(const float origin[3], const float x[3], const float y[3], const float z[3],
                        float m[16]) {
  const zel::Vec3 axes[3]{x, y, z};
  const zel::Vec3 centre = origin;
  slSetIdentity(m);
  for (int row = 0; row < 3; ++row) {
    m[row] = axes[row].x;
    m[row + 4] = axes[row].y;
    m[row + 8] = axes[row].z;
    m[row + 12] = static_cast<float>(-zel::dot(axes[row], centre));
  }
}

int slTransToWorld(const float x[3], const float y[3], const float z[3], const float v[3],
                   float out[3]) {
  float frame[16];
  slGenMatrixToWorld({{}, {x[0], x[1], x[2]}, {y[0], y[1], y[2]}, {z[0], z[1], z[2]}}, frame);
  zel::transformDirection(frame, v).store(out);
  return 1;
}

int slGetRotMatrixFromMotion(const float motion[16], float m[16]) {
  copyBlock(motion, false, m);
  return 1;
}

int slGetRotTransMatrixFromMotion(const float motion[16], float m[16]) {
  copyBlock(motion, true, m);
  return 1;
}

int slGetMoveMatrixFromMotion(const float motion[16], float m[16]) {
  slGenerateMoveMatrix(motion + 12, 1.0F, m);
  return 1;
}

int slGetInvMvMatrixFromMotion(const float motion[16], float m[16]) {
  slGenerateMoveMatrix(motion + 12, -1.0F, m);
  return 1;
}

int slGetInverseMotionMatrix(const float motion[16], float m[16]) {
  float moveBack[16];
  float turnBack[16];
  slGetInvMvMatrixFromMotion(motion, moveBack);
  slGetRotTransMatrixFromMotion(motion, turnBack);
  return slMultiMatrix(turnBack, moveBack, m);
}

int slSetMatrixByMvToOri(float m[16]) {
  std::fill_n(m + 12, 3, 0.0F);
  return 1;
}

int slGetTwoMatrixSign(const float a[16], const float b[16]) {
  return zel::signOf(static_cast<float>(zel::dot(a + 8, b + 8)));
}
