// Meshes made from NumPy arrays and looked into through them.

#include <pybind11/stl.h>

#include <limits>
#include <span>
#include <string>
#include <utility>

#include "python/src/conversions.h"
#include "zel/core/error.h"

namespace zel::python {

namespace {

using FloatArray = py::array_t<float, py::array::c_style | py::array::forcecast>;
using IntArray = py::array_t<int, py::array::c_style | py::array::forcecast>;

template <class Array>
auto spanOf(const Array& array) {
  return std::span(array.data(), static_cast<std::size_t>(array.size()));
}

void setColours(Appearance& appearance, const py::array_t<std::uint8_t, py::array::c_style>& rgba) {
  appearance.nodeColours.resize(static_cast<std::size_t>(rgba.shape(0)));
  const auto* bytes = rgba.data();
  for (Colour& colour : appearance.nodeColours) {
    std::copy_n(bytes, 4, colour.begin());
    bytes += 4;
  }
}

Handle fromArrays(const FloatArray& points, const IntArray& triangles, const IntArray& quads,
                  const FloatArray& normals, const FloatArray& uv, const FloatArray& quadUv,
                  const py::array_t<std::uint8_t, py::array::c_style>& colours) {
  Appearance appearance;
  if (colours.size() > 0) {
    setColours(appearance, colours);
  }
  const MeshSpans spans{spanOf(points),  spanOf(triangles), spanOf(quads),
                        spanOf(normals), spanOf(uv),        spanOf(quadUv)};
  const py::gil_scoped_release free;
  return makeValue(Mesh(spans), std::move(appearance));
}

/// A read-only array over rows inside the mesh; it keeps the value alive.
template <class Number, std::size_t kColumns>
py::array viewOf(const py::object& owner, const StridedRows<Number, kColumns>& rows) {
  py::array_t<Number> view({static_cast<py::ssize_t>(rows.size()), py::ssize_t{kColumns}},
                           {static_cast<py::ssize_t>(rows.stride()), py::ssize_t{sizeof(Number)}},
                           rows.data(), owner);
  view.attr("setflags")(py::arg("write") = false);
  return view;
}

template <class Rows>
auto viewer(Rows (Mesh::*rows)() const) {
  return
      [rows](const py::object& self) { return viewOf(self, (self.cast<Handle>()->mesh.*rows)()); };
}

/// Texture coordinates of a face list with `corners` each, shape (faces, corners, 2); None without
/// any. A view where every corner has one, else a copy with NaN where one is missing.
py::object textureOf(const py::object& owner, const Point2DArr& coords, int faces, int corners) {
  if (coords.GetBoundM() < 1 || faces < 1) {
    return py::none();
  }
  const py::ssize_t shape[3] = {faces, corners, 2};
  const int wanted = faces * corners;
  Float2 coord{};
  bool isFull = coords.GetBoundM() >= wanted;
  for (int corner = 0; isFull && corner < wanted; ++corner) {
    isFull = textureCoordOf(coords, corner, coord);
  }
  if (isFull) {
    py::array_t<float> view(shape, &coords.getCurrentItemPrtConstM()[0][0], owner);
    view.attr("setflags")(py::arg("write") = false);
    return view;
  }
  py::array_t<float> copy(shape);
  float* out = copy.mutable_data();
  for (int corner = 0; corner < wanted; ++corner, out += 2) {
    const bool isThere = textureCoordOf(coords, corner, coord);
    out[0] = isThere ? coord[0] : std::numeric_limits<float>::quiet_NaN();
    out[1] = isThere ? coord[1] : std::numeric_limits<float>::quiet_NaN();
  }
  copy.attr("setflags")(py::arg("write") = false);
  return copy;
}

py::object coloursOf(const py::object& self) {
  const Value& value = *self.cast<Handle>();
  if (value.appearance.nodeColours.empty()) {
    return py::none();
  }
  const int nodes = value.mesh.nodes.GetBoundM();
  py::array_t<std::uint8_t> copy({py::ssize_t{nodes}, py::ssize_t{4}});
  std::uint8_t* out = copy.mutable_data();
  for (int node = 0; node < nodes; ++node) {
    const Colour colour = value.appearance.colourOf(node);
    out = std::copy(colour.begin(), colour.end(), out);
  }
  copy.attr("setflags")(py::arg("write") = false);
  return copy;
}

}  // namespace

void bindMeshValue(py::module_& module) {
  py::class_<Value, Handle>(module, "Handle")
      .def("points", viewer(&Mesh::points))
      .def("normals", viewer(&Mesh::nodeNormals))
      .def("triangles", viewer(&Mesh::triangleCorners))
      .def("triangle_normals", viewer(&Mesh::triangleNormals))
      .def("quads", viewer(&Mesh::quadCorners))
      .def("quad_normals", viewer(&Mesh::quadNormals))
      .def("uv",
           [](const py::object& self) {
             const Mesh& mesh = self.cast<Handle>()->mesh;
             return textureOf(self, mesh.triangleTexture, mesh.triangles.GetBoundM(), 3);
           })
      .def("quad_uv",
           [](const py::object& self) {
             const Mesh& mesh = self.cast<Handle>()->mesh;
             return textureOf(self, mesh.quadTexture, mesh.quads.GetBoundM(), 4);
           })
      .def("colors", &coloursOf)
      .def("remarks", [](const Handle& self) { return listOf(self->remarks); })
      .def("validate", [](const Handle& self) { return self->mesh.validate(); });
  module.def("from_arrays", &fromArrays);
}

}  // namespace zel::python
