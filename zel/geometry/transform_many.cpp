#include "zel/geometry/detail/transform_many.h"

#include "zel/geometry/detail/matrices.h"
#include "zel/geometry/detail/point_lanes.h"

namespace {

float* advance(float* p, std::size_t bytes) {
  return reinterpret_cast<float*>(reinterpret_cast<char*>(p) + bytes);
}

/// Whether the translation takes part in a vector's product.
enum class Kind { kPoint, kDirection };

void transformOne(const float m[16], Kind kind, float* v) {
  (kind == Kind::kPoint ? zel::transformPoint(m, v) : zel::transformDirection(m, v)).store(v);
}

#if defined(__SSE2__)

/// Adding this leaves every double as it is, -0 included.
constexpr double kNothing = -0.0;

/// Two vectors at a time: x and y of each in one register of two doubles, and their two z in
/// another. Every component goes through the same operations in the same order as alone.
class PairTransform {
 public:
  PairTransform(const float m[16], Kind first, Kind second)
      : xOfXy_(_mm_setr_pd(m[0], m[1])),
        yOfXy_(_mm_setr_pd(m[4], m[5])),
        zOfXy_(_mm_setr_pd(m[8], m[9])),
        xOfZ_(_mm_set1_pd(m[2])),
        yOfZ_(_mm_set1_pd(m[6])),
        zOfZ_(_mm_set1_pd(m[10])),
        firstMove_(_mm_setr_pd(move(m, first, 0), move(m, first, 1))),
        secondMove_(_mm_setr_pd(move(m, second, 0), move(m, second, 1))),
        zMoves_(_mm_setr_pd(move(m, first, 2), move(m, second, 2))) {}

  void apply(float* a, float* b) const {
    const __m128d xyA = zel::loadXy(a);
    const __m128d xyB = zel::loadXy(b);
    const __m128d z = zel::loadZ(a, b);
    const __m128d newZ =
        zel::sum(zel::product(xOfZ_, _mm_unpacklo_pd(xyA, xyB)),
                 zel::product(yOfZ_, _mm_unpackhi_pd(xyA, xyB)), zel::product(zOfZ_, z), zMoves_);
    zel::storeXy(xyOf(xyA, _mm_unpacklo_pd(z, z), firstMove_), a);
    zel::storeXy(xyOf(xyB, _mm_unpackhi_pd(z, z), secondMove_), b);
    zel::storeZ(newZ, a, b);
  }

 private:
  static double move(const float* m, Kind kind, int row) {
    return kind == Kind::kPoint ? m[12 + row] : kNothing;
  }
  [[nodiscard]] __m128d xyOf(__m128d xy, __m128d zz, __m128d moved) const {
    return zel::sum(zel::product(xOfXy_, _mm_unpacklo_pd(xy, xy)),
                    zel::product(yOfXy_, _mm_unpackhi_pd(xy, xy)), zel::product(zOfXy_, zz), moved);
  }

  __m128d xOfXy_, yOfXy_, zOfXy_;
  __m128d xOfZ_, yOfZ_, zOfZ_;
  __m128d firstMove_, secondMove_, zMoves_;
};

#else

/// The same without registers for two.
class PairTransform {
 public:
  PairTransform(const float m[16], Kind first, Kind second)
      : m_(m), first_(first), second_(second) {}

  void apply(float* a, float* b) const {
    transformOne(m_, first_, a);
    transformOne(m_, second_, b);
  }

 private:
  const float* m_;
  Kind first_, second_;
};

#endif

void transformRun(const float m[16], Kind kind, zel::VectorRun run) {
  const PairTransform transform(m, kind, kind);
  float* v = run.first;
  for (std::size_t pair = 0; pair < run.count / 2; ++pair) {
    transform.apply(v, advance(v, run.stride));
    v = advance(v, 2 * run.stride);
  }
  if (run.count % 2 != 0) {
    transformOne(m, kind, v);
  }
}

}  // namespace

namespace zel {

void transformPoints(const float m[16], VectorRun points) { transformRun(m, Kind::kPoint, points); }

void transformDirections(const float m[16], VectorRun directions) {
  transformRun(m, Kind::kDirection, directions);
}

void transformPointsAndDirections(const float m[16], VectorRun points, float* firstDirection) {
  const PairTransform transform(m, Kind::kPoint, Kind::kDirection);
  float* point = points.first;
  float* direction = firstDirection;
  for (std::size_t i = 0; i < points.count; ++i) {
    transform.apply(point, direction);
    point = advance(point, points.stride);
    direction = advance(direction, points.stride);
  }
}

}  // namespace zel
