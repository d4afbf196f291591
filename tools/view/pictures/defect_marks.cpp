#include "tools/view/pictures/defect_marks.h"

#include <utility>

#include "tools/view/pictures/scene_mesh.h"
#include "zel/algorithms/defects.h"

namespace zel::view {
namespace {

// The scene's faces by the slots of the mesh.
class FaceFinder {
 public:
  FaceFinder(const Mesh& mesh, const SceneMesh& scene)
      : triangles_(static_cast<std::size_t>(mesh.triangles.GetBoundM())),
        quads_(static_cast<std::size_t>(mesh.quads.GetBoundM())) {
    for (std::uint32_t f = 0; f < scene.faces.size(); ++f) {
      const SceneFace& face = scene.faces[f];
      (face.isQuad ? quads_ : triangles_)[static_cast<std::size_t>(face.slot)].push_back(f);
    }
  }

  // None for a face that the scene leaves out, two for a quad.
  [[nodiscard]] const std::vector<std::uint32_t>& facesOf(const FaceRef& face) const {
    return (face.corners == 4 ? quads_ : triangles_)[static_cast<std::size_t>(face.slot)];
  }

 private:
  std::vector<std::vector<std::uint32_t>> triangles_;
  std::vector<std::vector<std::uint32_t>> quads_;
};

}  // namespace

std::vector<DefectMarks> defectMarksOf(const Mesh& mesh, const SceneMesh& scene) {
  const Defects found = findDefects(mesh, {.list = true});
  const DefectLists& lists = found.lists;
  std::vector<DefectMarks> classes;
  const auto has = [&scene](int node) {
    return node >= 0 && static_cast<std::size_t>(node) < scene.nodeNormals.size() &&
           scene.point(node)[0] > kLiveNearMark;
  };
  const auto addEdges = [&](const char* name, Colour colour, int count,
                            const std::vector<DefectLists::Edge>& edges) {
    DefectMarks marks{name, colour, count, {}, {}, {}};
    for (const auto& [a, b] : edges) {
      if (has(a) && has(b)) {
        marks.edges.push_back({a, b});
      }
    }
    classes.push_back(std::move(marks));
  };
  const auto addNodes = [&](const char* name, Colour colour, int count,
                            const std::vector<int>& nodes) {
    DefectMarks marks{name, colour, count, {}, {}, {}};
    for (const int node : nodes) {
      if (has(node)) {
        marks.nodes.push_back(node);
      }
    }
    classes.push_back(std::move(marks));
  };
  const FaceFinder finder(mesh, scene);
  const auto addFaces = [&](const char* name, Colour colour, int count,
                            const std::vector<FaceRef>& faces) {
    DefectMarks marks{name, colour, count, {}, {}, {}};
    for (const FaceRef& face : faces) {
      const auto& shown = finder.facesOf(face);
      marks.faces.insert(marks.faces.end(), shown.begin(), shown.end());
    }
    classes.push_back(std::move(marks));
  };
  // Colours that stand apart also for the colour-blind, as far as so many can (M. Okabe, K. Ito,
  // Color universal design, 2008).
  addEdges("open edges", {213, 94, 0, 255}, found.openEdges, lists.openEdges);
  addEdges("crowded edges", {204, 51, 140, 255}, found.crowdedEdges, lists.crowdedEdges);
  addEdges("mixed edges", {0, 114, 178, 255}, found.mixedEdges, lists.mixedEdges);
  addNodes("bow-tie nodes", {230, 159, 0, 255}, found.bowTieNodes, lists.bowTieNodes);
  addFaces("duplicate faces", {86, 180, 233, 255}, found.duplicateFaces, lists.duplicateFaces);
  addFaces("degenerate faces", {240, 228, 66, 255}, found.degenerateFaces, lists.degenerateFaces);
  addFaces("dangling faces", {150, 150, 150, 255}, found.danglingFaces, lists.danglingFaces);
  addNodes("unused nodes", {0, 158, 115, 255}, found.unusedNodes, lists.unusedNodes);
  addNodes("non-finite nodes", {90, 90, 90, 255}, found.nonFiniteNodes, lists.nonFiniteNodes);
  addFaces("inside-out parts", {140, 60, 200, 255}, found.insideOutComponents,
           lists.insideOutComponents);
  std::erase_if(classes, [](const DefectMarks& marks) { return marks.count == 0; });
  return classes;
}

}  // namespace zel::view
