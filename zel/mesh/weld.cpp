#include "zel/mesh/weld.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "zel/core/constants.h"
#include "zel/mesh/detail/face_corners.h"
#include "zel/mesh/detail/kept_points.h"
#include "zel/mesh/node.h"

namespace zel {
namespace {

bool isLive(const NodeCL& node) { return node.IsAvailableM() == kTagAvailable; }

bool isFinite(const NodeCL& node) {
  float p[3];
  node.GetPntM(p);
  return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

/// Merges one node after the other, looking ahead by a block of them.
class NodeMerger {
 public:
  NodeMerger(const NodeArr& nodes, double tolerance, WeldReport& report)
      : store_(nodes.getCurrentItemPrtConstM()),
        bound_(std::max(nodes.GetBoundM(), 0)),
        kept_(bound_),
        positions_(tolerance, static_cast<std::size_t>(bound_)),
        report_(report) {
    report.newIndexOf.assign(static_cast<std::size_t>(bound_), kNoIndex);
  }

  /// The kept nodes; the report says where every node went.
  NodeArr run() && {
    for (int first = 0; first < bound_; first += kBlock) {
      const int end = std::min(first + kBlock, bound_);
      forEachLive(first, end, [&](int slot, KeptPoints::Search& search) {
        positions_.lookAhead(store_[slot].point(), search);
      });
      forEachLive(first, end,
                  [&](int /*slot*/, KeptPoints::Search& search) { positions_.fetch(search); });
      forEachLive(first, end, [&](int slot, KeptPoints::Search& search) { merge(slot, search); });
    }
    return std::move(kept_);
  }

 private:
  static constexpr int kBlock = 16;

  template <class Visit>
  void forEachLive(int first, int end, Visit visit) {
    for (int slot = first; slot < end; ++slot) {
      if (isLive(store_[slot])) {
        visit(slot, searches_[static_cast<std::size_t>(slot - first)]);
      }
    }
  }
  void merge(int slot, const KeptPoints::Search& search) {
    const KeptPoints::Hit hit = positions_.findOrKeep(search);
    report_.newIndexOf[static_cast<std::size_t>(slot)] = hit.index;
    if (hit.isNew) {
      kept_.AddItemM(store_[slot]);
    } else {
      ++report_.nodesMerged;
      report_.largestMove = std::max(report_.largestMove, hit.distance);
    }
  }

  const NodeCL* store_;
  int bound_;
  NodeArr kept_;
  KeptPoints positions_;
  WeldReport& report_;
  std::array<KeptPoints::Search, kBlock> searches_;
};

/// The new corners of a face, without those that repeat the one before them in the cycle; none
/// when a corner names no live node.
struct MappedCorners {
  std::array<int, 4> corners;
  int count = 0;

  template <std::size_t kCorners>
  MappedCorners(const int (&old)[kCorners], const std::vector<int>& newIndexOf) : corners{} {
    for (const int corner : old) {
      const bool isKnown = corner >= 0 && static_cast<std::size_t>(corner) < newIndexOf.size();
      const int index = isKnown ? newIndexOf[static_cast<std::size_t>(corner)] : kNoIndex;
      if (index == kNoIndex) {
        count = 0;
        return;
      }
      if (count == 0 || last() != index) {
        corners[static_cast<std::size_t>(count++)] = index;
      }
    }
    count -= count > 1 && last() == corners[0] ? 1 : 0;
  }
  [[nodiscard]] bool isFace(int wanted) const {
    return count == wanted && !hasRepeatedCorner(corners.data(), count);
  }

 private:
  [[nodiscard]] int last() const { return corners[static_cast<std::size_t>(count - 1)]; }
};

void renumberTriangles(TriangleArr& triangles, WeldReport& report) {
  TriangleArr kept(std::max(triangles.GetAvailableNumM(), 0));
  forEachLiveFace(triangles, [&](int /*slot*/, TriangleCL face, const auto& corners) {
    const MappedCorners mapped(corners, report.newIndexOf);
    if (mapped.isFace(3)) {
      face.SetTriangleM(mapped.corners.data());
      kept.AddItemM(face);
    } else {
      ++report.facesCollapsed;
    }
  });
  triangles = std::move(kept);
}

TriangleCL asTriangle(const QuadCL& quad, const std::array<int, 4>& corners) {
  float normal[3];
  char normalType = 0;
  quad.GetNormM(normal);
  quad.GetNormTypeM(&normalType);
  TriangleCL triangle(char{kTagAvailable});
  triangle.SetTriangleM(corners[0], corners[1], corners[2]);
  if (normalType != 0) {
    triangle.SetNormM(normal);
  }
  return triangle;
}

void renumberQuads(TriangleArr& triangles, QuadArr& quads, WeldReport& report) {
  QuadArr kept(std::max(quads.GetAvailableNumM(), 0));
  forEachLiveFace(quads, [&](int /*slot*/, QuadCL face, const auto& corners) {
    const MappedCorners mapped(corners, report.newIndexOf);
    if (mapped.isFace(4)) {
      face.SetQuadM(mapped.corners.data());
      kept.AddItemM(face);
    } else if (mapped.isFace(3)) {
      triangles.AddItemM(asTriangle(face, mapped.corners));
      ++report.quadsNarrowed;
    } else {
      ++report.facesCollapsed;
    }
  });
  quads = std::move(kept);
}

}  // namespace

WeldReport weldMesh(NodeArr& nodes, TriangleArr& triangles, QuadArr& quads, double tolerance) {
  WeldReport report{};
  report.badNode = kNoIndex;
  const NodeCL* store = std::as_const(nodes).getCurrentItemPrtConstM();
  for (int slot = 0; slot < nodes.GetBoundM() && report.badNode == kNoIndex; ++slot) {
    if (isLive(store[slot]) && !isFinite(store[slot])) {
      report.badNode = slot;
    }
  }
  if (report.badNode != kNoIndex || !(tolerance >= 0.0) || !std::isfinite(tolerance)) {
    return report;
  }
  nodes = NodeMerger(nodes, tolerance, report).run();
  renumberTriangles(triangles, report);
  renumberQuads(triangles, quads, report);
  report.isDone = true;
  return report;
}

double relativeTolerance(const NodeArr& nodes, double fraction) {
  double low[3];
  double high[3];
  std::fill_n(low, 3, std::numeric_limits<double>::infinity());
  std::fill_n(high, 3, -std::numeric_limits<double>::infinity());
  const NodeCL* store = nodes.getCurrentItemPrtConstM();
  for (int slot = 0; slot < nodes.GetBoundM(); ++slot) {
    if (!isLive(store[slot]) || !isFinite(store[slot])) {
      continue;
    }
    float p[3];
    store[slot].GetPntM(p);
    for (int axis = 0; axis < 3; ++axis) {
      low[axis] = std::min<double>(low[axis], p[axis]);
      high[axis] = std::max<double>(high[axis], p[axis]);
    }
  }
  double square = 0.0;
  for (int axis = 0; axis < 3; ++axis) {
    const double side = std::max(high[axis] - low[axis], 0.0);
    square += side * side;
  }
  return fraction * std::sqrt(square);
}

}  // namespace zel
