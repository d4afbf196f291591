#include "zel/core/constants.h"
#include "zel/geometry/circumcentres.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/inside_tests.h"
#include "zel/geometry/intersections.h"
#include "zel/geometry/lengths.h"
#include "zel/geometry/motions.h"
#include "zel/geometry/planes.h"

using zel::deadAbsF;
using zel::dot;
using zel::kTolerance;
using zel::Vec3;

namespace {

/// A line against a plane: how fast it approaches and how far its start is.
struct Approach {
  double speed;
  double height;

  Approach(Vec3 p, Vec3 u, Vec3 n, float d) : speed(dot(u, n)), height(dot(p, n) + d) {}

  bool startsOnPlane() const { return deadAbsF(height) < kTolerance; }
  bool liesInPlane() const { return deadAbsF(speed) < kTolerance && startsOnPlane(); }
  double parameter() const { return -height / speed; }
};

/// Where a ray meets the xy plane of a frame, in local coordinates. @return whether it does.
bool meetFrame(const float p[3], const float u[3], const float motion[16], float hit[3]) {
  constexpr float kNormal[3]{0.0F, 0.0F, 1.0F};
  float toLocal[16], start[3], direction[3];
  slGetInverseMotionMatrix(motion, toLocal);
  zel::transformPoint(toLocal, p).store(start);
  zel::transformDirection(toLocal, u).store(direction);
  return slRadialIntersectPlane(start, direction, kNormal, 0.0F, hit) == 1;
}

}  // namespace

int slLineIntersectPlane(const float p[3], const float u[3], const float n[3], float d,
                         float out[3]) {
  const Approach approach(p, u, n, d);
  if (approach.liesInPlane()) {
    return 3;
  }
  zel::along(p, approach.parameter(), u).store(out);
  return 1;
}

int slRadialIntersectPlane(const float p[3], const float u[3], const float n[3], float d,
                           float out[3]) {
  const Approach approach(p, u, n, d);
  if (approach.liesInPlane()) {
    return 3;
  }
  if (approach.startsOnPlane()) {
    Vec3(p).store(out);
    return 1;
  }
  const double k = approach.parameter();
  zel::along(p, k, u).store(out);
  return k > 0.0 ? 1 : -1;
}

int slRadialIntersectFaceM(const float p[3], const float u[3], const float (*pts)[3], int count,
                           float out[3]) {
  float n[3];
  const int shape = slJudgePntCoPlane(count, pts, n);
  if (shape != 2) {
    return shape;
  }
  float hit[3]{out[0], out[1], out[2]};
  int result = slRadialIntersectPlane(p, u, n, zel::planeOffset(pts[0], n), hit);
  if (result == 1 && slJudgePntInPolygon(count, pts, n, hit) == 1) {
    result = 0;
  }
  zel::Vec3(hit).store(out);
  return result;
}

int slJudgeRadialThroughPntM(const float p[3], const float u[3], const float q[2], float r,
                             const float (&motion)[16]) {
  float hit[3];
  return meetFrame(p, u, motion, hit) && slDistance2(hit, q) < r ? 1 : 0;
}

int slJudgeRadialThroughLineM(const float p[3], const float u[3], const float a[2],
                              const float b[2], float r, const float (&motion)[16]) {
  float hit[3];
  if (!meetFrame(p, u, motion, hit)) {
    return 0;
  }
  const float e[2]{b[0] - a[0], b[1] - a[1]};
  const float w[2]{hit[0] - a[0], hit[1] - a[1]};
  const double reach = zel::length({e[0], e[1], w[0]});
  const double product = static_cast<double>(e[0]) * w[0] + static_cast<double>(e[1]) * w[1];
  const double c = product / (slLength2(w) * reach);
  if (c <= 0.0 || c >= 1.0) {
    return 0;
  }
  return static_cast<double>(r) * r > reach * reach - c * c ? 1 : 0;
}

int slGetPlaneIntersectM(const float pa[3], const float na[3], const float pb[3], const float nb[3],
                         float pt[3], float dir[3]) {
  const Vec3 pointA = pa;
  const Vec3 normalA = na;
  const Vec3 pointB = pb;
  const Vec3 normalB = nb;
  Vec3 direction = zel::cross(normalA, normalB);
  const bool meet = zel::normalize(direction);
  direction.store(dir);
  if (!meet) {
    const float apart = zel::planeDistance(normalA, zel::planeOffset(pointA, normalA), pointB);
    return apart >= kTolerance ? 1 : 2;
  }
  const Vec3 across = zel::normalized(zel::cross(normalA, direction));
  const Approach approach(pointA, across, normalB, zel::planeOffset(pointB, normalB));
  // An approach too slow to divide by starts within the tolerance of the second plane.
  const double k = approach.liesInPlane() ? 0.0 : approach.parameter();
  zel::along(pointA, k, across).store(pt);
  return 3;
}

int slGetPointOnIntersectLine(const PlaneD& a, const PlaneD& b, float out[3]) {
  const float right[2]{static_cast<float>(dot(a.point, a.normal)),
                       static_cast<float>(dot(b.point, b.normal))};
  constexpr int kOthers[3][2]{{1, 2}, {0, 2}, {0, 1}};
  for (int zero = 0; zero < 3; ++zero) {
    const auto [i, j] = kOthers[zero];
    const float rows[2][2]{{a.normal[i], a.normal[j]}, {b.normal[i], b.normal[j]}};
    float solved[2]{0.0F, 0.0F};
    const int result = slLineEquation2(rows, right, solved);
    if (result == 1 || zero == 2) {
      out[zero] = 0.0F;
      out[i] = solved[0];
      out[j] = solved[1];
      return result;
    }
  }
  return 0;
}
