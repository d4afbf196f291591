#pragma once

#include <string>

#include "tools/view/pictures/picture.h"
#include "tools/zel/mesh_nodes.h"

namespace zel::program {

/// @return whether the name says that the file is WebP; all others are PNG.
[[nodiscard]] bool isWebp(const std::string& file);
/// @return the bytes that a file of this name has to hold.
[[nodiscard]] std::string pictureBytes(const view::Picture& picture, const std::string& file);
/// Writes a file whole or not at all. @param file a file name or "-". @throws Failure (code 4).
void writeBytes(const std::string& bytes, const std::string& file);

/// Writes a picture as its name says, whole or not at all.
/// @param file a file name or "-". @throws Failure (code 4).
void writePicture(const view::Picture& picture, const std::string& file);

/// Draws a mesh as the demo shows it: smooth, with its boundary in colour.
/// @throws view::GraphicsError.
[[nodiscard]] view::Picture demoPicture(const Mesh& mesh);

}  // namespace zel::program
