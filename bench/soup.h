#pragma once

// Unwelded meshes for the benchmarks: a torus as separate triangles in random order, every corner
// scattered a little within the merge tolerance.

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <vector>

namespace zel::bench {

struct Soup {
  std::vector<std::array<float, 3>> corners;  ///< three to a face
  double spacing;                             ///< typical distance of neighbouring nodes
  [[nodiscard]] int faceCount() const { return static_cast<int>(corners.size() / 3); }
};

inline Soup makeSoup(int faces) {
  const int rows = std::max(3, static_cast<int>(std::sqrt(faces / 6.0)));
  const int columns = 3 * rows;
  const auto place = [=](int row, int column) {
    const double u = 6.283185307179586 * (row % rows) / rows;
    const double v = 6.283185307179586 * (column % columns) / columns;
    const double ring = 3.0 + std::cos(u);
    return std::array<double, 3>{ring * std::cos(v), ring * std::sin(v), std::sin(u)};
  };
  std::vector<std::array<std::array<int, 2>, 3>> all;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      all.push_back({{{row, column}, {row + 1, column}, {row + 1, column + 1}}});
      all.push_back({{{row, column}, {row + 1, column + 1}, {row, column + 1}}});
    }
  }
  std::mt19937 random(7);
  std::shuffle(all.begin(), all.end(), random);
  // Two copies of one node stay nearer than 0.00007.
  std::uniform_real_distribution<double> scatter(-2e-5, 2e-5);
  Soup soup;
  soup.spacing = 6.283185307179586 / rows;
  for (const auto& face : all) {
    for (const auto& [row, column] : face) {
      const auto p = place(row, column);
      soup.corners.push_back({static_cast<float>(p[0] + scatter(random)),
                              static_cast<float>(p[1] + scatter(random)),
                              static_cast<float>(p[2] + scatter(random))});
    }
  }
  return soup;
}

/// Made once per size.
inline const Soup& soupOf(int faces) {
  static std::map<int, Soup> made;
  const auto found = made.find(faces);
  return found != made.end() ? found->second : made.emplace(faces, makeSoup(faces)).first->second;
}

}  // namespace zel::bench
