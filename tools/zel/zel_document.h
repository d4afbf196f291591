#pragma once

#include "tools/zel/console.h"
#include "tools/zel/input_file.h"
#include "tools/zel/mesh_nodes.h"
#include "tools/zel/output_file.h"

namespace zel::program {

/// Reads a `.zel` document: a version tag line, the tagged node list, the plain triangle list,
/// the plain quad list and, when there is more, the tagged list of texture coordinates.
/// @throws Failure (code 3) that names the list and the place when the document is malformed.
[[nodiscard]] Mesh readZelDocument(const InputFile& input, const Console& console);

/// Writes a `.zel` document, deleted slots included, so that slot numbers last.
/// The caller commits the output. @throws Failure (code 4).
void writeZelDocument(const Mesh& mesh, const OutputFile& output, const Console& console);

}  // namespace zel::program
