#pragma once

/// @file
/// The mesh file formats that the library reads and writes itself.

#include <span>
#include <string_view>

#include "zel/core/api.h"

namespace zel {

/// A mesh file format and what its files hold.
struct FileFormat {
  std::string_view name;           ///< lower case, also the usual extension: "obj"
  std::string_view extensions;     ///< all that name it, parted by blanks: "ply"
  std::string_view description;    ///< one line
  bool isRead = false;             ///< readMesh() takes it
  bool isWritten = false;          ///< writeMesh() takes it
  bool hasTextForm = false;        ///< WriteOptions::ascii chooses between text and binary
  bool keepsSharedNodes = false;   ///< faces name nodes; else each face brings its own points
  bool keepsQuads = false;         ///< else they are split into triangles
  bool keepsNodeNormals = false;   ///< a direction per node
  bool keepsFaceNormals = false;   ///< a direction per face
  bool keepsTexture = false;       ///< texture coordinates per corner
  bool keepsColours = false;       ///< colours per node
  bool keepsMaterials = false;     ///< a material per face
  bool keepsDeletedSlots = false;  ///< slot numbers last
  bool keepsLooseNodes = false;    ///< nodes that no face names
};

/// @return all of them, the library's own format first.
[[nodiscard]] ZEL_API std::span<const FileFormat> fileFormats();

/// @return the format of that name or extension, in any case of letters; null when there is none.
[[nodiscard]] ZEL_API const FileFormat* findFormat(std::string_view name);

/// @return the format that a file name's extension tells; null when it tells none.
[[nodiscard]] ZEL_API const FileFormat* formatOfName(std::string_view file);

/// @param start the first bytes of a file; kFormatProbe of them are enough.
/// @param isWhole whether these are all its bytes.
/// @return the format that they tell; null when they tell none.
[[nodiscard]] ZEL_API const FileFormat* formatOfContent(std::string_view start, bool isWhole);

/// How many bytes formatOfContent() looks at, at most.
inline constexpr std::size_t kFormatProbe = 4096;

}  // namespace zel
