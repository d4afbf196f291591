#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zel {

/// A growing set of finite points that keeps each new point only if no kept one is near.
///
/// Points are hashed by the cell in which they lie; all cells that the tolerance reaches are
/// searched, so points close together but in different cells still meet. A search has three steps,
/// so that several can wait for memory at once: lookAhead(), fetch(), then findOrKeep() in the
/// order of the points.
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

  /// A point and the buckets that may hold points near it.
  struct Search {
    std::array<float, 3> point;
    std::array<std::size_t, 27> buckets;
    int count;
    std::size_t own;  ///< the bucket of the point itself
  };

  /// Begins a search; the buckets are on their way.
  void lookAhead(const float* point, Search& search) const;
  /// Sends for the points in the buckets.
  void fetch(const Search& search) const;
  /// Finds the lowest-indexed kept point within the tolerance, or keeps the point.
  Hit findOrKeep(const Search& search);

 private:
  struct Kept {
    std::array<float, 3> position;
    int nextInBucket;
  };

  [[nodiscard]] double cellOf(double x) const;
  [[nodiscard]] std::size_t bucketOf(double x, double y, double z) const;
  void lowestIn(std::size_t bucket, const float* point, Hit& best) const;

  double tolerance_;
  double reach_;
  double cellSize_;
  std::vector<int> buckets_;  // first kept point, -1 for none
  std::vector<Kept> kept_;
};

}  // namespace zel
