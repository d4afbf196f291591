#include "zel/mesh/weld.h"

#include <algorithm>
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

/// The kept nodes, and in the report where every node went.
NodeArr mergeNodes(const NodeArr& nodes, double tolerance, WeldReport& report) {
  const NodeCL* store = nodes.getCurrentItemPrtConstM();
  const int bound = std::max(nodes.GetBoundM(), 0);
  NodeArr kept(bound);
  KeptPoints positions(tolerance, static_cast<std::size_t>(bound));
  report.newIndexOf.assign(static_cast<std::size_t>(bound), kNoIndex);
  for (int slot = 0; slot < bound; ++slot) {
    if (!isLive(store[slot])) {
      continue;
    }
    float p[3];
    store[slot].GetPntM(p);
    const KeptPoints::Hit hit = positions.findOrKeep(p);
    report.newIndexOf[static_cast<std::size_t>(slot)] = hit.index;
    if (hit.isNew) {
      kept.AddItemM(store[slot]);
    } else {
      ++report.nodesMerged;
      report.largestMove = std::max(report.largestMove, hit.distance);
    }
  }
  return kept;
}

/// Maps corners and drops those that repeat the one before them in the cycle.
template <std::size_t kCorners>
std::vector<int> mappedCorners(const int (&corners)[kCorners], const std::vector<int>& newIndexOf) {
  std::vector<int> mapped;
  for (const int corner : corners) {
    const bool isKnown = corner >= 0 && static_cast<std::size_t>(corner) < newIndexOf.size();
    const int index = isKnown ? newIndexOf[static_cast<std::size_t>(corner)] : kNoIndex;
    if (index == kNoIndex) {
      return {};
    }
    if (mapped.empty() || mapped.back() != index) {
      mapped.push_back(index);
    }
  }
  if (mapped.size() > 1 && mapped.back() == mapped.front()) {
    mapped.pop_back();
  }
  return mapped;
}

bool isFace(const std::vector<int>& corners, std::size_t count) {
  return corners.size() == count && !hasRepeatedCorner(corners.data(), static_cast<int>(count));
}

void renumberTriangles(TriangleArr& triangles, WeldReport& report) {
  TriangleArr kept(std::max(triangles.GetAvailableNumM(), 0));
  forEachLiveFace(triangles, [&](int /*slot*/, TriangleCL face, const auto& corners) {
    std::vector<int> mapped = mappedCorners(corners, report.newIndexOf);
    if (isFace(mapped, 3)) {
      face.SetTriangleM(mapped.data());
      kept.AddItemM(face);
    } else {
      ++report.facesCollapsed;
    }
  });
  triangles = std::move(kept);
}

TriangleCL asTriangle(const QuadCL& quad, const std::vector<int>& corners) {
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
    std::vector<int> mapped = mappedCorners(corners, report.newIndexOf);
    if (isFace(mapped, 4)) {
      face.SetQuadM(mapped.data());
      kept.AddItemM(face);
    } else if (isFace(mapped, 3)) {
      triangles.AddItemM(asTriangle(face, mapped));
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
  nodes = mergeNodes(nodes, tolerance, report);
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
