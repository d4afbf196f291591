#include "zel/geometry/circle_intersection.h"

#include <algorithm>
#include <cmath>

#include "zel/core/constants.h"
#include "zel/geometry/circle_angles.h"
#include "zel/geometry/coordinate_systems.h"
#include "zel/geometry/detail/intersections.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/lines.h"
#include "zel/geometry/motions.h"

using zel::deadAbsF;
using zel::kTolerance;
using zel::Vec3;

namespace {

/// Parameters, on a segment, of the points in which it meets a circle.
struct Crossings {
  int count = 0;
  double parameters[2]{};
};

/// Picks the crossings that lie on the segment. A NaN of which nothing can be said has none.
/// @param t      parameter of the foot of the circle's centre
/// @param half   half the chord, in parameters
/// @param square squared radius; squareA, squareB the squared distances of the ends
Crossings pickCrossings(double t, double half, double square, double squareA, double squareB) {
  if (t < 0.0) {
    return squareA > square || squareB < square ? Crossings{} : Crossings{1, {t + half}};
  }
  if (t > 1.0) {
    return squareB > square || squareA < square ? Crossings{} : Crossings{1, {t - half}};
  }
  if (t >= 0.0 && t <= 1.0 && squareA <= square) {
    return squareB <= square ? Crossings{} : Crossings{1, {t + half}};
  }
  if (!(t >= 0.0 && t <= 1.0 && squareA > square)) {
    return {};
  }
  return squareB > square ? Crossings{2, {t + half, t - half}} : Crossings{1, {t - half}};
}

/// The two points common to circles about the origin of `cs` and about c2.
/// @param[in,out] out  its second components enter the result
void meetTwice(const XYCoordSysD& cs, const float* c2, double r1, double r2, float out[2][3]) {
  float toLocal[16], q[3];
  slGenMatrixToLocal(cs, toLocal);
  zel::transformPoint(toLocal, c2).store(q);
  const int k = std::fabs(q[0]) > std::fabs(q[1]) ? 0 : 1;
  const int j = 1 - k;
  const double x = q[0], y = q[1];
  const double reach = (x * x + y * y + r1 * r1 - r2 * r2) / (2.0 * q[k]);
  const double slope = static_cast<double>(q[j]) / q[k];
  const double spread = zel::root(4.0 * (reach * reach) * (slope * slope) -
                                  4.0 * (reach * reach - r1 * r1) * (slope + 1.0));
  for (int row = 0; row < 2; ++row) {
    const double offset = row == 0 ? spread : -spread;
    float local[2];
    local[j] = static_cast<float>((2.0 * reach * slope + offset) / (2.0 * (slope + 1.0)));
    local[k] = static_cast<float>(reach - slope * out[row][1]);
    for (int i = 0; i < 3; ++i) {
      out[row][i] = static_cast<float>(cs.origin[i] + static_cast<double>(local[0]) * cs.xAxis[i] +
                                       static_cast<double>(local[1]) * cs.yAxis[i]);
    }
  }
}

}  // namespace

int slIntersectLineCircle(const float c[3], float r, const float a[3], const float b[3],
                          float out[2][3]) {
  const Vec3 centre = c;
  Vec3 u = Vec3(b) - a;
  if (!zel::normalize(u)) {
    return 0;
  }
  XYCoordSysD frame;
  if (slGenXYCoordSys(c, a, b, &frame) == 0) {
    zel::along(centre, r, u).store(out[0]);
    zel::along(centre, -r, u).store(out[1]);
    return 2;
  }
  float foot[3];
  slProjectPntToLine(a, b, c, foot);
  const zel::Vec3d toFoot = zel::difference(centre, foot);
  const double height = toFoot.x * toFoot.x + toFoot.y * toFoot.y + toFoot.z * toFoot.z;
  const double square = static_cast<double>(r) * r;
  if (height < square - zel::kSquareTolerance) {
    const double k = zel::root(square - height);
    zel::along(foot, k, u).store(out[0]);
    zel::along(foot, -k, u).store(out[1]);
    return 2;
  }
  Vec3(foot).store(out[0]);
  return 1;
}

int slIntersectLineSphere(const float c[3], float r, const float a[3], const float b[3],
                          float out[2][3]) {
  return slIntersectLineCircle(c, r, a, b, out);
}

int slLineIntCircle(const float* a, const float* b, const float* c, float r, float* p1, float* t1,
                    float* ang1, float* p2, float* t2, float* ang2, int* count) {
  const double square = static_cast<double>(r) * r;
  *count = 0;
  float foot[2], t;
  slGetLineFoot(a, b, c, foot, &t);
  const double height = zel::planeSquareDistance(c, foot);
  if (height > square) {
    return 0;
  }
  const double half = zel::root((square - height) / zel::planeSquareDistance(a, b));
  const Crossings found = pickCrossings(t, half, square, zel::planeSquareDistance(c, a),
                                        zel::planeSquareDistance(c, b));
  const double start[2]{a[0], a[1]};
  const float centre[2]{c[0], c[1]};
  const double along[2]{b[0] - start[0], b[1] - start[1]};
  const auto write = [&](double s, float* p, float* parameter, float* angle) {
    p[0] = static_cast<float>(start[0] + s * along[0]);
    p[1] = static_cast<float>(start[1] + s * along[1]);
    *parameter = static_cast<float>(s);
    *angle = slGetCircleAng(centre, p, r);
  };
  if (found.count > 0) {
    write(found.parameters[0], p1, t1, ang1);
  }
  if (found.count > 1) {
    write(found.parameters[1], p2, t2, ang2);
  }
  *count = found.count;
  return 1;
}

int slIntersectCircle(const float c1[3], float r1, const float c2[3], float r2, const float n[3],
                      float out[2][3]) {
  XYCoordSysD frame;
  if (slGenXYCoordSysByNormal(c1, c2, n, &frame) != 1) {
    return -1;
  }
  const double d = zel::distance(c1, c2);
  const double low = std::min(r1, r2);
  const double high = std::max(r1, r2);
  const double sum = static_cast<double>(r1) + r2;
  if (d < sum - kTolerance && high + kTolerance < low + d) {
    meetTwice(frame, c2, r1, r2, out);
    return 2;
  }
  if (deadAbsF(d - sum) < kTolerance) {
    zel::between(c1, r1 / sum, c2).store(out[0]);
    return 1;
  }
  if (deadAbsF(low + d - high) < kTolerance) {
    if (d < kTolerance) {
      return zel::kCoincident;
    }
    const Vec3 u = zel::directionOver(c1, c2, d);
    zel::along(c1, r1 < r2 ? -static_cast<double>(r1) : r1, u).store(out[0]);
    return 1;
  }
  return 0;
}
