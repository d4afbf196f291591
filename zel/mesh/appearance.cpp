#include "zel/mesh/appearance.h"

#include <algorithm>

namespace zel {

namespace {

template <class Value>
void setAt(std::vector<Value>& list, int slot, Value value, Value none) {
  const auto place = static_cast<std::size_t>(slot);
  if (place >= list.size()) {
    list.resize(place + 1, none);
  }
  list[place] = value;
}

template <class Value>
void follow(std::vector<Value>& list, std::span<const int> newSlotOf, Value none) {
  std::vector<Value> moved;
  std::vector<bool> isGiven;
  for (std::size_t old = 0; old < std::min(list.size(), newSlotOf.size()); ++old) {
    const auto place = static_cast<std::size_t>(newSlotOf[old]);
    if (newSlotOf[old] < 0) {
      continue;
    }
    if (place >= moved.size()) {
      moved.resize(place + 1, none);
      isGiven.resize(place + 1);
    }
    if (!isGiven[place]) {
      moved[place] = list[old];
      isGiven[place] = true;
    }
  }
  list = std::move(moved);
}

}  // namespace

void Appearance::setColour(int node, Colour colour) { setAt(nodeColours, node, colour, kNoColour); }
void Appearance::setTriangleMaterial(int triangle, int material) {
  setAt(triangleMaterials, triangle, material, int{kNoMaterial});
}
void Appearance::setQuadMaterial(int quad, int material) {
  setAt(quadMaterials, quad, material, int{kNoMaterial});
}
void Appearance::followNodes(std::span<const int> newSlotOf) {
  follow(nodeColours, newSlotOf, kNoColour);
}
void Appearance::followTriangles(std::span<const int> newSlotOf) {
  follow(triangleMaterials, newSlotOf, int{kNoMaterial});
}
void Appearance::followQuads(std::span<const int> newSlotOf) {
  follow(quadMaterials, newSlotOf, int{kNoMaterial});
}

void Appearance::followCutQuads(int firstTriangle, std::span<const int> quadOf) {
  if (!quadMaterials.empty()) {
    for (const int quad : quadOf) {
      setTriangleMaterial(firstTriangle++, materialOf(quadMaterials, quad));
    }
    quadMaterials.clear();
  }
}

void Appearance::followFaces(std::span<const FaceRef> triangleOrigins,
                             std::span<const int> quadOrigins) {
  std::vector<int> triangles;
  std::vector<int> quads;
  if (!triangleMaterials.empty() || !quadMaterials.empty()) {
    for (const FaceRef& face : triangleOrigins) {
      triangles.push_back(
          materialOf(face.corners == 3 ? triangleMaterials : quadMaterials, face.slot));
    }
    for (const int slot : quadOrigins) {
      quads.push_back(materialOf(quadMaterials, slot));
    }
  }
  triangleMaterials = std::move(triangles);
  quadMaterials = std::move(quads);
}

}  // namespace zel
