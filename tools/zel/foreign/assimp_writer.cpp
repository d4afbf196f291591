#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <assimp/Exporter.hpp>
#include <string_view>

#include "tools/zel/failure.h"
#include "tools/zel/foreign/assimp_file.h"

namespace zel::program {

namespace {

aiVector3D vectorFrom(const Point& point) { return {point[0], point[1], point[2]}; }

template <std::size_t N>
void fillFace(aiFace& face, const std::array<int, N>& corners, const NodeNumbering& numbering) {
  face.mNumIndices = N;
  face.mIndices = new unsigned[N];
  for (std::size_t k = 0; k < N; ++k) {
    face.mIndices[k] =
        static_cast<unsigned>(numbering.numbers[static_cast<std::size_t>(corners[k])]);
  }
}

void fillNodes(aiMesh& part, const NodeArr& nodes, const NodeNumbering& numbering) {
  const std::size_t count = numbering.slots.size();
  part.mNumVertices = static_cast<unsigned>(count);
  part.mVertices = new aiVector3D[count];
  const bool hasNormals = std::ranges::any_of(
      numbering.slots, [&](int slot) { return normalOf(nodes, slot) != Point{}; });
  part.mNormals = hasNormals ? new aiVector3D[count] : nullptr;
  for (std::size_t i = 0; i < count; ++i) {
    part.mVertices[i] = vectorFrom(pointOf(nodes, numbering.slots[i]));
    if (hasNormals) {
      part.mNormals[i] = vectorFrom(normalOf(nodes, numbering.slots[i]));
    }
  }
}

void fillFaces(aiMesh& part, const Mesh& mesh, const NodeNumbering& numbering) {
  const int count = mesh.triangles.GetAvailableNumM() + mesh.quads.GetAvailableNumM();
  part.mFaces = new aiFace[static_cast<std::size_t>(count)];
  forEachFace(mesh.triangles, [&](int, const auto& corners) {
    fillFace(part.mFaces[part.mNumFaces++], corners, numbering);
    part.mPrimitiveTypes |= aiPrimitiveType_TRIANGLE;
  });
  forEachFace(mesh.quads, [&](int, const auto& corners) {
    fillFace(part.mFaces[part.mNumFaces++], corners, numbering);
    part.mPrimitiveTypes |= aiPrimitiveType_POLYGON;
  });
}

/// A scene of one mesh; it owns all its parts.
void fillScene(aiScene& scene, const Mesh& mesh) {
  const NodeNumbering numbering(mesh.nodes);
  scene.mMaterials = new aiMaterial* [1] { new aiMaterial };
  scene.mNumMaterials = 1;
  scene.mMeshes = new aiMesh* [1] { new aiMesh };
  scene.mNumMeshes = 1;
  scene.mRootNode = new aiNode;
  scene.mRootNode->mMeshes = new unsigned[1]{0};
  scene.mRootNode->mNumMeshes = 1;
  fillNodes(*scene.mMeshes[0], mesh.nodes, numbering);
  fillFaces(*scene.mMeshes[0], mesh, numbering);
}

}  // namespace

void writeThroughAssimp(const Mesh& mesh, const OutputFile& output, const std::string& format) {
  aiScene scene;
  fillScene(scene, mesh);
  Assimp::Exporter exporter;
  const std::string binaryForm = format + "b";
  const aiExportDataBlob* const content = exporter.ExportToBlob(&scene, binaryForm.c_str());
  if (content == nullptr) {
    throw unwritable(output.name(), exporter.GetErrorString());
  }
  output.write({static_cast<const char*>(content->data), content->size});
}

}  // namespace zel::program
