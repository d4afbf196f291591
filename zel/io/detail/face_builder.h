#pragma once

/// @file
/// Faces of any number of corners on their way into a mesh.

#include <array>
#include <span>
#include <vector>

#include "zel/core/constants.h"
#include "zel/io/remark.h"
#include "zel/mesh/appearance.h"
#include "zel/mesh/mesh.h"

namespace zel {

/// The texture coordinate of a corner that has none.
inline constexpr Float2 kNoTexture = {kFloatMark, kFloatMark};

/// Appends faces whose nodes are there already: triangles, quads, and polygons of more corners,
/// which become triangles.
class FaceBuilder {
 public:
  /// @param appearance receives the materials; may be null.
  FaceBuilder(Mesh& mesh, Appearance* appearance) : mesh_(mesh), appearance_(appearance) {}

  /// @param corners at least three slots of nodes. @param texture one per corner, or none at all.
  /// @param material of the face, or Appearance::kNoMaterial.
  /// @throws Error (kExhausted).
  void add(std::span<const int> corners, std::span<const Float2> texture, int material);

  /// Says what became of the faces.
  void tell(Remarks& remarks) const;

 private:
  void addTriangle(std::array<std::size_t, 3> places, std::span<const int> corners,
                   std::span<const Float2> texture, int material);
  void addPolygon(std::span<const int> corners, std::span<const Float2> texture, int material);
  void addQuad(std::span<const int> corners, std::span<const Float2> texture, int material);

  Mesh& mesh_;
  Appearance* appearance_;
  std::vector<Float3> points_;  // of the polygon in hand
  long long polygons_ = 0;
  long long behindQuads_ = 0;  // triangles that followed a quad
};

}  // namespace zel
