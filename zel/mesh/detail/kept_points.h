#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zel {

/// A growing set of finite points that keeps each new point only if no kept one is near.
///
/// Points are hashed by the cell in which they lie; all cells that the tolerance reaches are
/// searched, so points close together but in different cells still meet.
class KeptPoints {
 public:
  struct Hit {
    int index;        ///< of the kept point, in order of keeping
    bool isNew;       ///< whether the point itself was kept
    double distance;  ///< to the kept point
  };

  /// @param tolerance distance >= 0 within which points are the same.
  /// @param expected  how many points to make room for.
  KeptPoints(double tolerance, std::size_t expected);

  /// Finds the lowest-indexed kept point within the tolerance, or keeps the point.
  Hit findOrKeep(const float* point);

 private:
  using Cell = std::array<double, 3>;  // whole numbers; doubles do not overflow

  struct Kept {
    std::array<float, 3> position;
    int nextInBucket;
  };

  [[nodiscard]] std::size_t bucketOf(const Cell& cell) const;
  void lowestIn(const Cell& cell, const float* point, Hit& best) const;
  [[nodiscard]] Cell cellOf(const float* point, double offset) const;

  double tolerance_;
  double reach_;
  double cellSize_;
  std::vector<int> buckets_;  // first kept point, -1 for none
  std::vector<Kept> kept_;
};

}  // namespace zel
