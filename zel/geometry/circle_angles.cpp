#include "zel/geometry/circle_angles.h"

#include "zel/core/constants.h"
#include "zel/geometry/detail/circle_angles.h"
#include "zel/geometry/detail/vectors.h"

float slGetCircleAng(const float c[2], const float p[2], float r) {
  const double cosine = (static_cast<double>(p[0]) - c[0]) / r;
  const double sine = (static_cast<double>(p[1]) - c[1]) / r;
  return static_cast<float>(zel::angleFromCosine(cosine, sine < 0.0));
}

float slGetCentralAngle(const float v[3]) {
  const double cosine = static_cast<double>(v[0]) / zel::length(v);
  return static_cast<float>(zel::angleFromCosine(cosine, v[1] < 0.0F && v[0] != 0.0F));
}
