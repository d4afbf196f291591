#include "tools/zel/mesh_compare.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <span>

namespace zel::program {

namespace {

bool sameBits(std::span<const float> a, std::span<const float> b) {
  for (std::size_t k = 0; k < a.size(); ++k) {
    if (std::bit_cast<std::uint32_t>(a[k]) != std::bit_cast<std::uint32_t>(b[k])) {
      return false;
    }
  }
  return true;
}

bool hasNormals(const NodeArr& nodes, const NodeNumbering& numbering) {
  for (const int slot : numbering.slots) {
    if (normalOf(nodes, slot) != Point{}) {
      return true;
    }
  }
  return false;
}

/// Counts differences of one kind and remembers the first.
class Tally {
 public:
  void add(int number) {
    first_ = count_ == 0 ? number : first_;
    ++count_;
  }
  void report(const char* what, MeshDifference& difference) const {
    if (count_ > 0) {
      difference.findings.push_back(std::to_string(count_) + " " + what +
                                    " differ, the first is number " + std::to_string(first_));
    }
  }

 private:
  int count_ = 0;
  int first_ = 0;
};

class Comparison {
 public:
  Comparison(const Mesh& a, const Mesh& b)
      : a_(a), b_(b), numberingA_(a.nodes), numberingB_(b.nodes) {}

  /// @return whether the numbers of nodes, triangles and quads agree.
  bool compareCounts() {
    compareCount("nodes", a_.nodes.GetAvailableNumM(), b_.nodes.GetAvailableNumM());
    compareCount("triangles", a_.triangles.GetAvailableNumM(), b_.triangles.GetAvailableNumM());
    compareCount("quads", a_.quads.GetAvailableNumM(), b_.quads.GetAvailableNumM());
    return difference_.findings.empty();
  }

  void comparePoints(double tolerance, bool exactly) {
    Tally points;
    forEachNode([&](int number, int slotA, int slotB) {
      const Point a = pointOf(a_.nodes, slotA);
      const Point b = pointOf(b_.nodes, slotB);
      const bool same = sameBits(a, b);
      const double move = same ? 0.0 : distance(a, b);
      // Written so that a distance that is no number counts as too far.
      const bool accepted = exactly ? same : move <= tolerance;
      if (!accepted) {
        points.add(number);
      }
      difference_.largestMove = std::fmax(difference_.largestMove, move);
    });
    points.report("points", difference_);
  }

  void compareFaces() {
    compareCorners(a_.triangles, b_.triangles, "triangles");
    compareCorners(a_.quads, b_.quads, "quads");
  }

  void compareNormals() {
    if (hasNormals(a_.nodes, numberingA_) && hasNormals(b_.nodes, numberingB_)) {
      Tally normals;
      forEachNode([&](int number, int slotA, int slotB) {
        if (!sameBits(normalOf(a_.nodes, slotA), normalOf(b_.nodes, slotB))) {
          normals.add(number);
        }
      });
      normals.report("node normals", difference_);
    }
    compareFaceNormals(a_.triangles, b_.triangles, "triangle normals");
    compareFaceNormals(a_.quads, b_.quads, "quad normals");
  }

  void compareTextureCoords() {
    if (a_.triangleTexture.GetAvailableNumM() == 0 || b_.triangleTexture.GetAvailableNumM() == 0) {
      return;
    }
    Tally coords;
    forEachPair(a_.triangles, b_.triangles, [&](int number, int slotA, int slotB) {
      bool same = true;
      for (int corner = 0; corner < 3; ++corner) {
        TextureCoord a{};
        TextureCoord b{};
        const bool hasA = textureCoordOf(a_.triangleTexture, 3 * slotA + corner, a);
        const bool hasB = textureCoordOf(b_.triangleTexture, 3 * slotB + corner, b);
        same = same && hasA == hasB && (!hasA || sameBits(a, b));
      }
      if (!same) {
        coords.add(number);
      }
    });
    coords.report("triangles' texture coordinates", difference_);
  }

  [[nodiscard]] const MeshDifference& result() const { return difference_; }

 private:
  void compareCount(const char* what, int a, int b) {
    if (a != b) {
      difference_.findings.push_back(std::to_string(a) + " " + what + " against " +
                                     std::to_string(b));
    }
  }

  template <class Visit>
  void forEachNode(Visit visit) const {
    for (std::size_t i = 0; i < numberingA_.slots.size(); ++i) {
      visit(static_cast<int>(i), numberingA_.slots[i], numberingB_.slots[i]);
    }
  }

  /// Walks two element lists side by side over their live slots.
  template <class Elements, class Visit>
  static void forEachPair(const Elements& a, const Elements& b, Visit visit) {
    int slotB = 0;
    int number = 0;
    for (int slotA = 0; slotA < a.GetBoundM(); ++slotA) {
      if (!isLive(*a.GetItemPM(slotA))) {
        continue;
      }
      while (slotB < b.GetBoundM() && !isLive(*b.GetItemPM(slotB))) {
        ++slotB;
      }
      if (slotB == b.GetBoundM()) {
        return;
      }
      visit(number++, slotA, slotB++);
    }
  }

  template <class Faces>
  void compareCorners(const Faces& a, const Faces& b, const char* what) {
    Tally corners;
    forEachPair(a, b, [&](int number, int slotA, int slotB) {
      const auto cornersA = cornersOf(*a.GetItemPM(slotA));
      const auto cornersB = cornersOf(*b.GetItemPM(slotB));
      bool same = true;
      for (std::size_t k = 0; k < cornersA.size(); ++k) {
        same = same && numberOf(numberingA_, cornersA[k]) == numberOf(numberingB_, cornersB[k]);
      }
      if (!same) {
        corners.add(number);
      }
    });
    corners.report(what, difference_);
  }

  /// Face normals are compared where both faces were given one.
  template <class Faces>
  void compareFaceNormals(const Faces& a, const Faces& b, const char* what) {
    Tally normals;
    forEachPair(a, b, [&](int number, int slotA, int slotB) {
      char typeA = 0;
      char typeB = 0;
      Point normalA{};
      Point normalB{};
      a.GetItemPM(slotA)->GetNormTypeM(&typeA);
      b.GetItemPM(slotB)->GetNormTypeM(&typeB);
      a.GetItemPM(slotA)->GetNormM(normalA.data());
      b.GetItemPM(slotB)->GetNormM(normalB.data());
      if (typeA != 0 && typeB != 0 && (typeA != typeB || !sameBits(normalA, normalB))) {
        normals.add(number);
      }
    });
    normals.report(what, difference_);
  }

  static int numberOf(const NodeNumbering& numbering, int slot) {
    return numbering.numbers[static_cast<std::size_t>(slot)];
  }

  const Mesh& a_;
  const Mesh& b_;
  NodeNumbering numberingA_;
  NodeNumbering numberingB_;
  MeshDifference difference_;
};

}  // namespace

MeshDifference compareExactly(const Mesh& a, const Mesh& b) {
  Comparison comparison(a, b);
  if (comparison.compareCounts()) {
    comparison.comparePoints(0, true);
    comparison.compareFaces();
    comparison.compareNormals();
    comparison.compareTextureCoords();
  }
  return comparison.result();
}

MeshDifference compareWithin(const Mesh& a, const Mesh& b, double tolerance) {
  Comparison comparison(a, b);
  if (comparison.compareCounts()) {
    comparison.comparePoints(tolerance, false);
    comparison.compareFaces();
  }
  return comparison.result();
}

}  // namespace zel::program
