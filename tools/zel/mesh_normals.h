#pragma once

#include "tools/zel/mesh_document.h"

namespace zel::program {

/// Gives every live face its unit normal (type 1). Triangles without area get (1, 0, 0), as the
/// library normalises a zero vector.
void giveFaceNormals(Mesh& mesh);

/// Gives every node that live faces use the mean of their normals, weighted by area.
/// Call giveFaceNormals() too: these do not depend on each other.
void giveSmoothNodeNormals(Mesh& mesh);

/// Gives the corners of each live face its flat normal; a shared node keeps that of the last face,
/// quads coming after triangles.
void giveFlatNodeNormals(Mesh& mesh);

}  // namespace zel::program
