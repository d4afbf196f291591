#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "tools/view/pictures/defect_marks.h"
#include "tools/view/pictures/texture.h"
#include "tools/view/pictures/triangle_tree.h"
#include "tools/view/pictures/vectors.h"
#include "zel/containers/point3d_arr.h"
#include "zel/mesh/mesh.h"

namespace zel::view {

/// A face ready to be drawn.
struct SceneFace {
  TriangleCL triangle;     ///< corners are node slots; the normal is that of its plane
  std::uint8_t realEdges;  ///< bit k: the side from corner k to the next is an edge of the mesh
  bool isQuad;             ///< whether it is half of a quad
  int slot;                ///< of the triangle or quad in the mesh
};

/// The node slots of a face.
[[nodiscard]] inline std::array<int, 3> cornersOf(const SceneFace& face) {
  return zel::cornersOf(face.triangle);
}
[[nodiscard]] inline Vector3 normalOf(const SceneFace& face) {
  Vector3 normal{};
  face.triangle.GetNormM(normal.data());
  return normal;
}

/// What a face is painted with.
struct SceneMaterial {
  static constexpr int kNoTexture = -1;
  Colour colour = kClay;
  int texture = kNoTexture;  ///< place among the scene's textures
};

/// A mesh made ready for drawing: centred and scaled into the unit sphere, quads cut in two.
///
/// Left out are deleted elements, and faces that name nodes which are missing, deleted or not
/// finite.
struct SceneMesh {
  explicit SceneMesh(const Mesh& mesh);
  /// @param triangleTexture entry 3 t + k belongs to corner k of triangle slot t; may be empty.
  /// @param quadTexture     entry 4 q + k belongs to corner k of quad slot q; may be empty.
  SceneMesh(const NodeArr& nodes, const TriangleArr& triangles, const QuadArr& quads,
            const Point2DArr& triangleTexture, const Point2DArr& quadTexture = Point2DArr());

  [[nodiscard]] Vector3 point(int node) const;
  /// The points of `shownNodes`, which is what a camera should frame.
  [[nodiscard]] std::vector<Vector3> shownPoints() const;
  /// The corners of all faces.
  [[nodiscard]] std::vector<TrianglePoints> facePoints() const;
  /// Where a place of the scene is in the mesh.
  [[nodiscard]] std::array<double, 3> inMesh(const Vector3& place) const;

  /// By node slot; holes for nodes that are missing, not finite, or unused and far away.
  Point3DArr points;
  std::vector<SceneFace> faces;
  /// Entry 3 f + k belongs to corner k of face f, (0, 0) for faces that have none; empty when the
  /// whole mesh has none.
  std::vector<std::array<float, 2>> textureCoords;
  /// What is to be seen: the nodes of all faces, or every node when there is no face.
  std::vector<int> shownNodes;
  /// Unit normals by node slot; zero where the mesh has none.
  std::vector<Vector3> nodeNormals;

  std::vector<Colour> nodeColours;           ///< by node slot; empty when the mesh has none
  std::vector<SceneMaterial> faceMaterials;  ///< by face; empty when the mesh has none
  std::vector<TextureImage> textures;        ///< of the materials

  /// What is wrong with the mesh; empty unless somebody has put it in.
  std::vector<DefectMarks> defects;

  std::array<double, 3> centre{};  ///< of the mesh, which the scene has at the origin
  double radius = 1;               ///< of the mesh about its centre, which the scene has as 1

  // What the mesh holds, drawable or not.
  int nodeCount = 0;
  int triangleCount = 0;
  int quadCount = 0;
};

}  // namespace zel::view
