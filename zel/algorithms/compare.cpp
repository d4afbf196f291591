#include "zel/algorithms/compare.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <span>
#include <utility>

#include "zel/algorithms/detail/double_vectors.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/mesh/mesh.h"

namespace zel {
namespace {

bool sameBits(std::span<const float> a, std::span<const float> b) {
  return std::ranges::equal(a, b, [](float x, float y) {
    return std::bit_cast<std::uint32_t>(x) == std::bit_cast<std::uint32_t>(y);
  });
}

bool hasNormals(const NodeArr& nodes) {
  const NodeCL* store = nodes.getCurrentItemPrtConstM();
  return std::any_of(store, store + std::max(nodes.GetBoundM(), 0), [](const NodeCL& node) {
    return isLive(node) &&
           std::any_of(node.normal(), node.normal() + 3, [](float x) { return x != 0.0F; });
  });
}

/// The slots of the live elements and, per slot, which of them it is.
struct Numbering {
  template <class List>
  explicit Numbering(const List& list)
      : numbers(static_cast<std::size_t>(std::max(list.GetBoundM(), 0)), kNoIndex) {
    const auto* store = list.getCurrentItemPrtConstM();
    for (std::size_t slot = 0; slot < numbers.size(); ++slot) {
      if (isLive(store[slot])) {
        numbers[slot] = count++;
      }
    }
  }
  [[nodiscard]] int of(int slot) const {
    const bool isKnown = slot >= 0 && static_cast<std::size_t>(slot) < numbers.size();
    return isKnown ? numbers[static_cast<std::size_t>(slot)] : kNoIndex;
  }

  std::vector<int> numbers;
  int count = 0;
};

template <class List>
std::array<int, 2> liveCounts(const List& a, const List& b) {
  return {Numbering(a).count, Numbering(b).count};
}

class Comparison {
 public:
  Comparison(const Mesh& a, const Mesh& b, const CompareOptions& options)
      : a_(a), b_(b), tolerance_(options.tolerance), nodesOfA_(a.nodes), nodesOfB_(b.nodes) {
    found_.nodes = {nodesOfA_.count, nodesOfB_.count};
    found_.triangles = liveCounts(a.triangles, b.triangles);
    found_.quads = liveCounts(a.quads, b.quads);
    if (found_.any()) {
      return;
    }
    ProgressSteps steps(options.progress, static_cast<std::size_t>(found_.nodes[0]) +
                                              static_cast<std::size_t>(found_.triangles[0]) +
                                              static_cast<std::size_t>(found_.quads[0]));
    compareNodes(steps);
    compareFaces(a.triangles, b.triangles, a.triangleTexture, b.triangleTexture,
                 {found_.triangleCorners, found_.triangleNormals, found_.triangleTexture}, steps);
    compareFaces(a.quads, b.quads, a.quadTexture, b.quadTexture,
                 {found_.quadCorners, found_.quadNormals, found_.quadTexture}, steps);
  }

  [[nodiscard]] const MeshDifference& found() const { return found_; }

 private:
  static void tell(Mismatch& mismatch, bool isSame, int number) {
    if (!isSame) {
      mismatch.first = mismatch.count++ == 0 ? number : mismatch.first;
    }
  }

  /// Walks two lists side by side over their live elements.
  template <class List, class Visit>
  static void forEachPair(const List& a, const List& b, Visit visit) {
    const auto* storeA = a.getCurrentItemPrtConstM();
    const auto* storeB = b.getCurrentItemPrtConstM();
    int number = 0;
    for (int slotA = 0, slotB = 0; slotA < a.GetBoundM(); ++slotA) {
      if (isLive(storeA[slotA])) {
        while (!isLive(storeB[slotB])) {
          ++slotB;
        }
        visit(number++, slotA, slotB++);
      }
    }
  }

  void compareNodes(ProgressSteps& steps) {
    const bool hasBothNormals = !tolerance_ && hasNormals(a_.nodes) && hasNormals(b_.nodes);
    const NodeCL* storeA = a_.nodes.getCurrentItemPrtConstM();
    const NodeCL* storeB = b_.nodes.getCurrentItemPrtConstM();
    forEachPair(a_.nodes, b_.nodes, [&](int number, int slotA, int slotB) {
      const NodeCL& a = storeA[slotA];
      const NodeCL& b = storeB[slotB];
      const bool isSame = sameBits({a.point(), 3}, {b.point(), 3});
      const double move = isSame ? 0.0 : distanceBetween(a.point(), b.point());
      // A distance that is no number is too far.
      tell(found_.points, tolerance_ ? move <= *tolerance_ : isSame, number);
      found_.largestMove = std::fmax(found_.largestMove, move);
      tell(found_.nodeNormals, !hasBothNormals || sameBits({a.normal(), 3}, {b.normal(), 3}),
           number);
      steps.advance();
    });
  }

  struct FaceMismatches {
    Mismatch& corners;
    Mismatch& normals;
    Mismatch& texture;
  };

  template <class Faces>
  void compareFaces(const Faces& a, const Faces& b, const Point2DArr& textureA,
                    const Point2DArr& textureB, FaceMismatches found, ProgressSteps& steps) {
    const bool hasTexture = textureA.GetAvailableNumM() > 0 && textureB.GetAvailableNumM() > 0;
    const auto* storeA = a.getCurrentItemPrtConstM();
    const auto* storeB = b.getCurrentItemPrtConstM();
    forEachPair(a, b, [&](int number, int slotA, int slotB) {
      const auto& faceA = storeA[slotA].record();
      const auto& faceB = storeB[slotB].record();
      tell(found.corners,
           std::ranges::equal(faceA.corners, faceB.corners,
                              [&](int x, int y) { return nodesOfA_.of(x) == nodesOfB_.of(y); }),
           number);
      if (!tolerance_) {
        const bool hasNormals = faceA.normalType != 0 && faceB.normalType != 0;
        tell(found.normals,
             !hasNormals ||
                 (faceA.normalType == faceB.normalType && sameBits(faceA.normal, faceB.normal)),
             number);
        constexpr int kCorners = std::remove_cvref_t<decltype(faceA)>::kCorners;
        tell(found.texture, !hasTexture || sameTexture<kCorners>(textureA, slotA, textureB, slotB),
             number);
      }
      steps.advance();
    });
  }

  template <int kCorners>
  static bool sameTexture(const Point2DArr& a, int slotA, const Point2DArr& b, int slotB) {
    bool isSame = true;
    for (int k = 0; k < kCorners; ++k) {
      Float2 coordA{};
      Float2 coordB{};
      const bool hasA = textureCoordOf(a, kCorners * slotA + k, coordA);
      const bool hasB = textureCoordOf(b, kCorners * slotB + k, coordB);
      isSame = isSame && hasA == hasB && sameBits(coordA, coordB);
    }
    return isSame;
  }

  const Mesh& a_;
  const Mesh& b_;
  std::optional<double> tolerance_;
  Numbering nodesOfA_;
  Numbering nodesOfB_;
  MeshDifference found_;
};

}  // namespace

bool MeshDifference::any() const {
  const auto differ = [](const std::array<int, 2>& counts) { return counts[0] != counts[1]; };
  return differ(nodes) || differ(triangles) || differ(quads) ||
         points.count + triangleCorners.count + quadCorners.count + nodeNormals.count +
                 triangleNormals.count + quadNormals.count + triangleTexture.count +
                 quadTexture.count >
             0;
}

std::vector<std::string> MeshDifference::texts() const {
  std::vector<std::string> lines;
  const auto addCounts = [&](const std::array<int, 2>& counts, const char* what) {
    if (counts[0] != counts[1]) {
      lines.push_back(std::to_string(counts[0]) + " " + what + " against " +
                      std::to_string(counts[1]));
    }
  };
  const auto add = [&](const Mismatch& mismatch, const char* what) {
    if (mismatch.count > 0) {
      lines.push_back(std::to_string(mismatch.count) + " " + what +
                      " differ, the first is number " + std::to_string(mismatch.first));
    }
  };
  addCounts(nodes, "nodes");
  addCounts(triangles, "triangles");
  addCounts(quads, "quads");
  add(points, "points");
  add(triangleCorners, "triangles");
  add(quadCorners, "quads");
  add(nodeNormals, "node normals");
  add(triangleNormals, "triangle normals");
  add(quadNormals, "quad normals");
  add(triangleTexture, "triangles' texture coordinates");
  add(quadTexture, "quads' texture coordinates");
  return lines;
}

MeshDifference compare(const Mesh& a, const Mesh& b, const CompareOptions& options) {
  if (options.tolerance && !(*options.tolerance >= 0.0)) {
    throw Error(ErrorCode::kArgument, "cannot compare", "the tolerance must not be negative");
  }
  return tellingRefusedMemory([&] { return Comparison(a, b, options).found(); });
}

}  // namespace zel
