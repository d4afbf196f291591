#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tools/zel/console.h"
#include "tools/zel/mesh_nodes.h"
#include "zel/io/output_file.h"
#include "zel/mesh/appearance.h"

namespace zel::program {

/// Reads a mesh of any known format.
/// @param file a file name or "-". @param format the value of --from; empty: by the extension, else
///        by the content.
/// @param looks receives colours and materials where the file has some and the library reads it;
///        may be null.
/// @throws Failure or Error.
[[nodiscard]] Mesh readMesh(const std::string& file, const std::string& format,
                            const Console& console, Appearance* looks = nullptr);

/// How a mesh is written.
struct MeshWriting {
  std::string format = {};                     ///< the value of --to; empty: by the extension
  bool ascii = false;                          ///< the text form of a format that has two
  std::function<void()> beforeItAppears = {};  ///< called when only that is left; may throw
  const Appearance* looks = nullptr;           ///< colours and materials to write; may be null
};

/// Writes a mesh whole or not at all.
/// @param file a file name or "-". @throws Failure or Error.
void writeMesh(const Mesh& mesh, const std::string& file, const MeshWriting& how,
               const Console& console);

/// @param file a file name, or "-" for standard output. @throws Error (code 4).
[[nodiscard]] std::unique_ptr<OutputFile> outputNamed(const std::string& file);

/// Whether a file is a device, a pipe or standard output, which are written to and not replaced.
[[nodiscard]] bool isDevice(const std::string& file);

/// Whether what is written to one file would replace the other. Devices are not replaced.
[[nodiscard]] bool isSameFile(const std::string& a, const std::string& b);

}  // namespace zel::program
