#include "zel/mesh/detail/points/kept_points.h"

#include <cmath>

#include "zel/core/detail/prefetch.h"

namespace zel {
namespace {

// Between these, squares neither vanish nor overflow in single precision.
constexpr double kLeastMeasurable = 1e-15;
constexpr double kMostMeasurable = 1e18;
/// In a soup of triangles six corners meet.
constexpr std::size_t kUsualTwins = 6;

double distanceBetween(const float* a, const float* b) {
  double square = 0.0;
  for (int axis = 0; axis < 3; ++axis) {
    const double difference = static_cast<double>(a[axis]) - b[axis];
    square += difference * difference;
  }
  return std::sqrt(square);
}

}  // namespace

NearByDistance::NearByDistance(double tolerance)
    : tolerance_(tolerance),
      isMeasurable_(tolerance > kLeastMeasurable && tolerance < kMostMeasurable) {
  if (isMeasurable_) {
    sureSquare_ = static_cast<float>(tolerance * tolerance * 0.9999);
    nearSquare_ = static_cast<float>(tolerance * tolerance * 1.0001);
  }
}

bool NearByDistance::isNear(const float* q, const float* p) const {
  return distanceBetween(q, p) <= tolerance_;
}

KeptPoints::KeptPoints(double tolerance, std::size_t expected)
    : near_(tolerance), grid_(near_.reach()) {
  grid_.start(expected / kUsualTwins, {});
  kept_.reserve(expected / kUsualTwins);
}

void KeptPoints::fetch(const Search& search) const {
  if (const int probable = grid_.quickNear(search.point.data(), near_); probable >= 0) {
    prefetch(&kept_[static_cast<std::size_t>(probable)]);
  }
}

KeptPoints::Hit KeptPoints::findOrKeep(const Search& search) {
  const float* p = search.point.data();
  const int found = grid_.lowestNear(p, near_);
  if (found >= 0) {
    return {found, false, distanceBetween(kept_[static_cast<std::size_t>(found)].data(), p)};
  }
  const auto index = static_cast<int>(kept_.size());
  kept_.push_back(search.point);
  grid_.insert(index, p);
  return {index, true, 0.0};
}

}  // namespace zel
