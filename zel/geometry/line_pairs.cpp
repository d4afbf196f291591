#include "zel/geometry/line_pairs.h"

#include "zel/core/constants.h"
#include "zel/geometry/detail/lines.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/intersections.h"
#include "zel/geometry/lines.h"
#include "zel/geometry/planes.h"

using zel::isOnSegment;
using zel::kTolerance;
using zel::Vec3;

namespace {

constexpr int kCoplanar = 2;
constexpr int kSkew = 3;

/// A crossing is accepted a little further beyond the end of the first segment.
constexpr float kFirstCrossingEnd = 1.0002F;

/// The second line after the move along the common normal into the plane of the first.
struct MovedLine {
  float start[3];
  float end[3];
  double height;  ///< how far it was above that plane

  MovedLine(const float* a0, const float* a1, const float* b0, const float* b1) {
    const Vec3 normal =
        zel::normalized(zel::cross(zel::difference(a1, a0), zel::difference(b1, b0)));
    height = zel::dot(zel::difference(b0, a0), normal);
    zel::along(b0, -height, normal).store(start);
    zel::along(b1, -height, normal).store(end);
  }
};

using PairFunction = void(const float*, const float*, const float*, const float*, float*, float*,
                          float*);

/// What a pair of lines is measured by in each of the two cases.
struct Measures {
  PairFunction* coplanar;
  PairFunction* skew;
};

int measure(const Measures& measures, const float* a0, const float* a1, const float* b0,
            const float* b1, float* t, float* s, float* dist) {
  float normal[3]{};
  const int result = slJudgeLineCoPlane(a0, a1, b0, b1, normal);
  (result == kCoplanar ? measures.coplanar : measures.skew)(a0, a1, b0, b1, t, s, dist);
  return result;
}

/// The closest end point found so far.
struct Nearest {
  float distance = zel::kInfinity;
  float t = zel::kInfinity;
  float s = zel::kInfinity;
};

/// Distance of p from the segment, or infinity when its foot lies beyond an end.
float distanceToSegment(const float* a, const float* b, const float* p, float* foot) {
  const float distance = slGetPntLineDist(a, b, p, foot);
  return isOnSegment(*foot) ? distance : zel::kInfinity;
}

}  // namespace

int slJudgeLineCoPlane(const float a0[3], const float a1[3], const float b0[3], const float b1[3],
                       float n[3]) {
  const Vec3 last = b1;
  float d = 0.0F;
  if (slGetPlaneEquation(a0, a1, b0, n, &d) == 0) {
    return kCoplanar;
  }
  return zel::deadAbsF(d + zel::dot(last, n)) < kTolerance ? kCoplanar : kSkew;
}

int slGetInfLinesCoPerpenticular(const float a0[3], const float a1[3], const float b0[3],
                                 const float b1[3], float* t, float* s, float* dist) {
  return measure({slGetCoPlaneInfLineDist, slGetDifPlaneInfLineDist}, a0, a1, b0, b1, t, s, dist);
}

void slGetCoPlaneInfLineDist(const float a0[3], const float a1[3], const float b0[3],
                             const float b1[3], float* t, float* s, float* dist) {
  if (slIntersectLines3D(a0, a1, b0, b1, t, s) == 1) {
    *dist = 0.0F;
    return;
  }
  *dist = slGetPntLineDist(a0, a1, b0, t);
  *s = 0.0F;
}

void slGetDifPlaneInfLineDist(const float a0[3], const float a1[3], const float b0[3],
                              const float b1[3], float* t, float* s, float* dist) {
  const MovedLine b(a0, a1, b0, b1);
  slGetCoPlaneInfLineDist(a0, a1, b.start, b.end, t, s, dist);
  *dist = zel::deadAbsF(b.height);
}

float slGetLineDist(const float a0[3], const float a1[3], const float b0[3], const float b1[3]) {
  Vec3 normal = zel::cross(Vec3(a1) - a0, Vec3(b1) - b0);
  if (!zel::normalize(normal)) {
    float ignored;
    return slGetPntLineDist(a0, a1, b0, &ignored);
  }
  return zel::planeDistance(normal, zel::planeOffset(a0, normal), b0);
}

int slGetLinesCoPerpenticular(const float a0[3], const float a1[3], const float b0[3],
                              const float b1[3], float* t, float* s, float* dist) {
  return measure({slGetCoPlaneLineDist, slGetDifPlaneLineDist}, a0, a1, b0, b1, t, s, dist);
}

void slGetCoPlaneLineDist(const float a0[3], const float a1[3], const float b0[3],
                          const float b1[3], float* t, float* s, float* dist) {
  Nearest best;
  if (slIntersectLines3D(a0, a1, b0, b1, &best.t, &best.s) == 1 &&
      isOnSegment(best.t, kFirstCrossingEnd) && isOnSegment(best.s)) {
    *t = best.t;
    *s = best.s;
    *dist = 0.0F;
    return;
  }
  best = {};
  float foot;
  float distance = distanceToSegment(a0, a1, b0, &foot);
  if (distance < best.distance) {
    best = {distance, foot, 0.0F};
  }
  const float* const endsOfA[]{a0, a1};
  for (const float* end : endsOfA) {
    distance = distanceToSegment(b0, b1, end, &foot);
    if (distance < best.distance) {
      best = {distance, 1.0F, foot};
    }
  }
  *t = best.t;
  *s = best.s;
  *dist = best.distance;
}

void slGetDifPlaneLineDist(const float a0[3], const float a1[3], const float b0[3],
                           const float b1[3], float* t, float* s, float* dist) {
  const MovedLine b(a0, a1, b0, b1);
  slGetCoPlaneLineDist(a0, a1, b.start, b.end, t, s, dist);
  if (isOnSegment(*t) && isOnSegment(*s)) {
    *dist = zel::deadAbsF(b.height);
  }
}
