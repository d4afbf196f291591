#pragma once

/// @file
/// Every job on meshes, for tests of what holds for all of them.

#include <array>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "support/meshes.h"
#include "zel/algorithms/boundary.h"
#include "zel/algorithms/compact.h"
#include "zel/algorithms/compare.h"
#include "zel/algorithms/defects.h"
#include "zel/algorithms/measure.h"
#include "zel/algorithms/normals.h"
#include "zel/algorithms/orient.h"
#include "zel/algorithms/triangulate.h"
#include "zel/algorithms/unfold.h"
#include "zel/algorithms/weld.h"

namespace zel::test {

/// Some numbers of what a job answers.
using Answer = std::array<double, 4>;

struct Job {
  const char* name;
  std::function<Answer(zel::Mesh&, const Progress&)> run;
};

template <class... Values>
Answer answerOf(const Values&... values) {
  return {static_cast<double>(values)...};
}

inline const std::vector<Job>& allJobs() {
  static const std::vector<Job> jobs{
      {"weld",
       [](zel::Mesh& mesh, const Progress& progress) {
         const WeldReport report =
             weld(mesh, {.tolerance = Absolute(0.3), .faceMaps = true, .progress = progress});
         return answerOf(report.nodesMerged, report.newIndexOf.size(),
                         report.triangleOrigins.size());
       }},
      {"compact",
       [](zel::Mesh& mesh, const Progress& progress) {
         const CompactReport report =
             compact(mesh, {.dropUnusedNodes = true, .progress = progress});
         return answerOf(report.nodes.oldOf.size(), report.danglingFaces);
       }},
      {"findDefects",
       [](zel::Mesh& mesh, const Progress& progress) {
         const Defects found = findDefects(mesh, {.list = true, .progress = progress});
         return answerOf(found.openEdges, found.lists.openEdges.size(), found.components);
       }},
      {"boundaryChains",
       [](zel::Mesh& mesh, const Progress& progress) {
         return answerOf(boundaryChains(mesh, {.progress = progress}).size());
       }},
      {"orient",
       [](zel::Mesh& mesh, const Progress& progress) {
         return answerOf(orient(mesh, {.outward = true, .progress = progress}).facesReversed);
       }},
      {"measure",
       [](zel::Mesh& mesh, const Progress& progress) {
         const Measures found = measure(mesh, {.progress = progress});
         return answerOf(found.area, found.edges, found.meanEdge, found.boundaryLoops);
       }},
      {"giveNormals",
       [](zel::Mesh& mesh, const Progress& progress) {
         giveNormals(mesh, {.weight = NormalWeight::kAngle, .progress = progress});
         return Answer{};
       }},
      {"triangulate",
       [](zel::Mesh& mesh, const Progress& progress) {
         return answerOf(triangulate(mesh, {.faceMap = true, .progress = progress}).quadsCut);
       }},
      {"unfold",
       [](zel::Mesh& mesh, const Progress& progress) {
         const UnfoldReport found = unfold(mesh, {.progress = progress});
         return answerOf(found.unfoldedFaces, found.overlappingFaces, found.meanLengthError);
       }},
      {"compare",
       [](zel::Mesh& mesh, const Progress& progress) {
         return answerOf(compare(mesh, mesh, {.progress = progress}).points.count);
       }},
  };
  return jobs;
}

/// A mesh that gives every job something to do: triangles and quads, partly with texture, wound
/// this way and that, with deleted slots and a degenerate face.
inline Mesh meshForJobs() {
  Mesh mesh = makeGrid(7, 6, [](float x, float y) { return 0.1F * x * y; });
  mesh.addNode(3.01F, 2.0F, 0.6F);
  mesh.addQuad(0, 56, 8, 1);
  mesh.addQuad(2, 3, 11, 10);
  mesh.addTriangle(5, 5, 6);
  mesh.addTriangle(1, 0, 9);
  for (int corner = 0; corner < 60; ++corner) {
    setTextureCoord(mesh.triangleTexture, corner, {static_cast<float>(corner), 0.5F});
  }
  setTextureCoord(mesh.quadTexture, 2, {1, 1});
  for (const int slot : {8, 30, 31}) {
    const auto [a, b, c] = mesh.corners(slot);
    mesh.triangles.SetItemM(triangleOf(a, c, b), slot);
  }
  mesh.triangles.DelItemM(12);
  mesh.nodes.DelItemM(48);
  return mesh;
}

/// All that a mesh holds, as a text.
inline std::string contentOf(const zel::Mesh& mesh) {
  std::ostringstream text;
  text.precision(9);
  const auto add = [&](const auto& row) {
    for (const auto value : row) {
      text << value << " ";
    }
  };
  const auto addList = [&](const auto& list, const auto&... rows) {
    text << "\n" << list.GetBoundM() << " " << list.GetAvailableNumM();
    for (int slot = 0; slot < list.GetBoundM(); ++slot) {
      text << "\n" << tagOf(list, slot) << ": ";
      (add(rows[static_cast<std::size_t>(slot)]), ...);
    }
  };
  addList(mesh.nodes, mesh.points(), mesh.nodeNormals());
  addList(mesh.triangles, mesh.triangleCorners(), mesh.triangleNormals());
  addList(mesh.quads, mesh.quadCorners(), mesh.quadNormals());
  for (const Point2DArr* texture : {&mesh.triangleTexture, &mesh.quadTexture}) {
    text << "\n" << texture->GetAvailableNumM();
    for (int entry = 0; entry < texture->GetBoundM(); ++entry) {
      Float2 coord{};
      text << textureCoordOf(*texture, entry, coord) << ": " << coord[0] << " " << coord[1] << ", ";
    }
  }
  return text.str();
}

}  // namespace zel::test
