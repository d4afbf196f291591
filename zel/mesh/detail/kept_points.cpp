#include "zel/mesh/detail/kept_points.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace zel {
namespace {

double distanceBetween(const float* a, const float* b) {
  double square = 0.0;
  for (int axis = 0; axis < 3; ++axis) {
    const double difference = static_cast<double>(a[axis]) - b[axis];
    square += difference * difference;
  }
  return std::sqrt(square);
}

/// The different cells that a point's reach touches along one axis, its own first.
struct TouchedCells {
  std::array<double, 3> cells;
  int count = 1;

  TouchedCells(double low, double own, double high) : cells{own} {
    add(low);
    add(high);
  }
  void add(double cell) {
    if (std::find(cells.begin(), cells.begin() + count, cell) == cells.begin() + count) {
      cells[static_cast<std::size_t>(count++)] = cell;
    }
  }
  double operator[](int i) const { return cells[static_cast<std::size_t>(i)]; }
};

}  // namespace

// Cells two reaches wide: a point's reach then touches at most two of them along each axis. A
// tolerance of 0, or one too small to divide by, still needs cells of some size.
KeptPoints::KeptPoints(double tolerance, std::size_t expected)
    : tolerance_(tolerance),
      reach_(tolerance * (1.0 + 1e-9)),  // covers the rounding of the distances
      cellSize_(std::max(2.0 * reach_, 1e-30)),
      buckets_(std::bit_ceil(std::max<std::size_t>(2 * expected, 16)), -1) {
  kept_.reserve(expected);
}

// Whole numbers as doubles, which do not overflow. Adding 0.0 turns -0.0, which hashes differently,
// into 0.0.
double KeptPoints::cellOf(double x) const { return std::floor(x / cellSize_) + 0.0; }

std::size_t KeptPoints::bucketOf(double x, double y, double z) const {
  std::uint64_t hash = 0;
  for (const double part : {x, y, z}) {
    hash = (hash ^ std::bit_cast<std::uint64_t>(part)) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 32U;
  }
  return static_cast<std::size_t>(hash) & (buckets_.size() - 1);
}

void KeptPoints::lookAhead(const float* point, Search& search) const {
  search.point = {point[0], point[1], point[2]};
  const auto touched = [&](double x) {
    const double low = cellOf(x - reach_);
    const double high = cellOf(x + reach_);
    return TouchedCells(low, low == high ? low : cellOf(x), high);
  };
  const TouchedCells x = touched(point[0]);
  const TouchedCells y = touched(point[1]);
  const TouchedCells z = touched(point[2]);
  search.count = 0;
  for (int k = 0; k < z.count; ++k) {
    for (int j = 0; j < y.count; ++j) {
      for (int i = 0; i < x.count; ++i) {
        const std::size_t bucket = bucketOf(x[i], y[j], z[k]);
        __builtin_prefetch(&buckets_[bucket]);
        search.buckets[static_cast<std::size_t>(search.count++)] = bucket;
      }
    }
  }
  search.own = search.buckets[0];
}

void KeptPoints::fetch(const Search& search) const {
  for (std::size_t k = 0; k < static_cast<std::size_t>(search.count); ++k) {
    if (const int first = buckets_[search.buckets[k]]; first >= 0) {
      __builtin_prefetch(&kept_[static_cast<std::size_t>(first)]);
    }
  }
}

void KeptPoints::lowestIn(std::size_t bucket, const float* point, Hit& best) const {
  for (int at = buckets_[bucket]; at >= 0;) {
    const Kept& kept = kept_[static_cast<std::size_t>(at)];
    if (best.isNew || at < best.index) {
      const double distance = distanceBetween(kept.position.data(), point);
      if (distance <= tolerance_) {
        best = {at, false, distance};
      }
    }
    at = kept.nextInBucket;
  }
}

KeptPoints::Hit KeptPoints::findOrKeep(const Search& search) {
  Hit best{static_cast<int>(kept_.size()), true, 0.0};
  for (std::size_t k = 0; k < static_cast<std::size_t>(search.count); ++k) {
    lowestIn(search.buckets[k], search.point.data(), best);
  }
  if (best.isNew) {
    kept_.push_back({search.point, buckets_[search.own]});
    buckets_[search.own] = best.index;
  }
  return best;
}

}  // namespace zel
