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

/// The different cells that a point's reach touches along one axis.
struct TouchedCells {
  std::array<double, 3> cells;
  int count;

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

KeptPoints::Cell KeptPoints::cellOf(const float* point, double offset) const {
  Cell cell;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    // Adding 0.0 turns -0.0 into 0.0, which hashes differently.
    cell[axis] = std::floor((static_cast<double>(point[axis]) + offset) / cellSize_) + 0.0;
  }
  return cell;
}

std::size_t KeptPoints::bucketOf(const Cell& cell) const {
  std::uint64_t hash = 0;
  for (const double part : cell) {
    hash = (hash ^ std::bit_cast<std::uint64_t>(part)) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 32U;
  }
  return static_cast<std::size_t>(hash) & (buckets_.size() - 1);
}

void KeptPoints::lowestIn(const Cell& cell, const float* point, Hit& best) const {
  for (int at = buckets_[bucketOf(cell)]; at >= 0;) {
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

KeptPoints::Hit KeptPoints::findOrKeep(const float* point) {
  Hit best{static_cast<int>(kept_.size()), true, 0.0};
  const Cell own = cellOf(point, 0.0);
  const Cell low = cellOf(point, -reach_);
  const Cell high = cellOf(point, reach_);
  const auto touched = [&](std::size_t axis) {
    TouchedCells cells{{own[axis], 0.0, 0.0}, 1};
    cells.add(low[axis]);
    cells.add(high[axis]);
    return cells;
  };
  const TouchedCells z = touched(2);
  const TouchedCells y = touched(1);
  const TouchedCells x = touched(0);
  for (int i = 0; i < x.count * y.count * z.count; ++i) {
    lowestIn({x[i % x.count], y[i / x.count % y.count], z[i / x.count / y.count]}, point, best);
  }
  if (best.isNew) {
    const std::size_t bucket = bucketOf(own);
    kept_.push_back({{point[0], point[1], point[2]}, buckets_[bucket]});
    buckets_[bucket] = best.index;
  }
  return best;
}

}  // namespace zel
