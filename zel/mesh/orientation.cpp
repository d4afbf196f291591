#include "zel/mesh/orientation.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "zel/mesh/detail/half_edges.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace zel {
namespace {

enum class Winding : signed char { kUnknown, kAsStored, kReversed };

Winding opposite(Winding winding) {
  return winding == Winding::kAsStored ? Winding::kReversed : Winding::kAsStored;
}

/// Spreads the winding of a first face over its component.
class WindingWalk {
 public:
  explicit WindingWalk(const HalfEdges& edges)
      : edges_(edges), windings_(static_cast<std::size_t>(edges.faceCount()), Winding::kUnknown) {}

  [[nodiscard]] Winding& winding(int face) { return windings_[static_cast<std::size_t>(face)]; }

  /// @return the faces of the component, breadth first; empty when the face has been reached
  /// before.
  std::vector<int> componentFrom(int first) {
    std::vector<int> reached;
    if (winding(first) != Winding::kUnknown) {
      return reached;
    }
    winding(first) = Winding::kAsStored;
    reached.push_back(first);
    for (std::size_t at = 0; at < reached.size(); ++at) {
      const int face = reached[at];
      const int begin = edges_.firstEdge(face);
      for (int edge = begin; edge < begin + edges_.face(face).corners; ++edge) {
        cross(edge, reached);
      }
    }
    return reached;
  }

  [[nodiscard]] int twistedSeams() const { return twistedSeams_; }

 private:
  void cross(int edge, std::vector<int>& reached) {
    const int partner = edges_.partner(edge);
    if (partner < 0) {
      return;
    }
    const Winding here = winding(edges_.faceOf(edge));
    const Winding wanted = edges_.isMixed(edge) ? opposite(here) : here;
    Winding& there = winding(edges_.faceOf(partner));
    if (there == Winding::kUnknown) {
      there = wanted;
      reached.push_back(edges_.faceOf(partner));
    } else if (there != wanted && edge < partner) {
      ++twistedSeams_;
    }
  }

  const HalfEdges& edges_;
  std::vector<Winding> windings_;
  int twistedSeams_ = 0;
};

// Faces are written through the lists' own operations, so that what they know of their faces
// stays true.

void reverseTriangle(TriangleArr& triangles, int slot) {
  TriangleCL face;
  int corners[3];
  triangles.GetItemM(&face, slot);
  face.GetTriangleM(corners);
  face.SetTriangleM(corners[0], corners[2], corners[1]);
  face.NegativeNormalVectM();
  triangles.SetItemM(face, slot);
}

void reverseQuad(QuadArr& quads, int slot) {
  QuadCL face;
  int corners[4];
  quads.GetItemM(&face, slot);
  face.GetQuadM(corners);
  face.SetQuadM(corners[0], corners[3], corners[2], corners[1]);
  face.NegativeNormalVectM();
  quads.SetItemM(face, slot);
}

}  // namespace

OrientationReport orientConsistently(TriangleArr& triangles, QuadArr& quads, int nodeCount) {
  const HalfEdges edges(triangles, quads, nodeCount);
  WindingWalk walk(edges);
  OrientationReport report{};
  for (int first = 0; first < edges.faceCount(); ++first) {
    const std::vector<int> component = walk.componentFrom(first);
    if (component.empty()) {
      continue;
    }
    ++report.components;
    std::size_t reversed = 0;
    for (const int face : component) {
      reversed += walk.winding(face) == Winding::kReversed ? 1 : 0;
    }
    const Winding minority =
        2 * reversed > component.size() ? Winding::kAsStored : Winding::kReversed;
    for (const int face : component) {
      if (walk.winding(face) != minority) {
        continue;
      }
      const FaceRef& ref = edges.face(face);
      if (ref.corners == 3) {
        reverseTriangle(triangles, ref.slot);
      } else {
        reverseQuad(quads, ref.slot);
      }
      ++report.facesReversed;
    }
  }
  report.twistedSeams = walk.twistedSeams();
  return report;
}

}  // namespace zel
