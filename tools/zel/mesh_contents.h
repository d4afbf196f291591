#pragma once

#include "tools/zel/report.h"
#include "zel/zel.h"

namespace zel::program {

/// What a mesh is made of, where it is more than a number.
enum class Contents {
  kFaces,    ///< faces, and nodes with them
  kPoints,   ///< nodes without a face: a point cloud
  kNothing,  ///< neither
};

[[nodiscard]] inline Contents contentsOf(const Mesh& mesh) {
  if (mesh.triangles.GetAvailableNumM() + mesh.quads.GetAvailableNumM() > 0) {
    return Contents::kFaces;
  }
  return mesh.nodes.GetAvailableNumM() > 0 ? Contents::kPoints : Contents::kNothing;
}

/// A row for people about a mesh without faces, a key for programs about any.
inline void reportContents(Report& report, Contents contents) {
  switch (contents) {
    case Contents::kFaces:
      return report.row("contents", "", {{"contents", "faces"}});
    case Contents::kPoints:
      return report.row("contents", "a point cloud: no faces", {{"contents", "points"}});
    case Contents::kNothing:
      return report.row("contents", "an empty mesh: no nodes, no faces", {{"contents", "nothing"}});
  }
}

}  // namespace zel::program
