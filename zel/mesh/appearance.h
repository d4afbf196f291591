#pragma once

/// @file
/// How a mesh looks: colours of nodes, materials of faces and their pictures.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "zel/core/api.h"
#include "zel/mesh/edges.h"

namespace zel {

/// Red, green, blue and opacity, each 0 to 255.
using Colour = std::array<std::uint8_t, 4>;

/// What a face is painted with.
struct Material {
  std::string name;                       ///< unique within an Appearance
  Colour diffuse = {204, 204, 204, 255};  ///< the colour in plain light
  std::string texture;                    ///< file name of the picture, as the mesh file has it
  std::vector<std::byte> textureBytes;    ///< the picture file itself where the mesh file holds it
};

/// The looks of a mesh, beside it: its lists follow the slots of the mesh's lists.
///
/// A list may be empty (nothing is known) or shorter than the mesh's (nothing is known of the
/// rest). It must be told when slots move: the algorithms report maps from old slots to new ones.
struct Appearance {
  /// What a face without a material has.
  static constexpr int kNoMaterial = -1;
  /// What a node without a colour has.
  static constexpr Colour kNoColour = {255, 255, 255, 255};

  std::vector<Colour> nodeColours;     ///< per node slot
  std::vector<int> triangleMaterials;  ///< per triangle slot: place in `materials`, or kNoMaterial
  std::vector<int> quadMaterials;      ///< per quad slot, likewise
  std::vector<Material> materials;     ///< what the faces name by its place

  /// @return whether nothing is known of any node or face.
  [[nodiscard]] bool empty() const {
    return nodeColours.empty() && triangleMaterials.empty() && quadMaterials.empty();
  }
  /// @return the colour of a node; kNoColour when none is known.
  [[nodiscard]] Colour colourOf(int node) const {
    const auto place = static_cast<std::size_t>(node);
    return node >= 0 && place < nodeColours.size() ? nodeColours[place] : kNoColour;
  }
  /// @return the material of a face by its list here; kNoMaterial when none is known.
  [[nodiscard]] static int materialOf(const std::vector<int>& list, int face) {
    const auto place = static_cast<std::size_t>(face);
    return face >= 0 && place < list.size() ? list[place] : kNoMaterial;
  }
  /// Gives a node a colour; the list grows to it.
  ZEL_API void setColour(int node, Colour colour);
  /// Gives a triangle a material, by its place in `materials`; the list grows to it.
  ZEL_API void setTriangleMaterial(int triangle, int material);
  /// Gives a quad a material, by its place in `materials`; the list grows to it.
  ZEL_API void setQuadMaterial(int quad, int material);

  // --- after slots have moved ---
  /// Moves the colours with their nodes; of several that became one, the lowest gives its colour.
  /// @param newSlotOf per old slot its new one, or a negative number where it is gone.
  ZEL_API void followNodes(std::span<const int> newSlotOf);
  /// Moves the materials with their triangles. @param newSlotOf as followNodes().
  ZEL_API void followTriangles(std::span<const int> newSlotOf);
  /// Moves the materials with their quads. @param newSlotOf as followNodes().
  ZEL_API void followQuads(std::span<const int> newSlotOf);
  /// For faces that may have changed from quads to triangles.
  /// @param triangleOrigins per new triangle slot the face that it was. @param quadOrigins per new
  ///        quad slot its old one.
  ZEL_API void followFaces(std::span<const FaceRef> triangleOrigins,
                           std::span<const int> quadOrigins);
  /// For quads that have become triangles.
  /// @param firstTriangle slot of the first of them. @param quadOf per new triangle, in slot order,
  ///        the old slot of its quad.
  ZEL_API void followCutQuads(int firstTriangle, std::span<const int> quadOf);
};

}  // namespace zel
