#pragma once

// The feet of many points on one plane. Results are those of slProjectPntToPlane, bit for bit.

#include "zel/geometry/detail/point_lanes.h"
#include "zel/geometry/detail/vectors.h"

namespace zel {

/// The plane n.x + d = 0, onto which points are moved in place, alone or two at a time.
class PlaneFeet {
 public:
#if defined(__SSE2__)
  PlaneFeet(Vec3 n, float d)
      : n_(n),
        d_(d),
        nx_(_mm_set1_pd(n.x)),
        ny_(_mm_set1_pd(n.y)),
        nz_(_mm_set1_pd(n.z)),
        ds_(_mm_set1_pd(d)) {}

  /// Every component goes through the same operations in the same order as alone.
  void moveTwo(float* a, float* b) const {
    const __m128d xyA = loadXy(a);
    const __m128d xyB = loadXy(b);
    const __m128d x = _mm_unpacklo_pd(xyA, xyB);
    const __m128d y = _mm_unpackhi_pd(xyA, xyB);
    const __m128d z = loadZ(a, b);
    const __m128d height = sum(product(nx_, x), product(ny_, y), product(nz_, z), ds_);
    const __m128d step = _mm_xor_pd(height, _mm_set1_pd(-0.0));
    const __m128d footX = _mm_add_pd(x, product(step, nx_));
    const __m128d footY = _mm_add_pd(y, product(step, ny_));
    storeXy(_mm_unpacklo_pd(footX, footY), a);
    storeXy(_mm_unpackhi_pd(footX, footY), b);
    storeZ(_mm_add_pd(z, product(step, nz_)), a, b);
  }
#else
  PlaneFeet(Vec3 n, float d) : n_(n), d_(d) {}

  void moveTwo(float* a, float* b) const {
    moveOne(a);
    moveOne(b);
  }
#endif

  void moveOne(float* p) const { along(p, -(dot(n_, p) + d_), n_).store(p); }

 private:
  Vec3 n_;
  float d_;
#if defined(__SSE2__)
  __m128d nx_, ny_, nz_, ds_;
#endif
};

}  // namespace zel
