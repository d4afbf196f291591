#pragma once

/// @file
/// What every part of the bindings needs: the value behind a Python mesh, arrays, progress.

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <memory>
#include <vector>

#include "zel/core/progress.h"
#include "zel/io/remark.h"
#include "zel/mesh/appearance.h"
#include "zel/mesh/edges.h"
#include "zel/mesh/mesh.h"

namespace zel::python {

namespace py = pybind11;

/// What a Python mesh holds. It never changes once Python has it, so arrays may look into it.
/// (The binding library knows no pointers to constant values, so this is a promise.)
struct Value {
  Mesh mesh;  ///< compact
  Appearance appearance;
  Remarks remarks;
};

using Handle = std::shared_ptr<Value>;

/// Makes a mesh a value: holes are squeezed out, the appearance follows.
/// @throws Error (kExhausted).
[[nodiscard]] Handle makeValue(Mesh mesh, Appearance appearance = {}, Remarks remarks = {});

/// Takes a callable or None. While it works, Python hears of Ctrl-C, callback or not; a callback
/// that answers False cancels. To be called without the interpreter's lock.
[[nodiscard]] Progress progressOf(const py::object& callback);

/// @return the numbers as an array of its own, without copying them.
template <class Number>
py::array_t<Number> arrayOf(std::vector<Number>&& numbers) {
  auto* owned = new std::vector<Number>(std::move(numbers));
  const py::capsule owner(owned, [](void* p) { delete static_cast<std::vector<Number>*>(p); });
  return py::array_t<Number>(static_cast<py::ssize_t>(owned->size()), owned->data(), owner);
}

/// @return kind (3 or 4 corners) and slot of each face, as an array of shape (n, 2).
[[nodiscard]] py::array facesOf(const std::vector<FaceRef>& faces);

/// @return (kind, text, count) of each remark.
[[nodiscard]] py::list listOf(const Remarks& remarks);

void bindMeshValue(py::module_& module);
void bindFiles(py::module_& module);
void bindAlgorithms(py::module_& module);
#ifdef ZEL_HAS_PICTURES
void bindPictures(py::module_& module);
#endif

}  // namespace zel::python
