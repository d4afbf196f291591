#pragma once

#include <string>
#include <vector>

#include "tools/zel/console.h"
#include "tools/zel/mesh_document.h"

namespace zel::program {

/// A mesh whose coincident nodes and repeated faces have become one.
struct WeldedMesh {
  MeshDocument mesh;
  std::vector<int> newSlots;  ///< per old node slot: the new one, or kNoIndex for a deleted node
  int collapsedFaces = 0;     ///< dropped because two of their corners became one node
  int repeatedFaces = 0;      ///< dropped because a triangle of the same nodes was there before
};

/// Merges a mesh node by node and face by face through NodeArr::MergeNodeLstM and
/// TriangleArr::MergeTriangleLstM, with the library's own tolerance of 0.0001: a node becomes the
/// lowest-numbered one before it within that distance. The nodes that stay keep their bits and
/// their order. A quad that loses one corner becomes a triangle; repeated quads stay.
/// @param name what the mesh is called in the progress bar.
[[nodiscard]] WeldedMesh weldByMerging(const MeshDocument& mesh, const std::string& name,
                                       const Console& console);

/// Welds in place with zel::weldMesh() and takes the texture coordinates along.
[[nodiscard]] WeldReport weldWithin(MeshDocument& mesh, double tolerance);

}  // namespace zel::program
