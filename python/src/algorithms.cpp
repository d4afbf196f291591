// The jobs on whole meshes. Each takes a value and gives a new one and its report as a dict.

#include <pybind11/stl.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "python/src/conversions.h"
#include "zel/algorithms/boundary.h"
#include "zel/algorithms/compare.h"
#include "zel/algorithms/defects.h"
#include "zel/algorithms/fit.h"
#include "zel/algorithms/measure.h"
#include "zel/algorithms/normals.h"
#include "zel/algorithms/orient.h"
#include "zel/algorithms/tolerance.h"
#include "zel/algorithms/transform.h"
#include "zel/algorithms/triangulate.h"
#include "zel/algorithms/unfold.h"
#include "zel/algorithms/weld.h"
#include "zel/core/error.h"

namespace zel::python {

namespace {

using namespace py::literals;
using FloatArray = py::array_t<float, py::array::c_style | py::array::forcecast>;

template <class Options>
Options working(int threads, const py::object& callback) {
  Options options;
  options.threads = threads;
  options.progress = progressOf(callback);
  return options;
}

/// Changes a copy of a mesh without the interpreter's lock; slots stay where they are.
template <class Job>
Handle changed(const Handle& handle, Job job) {
  const py::gil_scoped_release free;
  Mesh mesh = handle->mesh;
  job(mesh);
  return makeValue(std::move(mesh), handle->appearance);
}

py::array_t<int> edgesOf(const std::vector<DefectLists::Edge>& edges) {
  py::array_t<int> rows({static_cast<py::ssize_t>(edges.size()), py::ssize_t{2}});
  std::copy_n(edges.empty() ? nullptr : edges[0].data(), 2 * edges.size(), rows.mutable_data());
  return rows;
}

py::tuple weldValue(const Handle& handle, std::pair<double, bool> tolerance, bool keepRepeated,
                    bool keepCollapsed, int threads, const py::object& callback) {
  auto options = working<WeldOptions>(threads, callback);
  options.tolerance = {tolerance.first, tolerance.second};
  options.keepRepeated = keepRepeated;
  options.keepCollapsed = keepCollapsed;
  options.faceMaps = true;
  WeldReport report;
  Handle result;
  {
    const py::gil_scoped_release free;
    Mesh mesh = handle->mesh;
    report = weld(mesh, options);
    Appearance looks = handle->appearance;
    looks.followNodes(report.newIndexOf);
    looks.followFaces(report.triangleOrigins, report.quadOrigins);
    result = makeValue(std::move(mesh), std::move(looks));
  }
  return py::make_tuple(
      result,
      py::dict("tolerance_used"_a = report.toleranceUsed, "nodes_merged"_a = report.nodesMerged,
               "faces_collapsed"_a = report.facesCollapsed,
               "faces_repeated"_a = report.facesRepeated, "quads_narrowed"_a = report.quadsNarrowed,
               "largest_move"_a = report.largestMove,
               "node_map"_a = arrayOf(std::move(report.newIndexOf))));
}

py::dict check(const Handle& handle, int threads, const py::object& callback) {
  auto options = working<DefectOptions>(threads, callback);
  options.list = true;
  Defects found;
  {
    const py::gil_scoped_release free;
    found = findDefects(handle->mesh, options);
  }
  DefectLists& lists = found.lists;
  const py::dict concerned("open_edges"_a = edgesOf(lists.openEdges),
                           "crowded_edges"_a = edgesOf(lists.crowdedEdges),
                           "mixed_edges"_a = edgesOf(lists.mixedEdges),
                           "bow_tie_nodes"_a = arrayOf(std::move(lists.bowTieNodes)),
                           "duplicate_faces"_a = facesOf(lists.duplicateFaces),
                           "degenerate_faces"_a = facesOf(lists.degenerateFaces),
                           "dangling_faces"_a = facesOf(lists.danglingFaces),
                           "unused_nodes"_a = arrayOf(std::move(lists.unusedNodes)),
                           "non_finite_nodes"_a = arrayOf(std::move(lists.nonFiniteNodes)),
                           "inside_out_components"_a = facesOf(lists.insideOutComponents));
  return py::dict("open_edges"_a = found.openEdges, "crowded_edges"_a = found.crowdedEdges,
                  "mixed_edges"_a = found.mixedEdges, "bow_tie_nodes"_a = found.bowTieNodes,
                  "duplicate_faces"_a = found.duplicateFaces,
                  "degenerate_faces"_a = found.degenerateFaces,
                  "dangling_faces"_a = found.danglingFaces, "unused_nodes"_a = found.unusedNodes,
                  "non_finite_nodes"_a = found.nonFiniteNodes,
                  "inside_out_components"_a = found.insideOutComponents,
                  "components"_a = found.components, "lists"_a = concerned);
}

py::list boundary(const Handle& handle, int threads, const py::object& callback) {
  const auto options = working<BoundaryOptions>(threads, callback);
  std::vector<BoundaryChain> chains;
  {
    const py::gil_scoped_release free;
    chains = boundaryChains(handle->mesh, options);
  }
  py::list list;
  for (BoundaryChain& chain : chains) {
    list.append(py::make_tuple(arrayOf(std::move(chain.nodes)), chain.isClosed));
  }
  return list;
}

py::tuple orientValue(const Handle& handle, bool outward, int threads, const py::object& callback) {
  auto options = working<OrientOptions>(threads, callback);
  options.outward = outward;
  OrientReport report;
  Handle result = changed(handle, [&](Mesh& mesh) { report = orient(mesh, options); });
  return py::make_tuple(result, py::dict("components"_a = report.components,
                                         "faces_reversed"_a = report.facesReversed,
                                         "twisted_seams"_a = report.twistedSeams,
                                         "components_turned"_a = report.componentsTurned));
}

py::dict measureValue(const Handle& handle, int threads, const py::object& callback) {
  const auto options = working<MeasureOptions>(threads, callback);
  Measures found;
  {
    const py::gil_scoped_release free;
    found = measure(handle->mesh, options);
  }
  const auto vector = [](const auto& v) {
    using Number = typename std::decay_t<decltype(v)>::value_type;
    return py::array_t<Number>(3, v.data());
  };
  return py::dict("low"_a = vector(found.bounds.low), "high"_a = vector(found.bounds.high),
                  "area"_a = found.area, "signed_volume"_a = found.signedVolume,
                  "centroid"_a = vector(found.centroid), "edges"_a = found.edges,
                  "shortest_edge"_a = found.shortestEdge, "mean_edge"_a = found.meanEdge,
                  "longest_edge"_a = found.longestEdge, "boundary_loops"_a = found.boundaryLoops,
                  "components"_a = found.components, "is_closed"_a = found.isClosed(),
                  "is_oriented"_a = found.isOriented());
}

Handle withNormals(const Handle& handle, const std::string& weight) {
  constexpr std::pair<const char*, NormalWeight> kWeights[] = {{"area", NormalWeight::kArea},
                                                               {"angle", NormalWeight::kAngle},
                                                               {"flat", NormalWeight::kFlat}};
  for (const auto& [name, value] : kWeights) {
    if (weight == name) {
      return changed(handle,
                     [&, chosen = value](Mesh& mesh) { giveNormals(mesh, {.weight = chosen}); });
    }
  }
  throw Error(ErrorCode::kArgument, "cannot give normals",
              "no weight is called \"" + weight + "\"; there are area, angle and flat");
}

Handle triangulateValue(const Handle& handle) {
  const py::gil_scoped_release free;
  Mesh mesh = handle->mesh;
  const TriangulateReport report = triangulate(mesh, {.faceMap = true});
  Appearance looks = handle->appearance;
  looks.followCutQuads(report.firstTriangle, report.quadOf);
  return makeValue(std::move(mesh), std::move(looks));
}

py::tuple unfoldValue(const Handle& handle, const py::object& callback) {
  const auto options = working<UnfoldOptions>(0, callback);
  UnfoldReport report;
  Handle result = changed(handle, [&](Mesh& mesh) { report = unfold(mesh, options); });
  return py::make_tuple(
      result,
      py::dict("components"_a = report.components, "unfolded_faces"_a = report.unfoldedFaces,
               "unreached_faces"_a = report.unreachedFaces, "flipped_faces"_a = report.flippedFaces,
               "overlapping_faces"_a = report.overlappingFaces,
               "mean_length_error"_a = report.meanLengthError,
               "worst_length_error"_a = report.worstLengthError));
}

py::tuple compareValues(const Handle& a, const Handle& b, std::optional<double> tolerance) {
  MeshDifference found;
  {
    const py::gil_scoped_release free;
    found = compare(a->mesh, b->mesh, {.tolerance = tolerance});
  }
  return py::make_tuple(found.texts(), found.largestMove);
}

Handle transformValue(const Handle& handle, const FloatArray& matrix) {
  return changed(
      handle, [&](Mesh& mesh) { transform(mesh, std::span<const float, 16>(matrix.data(), 16)); });
}

Handle withColours(const Handle& handle, const py::array_t<std::uint8_t, 1>& rgba) {
  Appearance looks = handle->appearance;
  for (py::ssize_t node = 0; node < rgba.shape(0); ++node) {
    Colour colour;
    for (py::ssize_t k = 0; k < 4; ++k) {
      colour[static_cast<std::size_t>(k)] = rgba.at(node, k);
    }
    looks.setColour(static_cast<int>(node), colour);
  }
  return makeValue(handle->mesh, std::move(looks));
}

std::span<const Float3> pointsOf(const FloatArray& points) {
  static_assert(sizeof(Float3) == 3 * sizeof(float));
  return {reinterpret_cast<const Float3*>(points.data()),
          static_cast<std::size_t>(points.shape(0))};
}

/// What a fit gave; the points were not enough for it otherwise.
template <class Fitted>
const Fitted& fitted(const std::optional<Fitted>& result) {
  if (!result) {
    throw Error(ErrorCode::kArgument, "cannot fit",
                "the points lie on a line, in one place, or nowhere near such a shape");
  }
  return *result;
}

py::array_t<double> vectorOf(const Double3& v) { return py::array_t<double>(3, v.data()); }

void bindFits(py::module_& module) {
  module.def("fit_plane", [](const FloatArray& points) {
    const auto result = fitPlane(pointsOf(points));
    const FittedPlane& plane = fitted(result);
    return py::make_tuple(vectorOf(plane.normal), plane.d, plane.shapeError);
  });
  module.def("fit_line", [](const FloatArray& points) {
    const auto result = fitLine(pointsOf(points));
    const FittedLine& line = fitted(result);
    return py::make_tuple(vectorOf(line.point), vectorOf(line.direction), line.shapeError,
                          line.averageDistance);
  });
  module.def("fit_circle", [](const FloatArray& points) {
    const auto result = fitCircle(pointsOf(points));
    const FittedCircle& circle = fitted(result);
    return py::make_tuple(vectorOf(circle.centre), vectorOf(circle.normal), circle.radius,
                          circle.shapeError);
  });
}

}  // namespace

void bindAlgorithms(py::module_& module) {
  module.def("bounds", [](const Handle& handle) {
    const Bounds bounds = boundsOf(handle->mesh);
    return py::make_tuple(bounds.low, bounds.high);
  });
  module.def("weld", &weldValue);
  module.def("check", &check);
  module.def("boundary", &boundary);
  module.def("orient", &orientValue);
  module.def("reverse", [](const Handle& handle) {
    return changed(handle, [](Mesh& mesh) { reverse(mesh); });
  });
  module.def("measure", &measureValue);
  module.def("with_normals", &withNormals);
  module.def("triangulate", &triangulateValue);
  module.def("unfold", &unfoldValue);
  module.def("compare", &compareValues);
  module.def("transform", &transformValue);
  module.def("with_colors", &withColours);
  bindFits(module);
}

}  // namespace zel::python
