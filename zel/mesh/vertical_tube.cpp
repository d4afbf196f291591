#include "zel/geometry/tubes.h"

#include <algorithm>
#include <cmath>

#include "zel/containers/point3d_arr.h"
#include "zel/core/constants.h"

namespace {

struct Point {
  double x, y;
};

/// The live points of an array from above, relative to an origin and in units of a scale.
class FlatPoints {
 public:
  explicit FlatPoints(const Point3DArr& pts)
      : points_(pts.getCurrentItemPrtConstM()), bound_(pts.GetBoundM()) {
    forEach([&](Point) { count_ += 1.0; });
    Point sum{0.0, 0.0};
    forEach([&](Point p) {
      sum = {sum.x + p.x, sum.y + p.y};
      low_ = {std::min(low_.x, p.x), std::min(low_.y, p.y)};
      high_ = {std::max(high_.x, p.x), std::max(high_.y, p.y)};
    });
    origin_ = {sum.x / count_, sum.y / count_};
    double squares = 0.0;
    forEach([&](Point p) { squares += p.x * p.x + p.y * p.y; });
    scale_ = std::sqrt(squares / count_);
  }

  /// The larger side of the rectangle around them.
  [[nodiscard]] double extent() const { return std::max(high_.x - low_.x, high_.y - low_.y); }
  /// Root mean square distance from the middle; not a number without points.
  [[nodiscard]] double scale() const { return scale_; }
  [[nodiscard]] Point origin() const { return origin_; }
  [[nodiscard]] double count() const { return count_; }

  template <class Visit>
  void forEach(Visit visit) const {
    const double unit = scale_ > 0.0 ? scale_ : 1.0;
    for (int i = 0; i < bound_; ++i) {
      if (points_[i][0] > zel::kLiveHalfMark) {
        visit(Point{(points_[i][0] - origin_.x) / unit, (points_[i][1] - origin_.y) / unit});
      }
    }
  }

 private:
  const float (*points_)[3];
  int bound_;
  double count_ = 0.0;
  Point low_{HUGE_VAL, HUGE_VAL};
  Point high_{-HUGE_VAL, -HUGE_VAL};
  Point origin_{0.0, 0.0};
  double scale_ = 1.0;
};

/// A symmetric 2x2 system: [xx xy; xy yy] p = (x, y).
struct Symmetric {
  double xx = 0.0, xy = 0.0, yy = 0.0, x = 0.0, y = 0.0;

  [[nodiscard]] double determinant() const { return xx * yy - xy * xy; }
  [[nodiscard]] Point solve() const {
    const double d = determinant();
    return {(yy * x - xy * y) / d, (xx * y - xy * x) / d};
  }
  /// Whether the smaller principal value is at most the square of the tolerance times the larger.
  [[nodiscard]] bool isFlat() const {
    const double half = (xx + yy) / 2.0;
    const double larger = half + std::hypot((xx - yy) / 2.0, xy);
    const double ratio = static_cast<double>(zel::kTolerance) * zel::kTolerance;
    return !(determinant() > ratio * larger * larger);
  }
};

/// Centre of the circle that is best in x^2 + y^2 + D x + E y + F = 0.
Symmetric algebraicSystem(const FlatPoints& points) {
  Symmetric system;
  points.forEach([&](Point p) {
    const double square = (p.x * p.x + p.y * p.y) / 2.0;
    system.xx += p.x * p.x;
    system.xy += p.x * p.y;
    system.yy += p.y * p.y;
    system.x += square * p.x;
    system.y += square * p.y;
  });
  return system;
}

/// The distances of the points from a centre: their mean (the best radius), the sum of squares that
/// is left, and the system of the Gauss-Newton step for the centre.
struct Residuals {
  double radius = 0.0;
  double squares = 0.0;
  Symmetric step;
};

Residuals residualsFrom(const FlatPoints& points, Point centre) {
  struct Polar {
    double r, cosine, sine;
  };
  const auto polar = [&](Point p) {
    const double x = p.x - centre.x;
    const double y = p.y - centre.y;
    const double r = std::hypot(x, y);
    return r > 0.0 ? Polar{r, x / r, y / r} : Polar{0.0, 0.0, 0.0};
  };
  Polar mean{0.0, 0.0, 0.0};
  points.forEach([&](Point p) {
    const Polar q = polar(p);
    mean = {mean.r + q.r, mean.cosine + q.cosine, mean.sine + q.sine};
  });
  mean = {mean.r / points.count(), mean.cosine / points.count(), mean.sine / points.count()};
  Residuals result;
  result.radius = mean.r;
  points.forEach([&](Point p) {
    const Polar q = polar(p);
    const double r = q.r - mean.r, c = q.cosine - mean.cosine, s = q.sine - mean.sine;
    result.squares += r * r;
    result.step.xx += c * c;
    result.step.xy += c * s;
    result.step.yy += s * s;
    result.step.x += r * c;
    result.step.y += r * s;
  });
  return result;
}

/// Levenberg-Marquardt descent from an algebraic fit. @return the radius; `centre` is moved.
double refine(const FlatPoints& points, Point& centre) {
  constexpr int kMostSteps = 60;
  constexpr double kSmallestStep = 1e-10;  // of the radius; the results are floats
  Residuals best = residualsFrom(points, centre);
  double damping = 1e-6;
  for (int i = 0; i < kMostSteps; ++i) {
    Symmetric damped = best.step;
    damped.xx *= 1.0 + damping;
    damped.yy *= 1.0 + damping;
    const Point step = damped.solve();
    if (!(std::hypot(step.x, step.y) > kSmallestStep * best.radius)) {
      break;
    }
    const Point next{centre.x + step.x, centre.y + step.y};
    const Residuals candidate = residualsFrom(points, next);
    if (!(candidate.squares < best.squares)) {
      damping *= 10.0;
      continue;
    }
    centre = next;
    best = candidate;
    damping /= 10.0;
  }
  return best.radius;
}

/// Whether a circle, as it is handed out, runs through the points. Short noisy arcs are fitted best
/// by circles that are nearly lines, and floats may then miss them altogether.
bool isNear(const FlatPoints& points, float x, float y, float r) {
  constexpr double kLargestMiss = 0.1;    // root mean square, of the extent
  constexpr double kLargestRadius = 1e4;  // of the extent
  double squares = 0.0;
  points.forEach([&](Point p) {
    const double miss = std::hypot(points.origin().x + points.scale() * p.x - x,
                                   points.origin().y + points.scale() * p.y - y) -
                        r;
    squares += miss * miss;
  });
  return std::sqrt(squares / points.count()) <= kLargestMiss * points.extent() &&
         r <= kLargestRadius * points.extent();
}

}  // namespace

int slGenVerticalTube(const Point3DArr& pts, float* centre, float* radius) {
  const FlatPoints points(pts);
  const Symmetric system = algebraicSystem(points);
  if (!(points.scale() > zel::kTolerance) || system.isFlat()) {
    return 0;
  }
  Point found = system.solve();
  const double refined = refine(points, found);
  const float x = static_cast<float>(points.origin().x + points.scale() * found.x);
  const float y = static_cast<float>(points.origin().y + points.scale() * found.y);
  const float r = static_cast<float>(points.scale() * refined);
  if (!isNear(points, x, y, r)) {  // nor is what is not finite
    return 0;
  }
  centre[0] = x;
  centre[1] = y;
  *radius = r;
  return 1;
}
