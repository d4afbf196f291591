#include "python/src/conversions.h"

#include <utility>

#include "zel/algorithms/compact.h"

namespace zel::python {

Handle makeValue(Mesh mesh, Appearance appearance, Remarks remarks) {
  if (!mesh.isCompact()) {
    const CompactReport report = compact(mesh);
    appearance.followNodes(report.nodes.newOf);
    appearance.followTriangles(report.triangles.newOf);
    appearance.followQuads(report.quads.newOf);
  }
  return std::make_shared<Value>(Value{std::move(mesh), std::move(appearance), std::move(remarks)});
}

Progress progressOf(const py::object& callback) {
  // The callable is released with the lock held, wherever the last copy of the function dies.
  const std::shared_ptr<py::object> held(new py::object(callback), [](py::object* object) {
    const py::gil_scoped_acquire lock;
    delete object;
  });
  return [held](double fraction) {
    const py::gil_scoped_acquire lock;
    if (PyErr_CheckSignals() != 0) {
      throw py::error_already_set();
    }
    return held->is_none() || (*held)(fraction).ptr() != Py_False;
  };
}

py::array facesOf(const std::vector<FaceRef>& faces) {
  py::array_t<int> rows({static_cast<py::ssize_t>(faces.size()), py::ssize_t{2}});
  auto cells = rows.mutable_unchecked<2>();
  for (std::size_t row = 0; row < faces.size(); ++row) {
    cells(static_cast<py::ssize_t>(row), 0) = faces[row].corners;
    cells(static_cast<py::ssize_t>(row), 1) = faces[row].slot;
  }
  return rows;
}

py::list listOf(const Remarks& remarks) {
  constexpr const char* kNames[] = {"left out", "changed", "damaged", "note"};
  py::list list;
  for (const Remark& remark : remarks) {
    list.append(py::make_tuple(kNames[static_cast<int>(remark.kind)], remark.text, remark.count));
  }
  return list;
}

}  // namespace zel::python
