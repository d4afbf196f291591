#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <utility>

#include "support/meshes.h"
#include "zel/core/constants.h"
#include "zel/mesh/boundary.h"
#include "zel/mesh/compaction.h"
#include "zel/mesh/defects.h"
#include "zel/mesh/orientation.h"
#include "zel/mesh/weld.h"

namespace {

using namespace zel::test;

zel::WeldReport weld(Mesh& mesh, double tolerance) {
  return zel::weldMesh(mesh.nodes, mesh.triangles, mesh.quads, tolerance);
}
zel::MeshDefects defectsOf(const Mesh& mesh) {
  return zel::findDefects(mesh.nodes, mesh.triangles, mesh.quads);
}
std::vector<zel::BoundaryChain> boundaryOf(const Mesh& mesh) {
  return zel::boundaryChains(mesh.triangles, mesh.quads, mesh.nodes.GetBoundM());
}
zel::OrientationReport orient(Mesh& mesh) {
  return zel::orientConsistently(mesh.triangles, mesh.quads, mesh.nodes.GetBoundM());
}

NodeArr fiveNodesOnAParabola() {
  return nodesAt({{0, 0, 0}, {1, 1, 0}, {2, 4, 0}, {3, 9, 0}, {4, 16, 0}});
}

/// Every node against every kept one, in index order.
std::vector<int> weldByWalk(const Mesh& mesh, double tolerance) {
  std::vector<Point> kept;
  std::vector<int> newIndexOf;
  for (int node = 0; node < mesh.nodes.GetBoundM(); ++node) {
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

TEST(WeldMesh, agreesWithTheWalkAtEveryToleranceAndOrder) {
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
    const zel::WeldReport report = weld(mesh, tolerance);
    EXPECT_TRUE(report.isDone);
    EXPECT_EQ(report.newIndexOf, expected) << "tolerance " << tolerance;
    EXPECT_LE(report.largestMove, tolerance);
  }
}

TEST(WeldMesh, collapsedFacesGoAndNarrowedQuadsBecomeTriangles) {
  Mesh mesh{nodesAt({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1.001F, 0}, {1.001F, 1, 0}}),
            trianglesOf({{0, 1, 2}, {2, 5, 3}, {0, 1, 99}}),
            // The opposite corners of the last one coincide.
            quadsOf({{0, 1, 2, 3}, {0, 2, 3, 4}, {3, 4, 2, 5}, {2, 3, 5, 0}})};
  const zel::WeldReport report = weld(mesh, 0.01);
  EXPECT_EQ(report.nodesMerged, 2);
  EXPECT_EQ(report.facesCollapsed, 4);
  EXPECT_EQ(report.quadsNarrowed, 1);
  EXPECT_EQ(mesh.nodes.GetBoundM(), 4);
  EXPECT_EQ(mesh.quads.GetBoundM(), 1);
  ASSERT_EQ(mesh.triangles.GetBoundM(), 2);
  EXPECT_EQ(mesh.corners(1), (Corners{0, 2, 3}));
}

TEST(WeldMesh, badCoordinatesAreRefusedWithTheirPlace) {
  Mesh mesh = makeTetrahedron();
  mesh.addNode(NAN, 0);
  mesh.addNode(0, INFINITY);
  const zel::WeldReport report = weld(mesh, 10.0);
  EXPECT_FALSE(report.isDone);
  EXPECT_EQ(report.badNode, 4);
  EXPECT_EQ(mesh.nodes.GetBoundM(), 6);
  Mesh good = makeTetrahedron();
  EXPECT_FALSE(weld(good, -1.0).isDone);
  EXPECT_NEAR(zel::relativeTolerance(good.nodes, 0.5), std::sqrt(3.0), 1e-12);
}

TEST(Compaction, mapsLeadBothWaysAndCornersFollow) {
  Mesh mesh = makeFlatGrid(6, 6);
  const Mesh before = mesh;
  for (const int node : {3, 20, 48}) {
    mesh.nodes.DelItemM(node);
  }
  const zel::SlotMaps maps = zel::compactNodes(mesh.nodes, mesh.triangles, mesh.quads);
  ASSERT_EQ(mesh.nodes.GetBoundM(), 46);
  for (int node = 0; node < 46; ++node) {
    const int old = maps.oldOf[static_cast<std::size_t>(node)];
    EXPECT_EQ(maps.newOf[static_cast<std::size_t>(old)], node);
    EXPECT_EQ(mesh.point(node), before.point(old));
  }
  const zel::SlotMaps faces = zel::compactFaces(mesh.triangles);
  EXPECT_EQ(mesh.triangles.GetBoundM(), mesh.triangles.GetAvailableNumM());
  for (std::size_t face = 0; face < faces.oldOf.size(); ++face) {
    const auto now = mesh.corners(static_cast<int>(face));
    const auto then = before.corners(faces.oldOf[face]);
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_EQ(now[k], maps.newOf[static_cast<std::size_t>(then[k])]);
    }
  }
}

TEST(Compaction, unusedNodesAreFound) {
  Mesh mesh = makeTetrahedron();
  mesh.addNode(5, 5);
  mesh.triangles.DelItemM(0);
  EXPECT_EQ(zel::deleteUnusedNodes(mesh.nodes, mesh.triangles, mesh.quads), 1);
  EXPECT_EQ(mesh.nodes.GetAvailableNumM(), 4);
}

/// Boundary edges as the list itself counts them.
std::set<std::pair<int, int>> boundaryByCounting(const Mesh& mesh) {
  std::set<std::pair<int, int>> edges;
  for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
    const auto corners = mesh.corners(slot);
    for (std::size_t k = 0; k < 3; ++k) {
      int at = 0;
      if (mesh.triangles.JudgeBoundM(corners[k], corners[(k + 1) % 3], &at) == 1) {
        edges.insert(std::minmax({corners[k], corners[(k + 1) % 3]}));
      }
    }
  }
  return edges;
}

TEST(BoundaryChains, coverEveryBoundaryEdgeOnce) {
  Mesh mesh = makeFlatGrid(9, 7);
  for (const int slot : {10, 11, 40, 70, 71, 72}) {
    mesh.triangles.DelItemM(slot);
  }
  (void)zel::compactFaces(mesh.triangles);
  std::set<std::pair<int, int>> found;
  std::size_t edges = 0;
  for (const auto& chain : boundaryOf(mesh)) {
    EXPECT_TRUE(chain.isClosed);
    for (std::size_t i = 0; i < chain.nodes.size(); ++i) {
      found.insert(std::minmax({chain.nodes[i], chain.nodes[(i + 1) % chain.nodes.size()]}));
      ++edges;
    }
  }
  EXPECT_EQ(found, boundaryByCounting(mesh));
  EXPECT_EQ(found.size(), edges);
}

TEST(BoundaryChains, discHasOneLoopInWindingOrderFromItsFirstEdge) {
  const auto chains = boundaryOf({fiveNodesOnAParabola(), {}, quadsOf({{0, 1, 2, 3}})});
  ASSERT_EQ(chains.size(), 1U);
  EXPECT_EQ(chains[0].nodes, (std::vector<int>{0, 1, 2, 3}));
}

TEST(BoundaryChains, loopsThatMeetInANodeStayApart) {
  const Mesh mesh{fiveNodesOnAParabola(), trianglesOf({{0, 1, 2}, {2, 3, 4}})};
  const auto chains = boundaryOf(mesh);
  ASSERT_EQ(chains.size(), 2U);
  EXPECT_EQ(chains[0].nodes, (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(chains[1].nodes, (std::vector<int>{2, 3, 4}));
  EXPECT_EQ(defectsOf(mesh).bowTieNodes, 1);
}

TEST(BoundaryChains, crowdedAndMixedEdgesOpenTheChain) {
  const auto chains =
      boundaryOf({fiveNodesOnAParabola(), trianglesOf({{0, 1, 2}, {1, 0, 3}, {0, 1, 4}})});
  ASSERT_EQ(chains.size(), 3U);
  EXPECT_FALSE(chains[0].isClosed);
  EXPECT_EQ(chains[0].nodes, (std::vector<int>{1, 2, 0}));
}

TEST(Orientation, scrambledMeshesGetTheMajoritysWinding) {
  std::mt19937 random(3);
  Mesh mesh = makeFlatGrid(12, 12);
  setFaceNormals(mesh);
  int flipped = 0;
  for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
    if (random() % 3 == 0) {
      TriangleCL face = std::as_const(mesh.triangles)[slot];
      const auto [a, b, c] = mesh.corners(slot);
      face.SetTriangleM(a, c, b);
      face.NegativeNormalVectM();
      mesh.triangles.SetItemM(face, slot);
      ++flipped;
    }
  }
  const zel::OrientationReport report = orient(mesh);
  EXPECT_EQ(report.components, 1);
  EXPECT_EQ(report.facesReversed, flipped);
  EXPECT_EQ(report.twistedSeams, 0);
  for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
    EXPECT_EQ(std::as_const(mesh.triangles)[slot].record().normal[2], 1.0F);
  }
  EXPECT_EQ(defectsOf(mesh).mixedEdges, 0);
}

TEST(Orientation, moebiusStripReportsItsSeam) {
  Mesh mesh;
  constexpr int kCells = 9;
  for (int i = 0; i < kCells; ++i) {
    mesh.addNode(static_cast<float>(i), 0);
    mesh.addNode(static_cast<float>(i), 1);
  }
  for (int i = 0; i < kCells; ++i) {
    const int a = 2 * i;
    const int b = (i + 1 < kCells) ? a + 2 : 1;
    const int c = (i + 1 < kCells) ? a + 3 : 0;
    mesh.addQuad(a, b, c, a + 1);
  }
  const zel::OrientationReport report = orient(mesh);
  EXPECT_EQ(report.components, 1);
  EXPECT_EQ(report.twistedSeams, 1);
}

TEST(Defects, eachClassIsCountedApart) {
  Mesh mesh = makeTetrahedron();
  EXPECT_FALSE(defectsOf(mesh).any());
  mesh.addTriangle(2, 0, 1);  // repeats face 0 and crowds three edges
  mesh.addTriangle(0, 0, 1);  // repeated corner
  const int onLine = mesh.addNode(1, 0, 0);
  mesh.addTriangle(0, onLine, 1);  // no area: node halfway along the edge
  mesh.addTriangle(0, 1, 77);
  mesh.addNode(NAN, 1);
  const zel::MeshDefects found = defectsOf(mesh);
  EXPECT_EQ(found.duplicateFaces, 1);
  EXPECT_EQ(found.crowdedEdges, 3);
  EXPECT_EQ(found.degenerateFaces, 2);
  EXPECT_EQ(found.danglingFaces, 1);
  EXPECT_EQ(found.unusedNodes, 1);
  EXPECT_EQ(found.nonFiniteNodes, 1);
  EXPECT_EQ(found.openEdges, 2);
}

}  // namespace
