#include "tools/zel/plane_overlap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace zel::program {

namespace {

PlaneBox boxOf(const PlaneTriangle& triangle) {
  PlaneBox box{triangle[0], triangle[0]};
  for (const PlanePoint& corner : triangle) {
    for (std::size_t axis = 0; axis < 2; ++axis) {
      box.low[axis] = std::min(box.low[axis], corner[axis]);
      box.high[axis] = std::max(box.high[axis], corner[axis]);
    }
  }
  return box;
}

double sizeOf(const PlaneTriangle& triangle) { return std::sqrt(std::fabs(signedArea(triangle))); }

/// By how much the two shadows on the normal of an edge overlap.
double shadowOverlap(const PlanePoint& from, const PlanePoint& to, const PlaneTriangle& a,
                     const PlaneTriangle& b) {
  const double x = from[1] - to[1];
  const double y = to[0] - from[0];
  const double length = std::hypot(x, y);
  if (!(length > 0.0)) {
    return std::numeric_limits<double>::infinity();
  }
  const auto shadow = [&](const PlaneTriangle& triangle) {
    std::array<double, 3> places{};
    std::transform(triangle.begin(), triangle.end(), places.begin(),
                   [&](const PlanePoint& p) { return (p[0] * x + p[1] * y) / length; });
    const auto [low, high] = std::minmax_element(places.begin(), places.end());
    return std::array<double, 2>{*low, *high};
  };
  const auto [lowA, highA] = shadow(a);
  const auto [lowB, highB] = shadow(b);
  return std::min(highA, highB) - std::max(lowA, lowB);
}

/// The triangles seen so far whose boxes touch one cell: first those that, when last looked at,
/// were not known to overlap another.
struct Cell {
  std::vector<std::size_t> members;
  std::size_t free = 0;
};

/// Triangles by the cells of a regular grid that their boxes touch.
class CellGrid {
 public:
  explicit CellGrid(const std::vector<PlaneTriangle>& triangles) : box_(program::boxOf(triangles)) {
    double size = 0.0;
    for (const PlaneTriangle& triangle : triangles) {
      const PlaneBox box = boxOf(triangle);
      size += box.high[0] - box.low[0] + box.high[1] - box.low[1];
    }
    const double width = box_.high[0] - box_.low[0];
    const double height = box_.high[1] - box_.low[1];
    // Cells as large as the average triangle, but never many more than triangles.
    const double count = static_cast<double>(triangles.size());
    cell_ = std::max({size / (2.0 * count), std::sqrt(width * height / (4.0 * count)),
                      std::max(width, height) / kMostColumns, 1e-30});
    columns_ = static_cast<std::size_t>(width / cell_) + 1;
    rows_ = static_cast<std::size_t>(height / cell_) + 1;
    cells_.resize(columns_ * rows_);
  }

  /// Visits the cells of a triangle's box.
  template <class Visit>
  void forEachCell(const PlaneTriangle& triangle, Visit visit) {
    const PlaneBox box = boxOf(triangle);
    const std::size_t lastColumn = column(box.high[0]);
    const std::size_t lastRow = row(box.high[1]);
    for (std::size_t r = row(box.low[1]); r <= lastRow; ++r) {
      for (std::size_t c = column(box.low[0]); c <= lastColumn; ++c) {
        visit(cells_[r * columns_ + c]);
      }
    }
  }

 private:
  static constexpr double kMostColumns = 4000.0;

  [[nodiscard]] std::size_t column(double x) const {
    return std::min(static_cast<std::size_t>(std::max(x - box_.low[0], 0.0) / cell_), columns_ - 1);
  }
  [[nodiscard]] std::size_t row(double y) const {
    return std::min(static_cast<std::size_t>(std::max(y - box_.low[1], 0.0) / cell_), rows_ - 1);
  }

  PlaneBox box_;
  double cell_ = 1.0;
  std::size_t columns_ = 1;
  std::size_t rows_ = 1;
  std::vector<Cell> cells_;
};

}  // namespace

PlaneBox boxOf(const std::vector<PlaneTriangle>& triangles) {
  if (triangles.empty()) {
    return {};
  }
  PlaneBox all = boxOf(triangles.front());
  for (const PlaneTriangle& triangle : triangles) {
    const PlaneBox box = boxOf(triangle);
    for (std::size_t axis = 0; axis < 2; ++axis) {
      all.low[axis] = std::min(all.low[axis], box.low[axis]);
      all.high[axis] = std::max(all.high[axis], box.high[axis]);
    }
  }
  return all;
}

double signedArea(const PlaneTriangle& triangle) {
  const auto& [a, b, c] = triangle;
  return 0.5 * ((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]));
}

bool overlap(const PlaneTriangle& a, const PlaneTriangle& b) {
  constexpr double kThin = 1e-3;
  const double least = kThin * std::min(sizeOf(a), sizeOf(b));
  for (std::size_t k = 0; k < 3; ++k) {
    const std::size_t l = (k + 1) % 3;
    if (!(shadowOverlap(a[k], a[l], a, b) > least) || !(shadowOverlap(b[k], b[l], a, b) > least)) {
      return false;
    }
  }
  return true;
}

int countOverlapping(const std::vector<PlaneTriangle>& triangles) {
  if (triangles.empty()) {
    return 0;
  }
  CellGrid grid(triangles);
  std::vector<bool> isCovered(triangles.size(), false);
  for (std::size_t i = 0; i < triangles.size(); ++i) {
    if (signedArea(triangles[i]) == 0.0) {
      continue;
    }
    // A pair needs a look only while one of the two is not known to overlap: many layers in one
    // place cost no more than two.
    const auto meets = [&](std::size_t other) {
      return (!isCovered[i] || !isCovered[other]) && overlap(triangles[i], triangles[other]);
    };
    grid.forEachCell(triangles[i], [&](Cell& cell) {
      for (std::size_t k = 0; k < cell.free;) {
        const std::size_t other = cell.members[k];
        if (meets(other)) {
          isCovered[i] = true;
          isCovered[other] = true;
        }
        if (isCovered[other]) {
          std::swap(cell.members[k], cell.members[--cell.free]);
        } else {
          ++k;
        }
      }
      const auto firstCovered = cell.members.begin() + static_cast<std::ptrdiff_t>(cell.free);
      isCovered[i] = isCovered[i] || std::any_of(firstCovered, cell.members.end(), meets);
      cell.members.push_back(i);
      if (!isCovered[i]) {
        std::swap(cell.members.back(), cell.members[cell.free++]);
      }
    });
  }
  return static_cast<int>(std::count(isCovered.begin(), isCovered.end(), true));
}

}  // namespace zel::program
