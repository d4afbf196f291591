#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "zel/containers/detail/point_grid.h"

namespace zel {

/// Two positions are near when their distance does not exceed a tolerance.
class NearByDistance {
 public:
  explicit NearByDistance(double tolerance);
  /// A little more than the tolerance, against the rounding of distances.
  [[nodiscard]] double reach() const { return tolerance_ * (1.0 + 1e-9); }
  NearLanes lanes(const float* x, const float* y, const float* z, const float* p) const {
    if (isMeasurable_) {
      return lanesNear(x, y, z, p, sureSquare_, nearSquare_);
    }
    const unsigned equal = lanesAt(x, y, z, p);
    return {equal, tolerance_ == 0.0 ? equal : 0xFU};
  }
  [[nodiscard]] bool isNear(const float* q, const float* p) const;

 private:
  double tolerance_;
  bool isMeasurable_;
  float sureSquare_ = 0.0F;
  float nearSquare_ = 0.0F;
};

/// A growing set of finite points that keeps each new point only if no kept one is near.
///
/// A search has three steps, so that several can wait for memory at once: lookAhead(), fetch(),
/// then findOrKeep() in the order of the points.
class KeptPoints {
 public:
  struct Hit {
    int index;        ///< of the kept point, in order of keeping
    bool isNew;       ///< whether the point itself was kept
    double distance;  ///< to the kept point
  };
  /// A point that waits for its memory.
  struct Search {
    std::array<float, 3> point;
  };

  /// @param tolerance distance >= 0 within which points are the same.
  /// @param expected  how many points will come, at most.
  KeptPoints(double tolerance, std::size_t expected);

  /// Begins a search; its place in the grid is on its way.
  void lookAhead(const float* point, Search& search) const {
    search.point = {point[0], point[1], point[2]};
    grid_.prefetch(point);
  }
  /// Sends for the point that it will probably go into.
  void fetch(const Search& search) const;
  /// Finds the lowest-indexed kept point within the tolerance, or keeps the point.
  Hit findOrKeep(const Search& search);

 private:
  NearByDistance near_;
  PointGrid grid_;
  std::vector<std::array<float, 3>> kept_;
};

}  // namespace zel
