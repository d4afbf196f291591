#pragma once

/// @file
/// Moving a mesh as a whole.

#include <span>

#include "zel/core/api.h"

namespace zel {

struct Mesh;

/// Moves the nodes and turns the normals of nodes and faces by a matrix, bit for bit as the lists'
/// own TransByMatrixM() does. Normals are turned by the matrix without its translation: they stay
/// right under rotations alone. The winding of the faces stays, so that a matrix which mirrors
/// turns the mesh inside out; reverse() turns it back. Linear in nodes plus faces; never fails.
/// @param matrix column-major: entries 12 to 14 are the translation.
ZEL_API void transform(Mesh& mesh, std::span<const float, 16> matrix);

}  // namespace zel
