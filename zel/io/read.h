#pragma once

/// @file
/// Meshes from files, from memory and from streams.

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>

#include "zel/algorithms/tolerance.h"
#include "zel/core/api.h"
#include "zel/core/progress.h"
#include "zel/io/remark.h"
#include "zel/mesh/mesh.h"

namespace zel {

struct Appearance;

/// How a mesh is read.
struct ReadOptions {
  /// A name or extension of fileFormats(), in any case of letters. Empty: what the file's name
  /// tells, and when that tells nothing, what its content tells.
  std::string format{};
  /// Welds the mesh; the result is that of reading it and then calling weld() with this tolerance,
  /// to the bit, but a soup of triangles need never stand in memory as a whole.
  std::optional<Tolerance> weld{};
  /// Receives colours and materials where the file has some; null: they are left out with a remark.
  Appearance* appearance = nullptr;
  /// Told while reading; may cancel.
  Progress progress{};
  /// For work that can be shared out; 0: all cores. The result does not depend on it.
  int threads = 0;
};

/// Reads a mesh file. Files may be larger than 2 GiB; pipes and devices are read to their end.
///
/// Memory is taken only for what the file has bytes for. Numbers are rounded to the nearest float,
/// whatever the locale. Faces of five and more corners become triangles.
/// @param remarks receives what was left out or changed; may be null.
/// @throws Error code kArgument for an unknown format or a tolerance that makes no sense,
///         kUnreadable with line or byte and reason for a file that cannot be read or is malformed,
///         kExhausted when memory is refused or the mesh has more elements than the lists hold,
///         kCancelled.
[[nodiscard]] ZEL_API Mesh readMesh(const std::string& file, const ReadOptions& options = {},
                                    Remarks* remarks = nullptr);

/// As for a file, from bytes in memory. They may be anything.
/// @param name how errors call them.
[[nodiscard]] ZEL_API Mesh readMesh(std::span<const std::byte> bytes,
                                    const ReadOptions& options = {}, Remarks* remarks = nullptr,
                                    const std::string& name = "memory");

/// As for a file, from where a stream stands to its end. The stream need not be seekable.
[[nodiscard]] ZEL_API Mesh readMesh(std::istream& stream, const ReadOptions& options = {},
                                    Remarks* remarks = nullptr, const std::string& name = "stream");

}  // namespace zel
