#pragma once

#include <string>

#include "tools/view/pictures/picture.h"
#include "tools/zel/mesh_nodes.h"

namespace zel::program {

/// Writes a picture as PNG, whole or not at all.
/// @param file a file name or "-". @throws Failure (code 4).
void writePicture(const view::Picture& picture, const std::string& file);

/// Draws a mesh as the demo shows it: smooth, with its boundary in colour.
/// @throws view::GraphicsError.
[[nodiscard]] view::Picture demoPicture(const Mesh& mesh);

}  // namespace zel::program
