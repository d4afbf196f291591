#pragma once

#include <string>
#include <vector>

#include "tools/zel/input_file.h"
#include "tools/zel/mesh_nodes.h"

namespace zel::program {

/// Reads a mesh through Assimp. Meshes of a scene are joined in the order of its tree, each moved
/// by its place in the scene; vertices keep their order and are not merged. Faces of three and
/// four corners become triangles and quads, larger ones fans; points and lines are left out.
/// @param format the extension that tells Assimp how to read.
/// @throws Failure (code 3).
[[nodiscard]] Mesh readThroughAssimp(const InputFile& input, const std::string& format);

/// @return the extensions of all that Assimp reads, in lower case, sorted.
[[nodiscard]] std::vector<std::string> assimpExtensions();

}  // namespace zel::program
