#include "zel/algorithms/normals.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "zel/algorithms/detail/face_normals.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/progress_steps.h"

namespace zel {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

bool hasNodes(const Mesh& mesh, std::span<const int> corners) {
  return std::ranges::all_of(corners,
                             [&](int node) { return node >= 0 && node < mesh.nodes.GetBoundM(); });
}

/// Sums of the faces' normals at the nodes; whatever its weight, a normal's length there tells
/// nothing.
class NodeNormals {
 public:
  NodeNormals(const Mesh& mesh, NormalWeight weight)
      : nodes_(mesh.nodes.getCurrentItemPrtConstM()),
        weight_(weight),
        sums_(at(std::max(mesh.nodes.GetBoundM(), 0))),
        isUsed_(sums_.size(), false) {}

  template <std::size_t kCorners>
  void add(const std::array<int, kCorners>& corners) {
    const Double3 normal = areaNormal(nodes_, corners);
    const Double3 direction = weight_ == NormalWeight::kAngle ? unitVector(normal) : normal;
    for (std::size_t k = 0; k < kCorners; ++k) {
      const std::size_t node = at(corners[k]);
      const double share = weight_ == NormalWeight::kAngle ? angleAt(corners, k) : 1.0;
      const bool isMean = isUsed_[node] && weight_ != NormalWeight::kFlat;
      for (std::size_t axis = 0; axis < 3; ++axis) {
        sums_[node][axis] = (isMean ? sums_[node][axis] : 0.0) + share * direction[axis];
      }
      isUsed_[node] = true;
    }
  }

  /// Does not fail.
  void store(NodeArr& nodes) const {
    for (std::size_t node = 0; node < sums_.size(); ++node) {
      if (isUsed_[node]) {
        nodes.SetNodeNormM(static_cast<int>(node), rounded(unitVector(sums_[node])).data());
      }
    }
  }

 private:
  template <std::size_t kCorners>
  [[nodiscard]] double angleAt(const std::array<int, kCorners>& corners, std::size_t k) const {
    const float* point = nodes_[corners[k]].point();
    const Double3 u = between(point, nodes_[corners[(k + 1) % kCorners]].point());
    const Double3 v = between(point, nodes_[corners[(k + kCorners - 1) % kCorners]].point());
    const double angle = std::atan2(length(cross(u, v)), dot(u, v));
    return std::isnan(angle) ? 0.0 : angle;
  }

  const NodeCL* nodes_;
  NormalWeight weight_;
  std::vector<Double3> sums_;
  std::vector<bool> isUsed_;
};

}  // namespace

void giveFaceNormals(Mesh& mesh) {
  const NodeCL* nodes = std::as_const(mesh.nodes).getCurrentItemPrtConstM();
  const auto give = [&](auto& faces) {
    forEachFace(std::as_const(faces), [&](int slot, const auto& corners) {
      if (hasNodes(mesh, corners)) {
        auto face = std::as_const(faces).ElementAtM(slot);
        face.SetNormM(rounded(unitVector(areaNormal(nodes, corners))).data());
        faces.SetItemM(face, slot);
      }
    });
  };
  give(mesh.triangles);
  give(mesh.quads);
}

void giveNormals(Mesh& mesh, const NormalOptions& options) {
  tellingRefusedMemory([&] {
    const auto faces =
        at(std::max(mesh.triangles.GetBoundM(), 0)) + at(std::max(mesh.quads.GetBoundM(), 0));
    ProgressSteps steps(options.progress, faces);
    NodeNormals normals(mesh, options.weight);
    forEachFace(mesh, [&](int /*slot*/, const auto& corners) {
      if (hasNodes(mesh, corners)) {
        normals.add(corners);
      }
      steps.advance();
    });
    giveFaceNormals(mesh);
    normals.store(mesh.nodes);
  });
}

}  // namespace zel
