#include "tools/zel/foreign/scene_reader.h"

#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <assimp/Importer.hpp>
#include <fstream>
#include <iterator>
#include <limits>
#include <utility>

#include "tools/zel/failure.h"
#include "tools/zel/foreign/foreign_mesh.h"
#include "zel/algorithms/triangulate.h"

namespace zel::program {

namespace {

/// A mesh of a scene and where it stands in it.
struct Placed {
  const aiNode* node;
  aiMatrix4x4 place;
};

/// Turns one scene into one mesh.
class SceneJoiner {
 public:
  SceneJoiner(const aiScene& scene, const aiMatrix4x4& root) : scene_(scene), root_(root) {}

  ForeignMesh join() {
    // Not by recursion: a file may nest its nodes as deep as it likes.
    std::vector<Placed> open = {{scene_.mRootNode, root_}};
    while (!open.empty()) {
      const Placed placed = open.back();
      open.pop_back();
      for (unsigned i = 0; i < placed.node->mNumMeshes; ++i) {
        addMesh(*scene_.mMeshes[placed.node->mMeshes[i]], placed.place);
      }
      for (unsigned i = placed.node->mNumChildren; i > 0; --i) {
        const aiNode* const child = placed.node->mChildren[i - 1];
        open.push_back({child, placed.place * child->mTransformation});
      }
    }
    finish();
    return std::move(joined_);
  }

 private:
  static constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

  void addMesh(const aiMesh& part, const aiMatrix4x4& place) {
    constexpr std::size_t kMost = std::numeric_limits<int>::max() / 4;
    MeshArrays& mesh = joined_.arrays;
    first_ = mesh.points.size() / 3;
    if (part.mNumVertices > kMost - first_ ||
        part.mNumFaces > kMost - (mesh.triangles.size() / 3 + mesh.quads.size() / 4)) {
      throw std::bad_alloc();  // more than a mesh holds
    }
    // An identity must not touch a bit of the points.
    const bool stays = place.IsIdentity();
    for (unsigned i = 0; i < part.mNumVertices; ++i) {
      append(mesh.points, stays ? part.mVertices[i] : place * part.mVertices[i]);
    }
    addNormals(part, place);
    isMirrored_ = place.Determinant() < 0;
    coloured_ += part.HasVertexColors(0) ? part.mNumVertices : 0;
    for (unsigned i = 0; i < part.mNumFaces; ++i) {
      addFace(part, part.mFaces[i]);
    }
  }

  void addNormals(const aiMesh& part, const aiMatrix4x4& place) {
    std::vector<float>& normals = joined_.arrays.nodeNormals;
    if (!part.HasNormals() || place.Determinant() == 0) {
      if (!normals.empty()) {
        normals.resize(joined_.arrays.points.size());
      }
      return;
    }
    normals.resize(3 * first_);
    const bool stays = place.IsIdentity();
    const aiMatrix3x3 turn = stays ? aiMatrix3x3() : aiMatrix3x3(place).Inverse().Transpose();
    for (unsigned i = 0; i < part.mNumVertices; ++i) {
      aiVector3D normal = part.mNormals[i];
      if (!stays) {
        normal = (turn * normal).NormalizeSafe();
      }
      append(normals, normal);
    }
  }

  void addFace(const aiMesh& part, const aiFace& face) {
    corners_.assign(face.mIndices, face.mIndices + face.mNumIndices);
    for (const unsigned corner : corners_) {
      if (corner >= part.mNumVertices) {
        throw unreadable("", "a face names vertex " + std::to_string(corner) + " of " +
                                 std::to_string(part.mNumVertices));
      }
    }
    if (isMirrored_) {
      std::ranges::reverse(corners_);
    }
    MeshArrays& mesh = joined_.arrays;
    if (corners_.size() < 3) {
      ++thin_;
    } else if (corners_.size() == 3) {
      add(part, mesh.triangles, mesh.triangleTexture, {0, 1, 2});
    } else if (corners_.size() == 4) {
      add(part, mesh.quads, mesh.quadTexture, {0, 1, 2, 3});
    } else {
      ++polygons_;
      for (const auto& [a, b, c] : triangulatePolygon(border())) {
        add(part, mesh.triangles, mesh.triangleTexture, {a, b, c});
      }
    }
  }

  [[nodiscard]] std::vector<Float3> border() const {
    std::vector<Float3> points;
    for (const unsigned corner : corners_) {
      const float* const point = &joined_.arrays.points[3 * (first_ + corner)];
      points.push_back({point[0], point[1], point[2]});
    }
    return points;
  }

  void add(const aiMesh& part, std::vector<int>& faces, std::vector<float>& texture,
           std::initializer_list<int> places) {
    for (const int place : places) {
      const unsigned corner = corners_[static_cast<std::size_t>(place)];
      if (part.HasTextureCoords(0)) {
        texture.resize(2 * faces.size(), kNone);
        texture.push_back(part.mTextureCoords[0][corner].x);
        texture.push_back(part.mTextureCoords[0][corner].y);
      }
      faces.push_back(static_cast<int>(first_ + corner));
    }
  }

  void finish() {
    MeshArrays& mesh = joined_.arrays;
    if (!mesh.triangleTexture.empty()) {
      mesh.triangleTexture.resize(2 * mesh.triangles.size(), kNone);
    }
    if (!mesh.quadTexture.empty()) {
      mesh.quadTexture.resize(2 * mesh.quads.size(), kNone);
    }
    remark(Remark::Kind::kLeftOut, "left out", thin_, "point or line", "points and lines");
    remark(Remark::Kind::kLeftOut, "left out the colours of", coloured_, "node", "nodes");
    remark(Remark::Kind::kChanged, "triangulated", polygons_, "polygon", "polygons");
  }

  void remark(Remark::Kind kind, const std::string& what, long long count, const char* one,
              const char* many) {
    if (count > 0) {
      joined_.remarks.push_back(
          {kind, what + " " + std::to_string(count) + " " + (count == 1 ? one : many), count});
    }
  }

  static void append(std::vector<float>& list, const aiVector3D& vector) {
    list.insert(list.end(), {vector.x, vector.y, vector.z});
  }

  const aiScene& scene_;
  aiMatrix4x4 root_;
  ForeignMesh joined_;
  std::vector<unsigned> corners_;  ///< of the present face, in winding order
  std::size_t first_ = 0;          ///< node of the present part's vertex 0
  bool isMirrored_ = false;        ///< whether the present part's faces would turn inside out
  long long thin_ = 0;
  long long coloured_ = 0;
  long long polygons_ = 0;
};

std::string allOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

std::vector<std::string> foreignExtensions() {
  std::string list;  // "*.3ds;*.obj;..."
  Assimp::Importer().GetExtensionList(list);
  std::vector<std::string> extensions;
  for (std::size_t start = 0; start < list.size();) {
    const std::size_t end = std::min(list.find(';', start), list.size());
    std::string extension = lowerCase(list.substr(start + 2, end - start - 2));
    // Of STEP files Assimp knows the buildings (IFC) alone, and refuses all others as malformed.
    if (extension != "step" && extension != "stp") {
      extensions.push_back(std::move(extension));
    }
    start = end + 1;
  }
  std::ranges::sort(extensions);
  return extensions;
}

ForeignMesh readScene(const std::string& path, const std::string& format, bool isNamed) {
  Assimp::Importer importer;
  const aiScene* scene = nullptr;
  const bool nameTellsFormat =
      isNamed && importer.GetImporterIndex(format.c_str()) ==
                     importer.GetImporterIndex(path.substr(path.rfind('.') + 1).c_str());
  if (nameTellsFormat) {
    scene = importer.ReadFile(path, 0);
  } else {
    const std::string bytes = allOf(path);
    scene = importer.ReadFileFromMemory(bytes.data(), bytes.size(), 0, format.c_str());
  }
  if (scene == nullptr || scene->mRootNode == nullptr) {
    throw unreadable("", importer.GetErrorString());
  }
  // Assimp turns drawings so that their height lies along y.
  const bool isTurned = format == "dxf";
  return SceneJoiner(*scene, isTurned ? aiMatrix4x4() : scene->mRootNode->mTransformation).join();
}

}  // namespace zel::program
