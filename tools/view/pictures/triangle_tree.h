#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "tools/view/pictures/vectors.h"

namespace zel::view {

/// Three points of a triangle.
using TrianglePoints = std::array<Vector3, 3>;

/// Where a ray meets a triangle.
struct RayHit {
  std::uint32_t triangle;  ///< place in the list that the tree was built from
  float distance;          ///< along the ray, in lengths of its direction
};

/// Triangles in a tree of boxes, so that a ray is tested against few of them. Boxes are cut where
/// the surface area heuristic says so (I. Wald, On fast construction of SAH-based bounding volume
/// hierarchies, 2007).
class TriangleTree {
 public:
  /// Takes time n log n. Points must be finite.
  explicit TriangleTree(std::vector<TrianglePoints> triangles);

  /// @param direction of any length but zero.
  /// @param from, to  hits nearer than `from` or farther than `to` do not count.
  /// @return the nearest hit from either side; of several as near the lowest triangle's.
  [[nodiscard]] std::optional<RayHit> nearest(
      const Vector3& origin, const Vector3& direction, float from = 0,
      float to = std::numeric_limits<float>::infinity()) const;

 private:
  struct Node {
    Vector3 low;
    Vector3 high;
    std::uint32_t first;  ///< of a leaf: its first entry of `order_`; else its second child
    std::uint32_t count;  ///< of a leaf: entries; else 0, and the first child is the next node
  };
  struct Builder;

  std::vector<TrianglePoints> triangles_;  ///< in the order of the leaves
  std::vector<std::uint32_t> order_;       ///< original place of each
  std::vector<Node> nodes_;
};

}  // namespace zel::view
