// The extension module zel._zel. The package zel wraps it; nobody else should call it.

#include <pybind11/pybind11.h>

#include <exception>

#include "python/src/conversions.h"
#include "zel/core/error.h"

namespace zel::python {

namespace {

/// Errors of the library become zel.Error with code and message.
void translate(std::exception_ptr thrown) {
  try {
    if (thrown) {
      std::rethrow_exception(thrown);
    }
  } catch (const Error& error) {
    const py::object type = py::module_::import("zel._errors").attr("Error");
    const py::object value =
        type(static_cast<int>(error.code()), error.what(), error.file(), error.reason());
    PyErr_SetObject(type.ptr(), value.ptr());
  }
}

}  // namespace

PYBIND11_MODULE(_zel, module) {
  module.doc() = "Bindings of libzel; use the package zel.";
  module.attr("version") = ZEL_VERSION;
  py::register_exception_translator(&translate);
  bindMeshValue(module);
  bindFiles(module);
  bindAlgorithms(module);
#ifdef ZEL_HAS_PICTURES
  bindPictures(module);
#endif
}

}  // namespace zel::python
