#include "zel/geometry/lines.h"

#include "zel/core/constants.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/vectors.h"

using zel::Vec3;

float slProjectPntToLine(const float a[3], const float b[3], const float p[3], float out[3]) {
  Vec3 u = Vec3(b) - a;
  if (!zel::normalize(u)) {
    return zel::kFloatMark;
  }
  const double t = zel::dot(zel::difference(p, a), u);
  zel::along(a, t, u).store(out);
  return static_cast<float>(t);
}

float slGetPntLineDistByVect(const float a[3], const float u[3], const float p[3], float* t) {
  const zel::Vec3d w = zel::difference(p, a);
  const Vec3 direction = u;
  const float parameter = static_cast<float>(zel::dot(w, direction));
  const double s = parameter;
  *t = parameter;
  return zel::length({zel::roundToFloat(w.x - s * direction.x),
                      zel::roundToFloat(w.y - s * direction.y),
                      zel::roundToFloat(w.z - s * direction.z)});
}

float slGetPntLineDist(const float a[3], const float b[3], const float p[3], float* t) {
  const zel::LineFoot foot = zel::footOnLine(a, b, p);
  *t = foot.t;
  return zel::length(foot.offset);
}

float slGetPntLineSquareDist(const float a[3], const float b[3], const float p[3], float* t) {
  const zel::LineFoot foot = zel::footOnLine(a, b, p);
  *t = foot.t;
  return static_cast<float>(zel::squareLength(foot.offset));
}

float slGetPntLineDist2D(const float a[2], const float b[2], const float p[2], float* t) {
  const auto flat = [](const float* q) { return Vec3(q[0], q[1], 0.0F); };
  const zel::LineFoot foot = zel::footOnLine(flat(a), flat(b), flat(p));
  const Vec3 d = flat(b) - flat(a);
  *t = foot.t;
  const double side =
      static_cast<double>(d.x) * foot.offset.y - static_cast<double>(d.y) * foot.offset.x;
  const float distance = zel::length({foot.offset.x, foot.offset.y, 0.0F});
  return side >= 0.0 ? distance : -distance;
}

int slGetLineFoot(const float a[2], const float b[2], const float p[2], float foot[2], float* t) {
  const float squareLength = zel::planeSquareDistance(a, b);
  const double ax = a[0], ay = a[1];
  if (!(squareLength >= zel::kTolerance)) {
    *t = 1.0F;
    foot[0] = static_cast<float>(ax);
    foot[1] = static_cast<float>(ay);
    return 1;
  }
  const double dx = b[0] - ax, dy = b[1] - ay;
  const float parameter = static_cast<float>((dx * (p[0] - ax) + dy * (p[1] - ay)) / squareLength);
  const double s = parameter;
  *t = parameter;
  foot[0] = static_cast<float>(ax + s * dx);
  foot[1] = static_cast<float>(ay + s * dy);
  return 1;
}

void slGetNearestPair(const float p0[3], const float p1[3], const float p2[3], const float p3[3],
                      float out[2][3]) {
  const Vec3 points[4]{p0, p1, p2, p3};
  float best = zel::kInfinity;
  for (int i = 0; i < 3; ++i) {
    for (int j = i + 1; j < 4; ++j) {
      const float square = zel::squareDistance(points[i], points[j]);
      if (square < best) {
        best = square;
        points[i].store(out[0]);
        points[j].store(out[1]);
      }
    }
  }
}
