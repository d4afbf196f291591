#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <assimp/Importer.hpp>
#include <limits>
#include <string>

#include "tools/zel/failure.h"
#include "tools/zel/foreign/assimp_file.h"

namespace zel::program {

namespace {

Point pointFrom(const aiVector3D& vector) { return {vector.x, vector.y, vector.z}; }

/// Turns one scene into one mesh.
class SceneJoiner {
 public:
  SceneJoiner(const InputFile& input, const aiScene& scene) : input_(input), scene_(scene) {}

  Mesh join() {
    addNode(*scene_.mRootNode, aiMatrix4x4());
    return std::move(mesh_);
  }

 private:
  void addNode(const aiNode& node, const aiMatrix4x4& parent) {
    const aiMatrix4x4 place = parent * node.mTransformation;
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
      addMesh(*scene_.mMeshes[node.mMeshes[i]], place);
    }
    for (unsigned i = 0; i < node.mNumChildren; ++i) {
      addNode(*node.mChildren[i], place);
    }
  }

  void addMesh(const aiMesh& part, const aiMatrix4x4& place) {
    constexpr unsigned kMost = std::numeric_limits<int>::max() / 4;
    first_ = mesh_.nodes.GetBoundM();
    if (part.mNumVertices > kMost - static_cast<unsigned>(first_) || part.mNumFaces > kMost) {
      throw exhausted(input_.name(), "more vertices or faces than a mesh holds");
    }
    // An identity must not touch a bit of the points.
    const bool stays = place.IsIdentity();
    const aiMatrix3x3 turn(place);
    for (unsigned i = 0; i < part.mNumVertices; ++i) {
      const aiVector3D& point = part.mVertices[i];
      const aiVector3D normal = part.HasNormals() ? part.mNormals[i] : aiVector3D();
      mesh_.addNode(pointFrom(stays ? point : place * point),
                    pointFrom(stays ? normal : turn * normal));
    }
    for (unsigned i = 0; i < part.mNumFaces; ++i) {
      addFace(part, part.mFaces[i]);
    }
  }

  void addFace(const aiMesh& part, const aiFace& face) {
    for (unsigned k = 0; k < face.mNumIndices; ++k) {
      if (face.mIndices[k] >= part.mNumVertices) {
        throw unreadable(input_.name(), "a face names vertex " + std::to_string(face.mIndices[k]) +
                                            " of " + std::to_string(part.mNumVertices));
      }
    }
    if (face.mNumIndices == 4) {
      mesh_.addQuad({slotOf(face, 0), slotOf(face, 1), slotOf(face, 2), slotOf(face, 3)});
      return;
    }
    for (unsigned k = 2; k < face.mNumIndices; ++k) {
      addTriangle(part, {face.mIndices[0], face.mIndices[k - 1], face.mIndices[k]});
    }
  }

  [[nodiscard]] int slotOf(const aiFace& face, unsigned corner) const {
    return first_ + static_cast<int>(face.mIndices[corner]);
  }

  void addTriangle(const aiMesh& part, const std::array<unsigned, 3>& vertices) {
    const auto slot = [this](unsigned vertex) { return first_ + static_cast<int>(vertex); };
    const int triangle =
        mesh_.addTriangle({slot(vertices[0]), slot(vertices[1]), slot(vertices[2])});
    if (part.HasTextureCoords(0)) {
      for (int k = 0; k < 3; ++k) {
        const aiVector3D& coord = part.mTextureCoords[0][vertices[static_cast<std::size_t>(k)]];
        setTextureCoord(mesh_.triangleTexture, 3 * triangle + k, {coord.x, coord.y});
      }
    }
  }

  const InputFile& input_;
  const aiScene& scene_;
  Mesh mesh_;
  int first_ = 0;  ///< node slot of the present part's vertex 0
};

}  // namespace

std::vector<std::string> assimpExtensions() {
  std::string list;  // "*.3ds;*.obj;..."
  Assimp::Importer().GetExtensionList(list);
  std::vector<std::string> extensions;
  for (std::size_t start = 0; start < list.size();) {
    const std::size_t end = std::min(list.find(';', start), list.size());
    extensions.push_back(lowerCase(list.substr(start + 2, end - start - 2)));
    start = end + 1;
  }
  std::ranges::sort(extensions);
  return extensions;
}

Mesh readThroughAssimp(const InputFile& input, const std::string& format) {
  Assimp::Importer importer;
  const aiScene* scene = nullptr;
  const bool nameTellsFormat =
      input.isOwnFile() &&
      importer.GetImporterIndex(format.c_str()) ==
          importer.GetImporterIndex(input.path().substr(input.path().rfind('.') + 1).c_str());
  if (nameTellsFormat) {
    scene = importer.ReadFile(input.path(), 0);
  } else {
    const std::string bytes = input.readAll();
    scene = importer.ReadFileFromMemory(bytes.data(), bytes.size(), 0, format.c_str());
  }
  if (scene == nullptr || scene->mRootNode == nullptr) {
    throw unreadable(input.name(), importer.GetErrorString());
  }
  return SceneJoiner(input, *scene).join();
}

}  // namespace zel::program
