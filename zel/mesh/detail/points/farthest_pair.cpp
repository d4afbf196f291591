#include "zel/mesh/detail/points/farthest_pair.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <numbers>
#include <numeric>
#include <tuple>
#include <utility>

#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace zel {
namespace {

using Vector = std::array<double, 3>;

constexpr std::size_t kLeafSize = 16;
constexpr std::size_t kWalkBelow = 64;
// Relative slack on every bound: it covers the rounding of the bounds and of the float distance.
constexpr double kSlack = 1e-5;
constexpr float kInfinite = std::numeric_limits<float>::infinity();
constexpr double kRoundsToInfinite = 0x1.ffffffp127;  // the least double that does

double dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

/// The best pair so far, with the tie-break of the walk.
class BestPair {
 public:
  void offer(const std::vector<ScannedPoint>& points, std::size_t i, std::size_t j) {
    if (i > j) {
      std::swap(i, j);
    }
    const float value = slSquareDistance3(points[i].position, points[j].position);
    if (value > value_ || (value == value_ && found_ && isEarlier(i, j))) {
      value_ = value;
      i_ = i;
      j_ = j;
      found_ = true;
    }
  }

  [[nodiscard]] float value() const { return value_; }
  /// The least squared distance that may win or tie.
  [[nodiscard]] double least() const { return value_ == kInfinite ? kRoundsToInfinite : value_; }
  /// Whether a pair whose first point is `i` may win. Nothing is greater than infinity, so among
  /// infinite pairs only the order counts.
  [[nodiscard]] bool mayWin(std::size_t i) const { return value_ < kInfinite || i <= i_; }

  [[nodiscard]] FarthestPair result(const std::vector<ScannedPoint>& points) const {
    if (!found_) {
      return {0.0F, kNoIndex, kNoIndex};
    }
    return {value_, points[i_].slot, points[j_].slot};
  }

 private:
  [[nodiscard]] bool isEarlier(std::size_t i, std::size_t j) const {
    return i < i_ || (i == i_ && j < j_);
  }

  float value_ = 0.0F;
  std::size_t i_ = 0;
  std::size_t j_ = 0;
  bool found_ = false;
};

/// What is known of a group of points, as seen from the common centre.
struct Group {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::size_t children = 0;  // index of the first of two; 0 marks a leaf
  Vector low{};
  Vector high{};
  double reach = 0.0;     // greatest distance from the centre
  std::size_t first = 0;  // the least of their places in the walk
  Vector axis{};          // of the cone that holds the group; zero when it has none
  double halfAngle = 0.0;

  [[nodiscard]] std::size_t size() const { return end - begin; }
};

class PairSearch {
 public:
  explicit PairSearch(const std::vector<ScannedPoint>& points) : points_(points) {
    relative_.resize(points.size());
    findCentre();
    order_.resize(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      order_[i] = i;
      for (std::size_t axis = 0; axis < 3; ++axis) {
        relative_[i][axis] = points[i].position[axis] - centre_[axis];
      }
    }
  }

  BestPair run() {
    startFromSweeps();
    dropInnerPoints();
    groups_.push_back(describe(0, order_.size()));
    split(0);
    visitPairs();
    return best_;
  }

 private:
  void findCentre() {
    Vector low{};
    Vector high{};
    low.fill(std::numeric_limits<double>::infinity());
    high.fill(-std::numeric_limits<double>::infinity());
    for (const ScannedPoint& point : points_) {
      for (std::size_t axis = 0; axis < 3; ++axis) {
        low[axis] = std::min<double>(low[axis], point.position[axis]);
        high[axis] = std::max<double>(high[axis], point.position[axis]);
      }
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
      centre_[axis] = 0.5 * (low[axis] + high[axis]);
    }
  }

  /// A first good pair: from any point to its farthest, from there to the farthest again.
  void startFromSweeps() {
    std::size_t from = 0;
    for (int sweep = 0; sweep < 3; ++sweep) {
      std::size_t farthest = from;
      float value = -1.0F;
      for (std::size_t i = 0; i < points_.size(); ++i) {
        const float d = slSquareDistance3(points_[from].position, points_[i].position);
        if (d > value) {
          value = d;
          farthest = i;
        }
      }
      best_.offer(points_, from, farthest);
      from = farthest;
    }
  }

  void dropInnerPoints() {
    double reach = 0.0;
    for (const Vector& point : relative_) {
      reach = std::max(reach, std::sqrt(dot(point, point)));
    }
    const auto isInner = [&](std::size_t i) {
      return !mayReach(std::sqrt(dot(relative_[i], relative_[i])) + reach);
    };
    order_.erase(std::remove_if(order_.begin(), order_.end(), isInner), order_.end());
  }

  [[nodiscard]] bool mayReach(double distance) const {
    return distance * distance * (1.0 + kSlack) >= best_.least();
  }

  [[nodiscard]] Group describe(std::size_t begin, std::size_t end) const {
    Group group;
    group.begin = begin;
    group.end = end;
    group.first =
        begin < end ? *std::min_element(&order_[begin], &order_[begin] + (end - begin)) : 0;
    group.low.fill(std::numeric_limits<double>::infinity());
    group.high.fill(-std::numeric_limits<double>::infinity());
    Vector sum{};
    for (std::size_t k = begin; k < end; ++k) {
      const Vector& point = relative_[order_[k]];
      const double length = std::sqrt(dot(point, point));
      group.reach = std::max(group.reach, length);
      for (std::size_t axis = 0; axis < 3; ++axis) {
        group.low[axis] = std::min(group.low[axis], point[axis]);
        group.high[axis] = std::max(group.high[axis], point[axis]);
        sum[axis] += length > 0.0 ? point[axis] / length : 0.0;
      }
    }
    setCone(group, sum);
    return group;
  }

  void setCone(Group& group, const Vector& sum) const {
    const double length = std::sqrt(dot(sum, sum));
    if (!(length > 1e-9)) {
      return;
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
      group.axis[axis] = sum[axis] / length;
    }
    for (std::size_t k = group.begin; k < group.end; ++k) {
      const Vector& point = relative_[order_[k]];
      const double distance = std::sqrt(dot(point, point));
      if (!(distance > 0.0)) {
        group.axis.fill(0.0);
        return;
      }
      const double cosine = std::clamp(dot(point, group.axis) / distance, -1.0, 1.0);
      group.halfAngle = std::max(group.halfAngle, std::acos(cosine));
    }
  }

  void split(std::size_t root) {
    std::vector<std::size_t> open{root};
    while (!open.empty()) {
      const std::size_t at = open.back();
      open.pop_back();
      const Group group = groups_[at];
      if (group.size() <= kLeafSize) {
        continue;
      }
      const std::size_t axis = widestAxis(group);
      const std::size_t middle = group.begin + group.size() / 2;
      const auto position = [&](std::size_t k) {
        return order_.begin() + static_cast<std::ptrdiff_t>(k);
      };
      std::nth_element(
          position(group.begin), position(middle), position(group.end),
          [&](std::size_t a, std::size_t b) { return relative_[a][axis] < relative_[b][axis]; });
      groups_[at].children = groups_.size();
      groups_.push_back(describe(group.begin, middle));
      groups_.push_back(describe(middle, group.end));
      open.push_back(groups_.size() - 2);
      open.push_back(groups_.size() - 1);
    }
  }

  static std::size_t widestAxis(const Group& group) {
    std::size_t widest = 0;
    for (std::size_t axis = 1; axis < 3; ++axis) {
      if (group.high[axis] - group.low[axis] > group.high[widest] - group.low[widest]) {
        widest = axis;
      }
    }
    return widest;
  }

  [[nodiscard]] bool mayHoldBetter(const Group& a, const Group& b) const {
    double square = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double span = std::max(a.high[axis] - b.low[axis], b.high[axis] - a.low[axis]);
      square += span * span;
    }
    if (!mayReach(std::sqrt(square))) {
      return false;
    }
    return mayReach(std::sqrt(coneBound(a, b)));
  }

  /// Law of cosines with the widest angle at which two members of the cones can stand.
  static double coneBound(const Group& a, const Group& b) {
    double cosine = -1.0;
    if (dot(a.axis, a.axis) > 0.0 && dot(b.axis, b.axis) > 0.0) {
      const double between = std::acos(std::clamp(dot(a.axis, b.axis), -1.0, 1.0));
      constexpr double kRounding = 1e-7;
      const double widest = between + a.halfAngle + b.halfAngle + kRounding;
      cosine = std::cos(std::min(widest, std::numbers::pi));
    }
    // With an acute angle the longer arm alone bounds the distance better than both together.
    return a.reach * a.reach + b.reach * b.reach - 2.0 * a.reach * b.reach * std::min(cosine, 0.0);
  }

  void visitPairs() {
    std::vector<std::pair<std::size_t, std::size_t>> open{{0, 0}};
    while (!open.empty()) {
      const auto [first, second] = open.back();
      open.pop_back();
      const Group& a = groups_[first];
      const Group& b = groups_[second];
      if (!best_.mayWin(std::min(a.first, b.first)) || !mayHoldBetter(a, b)) {
        continue;
      }
      if (a.children == 0 && b.children == 0) {
        comparePoints(a, b);
      } else if (first == second) {
        open.insert(open.end(), {{a.children, a.children},
                                 {a.children + 1, a.children + 1},
                                 {a.children, a.children + 1}});
      } else if (b.children == 0 || (a.children != 0 && a.size() >= b.size())) {
        open.insert(open.end(), {{a.children, second}, {a.children + 1, second}});
      } else {
        open.insert(open.end(), {{first, b.children}, {first, b.children + 1}});
      }
    }
  }

  void comparePoints(const Group& a, const Group& b) {
    for (std::size_t k = a.begin; k < a.end; ++k) {
      for (std::size_t l = b.begin; l < b.end; ++l) {
        if (order_[k] != order_[l]) {
          best_.offer(points_, order_[k], order_[l]);
        }
      }
    }
  }

  const std::vector<ScannedPoint>& points_;
  std::vector<Vector> relative_;
  std::vector<std::size_t> order_;
  std::vector<Group> groups_;
  Vector centre_{};
  BestPair best_;
};

bool isFinite(const ScannedPoint& point) {
  return std::isfinite(point.position[0]) && std::isfinite(point.position[1]) &&
         std::isfinite(point.position[2]);
}

bool holdsNan(const ScannedPoint& point) {
  return std::isnan(point.position[0]) || std::isnan(point.position[1]) ||
         std::isnan(point.position[2]);
}

/// Of points that coincide only the first can be in the pair that the walk finds.
std::vector<ScannedPoint> withoutRepeats(const std::vector<ScannedPoint>& points) {
  const auto position = [&](std::size_t i) { return std::to_array(points[i].position); };
  std::vector<std::size_t> order(points.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return position(a) < position(b); });
  const auto last = std::unique(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return position(a) == position(b);
  });
  order.erase(last, order.end());
  std::sort(order.begin(), order.end());
  std::vector<ScannedPoint> firsts;
  firsts.reserve(order.size());
  for (const std::size_t i : order) {
    firsts.push_back(points[i]);
  }
  return firsts;
}

/// The walk itself. Nothing is greater than infinity, so it may stop there.
FarthestPair walkAllPairs(const std::vector<ScannedPoint>& points) {
  BestPair best;
  for (std::size_t i = 0; i < points.size(); ++i) {
    for (std::size_t j = i + 1; j < points.size(); ++j) {
      best.offer(points, i, j);
      if (best.value() == kInfinite) {
        return best.result(points);
      }
    }
  }
  return best.result(points);
}

/// The first pair of the walk in which an infinite coordinate makes the distance infinite. Points
/// that share one have none: their difference is not a number.
FarthestPair firstByInfiniteCoordinate(const std::vector<ScannedPoint>& points) {
  // Infinite coordinates by axis and sign, a bit each; two bits of an axis do not occur together.
  const auto signsOf = [](const ScannedPoint& point) {
    std::size_t signs = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const float value = point.position[axis];
      signs |= static_cast<std::size_t>(value == kInfinite) << (2 * axis);
      signs |= static_cast<std::size_t>(value == -kInfinite) << (2 * axis + 1);
    }
    return signs;
  };
  FarthestPair pair{0.0F, kNoIndex, kNoIndex};
  std::array<int, 64> next;  // the slot of the next point with these signs
  next.fill(std::numeric_limits<int>::max());
  for (std::size_t i = points.size(); i-- > 0;) {
    const std::size_t signs = signsOf(points[i]);
    int slot = std::numeric_limits<int>::max();
    for (std::size_t other = 0; other < next.size(); ++other) {
      if ((signs & other) == 0 && (signs | other) != 0) {
        slot = std::min(slot, next[other]);
      }
    }
    if (slot != std::numeric_limits<int>::max()) {
      pair = {kInfinite, points[i].slot, slot};
    }
    next[signs] = points[i].slot;
  }
  return pair;
}

FarthestPair farthestFinitePair(const std::vector<ScannedPoint>& points) {
  if (points.size() < kWalkBelow) {
    return walkAllPairs(points);
  }
  const std::vector<ScannedPoint> distinct = withoutRepeats(points);
  return distinct.size() < kWalkBelow ? walkAllPairs(distinct)
                                      : PairSearch(distinct).run().result(distinct);
}

}  // namespace

FarthestPair farthestPair(const std::vector<ScannedPoint>& points) {
  if (points.size() < kWalkBelow) {
    return walkAllPairs(points);
  }
  if (std::all_of(points.begin(), points.end(), isFinite)) {
    return farthestFinitePair(points);
  }
  std::vector<ScannedPoint> numbers;
  std::remove_copy_if(points.begin(), points.end(), std::back_inserter(numbers), holdsNan);
  std::vector<ScannedPoint> finite;
  std::copy_if(numbers.begin(), numbers.end(), std::back_inserter(finite), isFinite);
  const FarthestPair a = firstByInfiniteCoordinate(numbers);
  const FarthestPair b = farthestFinitePair(finite);
  if (a.squareDistance != b.squareDistance) {
    return a.squareDistance > b.squareDistance ? a : b;
  }
  return std::tie(a.slotA, a.slotB) < std::tie(b.slotA, b.slotB) ? a : b;
}

}  // namespace zel
