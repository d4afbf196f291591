#pragma once

#include <string>

#include "zel/io/remark.h"
#include "zel/mesh/mesh.h"

namespace zel::program {

/// What a library of others made of a file.
struct ForeignMesh {
  /// Where some corners have texture coordinates, those of the others are no numbers (NaN).
  MeshArrays arrays;
  Remarks remarks;
};

/// Reads a file through Assimp, in this process.
/// @param isNamed whether the path ends in the format's extension and files beside it may belong
///        to it. @throws Failure (code 3), std::bad_alloc or what else Assimp throws.
[[nodiscard]] ForeignMesh readScene(const std::string& path, const std::string& format,
                                    bool isNamed);

}  // namespace zel::program
