#include "tools/zel/report_page/thinning.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace zel::program {

namespace {

constexpr int kNone = -1;
constexpr int kMostTrials = 8;
constexpr double kFirstCells = 512;   // along the longest side
constexpr double kMostCells = 65536;  // three numbers of a cell fit into 64 bits

/// Which node of the thinned mesh stands for each node of the mesh.
struct Clusters {
  std::vector<int> idOf;       // kNone: without a place in space
  std::vector<Double3> sums;   // per cluster
  std::vector<int> nodeCount;  // per cluster
};

bool hasPlace(const Mesh& mesh, std::size_t slot) {
  const auto point = mesh.points()[slot];
  return isLive(mesh.nodes.getCurrentItemPrtConstM()[slot]) && std::isfinite(point[0]) &&
         std::isfinite(point[1]) && std::isfinite(point[2]);
}

std::uint64_t cellOf(std::span<const float, 3> point, const Bounds& bounds, double cellSize) {
  std::uint64_t cell = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double along = (double{point[axis]} - bounds.low[axis]) / cellSize;
    cell = (cell << 20U) | static_cast<std::uint64_t>(std::clamp(along, 0.0, kMostCells));
  }
  return cell;
}

/// @param cellSize 0: every node stands for itself.
Clusters clustersOf(const Mesh& mesh, const std::vector<bool>& kept, const Bounds& bounds,
                    double cellSize) {
  Clusters clusters;
  std::unordered_map<std::uint64_t, int> idOfCell;
  const auto points = mesh.points();
  clusters.idOf.assign(points.size(), kNone);
  for (std::size_t slot = 0; slot < points.size(); ++slot) {
    if (!hasPlace(mesh, slot)) {
      continue;
    }
    int id = static_cast<int>(clusters.sums.size());
    if (cellSize > 0 && !kept[slot]) {
      id = idOfCell.try_emplace(cellOf(points[slot], bounds, cellSize), id).first->second;
    }
    const auto index = static_cast<std::size_t>(id);
    if (index == clusters.sums.size()) {
      clusters.sums.push_back({});
      clusters.nodeCount.push_back(0);
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
      clusters.sums[index][axis] += points[slot][axis];
    }
    ++clusters.nodeCount[index];
    clusters.idOf[slot] = id;
  }
  return clusters;
}

/// Calls `visit(corners)` for each face that is left, with its three or four distinct clusters.
template <class Visit>
void forEachFaceLeft(const Mesh& mesh, const Clusters& clusters, Visit visit) {
  forEachFace(mesh, [&](int /*slot*/, const auto& corners) {
    std::array<int, 4> left{};
    std::size_t count = 0;
    for (const int corner : corners) {
      const auto node = static_cast<std::size_t>(corner);
      const int id = corner >= 0 && node < clusters.idOf.size() ? clusters.idOf[node] : kNone;
      if (id == kNone) {
        return;
      }
      if (std::find(left.begin(), left.begin() + count, id) == left.begin() + count) {
        left[count++] = id;
      }
    }
    if (count >= 3) {
      visit(std::span<const int>(left.data(), count));
    }
  });
}

std::size_t facesLeft(const Mesh& mesh, const Clusters& clusters) {
  std::size_t faces = 0;
  forEachFaceLeft(mesh, clusters, [&](std::span<const int> /*corners*/) { ++faces; });
  return faces;
}

MeshArrays meshOf(const Mesh& mesh, const Clusters& clusters) {
  MeshArrays made;
  std::vector<int> numberOf(clusters.sums.size(), kNone);  // only clusters that a face names
  forEachFaceLeft(mesh, clusters, [&](std::span<const int> corners) {
    for (const int corner : corners) {
      const auto id = static_cast<std::size_t>(corner);
      if (numberOf[id] == kNone) {
        numberOf[id] = static_cast<int>(made.points.size() / 3);
        for (const double sum : clusters.sums[id]) {
          made.points.push_back(static_cast<float>(sum / clusters.nodeCount[id]));
        }
      }
      (corners.size() == 3 ? made.triangles : made.quads).push_back(numberOf[id]);
    }
  });
  return made;
}

double longestSide(const Bounds& bounds) {
  double longest = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    longest = std::max(longest, double{bounds.high[axis]} - bounds.low[axis]);
  }
  return longest;
}

}  // namespace

ThinnedMesh thinned(const Mesh& mesh, const std::vector<bool>& kept, std::size_t mostFaces) {
  const Bounds bounds = boundsOf(mesh);
  Clusters clusters = clustersOf(mesh, kept, bounds, 0);
  std::size_t faces = facesLeft(mesh, clusters);
  const double side = longestSide(bounds);
  if (faces <= mostFaces || side == 0) {
    return {meshOf(mesh, clusters), false};
  }
  // The faces of a surface grow with the square of the cells along a side.
  double cells = kFirstCells;
  for (int trial = 0; trial < kMostTrials; ++trial) {
    clusters = clustersOf(mesh, kept, bounds, side / cells);
    faces = facesLeft(mesh, clusters);
    const double part =
        static_cast<double>(mostFaces) / static_cast<double>(std::max<std::size_t>(faces, 1));
    if (part >= 1 && (part < 1.4 || cells >= kMostCells)) {
      break;
    }
    cells = std::clamp(cells * std::sqrt(part) * 0.95, 1.0, kMostCells);
  }
  return {meshOf(mesh, clusters), true};
}

}  // namespace zel::program
