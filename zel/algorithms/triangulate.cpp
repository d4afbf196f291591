#include "zel/algorithms/triangulate.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "zel/algorithms/detail/double_vectors.h"
#include "zel/algorithms/detail/polygon_sweep.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/mesh/detail/checked_lists.h"
#include "zel/mesh/mesh.h"

namespace zel {
namespace {

/// The corners of a quad that become the two triangles' corners.
using Cut = std::array<std::array<int, 3>, 2>;
constexpr Cut kCutFromFirst{{{0, 1, 2}, {0, 2, 3}}};
constexpr Cut kCutFromSecond{{{0, 1, 3}, {1, 2, 3}}};

/// @param point point(k) is corner k of the quad.
template <class PointOf>
const Cut& betterCut(PointOf point) {
  const auto isInside = [&](const Cut& cut) {
    std::array<Double3, 2> normals;
    for (std::size_t half = 0; half < 2; ++half) {
      const auto [a, b, c] = cut[half];
      normals[half] = cross(between(point(a), point(b)), between(point(a), point(c)));
    }
    return dot(normals[0], normals[1]) > 0.0;
  };
  const bool isFirstInside = isInside(kCutFromFirst);
  const bool isSecondInside = isInside(kCutFromSecond);
  if (isFirstInside != isSecondInside) {
    return isFirstInside ? kCutFromFirst : kCutFromSecond;
  }
  return distanceBetween(point(1), point(3)) < distanceBetween(point(0), point(2)) ? kCutFromSecond
                                                                                   : kCutFromFirst;
}

const Cut& cutOf(const Mesh& mesh, const std::array<int, 4>& corners) {
  const NodeCL* nodes = mesh.nodes.getCurrentItemPrtConstM();
  const bool hasNodes = std::ranges::all_of(
      corners, [&](int node) { return node >= 0 && node < mesh.nodes.GetBoundM(); });
  return hasNodes
             ? betterCut([&](int k) { return nodes[corners[static_cast<std::size_t>(k)]].point(); })
             : kCutFromFirst;
}

TriangleCL triangleOf(const QuadCL& quad, const std::array<int, 3>& corners) {
  const auto& record = quad.record();
  TriangleCL triangle(kTagAvailable);
  if (record.normalType != 0) {
    triangle.SetNormM(record.normal);
  }
  triangle.SetTriangleM(record.corners[corners[0]], record.corners[corners[1]],
                        record.corners[corners[2]]);
  return triangle;
}

}  // namespace

TriangulateReport triangulate(Mesh& mesh, const TriangulateOptions& options) {
  return tellingRefusedMemory([&] {
    TriangulateReport report;
    report.firstTriangle = std::max(mesh.triangles.GetBoundM(), 0);
    const QuadCL* store = std::as_const(mesh.quads).getCurrentItemPrtConstM();
    std::vector<TriangleCL> added;
    added.reserve(2 * static_cast<std::size_t>(std::max(mesh.quads.GetAvailableNumM(), 0)));
    Point2DArr texture = copyOf(mesh.triangleTexture);
    const bool hasTexture = mesh.quadTexture.GetBoundM() > 0;
    ProgressSteps steps(options.progress,
                        static_cast<std::size_t>(std::max(mesh.quads.GetBoundM(), 0)));
    forEachFace(mesh.quads, [&](int slot, const std::array<int, 4>& corners) {
      for (const std::array<int, 3>& half : cutOf(mesh, corners)) {
        const int triangle = report.firstTriangle + static_cast<int>(added.size());
        added.push_back(triangleOf(store[slot], half));
        for (int k = 0; hasTexture && k < 3; ++k) {
          Float2 coord{};
          if (textureCoordOf(mesh.quadTexture, 4 * slot + half[static_cast<std::size_t>(k)],
                             coord)) {
            setTextureCoord(texture, 3 * triangle + k, coord);
          }
        }
        if (options.faceMap) {
          report.quadOf.push_back(slot);
        }
      }
      ++report.quadsCut;
      steps.reach(static_cast<std::size_t>(slot) + 1);
    });
    reserve(mesh.triangles, report.firstTriangle + static_cast<int>(added.size()));
    for (const TriangleCL& triangle : added) {
      mesh.triangles.AddItemM(triangle);
    }
    mesh.quads = QuadArr();
    mesh.triangleTexture = std::move(texture);
    mesh.quadTexture = Point2DArr();
    return report;
  });
}

std::vector<std::array<int, 3>> triangulatePolygon(std::span<const Float3> corners) {
  return tellingRefusedMemory([&] {
    if (corners.size() != 4) {
      return sweptTriangles(seenInPlane(corners));
    }
    const Cut& cut = betterCut([&](int k) { return corners[static_cast<std::size_t>(k)].data(); });
    return std::vector<std::array<int, 3>>(cut.begin(), cut.end());
  });
}

}  // namespace zel
