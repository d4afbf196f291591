#pragma once

#include <cstddef>
#include <vector>

namespace zel {

/// A point of a scanned set and the slot it comes from.
struct ScannedPoint {
  float position[3];
  int slot;
};

/// The two points of a set that lie farthest apart.
struct FarthestPair {
  float squareDistance;
  int slotA;
  int slotB;
};

/// Finds the farthest pair as a walk over all pairs (i, j), j after i, finds it: the greatest
/// slSquareDistance3(); among equals the first pair of the walk. Points with a NaN never win.
/// @param points in scan order, their slots ascending.
/// @return square distance 0 and slots kNoIndex when no pair is farther apart than 0.
///
/// Points are kept in a tree whose nodes know their box, their greatest distance from the common
/// centre, the cone in which they are seen from it; pairs of nodes that cannot hold a farther
/// pair are dropped whole. Expected cost O(n log n) on data that is not made up to defeat it.
FarthestPair farthestPair(const std::vector<ScannedPoint>& points);

}  // namespace zel
