#pragma once

#include "tools/zel/console.h"
#include "tools/zel/input_file.h"
#include "tools/zel/mesh_nodes.h"
#include "tools/zel/output_file.h"

namespace zel::program {

/// Reads vertices, texture coordinates, normals and faces of a Wavefront OBJ file.
///
/// Vertex i becomes node slot i - 1, whether a face uses it or not, and equal vertices stay apart:
/// that is what a general importer does not promise and why this format is read here. Faces of
/// three and four corners become triangles and quads, larger ones fans of triangles. A node takes
/// the normal of the first corner that names one. Texture coordinates of quads are left out.
/// @throws Failure (code 3) with the line of the fault.
[[nodiscard]] Mesh readObj(const InputFile& input, const Console& console);

/// Writes live nodes and faces; every number reads back to the same bits.
/// @throws Failure (code 4).
void writeObj(const Mesh& mesh, const OutputFile& output);

}  // namespace zel::program
