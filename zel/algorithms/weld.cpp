#include "zel/algorithms/weld.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include "zel/algorithms/detail/double_vectors.h"
#include "zel/algorithms/detail/face_sets.h"
#include "zel/algorithms/detail/texture_transfer.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/prefetch.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/mesh/detail/checked_lists.h"
#include "zel/mesh/detail/faces/face_corners.h"
#include "zel/mesh/detail/points/kept_points.h"
#include "zel/mesh/mesh.h"

namespace zel {
namespace {

/// Elements that are looked at together, so that their waits for memory pass at once.
constexpr int kBlock = 16;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

void expectFinite(const NodeArr& nodes) {
  const NodeCL* store = nodes.getCurrentItemPrtConstM();
  for (int slot = 0; slot < nodes.GetBoundM(); ++slot) {
    if (isLive(store[slot]) && !isFinitePoint(store[slot].point())) {
      throw Error(ErrorCode::kUnreadable, "cannot weld",
                  "node " + std::to_string(slot) + " has a coordinate that is not finite");
    }
  }
}

/// Finds where every node goes, one after the other, looking ahead by a block of them.
class NodeMerger {
 public:
  NodeMerger(const NodeArr& nodes, WeldReport& report)
      : store_(nodes.getCurrentItemPrtConstM()),
        bound_(std::max(nodes.GetBoundM(), 0)),
        positions_(report.toleranceUsed, at(bound_)),
        report_(report) {
    report.newIndexOf.assign(at(bound_), kNoIndex);
  }

  void run(ProgressSteps& steps) {
    for (int first = 0; first < bound_; first += kBlock) {
      const int end = std::min(first + kBlock, bound_);
      forEachLive(first, end, [&](int slot, KeptPoints::Search& search) {
        positions_.lookAhead(store_[slot].point(), search);
      });
      forEachLive(first, end,
                  [&](int /*slot*/, KeptPoints::Search& search) { positions_.fetch(search); });
      forEachLive(first, end, [&](int slot, KeptPoints::Search& search) { merge(slot, search); });
      steps.reach(at(end));
    }
  }
  /// The nodes that stay.
  [[nodiscard]] NodeArr kept() const {
    auto kept = listWithRoomFor<NodeArr>(keptCount_);
    for (int slot = 0; slot < bound_; ++slot) {
      if (report_.newIndexOf[at(slot)] == kept.GetBoundM()) {
        append(kept, store_[slot]);
      }
    }
    return kept;
  }

 private:
  template <class Visit>
  void forEachLive(int first, int end, Visit visit) {
    for (int slot = first; slot < end; ++slot) {
      if (isLive(store_[slot])) {
        visit(slot, searches_[at(slot - first)]);
      }
    }
  }
  void merge(int slot, const KeptPoints::Search& search) {
    const KeptPoints::Hit hit = positions_.findOrKeep(search);
    report_.newIndexOf[at(slot)] = hit.index;
    keptCount_ += hit.isNew ? 1 : 0;
    report_.nodesMerged += hit.isNew ? 0 : 1;
    report_.largestMove = std::max(report_.largestMove, hit.isNew ? 0.0 : hit.distance);
  }

  const NodeCL* store_;
  int bound_;
  KeptPoints positions_;
  WeldReport& report_;
  int keptCount_ = 0;
  std::array<KeptPoints::Search, kBlock> searches_;
};

/// The new corners of a face, and the same without those that repeat the one before them in the
/// cycle.
template <std::size_t kCorners>
struct MappedFace {
  std::array<int, kCorners> all;
  std::array<int, kCorners> distinct;
  std::array<int, kCorners> sources;  ///< which old corners the distinct ones were
  int count;                          ///< of the distinct ones; 0 when a corner names no live node

  void map(const std::array<int, kCorners>& old, const std::vector<int>& newIndexOf) {
    count = 0;
    for (std::size_t k = 0; k < kCorners; ++k) {
      const bool isKnown = old[k] >= 0 && at(old[k]) < newIndexOf.size();
      all[k] = isKnown ? newIndexOf[at(old[k])] : kNoIndex;
      if (count == 0 || distinct[at(count - 1)] != all[k]) {
        distinct[at(count)] = all[k];
        sources[at(count++)] = static_cast<int>(k);
      }
    }
    count -= count > 1 && distinct[at(count - 1)] == distinct[0] ? 1 : 0;
    if (std::ranges::find(all, kNoIndex) != all.end()) {
      count = 0;
    }
  }
  [[nodiscard]] bool isFace(int wanted) const {
    return count == wanted && !hasRepeatedCorner(distinct.data(), count);
  }
};

TriangleCL asTriangle(const TriangleCL& face) { return face; }

TriangleCL asTriangle(const QuadCL& quad) {
  TriangleCL triangle(char{kTagAvailable});
  if (quad.record().normalType != 0) {
    triangle.SetNormM(quad.record().normal);
  }
  return triangle;
}

/// Builds the face lists anew on the nodes that stay.
class FaceWelder {
 public:
  FaceWelder(const Mesh& mesh, const WeldOptions& options, WeldReport& report)
      : mesh_(mesh),
        options_(options),
        report_(report),
        triangles_(listWithRoomFor<TriangleArr>(mesh.triangles.GetAvailableNumM())),
        quads_(listWithRoomFor<QuadArr>(mesh.quads.GetAvailableNumM())),
        triangleTexture_(mesh.triangleTexture.GetBoundM() > 0 || mesh.quadTexture.GetBoundM() > 0,
                         3 * triangles_.GetLengthM()),
        quadTexture_(mesh.quadTexture.GetBoundM() > 0, 4 * quads_.GetLengthM()),
        triangleSets_(options.keepRepeated ? 0 : at(triangles_.GetLengthM())),
        quadSets_(options.keepRepeated ? 0 : at(quads_.GetLengthM())) {}

  void run(ProgressSteps& steps) {
    weldAll<3>(mesh_.triangles, steps);
    weldAll<4>(mesh_.quads, steps);
  }
  /// Puts the new lists in place. Does not fail.
  void store(Mesh& mesh) && {
    mesh.triangles = std::move(triangles_);
    mesh.quads = std::move(quads_);
    mesh.triangleTexture = std::move(triangleTexture_).taken();
    mesh.quadTexture = std::move(quadTexture_).taken();
  }

 private:
  template <std::size_t kCorners>
  struct Waiting {
    bool isLive;
    MappedFace<kCorners> face;
    FaceSets<3>::Search asTriangle;
    FaceSets<4>::Search asQuad;
  };

  template <std::size_t kCorners, class Faces>
  void weldAll(const Faces& faces, ProgressSteps& steps) {
    const auto* store = faces.getCurrentItemPrtConstM();
    std::array<Waiting<kCorners>, kBlock> block;
    for (int first = 0; first < faces.GetBoundM(); first += kBlock) {
      const int count = std::min(kBlock, faces.GetBoundM() - first);
      for (int k = 0; k < count; ++k) {
        for (const int node : store[first + k].record().corners) {
          prefetch(report_.newIndexOf.data() + (at(node) < report_.newIndexOf.size() ? node : 0));
        }
      }
      for (int k = 0; k < count; ++k) {
        Waiting<kCorners>& waiting = block[at(k)];
        waiting.isLive = isLive(store[first + k]);
        if (waiting.isLive) {
          waiting.face.map(cornersOf(store[first + k]), report_.newIndexOf);
          lookAhead(waiting);
        }
      }
      for (int k = 0; k < count; ++k) {
        if (block[at(k)].isLive) {
          weldFace(first + k, store[first + k], block[at(k)]);
        }
      }
      done_ += at(count);
      steps.reach(done_);
    }
  }

  template <std::size_t kCorners>
  void lookAhead(Waiting<kCorners>& waiting) const {
    if (options_.keepRepeated) {
      return;
    }
    if (waiting.face.isFace(3)) {
      triangleSets_.lookAhead(waiting.face.distinct.data(), waiting.asTriangle);
    } else if (kCorners == 4 && waiting.face.isFace(4)) {
      quadSets_.lookAhead(waiting.face.distinct.data(), waiting.asQuad);
    }
  }

  template <class Face, std::size_t kCorners>
  void weldFace(int slot, const Face& face, Waiting<kCorners>& waiting) {
    if (waiting.face.isFace(3)) {
      report_.quadsNarrowed += kCorners == 4 ? 1 : 0;
      if (isNew(triangleSets_, waiting.asTriangle)) {
        addTriangle(slot, face, waiting.face);
      }
    } else if (kCorners == 4 && waiting.face.isFace(4)) {
      if (isNew(quadSets_, waiting.asQuad)) {
        addSame(slot, face, waiting.face);
      }
    } else {
      ++report_.facesCollapsed;
      if (options_.keepCollapsed && waiting.face.count > 0) {
        addSame(slot, face, waiting.face);
      }
    }
  }

  template <class Sets>
  bool isNew(Sets& sets, const typename Sets::Search& search) {
    if (options_.keepRepeated) {
      return true;
    }
    const int before = sets.count();
    const bool isNew = sets.findOrAdd(search) == before;
    report_.facesRepeated += isNew ? 0 : 1;
    return isNew;
  }

  template <class Face, std::size_t kCorners>
  void addTriangle(int slot, const Face& face, const MappedFace<kCorners>& mapped) {
    TriangleCL triangle = asTriangle(face);
    triangle.SetTriangleM(mapped.distinct.data());
    const int added = append(triangles_, triangle);
    for (int k = 0; triangleTexture_.isNeeded() && k < 3; ++k) {
      triangleTexture_.move(kCorners == 3 ? mesh_.triangleTexture : mesh_.quadTexture,
                            static_cast<int>(kCorners) * slot + mapped.sources[at(k)],
                            3 * added + k);
    }
    if (options_.faceMaps) {
      report_.triangleOrigins.push_back({slot, static_cast<int>(kCorners)});
    }
  }
  /// A triangle that keeps all its corners, collapsed or not.
  void addSame(int slot, const TriangleCL& face, MappedFace<3>& mapped) {
    mapped.distinct = mapped.all;
    mapped.sources = {0, 1, 2};
    addTriangle(slot, face, mapped);
  }
  void addSame(int slot, QuadCL face, const MappedFace<4>& mapped) {
    face.SetQuadM(mapped.all.data());
    const int added = append(quads_, face);
    for (int k = 0; quadTexture_.isNeeded() && k < 4; ++k) {
      quadTexture_.move(mesh_.quadTexture, 4 * slot + k, 4 * added + k);
    }
    if (options_.faceMaps) {
      report_.quadOrigins.push_back(slot);
    }
  }

  const Mesh& mesh_;
  const WeldOptions& options_;
  WeldReport& report_;
  TriangleArr triangles_;
  QuadArr quads_;
  TextureTransfer triangleTexture_;
  TextureTransfer quadTexture_;
  FaceSets<3> triangleSets_;
  FaceSets<4> quadSets_;
  std::size_t done_ = 0;
};

}  // namespace

WeldReport weld(Mesh& mesh, const WeldOptions& options) {
  return tellingRefusedMemory([&] {
    WeldReport report;
    report.toleranceUsed = resolve(options.tolerance, mesh);
    expectFinite(mesh.nodes);
    const auto boundOf = [](const auto& list) { return at(std::max(list.GetBoundM(), 0)); };
    NodeArr kept;
    {
      ProgressSteps steps(options.progress, boundOf(mesh.nodes), 0.0, 0.6);
      NodeMerger merger(mesh.nodes, report);
      merger.run(steps);
      kept = merger.kept();
    }
    ProgressSteps steps(options.progress, boundOf(mesh.triangles) + boundOf(mesh.quads), 0.6, 1.0);
    FaceWelder faces(mesh, options, report);
    faces.run(steps);
    mesh.nodes = std::move(kept);
    std::move(faces).store(mesh);
    return report;
  });
}

}  // namespace zel
