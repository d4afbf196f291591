#pragma once

#include <string>

#include "tools/zel/input_file.h"
#include "tools/zel/mesh_nodes.h"
#include "tools/zel/output_file.h"

namespace zel::program {

/// Reads a mesh through Assimp. Meshes of a scene are joined in the order of its tree, each moved
/// by its place in the scene; vertices keep their order and are not merged. Faces of three and
/// four corners become triangles and quads, larger ones fans; points and lines are left out.
/// @param format the extension that tells Assimp how to read.
/// @throws Failure (code 3).
[[nodiscard]] Mesh readThroughAssimp(const InputFile& input, const std::string& format);

/// Writes live nodes and faces through Assimp in a binary form.
/// @param format "ply" or "stl". @throws Failure (code 4).
void writeThroughAssimp(const Mesh& mesh, const OutputFile& output, const std::string& format);

}  // namespace zel::program
