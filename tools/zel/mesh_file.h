#pragma once

#include <string>

#include "tools/zel/console.h"
#include "tools/zel/mesh_nodes.h"

namespace zel::program {

/// Reads a mesh of any known format.
/// @param file a file name or "-". @param format the value of --from; empty: by the extension.
/// @throws Failure.
[[nodiscard]] Mesh readMesh(const std::string& file, const std::string& format,
                            const Console& console);

/// Writes a mesh whole or not at all.
/// @param file a file name or "-". @param format the value of --to; empty: by the extension.
/// @throws Failure.
void writeMesh(const Mesh& mesh, const std::string& file, const std::string& format,
               const Console& console);

}  // namespace zel::program
