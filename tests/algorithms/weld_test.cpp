// Welding and compacting against models that walk.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>

#include "support/meshes.h"
#include "zel/algorithms/compact.h"
#include "zel/algorithms/measure.h"
#include "zel/algorithms/weld.h"
#include "zel/core/error.h"

namespace {

using namespace zel::test;

/// A face of a mesh of which everything is known by value.
struct PlainFace {
  std::vector<int> corners;
  std::vector<zel::Float2> uv;  // -1: none
  bool operator==(const PlainFace&) const = default;
};

template <class Faces>
std::vector<PlainFace> facesOf(const Faces& faces, const Point2DArr& texture) {
  std::vector<PlainFace> found;
  zel::forEachFace(faces, [&](int slot, const auto& corners) {
    PlainFace face{{corners.begin(), corners.end()}, {}};
    for (int k = 0; k < static_cast<int>(corners.size()); ++k) {
      face.uv.push_back({-1, -1});
      (void)zel::textureCoordOf(texture, static_cast<int>(corners.size()) * slot + k,
                                face.uv.back());
    }
    found.push_back(face);
  });
  return found;
}

/// Triangles and quads on a few nodes about a few places, some deleted, most with texture.
Mesh crowdedMesh(std::mt19937& random) {
  Mesh mesh;
  std::uniform_real_distribution<float> jitter(-0.004F, 0.004F);
  for (int node = 0; node < 40; ++node) {
    mesh.addNode(static_cast<float>(random() % 3) + jitter(random),
                 static_cast<float>(random() % 3) + jitter(random), jitter(random));
  }
  const auto node = [&] { return static_cast<int>(random() % 42) - 1; };
  for (int face = 0; face < 120; ++face) {
    mesh.addTriangle(node(), node(), node());
    mesh.addQuad(node(), node(), node(), node());
    for (int k = 0; k < 4 && random() % 8 != 0; ++k) {
      const auto u = static_cast<float>(face * 10 + k);
      if (k < 3) {
        zel::setTextureCoord(mesh.triangleTexture, 3 * face + k, {u, 1});
      }
      zel::setTextureCoord(mesh.quadTexture, 4 * face + k, {u, 2});
    }
  }
  for (const int slot : {3, 50, 119}) {
    mesh.triangles.DelItemM(slot);
    mesh.quads.DelItemM(slot);
  }
  mesh.nodes.DelItemM(7);
  return mesh;
}

/// Every node against every kept one, in index order.
std::vector<int> weldByWalk(const Mesh& mesh, double tolerance) {
  std::vector<Point> kept;
  std::vector<int> newIndexOf;
  for (int node = 0; node < mesh.nodes.GetBoundM(); ++node) {
    if (tagOf(mesh.nodes, node) != zel::kTagAvailable) {
      newIndexOf.push_back(zel::kNoIndex);
      continue;
    }
    const auto p = mesh.point(node);
    const auto found = std::find_if(kept.begin(), kept.end(),
                                    [&](const auto& k) { return distance(k, p) <= tolerance; });
    newIndexOf.push_back(static_cast<int>(found - kept.begin()));
    if (found == kept.end()) {
      kept.push_back(p);
    }
  }
  return newIndexOf;
}

/// What is left of faces, and which they were.
struct WeldedFaces {
  std::vector<PlainFace> triangles, quads;
  int collapsed = 0, repeated = 0, narrowed = 0;
};

WeldedFaces weldFacesByWalk(const Mesh& mesh, const std::vector<int>& newIndexOf,
                            const zel::WeldOptions& options) {
  WeldedFaces welded;
  std::set<std::multiset<int>> known;
  const auto add = [&](const PlainFace& face) {
    if (!options.keepRepeated && !known.emplace(face.corners.begin(), face.corners.end()).second) {
      ++welded.repeated;
    } else {
      (face.corners.size() == 3 ? welded.triangles : welded.quads).push_back(face);
    }
  };
  auto faces = facesOf(mesh.triangles, mesh.triangleTexture);
  const auto quads = facesOf(mesh.quads, mesh.quadTexture);
  faces.insert(faces.end(), quads.begin(), quads.end());
  for (PlainFace face : faces) {
    const std::size_t before = face.corners.size();
    bool isDangling = false;
    for (int& corner : face.corners) {
      corner = corner < 0 || corner >= mesh.nodes.GetBoundM()
                   ? zel::kNoIndex
                   : newIndexOf[static_cast<std::size_t>(corner)];
      isDangling = isDangling || corner == zel::kNoIndex;
    }
    PlainFace left = face;
    for (std::size_t k = 1; k < left.corners.size();) {
      const bool isTwin = left.corners[k] == left.corners[k - 1];
      const bool isLastTwin = k + 1 == left.corners.size() && left.corners[k] == left.corners[0];
      if (isTwin || isLastTwin) {
        left.corners.erase(left.corners.begin() + static_cast<std::ptrdiff_t>(k));
        left.uv.erase(left.uv.begin() + static_cast<std::ptrdiff_t>(k));
      } else {
        ++k;
      }
    }
    const std::set<int> distinct(left.corners.begin(), left.corners.end());
    if (!isDangling && distinct.size() == left.corners.size() && distinct.size() >= 3) {
      welded.narrowed += distinct.size() < before ? 1 : 0;
      add(left);
    } else {
      ++welded.collapsed;
      if (options.keepCollapsed && !isDangling) {
        (before == 3 ? welded.triangles : welded.quads).push_back(face);
      }
    }
  }
  return welded;
}

TEST(Weld, agreesWithTheWalkAtEveryToleranceAndOrder) {
  std::mt19937 random(99);
  std::uniform_real_distribution<float> uniform(-1.0F, 1.0F);
  for (const double tolerance : {0.0, 1e-6, 0.01, 0.1, 0.5, 10.0}) {
    Mesh mesh;
    for (int i = 0; i < 600; ++i) {
      const float x = uniform(random);
      mesh.addNode(i % 3 == 0 ? -0.0F : x, uniform(random), uniform(random));
      if (i % 4 == 0) {
        const auto p = mesh.point(i / 2);
        mesh.addNode(p[0] == 0.0F ? 0.0F : p[0], p[1], p[2]);
      }
    }
    const std::vector<int> expected = weldByWalk(mesh, tolerance);
    const zel::WeldReport report = zel::weld(mesh, {.tolerance = zel::Absolute(tolerance)});
    EXPECT_EQ(report.newIndexOf, expected) << "tolerance " << tolerance;
    EXPECT_LE(report.largestMove, tolerance);
    EXPECT_EQ(report.toleranceUsed, tolerance);
    EXPECT_EQ(mesh.nodes.GetBoundM(), 750 - report.nodesMerged);
  }
}

TEST(Weld, facesAndTheirTextureAgreeWithTheWalk) {
  std::mt19937 random(7);
  int seen[3] = {};
  for (int round = 0; round < 40; ++round) {
    Mesh mesh = crowdedMesh(random);
    const zel::WeldOptions options{.tolerance = zel::Absolute(0.02),
                                   .keepRepeated = round % 2 == 1,
                                   .keepCollapsed = round % 4 > 1,
                                   .faceMaps = true};
    const auto expected = weldFacesByWalk(mesh, weldByWalk(mesh, 0.02), options);
    const Mesh before = mesh;
    const zel::WeldReport report = zel::weld(mesh, options);
    const auto triangles = facesOf(mesh.triangles, mesh.triangleTexture);
    EXPECT_EQ(triangles, expected.triangles);
    EXPECT_EQ(facesOf(mesh.quads, mesh.quadTexture), expected.quads);
    EXPECT_EQ(report.facesCollapsed, expected.collapsed);
    EXPECT_EQ(report.facesRepeated, expected.repeated);
    EXPECT_EQ(report.quadsNarrowed, expected.narrowed);
    EXPECT_EQ(mesh.validate(), "");
    EXPECT_TRUE(mesh.isCompact());
    ASSERT_EQ(report.triangleOrigins.size(), triangles.size());
    ASSERT_EQ(report.quadOrigins.size(), expected.quads.size());
    for (std::size_t face = 0; face < triangles.size(); ++face) {
      const auto [slot, corners] = report.triangleOrigins[face];
      const float first = triangles[face].uv[0][0];
      EXPECT_TRUE(first < 0 || static_cast<int>(first) / 10 == slot) << corners;
    }
    seen[0] += report.facesRepeated;
    seen[1] += report.facesCollapsed;
    seen[2] += report.quadsNarrowed;
  }
  EXPECT_GT(*std::min_element(seen, seen + 3), 40);
}

TEST(Weld, whatCannotBeWeldedIsRefusedAndLeftAlone) {
  const auto codeOf = [](Mesh& mesh, const zel::WeldOptions& options) {
    try {
      zel::weld(mesh, options);
    } catch (const zel::Error& error) {
      EXPECT_NE(std::string(error.what()), "");
      return static_cast<int>(error.code());
    }
    return 0;
  };
  Mesh mesh = makeTetrahedron();
  const int bad = mesh.addNode(NAN, 0);
  for (const double tolerance : {-1.0, double{NAN}, double{INFINITY}}) {
    EXPECT_EQ(codeOf(mesh, {.tolerance = zel::Absolute(tolerance)}), 2);
    EXPECT_EQ(codeOf(mesh, {.tolerance = zel::Relative(tolerance)}), 2);
  }
  EXPECT_EQ(codeOf(mesh, {.tolerance = zel::Absolute(10)}), 3);
  EXPECT_EQ(mesh.nodes.GetBoundM(), 5);
  mesh.nodes.DelItemM(bad);
  EXPECT_EQ(codeOf(mesh, {}), 0);
}

TEST(Tolerance, relativeOnesFollowTheSizeButNotBelowTheLastPlace) {
  Mesh mesh = makeTetrahedron();
  EXPECT_NEAR(zel::resolve(zel::Relative(0.5), mesh), std::sqrt(3.0), 1e-12);
  EXPECT_EQ(zel::resolve(zel::Absolute(1e-30), mesh), 1e-30);
  EXPECT_EQ(zel::resolve(zel::Relative(0), mesh), 0);
  EXPECT_EQ(zel::resolve(zel::Relative(1), Mesh()), 2 * std::ldexp(1.0, -149));
  Mesh far(nodesAt({{-4096, 0, 0}, {-4096, 1, 0}}), {});
  EXPECT_EQ(zel::resolve(zel::kDefaultTolerance, far), 2 * std::ldexp(1.0, -11));
  const float huge = std::numeric_limits<float>::max();
  far.addNode(huge, 0);
  EXPECT_EQ(zel::resolve(zel::Relative(1e-12), far), 2 * std::ldexp(1.0, 104));
}

TEST(Compact, mapsLeadBothWaysAndFacesFollow) {
  std::mt19937 random(5);
  for (int round = 0; round < 20; ++round) {
    Mesh mesh = crowdedMesh(random);
    const Mesh before = mesh;
    const bool dropUnused = round % 2 == 1;
    const zel::CompactReport report = zel::compact(mesh, {.dropUnusedNodes = dropUnused});
    EXPECT_TRUE(mesh.isCompact());
    EXPECT_EQ(mesh.validate(), "");
    std::set<int> used;
    const auto expectSame = [&](const auto& faces, const auto& all, const zel::SlotMaps& maps) {
      ASSERT_EQ(faces.size(), maps.oldOf.size());
      for (std::size_t face = 0; face < faces.size(); ++face) {
        PlainFace now = faces[face];
        for (int& corner : now.corners) {
          corner = report.nodes.oldOf[static_cast<std::size_t>(corner)];
          used.insert(corner);
        }
        EXPECT_EQ(maps.newOf[static_cast<std::size_t>(maps.oldOf[face])], static_cast<int>(face));
        EXPECT_NE(std::find(all.begin(), all.end(), now), all.end());
      }
    };
    expectSame(facesOf(mesh.triangles, mesh.triangleTexture),
               facesOf(before.triangles, before.triangleTexture), report.triangles);
    expectSame(facesOf(mesh.quads, mesh.quadTexture), facesOf(before.quads, before.quadTexture),
               report.quads);
    EXPECT_EQ(mesh.triangles.GetBoundM() + mesh.quads.GetBoundM() + report.danglingFaces, 234);
    EXPECT_EQ(mesh.nodes.GetBoundM(), dropUnused ? static_cast<int>(used.size()) : 39);
    for (int node = 0; node < mesh.nodes.GetBoundM(); ++node) {
      const int old = report.nodes.oldOf[static_cast<std::size_t>(node)];
      EXPECT_EQ(report.nodes.newOf[static_cast<std::size_t>(old)], node);
      EXPECT_EQ(mesh.point(node), before.point(old));
    }
  }
}

}  // namespace
