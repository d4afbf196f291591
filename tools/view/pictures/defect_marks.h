#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/view/pictures/picture.h"

namespace zel {
struct Mesh;
}

namespace zel::view {

struct SceneMesh;

/// One class of defects, as it is drawn.
struct DefectMarks {
  std::string name;  ///< "open edges"
  Colour colour;
  int count = 0;                          ///< in the mesh, drawable or not
  std::vector<std::array<int, 2>> edges;  ///< node slots of the scene
  std::vector<int> nodes;                 ///< node slots of the scene
  std::vector<std::uint32_t> faces;       ///< of the scene
};

/// Finds the defects of a mesh and what of the scene shows them, in time linear in nodes and faces.
/// @param scene made of the mesh.
/// @return the classes that have any. @throws Error (kExhausted).
[[nodiscard]] std::vector<DefectMarks> defectMarksOf(const Mesh& mesh, const SceneMesh& scene);

}  // namespace zel::view
