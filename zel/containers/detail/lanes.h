#pragma once

/// @file
/// Comparisons of all lanes of a bucket at once. Lane k answers in bit k.

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zel {

/// Lanes whose squared distance is `surely` below a limit, and those where it `maybe` is.
struct NearLanes {
  unsigned surely;
  unsigned maybe;
};

/// Which of four points (each coordinate in a row of its own, aligned to 16) have a squared
/// distance to p below `sure` and below `limit`, up to rounding. NaN is never below.
inline NearLanes lanesNear(const float* x, const float* y, const float* z, const float* p,
                           float sure, float limit) {
#if defined(__SSE2__)
  const __m128 dx = _mm_sub_ps(_mm_load_ps(x), _mm_set1_ps(p[0]));
  const __m128 dy = _mm_sub_ps(_mm_load_ps(y), _mm_set1_ps(p[1]));
  const __m128 dz = _mm_sub_ps(_mm_load_ps(z), _mm_set1_ps(p[2]));
  const __m128 square =
      _mm_add_ps(_mm_add_ps(_mm_mul_ps(dx, dx), _mm_mul_ps(dy, dy)), _mm_mul_ps(dz, dz));
  const auto below = [=](float bound) {
    return static_cast<unsigned>(_mm_movemask_ps(_mm_cmplt_ps(square, _mm_set1_ps(bound))));
  };
  return {below(sure), below(limit)};
#else
  NearLanes lanes{0, 0};
  for (int lane = 0; lane < 4; ++lane) {
    const float dx = x[lane] - p[0];
    const float dy = y[lane] - p[1];
    const float dz = z[lane] - p[2];
    const float square = dx * dx + dy * dy + dz * dz;
    lanes.surely |= static_cast<unsigned>(square < sure) << lane;
    lanes.maybe |= static_cast<unsigned>(square < limit) << lane;
  }
  return lanes;
#endif
}

/// Which of four points (as above) differ from p by less than `half` along every axis. NaN never.
inline unsigned lanesInBox(const float* x, const float* y, const float* z, const float* p,
                           float half) {
#if defined(__SSE2__)
  const __m128 limit = _mm_set1_ps(half);
  const __m128 sign = _mm_set1_ps(-0.0F);
  const auto isNear = [=](const float* row, float q) {
    return _mm_cmplt_ps(_mm_andnot_ps(sign, _mm_sub_ps(_mm_load_ps(row), _mm_set1_ps(q))), limit);
  };
  return static_cast<unsigned>(
      _mm_movemask_ps(_mm_and_ps(_mm_and_ps(isNear(x, p[0]), isNear(y, p[1])), isNear(z, p[2]))));
#else
  unsigned lanes = 0;
  for (int lane = 0; lane < 4; ++lane) {
    const float dx = x[lane] - p[0];
    const float dy = y[lane] - p[1];
    const float dz = z[lane] - p[2];
    const bool isNear =
        dx < half && -dx < half && dy < half && -dy < half && dz < half && -dz < half;
    lanes |= static_cast<unsigned>(isNear) << lane;
  }
  return lanes;
#endif
}

/// Which of four points are exactly p.
inline unsigned lanesAt(const float* x, const float* y, const float* z, const float* p) {
#if defined(__SSE2__)
  const __m128 same = _mm_and_ps(_mm_and_ps(_mm_cmpeq_ps(_mm_load_ps(x), _mm_set1_ps(p[0])),
                                            _mm_cmpeq_ps(_mm_load_ps(y), _mm_set1_ps(p[1]))),
                                 _mm_cmpeq_ps(_mm_load_ps(z), _mm_set1_ps(p[2])));
  return static_cast<unsigned>(_mm_movemask_ps(same));
#else
  unsigned lanes = 0;
  for (int lane = 0; lane < 4; ++lane) {
    lanes |= static_cast<unsigned>(x[lane] == p[0] && y[lane] == p[1] && z[lane] == p[2]) << lane;
  }
  return lanes;
#endif
}

/// Which of eight numbers (aligned to 16) are the wanted one.
inline unsigned lanesEqual(const std::uint16_t* numbers, std::uint16_t wanted) {
#if defined(__SSE2__)
  const __m128i same = _mm_cmpeq_epi16(_mm_load_si128(reinterpret_cast<const __m128i*>(numbers)),
                                       _mm_set1_epi16(static_cast<short>(wanted)));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(same, _mm_setzero_si128())));
#else
  unsigned lanes = 0;
  for (int lane = 0; lane < 8; ++lane) {
    lanes |= static_cast<unsigned>(numbers[lane] == wanted) << lane;
  }
  return lanes;
#endif
}

}  // namespace zel
