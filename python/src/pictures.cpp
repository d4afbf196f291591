// Pictures of meshes, drawn without a display.

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "python/src/conversions.h"
#include "tools/view/pictures/graphics_error.h"
#include "tools/view/pictures/render.h"
#include "zel/core/error.h"

namespace zel::python {

namespace {

view::Picture draw(const Handle& handle, int width, int height, bool transparent) {
  for (const int side : {width, height}) {
    if (side < view::kSmallestSide || side > view::kLargestSide) {
      throw Error(ErrorCode::kArgument, "cannot draw",
                  "sides run from " + std::to_string(view::kSmallestSide) + " to " +
                      std::to_string(view::kLargestSide) + " pixels");
    }
  }
  if (handle->mesh.nodes.GetBoundM() == 0) {
    throw Error(ErrorCode::kArgument, "cannot draw", "the mesh is empty");
  }
  try {
    const view::SceneMesh scene(handle->mesh);
    view::Camera camera;
    camera.setAngles(30, 20);
    const view::ViewSize size{width, height};
    camera.frame(scene.shownPoints(), size);
    view::DrawOptions options;
    if (transparent) {
      options.backgroundTop.alpha = options.backgroundBottom.alpha = 0;
      options.shadow = false;
    }
    return view::renderPicture(scene, {}, camera, options, size);
  } catch (const view::GraphicsError& error) {
    throw Error(ErrorCode::kNoGraphics, "cannot draw", error.what());
  }
}

}  // namespace

void bindPictures(py::module_& module) {
  module.def("render", [](const Handle& handle, int width, int height, bool transparent) {
    view::Picture picture;
    {
      const py::gil_scoped_release free;
      picture = draw(handle, width, height, transparent);
    }
    return arrayOf(std::move(picture.rgba)).reshape({height, width, 4});
  });
  module.def("render_png", [](const Handle& handle, int width, int height, bool transparent) {
    std::string bytes;
    {
      const py::gil_scoped_release free;
      bytes = view::pngBytes(draw(handle, width, height, transparent));
    }
    return py::bytes(bytes);
  });
}

}  // namespace zel::python
