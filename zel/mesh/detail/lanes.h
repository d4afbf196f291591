#pragma once

/// @file
/// Comparisons of all lanes of a bucket at once. Lane k answers in bit k.

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zel {

/// Which of four points (each coordinate in a row of its own, aligned to 16) have a squared
/// distance to p below `limit`, up to rounding. NaN is never below.
inline unsigned lanesNear(const float* x, const float* y, const float* z, const float* p,
                          float limit) {
#if defined(__SSE2__)
  const __m128 dx = _mm_sub_ps(_mm_load_ps(x), _mm_set1_ps(p[0]));
  const __m128 dy = _mm_sub_ps(_mm_load_ps(y), _mm_set1_ps(p[1]));
  const __m128 dz = _mm_sub_ps(_mm_load_ps(z), _mm_set1_ps(p[2]));
  const __m128 square =
      _mm_add_ps(_mm_add_ps(_mm_mul_ps(dx, dx), _mm_mul_ps(dy, dy)), _mm_mul_ps(dz, dz));
  return static_cast<unsigned>(_mm_movemask_ps(_mm_cmplt_ps(square, _mm_set1_ps(limit))));
#else
  unsigned lanes = 0;
  for (int lane = 0; lane < 4; ++lane) {
    const float dx = x[lane] - p[0];
    const float dy = y[lane] - p[1];
    const float dz = z[lane] - p[2];
    lanes |= static_cast<unsigned>(dx * dx + dy * dy + dz * dz < limit) << lane;
  }
  return lanes;
#endif
}

/// Which of eight numbers (aligned to 16) are the wanted one.
inline unsigned lanesEqual(const std::uint32_t* numbers, std::uint32_t wanted) {
#if defined(__SSE2__)
  const __m128i all = _mm_set1_epi32(static_cast<int>(wanted));
  const auto* rows = reinterpret_cast<const __m128i*>(numbers);
  const __m128i low = _mm_cmpeq_epi32(_mm_load_si128(rows), all);
  const __m128i high = _mm_cmpeq_epi32(_mm_load_si128(rows + 1), all);
  const __m128i bytes = _mm_packs_epi16(_mm_packs_epi32(low, high), _mm_setzero_si128());
  return static_cast<unsigned>(_mm_movemask_epi8(bytes));
#else
  unsigned lanes = 0;
  for (int lane = 0; lane < 8; ++lane) {
    lanes |= static_cast<unsigned>(numbers[lane] == wanted) << lane;
  }
  return lanes;
#endif
}

}  // namespace zel
