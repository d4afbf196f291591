#include "tools/view/pictures/triangle_tree.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zel::view {
namespace {

constexpr std::size_t kLeafSize = 4;
constexpr std::size_t kBins = 12;
constexpr std::size_t kDeepest = 62;  // a halving of every list that fits into memory is less deep
constexpr float kInfinite = std::numeric_limits<float>::infinity();

struct Box {
  Vector3 low{kInfinite, kInfinite, kInfinite};
  Vector3 high{-kInfinite, -kInfinite, -kInfinite};

  void include(const Vector3& point) {
    for (std::size_t k = 0; k < 3; ++k) {
      low[k] = std::min(low[k], point[k]);
      high[k] = std::max(high[k], point[k]);
    }
  }
  void include(const Box& other) {
    include(other.low);
    include(other.high);
  }
  [[nodiscard]] float halfArea() const {
    const Vector3 side = minus(high, low);
    return side[0] < 0 ? 0 : side[0] * side[1] + side[1] * side[2] + side[2] * side[0];
  }
};

Box boxOf(const TrianglePoints& triangle) {
  Box box;
  for (const Vector3& point : triangle) {
    box.include(point);
  }
  return box;
}

// T. Moeller, B. Trumbore, Fast, minimum storage ray/triangle intersection, 1997.
// Returns the distance, or infinity without a hit.
float distanceTo(const TrianglePoints& triangle, const Vector3& origin, const Vector3& direction) {
  const Vector3 u = minus(triangle[1], triangle[0]);
  const Vector3 v = minus(triangle[2], triangle[0]);
  const Vector3 p = cross(direction, v);
  const float determinant = dot(u, p);
  if (determinant == 0) {
    return kInfinite;
  }
  const Vector3 t = minus(origin, triangle[0]);
  const float a = dot(t, p) / determinant;
  if (!(a >= 0 && a <= 1)) {
    return kInfinite;
  }
  const Vector3 q = cross(t, u);
  const float b = dot(direction, q) / determinant;
  return b >= 0 && a + b <= 1 ? dot(v, q) / determinant : kInfinite;
}

}  // namespace

struct TriangleTree::Builder {
  TriangleTree& tree;
  std::vector<Box> boxes;
  std::vector<Vector3> centres;

  explicit Builder(TriangleTree& target) : tree(target) {
    for (const TrianglePoints& triangle : tree.triangles_) {
      boxes.push_back(boxOf(triangle));
      Vector3 centre = plus(boxes.back().low, boxes.back().high);
      centres.push_back({centre[0] / 2, centre[1] / 2, centre[2] / 2});
    }
  }

  // Entries first..end of the order become a subtree.
  void build(std::uint32_t first, std::uint32_t end, std::size_t depth) {
    Box box;
    Box middle;
    for (std::uint32_t i = first; i < end; ++i) {
      box.include(boxes[tree.order_[i]]);
      middle.include(centres[tree.order_[i]]);
    }
    const std::size_t place = tree.nodes_.size();
    tree.nodes_.push_back({box.low, box.high, first, end - first});
    if (end - first <= kLeafSize || depth >= kDeepest) {
      return;
    }
    const std::uint32_t cut = split(first, end, middle, depth);
    tree.nodes_[place].count = 0;
    build(first, cut, depth + 1);
    tree.nodes_[place].first = static_cast<std::uint32_t>(tree.nodes_.size());
    build(cut, end, depth + 1);
  }

  // Orders the entries by side; returns where the second side begins.
  std::uint32_t split(std::uint32_t first, std::uint32_t end, const Box& middle,
                      std::size_t depth) {
    const Vector3 side = minus(middle.high, middle.low);
    const auto axis =
        static_cast<std::size_t>(std::max_element(side.begin(), side.end()) - side.begin());
    const auto begin = tree.order_.begin() + first;
    const auto stop = tree.order_.begin() + end;
    // So deep a tree comes from points crowded together: halves end it soon.
    if (side[axis] > 0 && depth < kDeepest / 2) {
      const auto binOf = [&](std::uint32_t entry) {
        const float share = (centres[entry][axis] - middle.low[axis]) / side[axis];
        return std::min(static_cast<std::size_t>(share * kBins), kBins - 1);
      };
      const std::size_t cut = cheapestCut(first, end, binOf);
      const auto at =
          std::stable_partition(begin, stop, [&](std::uint32_t e) { return binOf(e) < cut; });
      if (at != begin && at != stop) {
        return static_cast<std::uint32_t>(at - tree.order_.begin());
      }
    }
    const std::uint32_t half = first + (end - first) / 2;
    std::nth_element(begin, tree.order_.begin() + half, stop,
                     [&](std::uint32_t a, std::uint32_t b) {
                       return std::pair(centres[a][axis], a) < std::pair(centres[b][axis], b);
                     });
    return half;
  }

  template <class BinOf>
  std::size_t cheapestCut(std::uint32_t first, std::uint32_t end, BinOf binOf) const {
    std::array<Box, kBins> bins;
    std::array<float, kBins> counts{};
    for (std::uint32_t i = first; i < end; ++i) {
      const std::size_t bin = binOf(tree.order_[i]);
      bins[bin].include(boxes[tree.order_[i]]);
      ++counts[bin];
    }
    std::array<float, kBins> costs{};  // of the sides below and from each cut
    Box below;
    Box above;
    float fewer = 0;
    float more = 0;
    for (std::size_t cut = 1; cut < kBins; ++cut) {
      below.include(bins[cut - 1]);
      fewer += counts[cut - 1];
      costs[cut] += below.halfArea() * fewer;
      above.include(bins[kBins - cut]);
      more += counts[kBins - cut];
      costs[kBins - cut] += above.halfArea() * more;
    }
    return static_cast<std::size_t>(std::min_element(costs.begin() + 1, costs.end()) -
                                    costs.begin());
  }
};

TriangleTree::TriangleTree(std::vector<TrianglePoints> triangles)
    : triangles_(std::move(triangles)), order_(triangles_.size()) {
  std::iota(order_.begin(), order_.end(), 0U);
  if (order_.empty()) {
    return;
  }
  nodes_.reserve(order_.size());
  Builder(*this).build(0, static_cast<std::uint32_t>(order_.size()), 0);
  std::vector<TrianglePoints> ordered;
  ordered.reserve(order_.size());
  for (const std::uint32_t place : order_) {
    ordered.push_back(triangles_[place]);
  }
  triangles_ = std::move(ordered);
}

std::optional<RayHit> TriangleTree::nearest(const Vector3& origin, const Vector3& direction,
                                            float from, float to) const {
  if (nodes_.empty()) {
    return std::nullopt;
  }
  const Vector3 inverse{1 / direction[0], 1 / direction[1], 1 / direction[2]};
  RayHit best{std::numeric_limits<std::uint32_t>::max(), to};
  bool found = false;
  // Where the ray enters a box, or infinity when it misses it or the best hit is nearer.
  const auto entry = [&](const Node& node) {
    float enter = from;
    float leave = best.distance;
    for (std::size_t k = 0; k < 3; ++k) {
      const bool backwards = std::signbit(inverse[k]);
      const float nearSide = (backwards ? node.high[k] : node.low[k]) - origin[k];
      const float farSide = (backwards ? node.low[k] : node.high[k]) - origin[k];
      // In this order a NaN, from a ray in the plane of a side, changes nothing.
      enter = std::max(enter, nearSide * inverse[k]);
      leave = std::min(leave, farSide * inverse[k]);
    }
    return enter <= leave ? enter : kInfinite;
  };
  struct Waiting {
    std::uint32_t node;
    float entry;
  };
  std::array<Waiting, kDeepest + 2> stack{};
  std::size_t depth = 0;
  stack[depth++] = {0, entry(nodes_[0])};
  while (depth > 0) {
    const auto [place, entered] = stack[--depth];
    const Node& node = nodes_[place];
    if (entered > best.distance || entered == kInfinite) {
      continue;
    }
    if (node.count == 0) {
      Waiting nearer{place + 1, entry(nodes_[place + 1])};
      Waiting farther{node.first, entry(nodes_[node.first])};
      if (farther.entry < nearer.entry) {
        std::swap(nearer, farther);
      }
      if (farther.entry != kInfinite) {
        stack[depth++] = farther;
      }
      if (nearer.entry != kInfinite) {
        stack[depth++] = nearer;
      }
      continue;
    }
    for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
      const float distance = distanceTo(triangles_[i], origin, direction);
      if (distance >= from &&
          (distance < best.distance || (distance == best.distance && order_[i] < best.triangle))) {
        best = {order_[i], distance};
        found = distance < kInfinite;
      }
    }
  }
  return found ? std::optional(best) : std::nullopt;
}

}  // namespace zel::view
