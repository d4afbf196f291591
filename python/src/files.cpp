// Reading and writing.

#include <pybind11/stl.h>

#include <string>
#include <utility>

#include "python/src/conversions.h"
#include "zel/algorithms/tolerance.h"
#include "zel/io/formats.h"
#include "zel/io/read.h"
#include "zel/io/write.h"

namespace zel::python {

namespace {

using OptionalTolerance = std::optional<std::pair<double, bool>>;

ReadOptions readOptions(const std::string& format, const OptionalTolerance& weld, int threads,
                        Progress progress, Appearance& appearance) {
  ReadOptions options;
  options.format = format;
  if (weld) {
    options.weld = Tolerance{weld->first, weld->second};
  }
  options.threads = threads;
  options.progress = std::move(progress);
  options.appearance = &appearance;
  return options;
}

Handle readFile(const std::string& file, const std::string& format, const OptionalTolerance& weld,
                int threads, const py::object& callback) {
  Progress progress = progressOf(callback);
  const py::gil_scoped_release free;
  Appearance appearance;
  Remarks remarks;
  Mesh mesh =
      readMesh(file, readOptions(format, weld, threads, std::move(progress), appearance), &remarks);
  return makeValue(std::move(mesh), std::move(appearance), std::move(remarks));
}

Handle readBytes(const py::bytes& bytes, const std::string& format, const OptionalTolerance& weld,
                 int threads, const py::object& callback, const std::string& name) {
  Progress progress = progressOf(callback);
  const std::string_view content = bytes;
  const py::gil_scoped_release free;
  Appearance appearance;
  Remarks remarks;
  Mesh mesh =
      readMesh(std::as_bytes(std::span(content.data(), content.size())),
               readOptions(format, weld, threads, std::move(progress), appearance), &remarks, name);
  return makeValue(std::move(mesh), std::move(appearance), std::move(remarks));
}

WriteOptions writeOptions(const Handle& handle, const std::string& format, bool ascii, int threads,
                          Progress progress) {
  WriteOptions options;
  options.format = format;
  options.ascii = ascii;
  options.threads = threads;
  options.progress = std::move(progress);
  options.appearance = &handle->appearance;
  return options;
}

py::list writeFile(const Handle& handle, const std::string& file, const std::string& format,
                   bool ascii, int threads, const py::object& callback) {
  Progress progress = progressOf(callback);
  Remarks remarks;
  {
    const py::gil_scoped_release free;
    writeMesh(handle->mesh, file, writeOptions(handle, format, ascii, threads, std::move(progress)),
              &remarks);
  }
  return listOf(remarks);
}

py::tuple toBytes(const Handle& handle, const std::string& format, bool ascii, int threads,
                  const py::object& callback) {
  Progress progress = progressOf(callback);
  Remarks remarks;
  std::string bytes;
  {
    const py::gil_scoped_release free;
    bytes = meshBytes(handle->mesh,
                      writeOptions(handle, format, ascii, threads, std::move(progress)), &remarks);
  }
  return py::make_tuple(py::bytes(bytes), listOf(remarks));
}

py::dict formats() {
  py::dict all;
  for (const FileFormat& format : fileFormats()) {
    all[py::str(std::string(format.name))] = std::string(format.description);
  }
  return all;
}

}  // namespace

void bindFiles(py::module_& module) {
  module.def("read_file", &readFile);
  module.def("read_bytes", &readBytes);
  module.def("write_file", &writeFile);
  module.def("to_bytes", &toBytes);
  module.def("formats", &formats);
  module.def("format_of", [](const std::string& file) {
    const FileFormat* format = formatOfName(file);
    return format == nullptr ? std::string() : std::string(format->name);
  });
}

}  // namespace zel::python
