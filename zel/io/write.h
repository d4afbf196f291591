#pragma once

/// @file
/// Meshes into files, memory and streams.

#include <iosfwd>
#include <string>

#include "zel/core/api.h"
#include "zel/core/progress.h"
#include "zel/io/output_file.h"
#include "zel/io/remark.h"
#include "zel/mesh/mesh.h"

namespace zel {

struct Appearance;

/// How a mesh is written.
struct WriteOptions {
  /// A name or extension of fileFormats(), in any case of letters. Empty: what the file's name
  /// tells.
  std::string format{};
  /// The text form of a format that has a binary form too (FileFormat::hasTextForm).
  bool ascii = false;
  /// Colours and materials to write where the format holds them; may be null.
  const Appearance* appearance = nullptr;
  /// Told while writing; may cancel.
  Progress progress{};
  /// For work that can be shared out; 0: all cores. The bytes do not depend on it.
  int threads = 0;
};

/// Writes a mesh file, whole or not at all: it is written beside its target, brought to the disk
/// and renamed (see OutputFile). Deleted slots are left out by all formats but `.zel`.
/// @param remarks receives what the format cannot hold; may be null.
/// @throws Error code kArgument for an unknown format, a mesh that the format cannot hold at all or
///         whose live faces name no live node, kUnwritable, kExhausted, kCancelled. The target is
///         as it was then.
ZEL_API void writeMesh(const Mesh& mesh, const std::string& file, const WriteOptions& options = {},
                       Remarks* remarks = nullptr);

/// As for a file, into an output that the caller commits.
ZEL_API void writeMesh(const Mesh& mesh, OutputFile& output, const WriteOptions& options = {},
                       Remarks* remarks = nullptr);

/// As for a file, into a stream, from where it stands. `options.format` must name the format. After
/// an error the stream may hold a part.
ZEL_API void writeMesh(const Mesh& mesh, std::ostream& stream, const WriteOptions& options,
                       Remarks* remarks = nullptr);

/// As for a stream. @return the bytes of the file.
[[nodiscard]] ZEL_API std::string meshBytes(const Mesh& mesh, const WriteOptions& options,
                                            Remarks* remarks = nullptr);

}  // namespace zel
