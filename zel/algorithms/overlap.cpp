#include "zel/algorithms/overlap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "zel/algorithms/detail/plane_triangle.h"
#include "zel/algorithms/detail/texture_places.h"
#include "zel/core/detail/memory_errors.h"

namespace zel {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// Part of a layout: a run of triangles and what is known of them together.
struct Branch {
  std::size_t first;
  std::size_t count;
  std::size_t parent;
  std::size_t clear;  // triangles not known to overlap another
  std::size_t left = kNone;
  std::size_t right = kNone;
  std::size_t firstCorner = 0;  // of the hull
  std::size_t cornerCount = 0;
  PlaneBox box{};
  double depth = 0.0;  // overlaps no thicker than this count for none of its triangles

  [[nodiscard]] bool isLeaf() const { return left == kNone; }
};

bool meet(const PlaneBox& a, const PlaneBox& b) {
  return a.low[0] < b.high[0] && b.low[0] < a.high[0] && a.low[1] < b.high[1] &&
         b.low[1] < a.high[1];
}

/// A binary tree of parts bounded by convex hulls. Neighbouring parts of a flat layout touch
/// without a common area, even the sectors of a fan of needles, so that no pair across them has to
/// be looked at.
class OverlapTree {
 public:
  /// @param triangles finite and with an area each.
  explicit OverlapTree(std::vector<PlaneTriangle> triangles)
      : triangles_(std::move(triangles)),
        isCovered_(triangles_.size(), false),
        leaves_(triangles_.size()) {
    grow(0, triangles_.size(), kNone);
  }

  int countCovered() {
    coverWithin(0);
    return static_cast<int>(std::count(isCovered_.begin(), isCovered_.end(), true));
  }

 private:
  static constexpr std::size_t kLeafSize = 4;

  std::size_t grow(std::size_t first, std::size_t count, std::size_t parent) {
    const std::size_t self = branches_.size();
    branches_.push_back({first, count, parent, count});
    std::vector<PlanePoint> points;
    if (count <= kLeafSize) {
      std::fill_n(leaves_.begin() + static_cast<std::ptrdiff_t>(first), count, self);
      branches_[self].depth = leastOverlap(triangles_[first]);
      for (std::size_t i = first; i < first + count; ++i) {
        branches_[self].depth = std::min(branches_[self].depth, leastOverlap(triangles_[i]));
        points.insert(points.end(), triangles_[i].begin(), triangles_[i].end());
      }
    } else {
      split(first, count);
      const std::size_t left = grow(first, count / 2, self);
      const std::size_t right = grow(first + count / 2, count - count / 2, self);
      branches_[self].left = left;
      branches_[self].right = right;
      branches_[self].depth = std::min(branches_[left].depth, branches_[right].depth);
      for (const std::size_t child : {left, right}) {
        const ConvexPolygon hull = hullOf(branches_[child]);
        points.insert(points.end(), hull.begin(), hull.end());
      }
    }
    bound(branches_[self], convexHull(std::move(points)));
    return self;
  }

  /// Puts the half with the lower centres, along the longer side, first.
  void split(std::size_t first, std::size_t count) {
    const auto begin = triangles_.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = begin + static_cast<std::ptrdiff_t>(count);
    const auto centre = [](const PlaneTriangle& triangle, std::size_t axis) {
      return triangle[0][axis] + triangle[1][axis] + triangle[2][axis];
    };
    const auto centreOf = [&](const PlaneTriangle& triangle) {
      return PlanePoint{centre(triangle, 0), centre(triangle, 1)};
    };
    PlaneBox box{centreOf(*begin), centreOf(*begin)};
    std::for_each(begin, end,
                  [&](const PlaneTriangle& triangle) { box.extendTo(centreOf(triangle)); });
    const std::size_t axis = box.high[1] - box.low[1] > box.high[0] - box.low[0] ? 1 : 0;
    std::nth_element(begin, begin + static_cast<std::ptrdiff_t>(count / 2), end,
                     [&](const PlaneTriangle& a, const PlaneTriangle& b) {
                       return centre(a, axis) < centre(b, axis);
                     });
  }

  void bound(Branch& branch, const std::vector<PlanePoint>& hull) {
    branch.firstCorner = corners_.size();
    branch.cornerCount = hull.size();
    corners_.insert(corners_.end(), hull.begin(), hull.end());
    branch.box = {hull.front(), hull.front()};
    for (const PlanePoint& corner : hull) {
      branch.box.extendTo(corner);
    }
  }

  [[nodiscard]] ConvexPolygon hullOf(const Branch& branch) const {
    return {corners_.data() + branch.firstCorner, branch.cornerCount};
  }

  /// Looks at the pairs within a branch.
  void coverWithin(std::size_t self) {
    const Branch& branch = branches_[self];
    if (!branch.isLeaf()) {
      coverWithin(branch.left);
      coverWithin(branch.right);
      coverAcross(branch.left, branch.right);
      return;
    }
    for (std::size_t i = branch.first; i < branch.first + branch.count; ++i) {
      for (std::size_t j = branch.first; j < i; ++j) {
        coverPair(i, j);
      }
    }
  }

  /// Looks at the pairs between two branches. Where all triangles of both are known to overlap
  /// others nothing is left to learn: many layers in one place cost no more than two.
  void coverAcross(std::size_t a, std::size_t b) {
    const Branch& one = branches_[a];
    const Branch& other = branches_[b];
    if (one.clear + other.clear == 0 || !meet(one.box, other.box) ||
        areApart(hullOf(one), hullOf(other), std::min(one.depth, other.depth))) {
      return;
    }
    if (!one.isLeaf() && (other.isLeaf() || one.count >= other.count)) {
      coverAcross(one.left, b);
      coverAcross(one.right, b);
    } else if (!other.isLeaf()) {
      coverAcross(a, other.left);
      coverAcross(a, other.right);
    } else {
      for (std::size_t i = one.first; i < one.first + one.count; ++i) {
        for (std::size_t j = other.first; j < other.first + other.count; ++j) {
          coverPair(i, j);
        }
      }
    }
  }

  void coverPair(std::size_t i, std::size_t j) {
    if ((!isCovered_[i] || !isCovered_[j]) && overlap(triangles_[i], triangles_[j])) {
      cover(i);
      cover(j);
    }
  }

  void cover(std::size_t i) {
    if (!isCovered_[i]) {
      isCovered_[i] = true;
      for (std::size_t at = leaves_[i]; at != kNone; at = branches_[at].parent) {
        --branches_[at].clear;
      }
    }
  }

  std::vector<PlaneTriangle> triangles_;
  std::vector<bool> isCovered_;
  std::vector<std::size_t> leaves_;  // of each triangle
  std::vector<Branch> branches_;
  std::vector<PlanePoint> corners_;  // of all hulls
};

}  // namespace

int countOverlapping(std::vector<PlaneTriangle> triangles) {
  return tellingRefusedMemory([&] {
    std::erase_if(triangles, [](const PlaneTriangle& triangle) {
      const double area = signedArea(triangle);
      return area == 0.0 || !std::isfinite(area);
    });
    return triangles.empty() ? 0 : OverlapTree(std::move(triangles)).countCovered();
  });
}

int countOverlapping(const Mesh& mesh) {
  return tellingRefusedMemory([&] { return countOverlapping(texturePlacesOf(mesh)); });
}

}  // namespace zel
