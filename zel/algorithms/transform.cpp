#include "zel/algorithms/transform.h"

#include "zel/mesh/mesh.h"

namespace zel {

void transform(Mesh& mesh, std::span<const float, 16> matrix) {
  mesh.nodes.TransByMatrixM(matrix.data());
  mesh.triangles.TransByMatrixM(matrix.data());
  mesh.quads.TransByMatrixM(matrix.data());
}

}  // namespace zel
