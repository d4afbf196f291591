#include "zel/geometry/solid_contact.h"

#include <cmath>

#include "zel/core/constants.h"
#include "zel/geometry/detail/vectors.h"
#include "zel/geometry/line_pairs.h"
#include "zel/geometry/scalars.h"

using zel::deadAbsF;
using zel::dot;
using zel::kTolerance;
using zel::Vec3;

namespace {

/// Stands for a side that does not limit anything.
constexpr float kNoLimit = 1.0e7F;

/// How far across the prism the centre of a ball of radius r may lie at x along it.
double sideLimit(float angle, double r, double x) {
  const float slope = static_cast<float>(slTan(angle));
  const double cosine = std::cos(static_cast<double>(angle));
  if (slope == kNoLimit || slope == -kNoLimit || deadAbsF(cosine) < kTolerance) {
    return kNoLimit;
  }
  return r / cosine + slope * x;
}

bool isWithinLimits(const BallAndPrismD& d) {
  const Vec3 w = Vec3(d.ballCentre) - d.prismOrigin;
  const double r = d.ballRadius;
  const double x = dot(w, d.lengthAxis);
  return d.lengthMin - r <= x && x <= d.lengthMax + r &&
         dot(w, d.sideAxis1) <= sideLimit(d.sideAngle1, r, x) &&
         dot(w, d.sideAxis2) <= sideLimit(d.sideAngle2, r, x);
}

}  // namespace

int slJudgeTwoCylinder(const float c1[3], const float c2[3], const float u1[3], const float u2[3],
                       const float p1[2], const float p2[2]) {
  float end1[3], end2[3], t, s, apart;
  zel::along(c1, p1[1], u1).store(end1);
  zel::along(c2, p2[1], u2).store(end2);
  slGetLinesCoPerpenticular(c1, end1, c2, end2, &t, &s, &apart);
  const double overlap = static_cast<double>(p1[0]) + p2[0] - apart;
  return overlap > kTolerance || deadAbsF(overlap) < kTolerance ? 1 : 0;
}

int slJudgeBallAndPrism(const BallAndPrismD& d, int* result) {
  *result = isWithinLimits(d) ? 1 : 0;
  return 1;
}
