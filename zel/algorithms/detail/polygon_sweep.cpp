#include "zel/algorithms/detail/polygon_sweep.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <set>
#include <utility>

#include "zel/algorithms/detail/double_vectors.h"
#include "zel/algorithms/detail/orientation_sign.h"

namespace zel {
namespace {

using Triangles = std::vector<std::array<int, 3>>;

constexpr int kNone = -1;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// What is left of a polygon: a ring of corners.
class Ring {
 public:
  explicit Ring(const std::vector<Float2>& points)
      : points_(points), previous_(points.size()), next_(points.size()) {
    const int count = static_cast<int>(points.size());
    for (int corner = 0; corner < count; ++corner) {
      next_[at(corner)] = corner + 1 < count ? corner + 1 : 0;
      previous_[at(corner)] = corner > 0 ? corner - 1 : count - 1;
    }
    size_ = count;
  }
  [[nodiscard]] int next(int corner) const { return next_[at(corner)]; }
  [[nodiscard]] int previous(int corner) const { return previous_[at(corner)]; }
  [[nodiscard]] int size() const { return size_; }
  [[nodiscard]] bool has(int corner) const { return next_[at(corner)] != kNone; }
  [[nodiscard]] const Float2& point(int corner) const { return points_[at(corner)]; }
  [[nodiscard]] int turnAt(int corner) const {
    return turnOf(point(previous(corner)), point(corner), point(next(corner)));
  }
  /// Cuts a corner off. @return its triangle.
  std::array<int, 3> cut(int corner) {
    const std::array<int, 3> triangle{previous(corner), corner, next(corner)};
    next_[at(triangle[0])] = triangle[2];
    previous_[at(triangle[2])] = triangle[0];
    next_[at(corner)] = kNone;
    --size_;
    return triangle;
  }
  /// Whether the border comes to a corner and goes back the way it came.
  [[nodiscard]] bool isSpike(int corner) const {
    const Float2& a = point(previous(corner));
    const Float2& b = point(corner);
    const Float2& c = point(next(corner));
    if (a == b || b == c) {
      return true;
    }
    return turnOf(a, b, c) == 0 && ((a < b) == (c < b));
  }

 private:
  const std::vector<Float2>& points_;
  std::vector<int> previous_;
  std::vector<int> next_;
  int size_;
};

/// Cuts off corners without area that would only confuse: repeated points and spikes.
void cutSpikes(Ring& ring, Triangles& triangles, int count) {
  for (int corner = 0; corner < count && ring.size() > 3; ++corner) {
    for (int here = corner; ring.size() > 3 && ring.has(here) && ring.isSpike(here);) {
      const int before = ring.previous(here);
      const int after = ring.next(here);
      triangles.push_back(ring.cut(here));
      here = ring.isSpike(before) ? before : after;
    }
  }
}

/// A sweep from left to right over the corners. Between a lower and an upper edge of the border,
/// where the sweep line runs inside the polygon, stands a chain of corners that still have
/// triangles to their right; it bulges to the left throughout, or it would have been cut.
class Sweep {
 public:
  explicit Sweep(const Ring& ring, int count)
      : ring_(ring), rank_(at(count)), intervalOf_(at(count), kNone), places_(at(count)) {
    for (int corner = 0; corner < count; ++corner) {
      if (ring.has(corner)) {
        order_.push_back(corner);
      }
    }
    std::sort(order_.begin(), order_.end(), [&](int a, int b) {
      return ring.point(a) != ring.point(b) ? ring.point(a) < ring.point(b) : a < b;
    });
    for (std::size_t i = 0; i < order_.size(); ++i) {
      rank_[at(order_[i])] = static_cast<int>(i);
    }
    triangles_.reserve(order_.size());
  }

  /// @return false when the border crosses itself.
  bool run() {
    for (const int corner : order_) {
      if (!pass(corner)) {
        return false;
      }
    }
    return static_cast<int>(triangles_.size()) == ring_.size() - 2;
  }
  [[nodiscard]] const Triangles& triangles() const { return triangles_; }

 private:
  /// A corner in a chain. One corner may stand in two chains.
  struct Link {
    int corner = kNone;
    int below = kNone;
    int above = kNone;
  };
  /// The edge from a corner to the next has the corner's number.
  struct Interval {
    int lowerEdge;
    int upperEdge;
    int bottom;     // of the chain
    int top;        // of the chain
    int rightmost;  // of the chain
  };
  /// Orders lower edges that the sweep line crosses from bottom to top; corners among them.
  struct Lower {
    using is_transparent = void;
    struct Corner {
      int number;
    };
    const Sweep* sweep;

    bool operator()(int a, int b) const { return a != b && sweep->isBelow(a, b); }
    bool operator()(int edge, Corner corner) const { return sweep->isUnder(edge, corner.number); }
  };
  using Lowers = std::multiset<int, Lower>;

  [[nodiscard]] bool isBefore(int a, int b) const { return rank_[at(a)] < rank_[at(b)]; }
  [[nodiscard]] const Float2& point(int corner) const { return ring_.point(corner); }
  /// On which side of a lower edge a corner lies: 1 above.
  [[nodiscard]] int sideOf(int edge, int corner) const {
    return turnOf(point(edge), point(ring_.next(edge)), point(corner));
  }
  /// Compares lower edges by whichever begins later.
  [[nodiscard]] bool isBelow(int a, int b) const {
    if (isBefore(a, b)) {
      const int side = sideOf(a, b);
      return side != 0 ? side > 0 : sideOf(a, ring_.next(b)) > 0;
    }
    const int side = sideOf(b, a);
    return side != 0 ? side < 0 : sideOf(b, ring_.next(a)) < 0;
  }

  bool pass(int corner) {
    const int before = ring_.previous(corner);
    const int after = ring_.next(corner);
    const bool comesFromLeft = isBefore(before, corner);
    const bool goesRight = isBefore(corner, after);
    if (comesFromLeft && goesRight) {
      return passBelow(before, corner);
    }
    if (!comesFromLeft && !goesRight) {
      return passAbove(before, corner);
    }
    const bool isConvex = ring_.turnAt(corner) > 0;
    if (goesRight) {
      return isConvex ? start(before, corner) : split(before, corner);
    }
    return isConvex ? end(before, corner) : merge(before, corner);
  }

  /// The lower edge of an interval ends at a corner, and the next begins.
  bool passBelow(int before, int corner) {
    const int interval = taken(before);
    if (interval == kNone) {
      return false;
    }
    pushBottom(interval, corner);
    setLower(interval, corner);
    return true;
  }
  /// The same with the upper edge.
  bool passAbove(int before, int corner) {
    const int interval = std::exchange(intervalOf_[at(corner)], kNone);
    if (interval == kNone) {
      return false;
    }
    pushTop(interval, corner);
    setUpper(interval, before);
    return true;
  }
  bool start(int before, int corner) {
    const int link = newLink(corner);
    addInterval({corner, before, link, link, link});
    return true;
  }
  /// The sweep line meets the border from inside an interval, which falls in two.
  bool split(int before, int corner) {
    const int interval = intervalAround(corner);
    if (interval == kNone) {
      return false;
    }
    const Interval old = intervals_[at(interval)];
    const int seen = old.rightmost;
    const int twin = newLink(links_[at(seen)].corner);
    links_[at(twin)].above = std::exchange(links_[at(seen)].above, kNone);
    if (links_[at(twin)].above != kNone) {
      links_[at(links_[at(twin)].above)].below = twin;
    }
    const int top = seen == old.top ? twin : old.top;
    intervals_[at(interval)].top = seen;
    const int upper = addInterval({corner, old.upperEdge, twin, top, twin});
    setUpper(interval, before);
    pushTop(interval, corner);
    pushBottom(upper, corner);
    return true;
  }
  bool end(int before, int corner) {
    const int interval = taken(before);
    if (interval == kNone || std::exchange(intervalOf_[at(corner)], kNone) != interval) {
      return false;
    }
    for (int link = intervals_[at(interval)].bottom; links_[at(link)].above != kNone;) {
      const int above = links_[at(link)].above;
      if (turnOf(pointOf(link), point(corner), pointOf(above)) < 0) {
        return false;
      }
      triangles_.push_back({links_[at(link)].corner, corner, links_[at(above)].corner});
      link = above;
    }
    return true;
  }
  /// Two intervals become one behind a corner.
  bool merge(int before, int corner) {
    const int upper = taken(before);
    const int lower = std::exchange(intervalOf_[at(corner)], kNone);
    if (upper == kNone || lower == kNone || upper == lower) {
      return false;
    }
    pushTop(lower, corner);
    pushBottom(upper, corner);
    const Interval& over = intervals_[at(upper)];
    Interval& joined = intervals_[at(lower)];
    // The corner stands at the end of both chains: one link is enough.
    const int above = links_[at(over.bottom)].above;
    links_[at(joined.top)].above = above;
    links_[at(above)].below = joined.top;
    joined.rightmost = joined.top;
    joined.top = over.top;
    setUpper(lower, over.upperEdge);
    return true;
  }

  /// Adds a corner at the lower end of a chain and cuts what it can.
  void pushBottom(int interval, int corner) {
    int above = intervals_[at(interval)].bottom;
    for (int next = links_[at(above)].above; next != kNone; next = links_[at(above)].above) {
      if (turnOf(pointOf(above), point(corner), pointOf(next)) <= 0) {
        break;
      }
      triangles_.push_back({links_[at(above)].corner, corner, links_[at(next)].corner});
      above = next;
    }
    const int link = newLink(corner);
    links_[at(link)].above = above;
    links_[at(above)].below = link;
    intervals_[at(interval)].bottom = intervals_[at(interval)].rightmost = link;
  }
  /// The same at the upper end.
  void pushTop(int interval, int corner) {
    int below = intervals_[at(interval)].top;
    for (int next = links_[at(below)].below; next != kNone; next = links_[at(below)].below) {
      if (turnOf(pointOf(next), point(corner), pointOf(below)) <= 0) {
        break;
      }
      triangles_.push_back({links_[at(next)].corner, corner, links_[at(below)].corner});
      below = next;
    }
    const int link = newLink(corner);
    links_[at(link)].below = below;
    links_[at(below)].above = link;
    intervals_[at(interval)].top = intervals_[at(interval)].rightmost = link;
  }
  [[nodiscard]] const Float2& pointOf(int link) const { return point(links_[at(link)].corner); }
  int newLink(int corner) {
    links_.push_back({corner, kNone, kNone});
    return static_cast<int>(links_.size()) - 1;
  }

  int addInterval(const Interval& interval) {
    intervals_.push_back(interval);
    const int number = static_cast<int>(intervals_.size()) - 1;
    setLower(number, interval.lowerEdge);
    setUpper(number, interval.upperEdge);
    return number;
  }
  void setLower(int interval, int edge) {
    intervals_[at(interval)].lowerEdge = edge;
    intervalOf_[at(edge)] = interval;
    places_[at(edge)] = lowers_.insert(edge);
  }
  void setUpper(int interval, int edge) {
    intervals_[at(interval)].upperEdge = edge;
    intervalOf_[at(edge)] = interval;
  }
  /// @return the interval above a lower edge, which ends; kNone when there is none.
  int taken(int edge) {
    const int interval = std::exchange(intervalOf_[at(edge)], kNone);
    if (interval != kNone) {
      lowers_.erase(places_[at(edge)]);
    }
    return interval;
  }
  /// Whether a corner whose two edges go right lies above a lower edge; where it lies on that,
  /// whether its edges do.
  [[nodiscard]] bool isUnder(int edge, int corner) const {
    for (const int place : {corner, ring_.previous(corner), ring_.next(corner)}) {
      if (const int side = sideOf(edge, place); side != 0) {
        return side > 0;
      }
    }
    return true;
  }
  /// @return the interval in which such a corner lies; kNone when there is none.
  [[nodiscard]] int intervalAround(int corner) const {
    const auto above = lowers_.lower_bound(Lower::Corner{corner});
    return above == lowers_.begin() ? kNone : intervalOf_[at(*std::prev(above))];
  }

  const Ring& ring_;
  std::vector<int> order_;
  std::vector<int> rank_;
  std::vector<Link> links_;
  std::vector<Interval> intervals_;
  std::vector<int> intervalOf_;  // per edge that the sweep line crosses
  Lowers lowers_{Lower{this}};
  std::vector<Lowers::iterator> places_;  // per lower edge that the sweep line crosses
  Triangles triangles_;
};

bool isInTriangle(const Ring& ring, const std::array<int, 3>& triangle, int corner) {
  const Float2& p = ring.point(corner);
  for (std::size_t k = 0; k < 3; ++k) {
    const Float2& from = ring.point(triangle[k]);
    const Float2& to = ring.point(triangle[(k + 1) % 3]);
    if (p == from || turnOf(from, to, p) < 0) {
      return false;
    }
  }
  return true;
}

bool isEar(const Ring& ring, int corner) {
  if (ring.turnAt(corner) <= 0) {
    return false;
  }
  const std::array<int, 3> triangle{ring.previous(corner), corner, ring.next(corner)};
  int other = ring.next(triangle[2]);
  while (other != triangle[0] && !isInTriangle(ring, triangle, other)) {
    other = ring.next(other);
  }
  return other == triangle[0];
}

/// Cuts a polygon that the sweep gave up: ears as long as there are any, then whatever comes. Very
/// long ones become a fan, for searching ears takes quadratic time.
void cutEars(Ring& ring, int corner, Triangles& triangles) {
  constexpr int kMostCorners = 2000;
  const bool isSearching = ring.size() <= kMostCorners;
  int tried = 0;
  while (ring.size() > 3) {
    const int next = ring.next(corner);
    if (!isSearching || tried > ring.size() || isEar(ring, corner)) {
      triangles.push_back(ring.cut(corner));
      tried = 0;
    } else {
      ++tried;
    }
    corner = next;
  }
  triangles.push_back({ring.previous(corner), corner, ring.next(corner)});
}

}  // namespace

std::vector<Float2> seenInPlane(std::span<const Float3> corners) {
  Double3 normal{};
  for (std::size_t k = 2; k < corners.size(); ++k) {
    const float* first = corners[0].data();
    const Double3 part =
        cross(between(first, corners[k - 1].data()), between(first, corners[k].data()));
    for (std::size_t axis = 0; axis < 3; ++axis) {
      normal[axis] += part[axis];
    }
  }
  const auto isSmaller = [](double a, double b) { return std::fabs(a) < std::fabs(b); };
  const auto dropped = static_cast<std::size_t>(
      std::max_element(normal.begin(), normal.end(), isSmaller) - normal.begin());
  std::size_t x = (dropped + 1) % 3;
  std::size_t y = (dropped + 2) % 3;
  if (normal[dropped] < 0.0) {
    std::swap(x, y);
  }
  std::vector<Float2> points;
  points.reserve(corners.size());
  for (const Float3& corner : corners) {
    points.push_back({corner[x], corner[y]});
  }
  return points;
}

Triangles sweptTriangles(const std::vector<Float2>& points) {
  const int count = static_cast<int>(points.size());
  Triangles triangles;
  if (count < 3) {
    return triangles;
  }
  triangles.reserve(points.size() - 2);
  Ring ring(points);
  const bool isFinite = std::ranges::all_of(
      points, [](const Float2& p) { return std::isfinite(p[0]) && std::isfinite(p[1]); });
  if (isFinite) {
    cutSpikes(ring, triangles, count);
    Sweep sweep(ring, count);
    if (sweep.run()) {
      triangles.insert(triangles.end(), sweep.triangles().begin(), sweep.triangles().end());
      return triangles;
    }
  }
  int corner = 0;
  while (!ring.has(corner)) {
    ++corner;
  }
  cutEars(ring, corner, triangles);
  return triangles;
}

}  // namespace zel
