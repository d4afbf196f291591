#include "tools/zel/commands/demo_shape.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

namespace zel::program {

namespace {

using Vector = Double3;

Vector operator+(const Vector& a, const Vector& b) {
  return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
Vector operator*(double s, const Vector& a) { return {s * a[0], s * a[1], s * a[2]}; }
double dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Vector cross(const Vector& u, const Vector& v) {
  return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}
Vector unit(const Vector& a) { return 1 / std::sqrt(dot(a, a)) * a; }

/// The trefoil knot and its direction.
Vector knotPoint(double t) {
  return {std::sin(t) + 2 * std::sin(2 * t), std::cos(t) - 2 * std::cos(2 * t), -std::sin(3 * t)};
}
Vector knotDirection(double t) {
  return unit({std::cos(t) + 4 * std::cos(2 * t), -std::sin(t) + 4 * std::sin(2 * t),
               -3 * std::cos(3 * t)});
}

/// A grid of `rings` x `sides` points, closed round the tube and open along it.
class Tube {
 public:
  Tube(int rings, int sides) : rings_(rings), sides_(sides) {
    Vector across = unit(cross(knotDirection(start()), {0, 0, 1}));
    for (int ring = 0; ring < rings; ++ring) {
      const double t = start() + ring * step();
      const Vector along = knotDirection(t);
      // Carried along without turning about the tube's own axis, so that flutes do not jump.
      across = unit(across + -dot(across, along) * along);
      addRing(t, across, cross(along, across));
    }
  }

  [[nodiscard]] const Vector& at(int ring, int side) const {
    return points_[static_cast<std::size_t>(ring) * static_cast<std::size_t>(sides_) +
                   static_cast<std::size_t>(side % sides_)];
  }

 private:
  static constexpr double kOpening = 0.35;  ///< of the knot's parameter, left out

  static double start() { return kOpening / 2; }
  [[nodiscard]] double step() const { return (2 * std::numbers::pi - kOpening) / (rings_ - 1); }

  void addRing(double t, const Vector& across, const Vector& up) {
    constexpr double kRadius = 0.55;
    constexpr double kFluteDepth = 0.12;
    constexpr int kFlutes = 6;
    constexpr int kTwists = 5;
    for (int side = 0; side < sides_; ++side) {
      const double angle = 2 * std::numbers::pi * side / sides_;
      const double radius = kRadius * (1 + kFluteDepth * std::cos(kFlutes * angle + kTwists * t));
      points_.push_back(knotPoint(t) + radius * std::cos(angle) * across +
                        radius * std::sin(angle) * up);
    }
  }

  int rings_;
  int sides_;
  std::vector<Vector> points_;
};

/// Adds triangles whose corners are all their own and none quite in its place.
class SoupMaker {
 public:
  explicit SoupMaker(Mesh& mesh) : mesh_(mesh) {}

  void add(const Vector& a, const Vector& b, const Vector& c) {
    const int first = mesh_.nodes.GetBoundM();
    for (const Vector& corner : {a, b, c}) {
      mesh_.addNode(scattered(corner));
    }
    mesh_.addTriangle({first, first + 1, first + 2});
  }

 private:
  Point scattered(const Vector& place) {
    Point point{};
    for (std::size_t k = 0; k < place.size(); ++k) {
      point[k] = static_cast<float>(place[k] + offset());
    }
    return point;
  }

  /// Not a standard distribution: those differ from one standard library to the next.
  double offset() {
    constexpr double kRange = 4294967296.0;
    return kScatter * (2 * (static_cast<double>(random_()) / kRange) - 1);
  }

  Mesh& mesh_;
  std::mt19937 random_{20240229};
};

constexpr int kRepeatedEvery = 97;
constexpr int kCollapsedEvery = 211;

}  // namespace

DemoSoup makeDemoSoup(int triangles) {
  constexpr int kFewest = 1000;
  constexpr double kRingsPerSide = 7;
  const double cells = std::max(triangles, kFewest) / 2.0;
  const int sides = static_cast<int>(std::sqrt(cells / kRingsPerSide));
  const int rings = static_cast<int>(std::ceil(cells / sides)) + 1;
  const Tube tube(rings, sides);
  DemoSoup soup;
  SoupMaker maker(soup.mesh);
  const auto add = [&](const Vector& a, const Vector& b, const Vector& c) {
    maker.add(a, b, c);
    ++soup.triangles;
    if (soup.triangles % kRepeatedEvery == 0) {
      maker.add(b, a, c);
      ++soup.repeated;
    }
    if (soup.triangles % kCollapsedEvery == 0) {
      maker.add(a, b, b);
      ++soup.collapsed;
    }
  };
  for (int ring = 0; ring + 1 < rings; ++ring) {
    for (int side = 0; side < sides; ++side) {
      add(tube.at(ring, side), tube.at(ring, side + 1), tube.at(ring + 1, side + 1));
      add(tube.at(ring, side), tube.at(ring + 1, side + 1), tube.at(ring + 1, side));
    }
  }
  soup.nodes = rings * sides;
  soup.boundaryEdges = 2 * sides;
  return soup;
}

}  // namespace zel::program
