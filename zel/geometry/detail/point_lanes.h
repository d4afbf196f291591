#pragma once

// Three floats in registers of two doubles, for the loops over many points. Empty where there is no
// SSE2: whoever includes this writes such loops a second time without registers.

#if defined(__SSE2__)
#include <emmintrin.h>

namespace zel {

/// The x and y of one point.
inline __m128d loadXy(const float* v) {
  return _mm_cvtps_pd(_mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(v))));
}
inline void storeXy(__m128d xy, float* v) {
  _mm_storel_epi64(reinterpret_cast<__m128i*>(v), _mm_castps_si128(_mm_cvtpd_ps(xy)));
}

/// The z of two points.
inline __m128d loadZ(const float* a, const float* b) {
  return _mm_cvtps_pd(_mm_unpacklo_ps(_mm_load_ss(a + 2), _mm_load_ss(b + 2)));
}
inline void storeZ(__m128d z, float* a, float* b) {
  const __m128 zs = _mm_cvtpd_ps(z);
  _mm_store_ss(a + 2, zs);
  _mm_store_ss(b + 2, _mm_shuffle_ps(zs, zs, 1));
}

inline __m128d product(__m128d a, __m128d b) { return _mm_mul_pd(a, b); }
/// From left to right.
inline __m128d sum(__m128d a, __m128d b, __m128d c, __m128d d) {
  return _mm_add_pd(_mm_add_pd(_mm_add_pd(a, b), c), d);
}

}  // namespace zel
#endif
