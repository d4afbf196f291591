// The calls that inner loops make, per call: this library (through the shared library, as users
// call it), the loop written by hand in double precision, and Eigen in single precision. The last
// two have no dead bands and no fallbacks.

#include <benchmark/benchmark.h>

#include <Eigen/Dense>
#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "zel/geometry/geometry.h"

namespace {

using Point = std::array<float, 3>;
using Eigen::Vector3f;

constexpr std::size_t kCount = 1024;
constexpr float kMatrix[16]{0.36F, 0.48F, -0.8F, 0, -0.8F, 0.6F, 0,    0,
                            0.48F, 0.64F, 0.6F,  0, 1.0F,  2.0F, 3.0F, 1};

std::vector<Point> randomPoints(unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> coordinate(-10.0F, 10.0F);
  std::vector<Point> points(kCount + 4);
  for (Point& p : points) {
    p = {coordinate(random), coordinate(random), coordinate(random)};
  }
  return points;
}

Eigen::Map<const Vector3f> eigen(const Point& p) { return Eigen::Map<const Vector3f>(p.data()); }

Eigen::Map<Vector3f> eigen(float* p) { return Eigen::Map<Vector3f>(p); }

float narrow(double value) { return static_cast<float>(value); }

void store(float* result, double x, double y, double z) {
  result[0] = narrow(x);
  result[1] = narrow(y);
  result[2] = narrow(z);
}

double dot(const double* a, const double* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

/// Calls `work(points, i, result)` for every i and reports the time of one call. Results go to
/// memory, as in the loops that these calls are made for.
template <class Work>
void perCall(benchmark::State& state, Work work) {
  const std::vector<Point> points = randomPoints(1);
  std::vector<Point> results(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      work(points, i, results[i].data());
    }
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
  state.counters["per_call"] = benchmark::Counter(
      static_cast<double>(kCount),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// --- normalise --------------------------------------------------------------------------------

void normalizeZel(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    std::copy_n(points[i].data(), 3, result);
    slNormalize(result);
  });
}
void normalizeByHand(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    const double p[3]{points[i][0], points[i][1], points[i][2]};
    const double length = std::sqrt(dot(p, p));
    store(result, p[0] / length, p[1] / length, p[2] / length);
  });
}
void normalizeEigen(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    eigen(result) = eigen(points[i]).normalized();
  });
}
BENCHMARK(normalizeZel);
BENCHMARK(normalizeByHand);
BENCHMARK(normalizeEigen);

// --- distance ---------------------------------------------------------------------------------

void distanceZel(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    *result = slDistance3(points[i].data(), points[i + 1].data());
  });
}
void distanceByHand(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    const Point &a = points[i], &b = points[i + 1];
    const double d[3]{double{a[0]} - b[0], double{a[1]} - b[1], double{a[2]} - b[2]};
    *result = narrow(std::sqrt(dot(d, d)));
  });
}
void distanceEigen(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    *result = (eigen(points[i]) - eigen(points[i + 1])).norm();
  });
}
BENCHMARK(distanceZel);
BENCHMARK(distanceByHand);
BENCHMARK(distanceEigen);

// --- point and plane --------------------------------------------------------------------------

constexpr Point kNormal{0.36F, 0.48F, -0.8F};

void pointPlaneZel(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    *result = slGetPntPlaneDist(kNormal.data(), 1.5F, points[i].data());
  });
}
void pointPlaneByHand(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    const Point& p = points[i];
    *result = narrow(std::abs(double{p[0]} * kNormal[0] + double{p[1]} * kNormal[1] +
                              double{p[2]} * kNormal[2] + 1.5));
  });
}
void pointPlaneEigen(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    *result = std::abs(eigen(points[i]).dot(eigen(kNormal)) + 1.5F);
  });
}
BENCHMARK(pointPlaneZel);
BENCHMARK(pointPlaneByHand);
BENCHMARK(pointPlaneEigen);

// --- matrix and point -------------------------------------------------------------------------

void matrixPointZel(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    slMatrix16MultiPoint3(kMatrix, points[i].data(), result);
  });
}
void matrixPointByHand(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    const double x = points[i][0], y = points[i][1], z = points[i][2];
    const float* m = kMatrix;
    store(result, m[0] * x + m[4] * y + m[8] * z + m[12], m[1] * x + m[5] * y + m[9] * z + m[13],
          m[2] * x + m[6] * y + m[10] * z + m[14]);
  });
}
void matrixPointEigen(benchmark::State& state) {
  const Eigen::Map<const Eigen::Matrix4f> matrix(kMatrix);
  const Eigen::Matrix3f block = matrix.topLeftCorner<3, 3>();
  const Vector3f move = matrix.topRightCorner<3, 1>();
  perCall(state, [&](const auto& points, std::size_t i, float* result) {
    eigen(result) = block * eigen(points[i]) + move;
  });
}
BENCHMARK(matrixPointZel);
BENCHMARK(matrixPointByHand);
BENCHMARK(matrixPointEigen);

// --- point in polygon -------------------------------------------------------------------------

std::vector<std::array<float, 2>> polygon(std::int64_t corners) {
  std::vector<std::array<float, 2>> result;
  for (std::int64_t i = 0; i < corners; ++i) {
    const double angle = 6.28 * static_cast<double>(i) / static_cast<double>(corners);
    const double radius = i % 2 == 0 ? 9.0 : 5.0;
    result.push_back({narrow(radius * std::cos(angle)), narrow(radius * std::sin(angle))});
  }
  return result;
}

void pointInPolygonZel(benchmark::State& state) {
  const auto corners = polygon(state.range(0));
  const auto* list = reinterpret_cast<const float(*)[2]>(corners.data());
  perCall(state, [&](const auto& points, std::size_t i, float* result) {
    *result = static_cast<float>(
        slPointInterFaceM(list, static_cast<int>(corners.size()), points[i].data()));
  });
}
void pointInPolygonByHand(benchmark::State& state) {
  const auto corners = polygon(state.range(0));
  perCall(state, [&](const auto& points, std::size_t i, float* result) {
    const Point& p = points[i];
    bool inside = false;
    for (std::size_t k = 0, last = corners.size() - 1; k < corners.size(); last = k++) {
      const auto &a = corners[k], &b = corners[last];
      if ((a[1] > p[1]) != (b[1] > p[1]) &&
          p[0] < (b[0] - a[0]) * (p[1] - a[1]) / (b[1] - a[1]) + a[0]) {
        inside = !inside;
      }
    }
    *result = inside ? 1.0F : 0.0F;
  });
}
BENCHMARK(pointInPolygonZel)->Arg(8)->Arg(256);
BENCHMARK(pointInPolygonByHand)->Arg(8)->Arg(256);

// --- line and line ----------------------------------------------------------------------------

void lineLineZel(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    slGetInfLinesCoPerpenticular(points[i].data(), points[i + 1].data(), points[i + 2].data(),
                                 points[i + 3].data(), result, result + 1, result + 2);
  });
}
void lineLineByHand(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    double u[3], v[3], w[3];
    for (std::size_t k = 0; k < 3; ++k) {
      u[k] = double{points[i + 1][k]} - points[i][k];
      v[k] = double{points[i + 3][k]} - points[i + 2][k];
      w[k] = double{points[i][k]} - points[i + 2][k];
    }
    const double a = dot(u, u), b = dot(u, v), c = dot(v, v), d = dot(u, w), e = dot(v, w);
    const double t = (b * e - c * d) / (a * c - b * b), s = (a * e - b * d) / (a * c - b * b);
    double across[3];
    for (std::size_t k = 0; k < 3; ++k) {
      across[k] = w[k] + t * u[k] - s * v[k];
    }
    store(result, t, s, std::sqrt(dot(across, across)));
  });
}
void lineLineEigen(benchmark::State& state) {
  perCall(state, [](const auto& points, std::size_t i, float* result) {
    const Vector3f u = eigen(points[i + 1]) - eigen(points[i]);
    const Vector3f v = eigen(points[i + 3]) - eigen(points[i + 2]);
    const Vector3f w = eigen(points[i]) - eigen(points[i + 2]);
    const float a = u.dot(u), b = u.dot(v), c = v.dot(v), d = u.dot(w), e = v.dot(w);
    const float t = (b * e - c * d) / (a * c - b * b), s = (a * e - b * d) / (a * c - b * b);
    eigen(result) = Vector3f(t, s, (w + t * u - s * v).norm());
  });
}
BENCHMARK(lineLineZel);
BENCHMARK(lineLineByHand);
BENCHMARK(lineLineEigen);

}  // namespace
