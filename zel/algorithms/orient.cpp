#include "zel/algorithms/orient.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "zel/algorithms/detail/components.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/mesh/detail/checked_lists.h"
#include "zel/mesh/edges.h"
#include "zel/mesh/mesh.h"

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

/// Turns faces of a mesh round. Takes all the memory it needs when it is made.
class FaceReverser {
 public:
  explicit FaceReverser(Mesh& mesh) : mesh_(mesh) {
    makeRoom(mesh.triangleTexture, 3, mesh.triangles.GetBoundM());
    makeRoom(mesh.quadTexture, 4, mesh.quads.GetBoundM());
  }

  void reverse(const FaceRef& face) {
    if (face.corners == 3) {
      reverse(mesh_.triangles, mesh_.triangleTexture, face.slot);
    } else {
      reverse(mesh_.quads, mesh_.quadTexture, face.slot);
    }
  }

 private:
  static void makeRoom(Point2DArr& texture, int corners, int faces) {
    if (texture.GetBoundM() > 0) {
      reserve(texture, corners * faces);
    }
  }
  // Faces are written through the lists' own operations, so that what they know of their faces
  // stays true.
  template <class Faces>
  static void reverse(Faces& faces, Point2DArr& texture, int slot) {
    auto face = std::as_const(faces).ElementAtM(slot);
    auto& corners = face.record().corners;
    constexpr int kLast = static_cast<int>(std::size(decltype(face.record().corners){})) - 1;
    std::swap(corners[1], corners[kLast]);
    face.NegativeNormalVectM();
    faces.SetItemM(face, slot);
    if (texture.GetBoundM() > 0) {
      swapEntries(texture, slot * (kLast + 1) + 1, (slot + 1) * (kLast + 1) - 1);
    }
  }
  static void swapEntries(Point2DArr& texture, int a, int b) {
    Float2 coords[2];
    const bool hasA = textureCoordOf(texture, a, coords[0]);
    const bool hasB = textureCoordOf(texture, b, coords[1]);
    put(texture, a, hasB, coords[1]);
    put(texture, b, hasA, coords[0]);
  }
  static void put(Point2DArr& texture, int entry, bool hasCoord, const Float2& coord) {
    if (hasCoord) {
      texture.SetItemM(coord.data(), entry);
    } else {
      texture.DelItemM(entry);
    }
  }

  Mesh& mesh_;
};

/// Decides for each face whether it is to be turned, without touching the mesh.
class OrientationPlan {
 public:
  OrientationPlan(const Mesh& mesh, const HalfEdges& edges, const OrientOptions& options)
      : nodes_(mesh.nodes.getCurrentItemPrtConstM()),
        edges_(edges),
        options_(options),
        walk_(edges) {
    ProgressSteps steps(options.progress, static_cast<std::size_t>(edges.faceCount()));
    for (int first = 0; first < edges.faceCount(); ++first) {
      const int seamsBefore = walk_.twistedSeams();
      const std::vector<int> component = walk_.componentFrom(first);
      if (!component.empty()) {
        ++report_.components;
        settle(component, walk_.twistedSeams() > seamsBefore);
      }
      steps.advance();
    }
    report_.twistedSeams = walk_.twistedSeams();
    report_.facesReversed = static_cast<int>(facesToTurn_.size());
  }

  [[nodiscard]] const OrientReport& report() const { return report_; }
  [[nodiscard]] const std::vector<int>& facesToTurn() const { return facesToTurn_; }

 private:
  void settle(const std::vector<int>& component, bool isTwisted) {
    const auto reversed = std::ranges::count_if(
        component, [&](int face) { return walk_.winding(face) == Winding::kReversed; });
    Winding unwanted = 2 * static_cast<std::size_t>(reversed) > component.size()
                           ? Winding::kAsStored
                           : Winding::kReversed;
    if (options_.outward && !isTwisted && looksInward(component, unwanted)) {
      unwanted = opposite(unwanted);
      ++report_.componentsTurned;
    }
    std::ranges::copy_if(component, std::back_inserter(facesToTurn_),
                         [&](int face) { return walk_.winding(face) == unwanted; });
  }

  [[nodiscard]] bool looksInward(const std::vector<int>& component, Winding unwanted) {
    VolumeSum volume;
    const float* apex = nodes_[edges_.origin(edges_.firstEdge(component[0]))].point();
    for (const int face : component) {
      const int begin = edges_.firstEdge(face);
      for (int edge = begin; edge < begin + edges_.face(face).corners; ++edge) {
        if (edges_.partner(edge) < 0) {
          return false;
        }
      }
      addFace(volume, {apex[0], apex[1], apex[2]}, edges_, face, nodes_,
              walk_.winding(face) == unwanted);
    }
    return volume.isNegative();
  }

  const NodeCL* nodes_;
  const HalfEdges& edges_;
  const OrientOptions& options_;
  WindingWalk walk_;
  OrientReport report_;
  std::vector<int> facesToTurn_;
};

}  // namespace

OrientReport orient(Mesh& mesh, const OrientOptions& options) {
  return tellingRefusedMemory([&] {
    const HalfEdges edges(mesh);
    const OrientationPlan plan(mesh, edges, options);
    FaceReverser reverser(mesh);
    for (const int face : plan.facesToTurn()) {
      reverser.reverse(edges.face(face));
    }
    return plan.report();
  });
}

void reverse(Mesh& mesh) {
  FaceReverser reverser(mesh);
  forEachFace(mesh, [&](int slot, const auto& corners) {
    reverser.reverse({slot, static_cast<int>(corners.size())});
  });
  mesh.nodes.NegativeNormalVectM();
}

}  // namespace zel
