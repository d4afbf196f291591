#pragma once

/// @file
/// Meshes of formats that libraries of others read. Those libraries meet a file in a process of
/// its own, so that whatever it makes them do, this program lives on and says so.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/zel/input_file.h"
#include "zel/io/remark.h"
#include "zel/mesh/mesh.h"

namespace zel::program {

/// @return the extensions of all foreign formats, in lower case, sorted.
[[nodiscard]] std::vector<std::string> foreignExtensions();

/// Reads a mesh in another process. Meshes of a scene are joined in the order of its tree, each
/// moved by its place in the scene (a mirrored one keeps its outside); vertices keep their order
/// and are not merged. Faces of three and four corners become triangles and quads, larger ones
/// triangles.
///
/// The process is held to limitsFor() the file, or to what limitForeignMemory() said.
/// @param format one of foreignExtensions(). @param remarks receives what was left out or changed.
/// @throws Failure: code 3 when the file is malformed or the library crashes on it, code 5 when
///         a limit is passed or memory is refused.
[[nodiscard]] Mesh readForeign(const InputFile& input, const std::string& format, Remarks& remarks);

/// Sets how much memory a reading process may use from now on, in place of what the file's size
/// gives. @param bytes of address space; nothing: what the size gives.
void limitForeignMemory(std::optional<std::uint64_t> bytes);

/// The life of the reading process: when the command line is that of one, reads, answers and never
/// returns.
void serveAsForeignReader(int argc, char** argv);

}  // namespace zel::program
