#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <utility>

#include "support/meshes.h"
#include "zel/algorithms/boundary.h"
#include "zel/algorithms/compact.h"
#include "zel/algorithms/defects.h"
#include "zel/algorithms/measure.h"
#include "zel/algorithms/orient.h"

namespace {

using namespace zel::test;

NodeArr fiveNodesOnAParabola() {
  return nodesAt({{0, 0, 0}, {1, 1, 0}, {2, 4, 0}, {3, 9, 0}, {4, 16, 0}});
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
  (void)zel::compact(mesh);
  std::set<std::pair<int, int>> found;
  std::size_t edges = 0;
  for (const auto& chain : zel::boundaryChains(mesh)) {
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
  const auto chains =
      zel::boundaryChains(Mesh(fiveNodesOnAParabola(), {}, quadsOf({{0, 1, 2, 3}})));
  ASSERT_EQ(chains.size(), 1U);
  EXPECT_EQ(chains[0].nodes, (std::vector<int>{0, 1, 2, 3}));
}

TEST(BoundaryChains, loopsThatMeetInANodeStayApart) {
  const Mesh mesh{fiveNodesOnAParabola(), trianglesOf({{0, 1, 2}, {2, 3, 4}})};
  const auto chains = zel::boundaryChains(mesh);
  ASSERT_EQ(chains.size(), 2U);
  EXPECT_EQ(chains[0].nodes, (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(chains[1].nodes, (std::vector<int>{2, 3, 4}));
  EXPECT_EQ(zel::findDefects(mesh).bowTieNodes, 1);
}

TEST(BoundaryChains, crowdedAndMixedEdgesOpenTheChain) {
  const auto chains = zel::boundaryChains(
      Mesh(fiveNodesOnAParabola(), trianglesOf({{0, 1, 2}, {1, 0, 3}, {0, 1, 4}})));
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
  const zel::OrientReport report = zel::orient(mesh);
  EXPECT_EQ(report.components, 1);
  EXPECT_EQ(report.facesReversed, flipped);
  EXPECT_EQ(report.twistedSeams, 0);
  for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
    EXPECT_EQ(std::as_const(mesh.triangles)[slot].record().normal[2], 1.0F);
  }
  EXPECT_EQ(zel::findDefects(mesh).mixedEdges, 0);
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
  const zel::OrientReport report = zel::orient(mesh);
  EXPECT_EQ(report.components, 1);
  EXPECT_EQ(report.twistedSeams, 1);
}

TEST(Defects, eachClassIsCountedApart) {
  Mesh mesh = makeTetrahedron();
  EXPECT_FALSE(zel::findDefects(mesh).any());
  mesh.addTriangle(2, 0, 1);  // repeats face 0 and crowds three edges
  mesh.addTriangle(0, 0, 1);  // repeated corner
  const int onLine = mesh.addNode(1, 0, 0);
  mesh.addTriangle(0, onLine, 1);  // no area: node halfway along the edge
  mesh.addTriangle(0, 1, 77);
  mesh.addNode(NAN, 1);
  const zel::Defects found = zel::findDefects(mesh);
  EXPECT_EQ(found.duplicateFaces, 1);
  EXPECT_EQ(found.crowdedEdges, 3);
  EXPECT_EQ(found.degenerateFaces, 2);
  EXPECT_EQ(found.danglingFaces, 1);
  EXPECT_EQ(found.unusedNodes, 1);
  EXPECT_EQ(found.nonFiniteNodes, 1);
  EXPECT_EQ(found.openEdges, 2);
}

TEST(Defects, listsNameWhatIsCounted) {
  Mesh mesh = makeTetrahedron();
  mesh.addTriangle(2, 0, 1);
  mesh.addTriangle(0, 0, 1);
  mesh.addTriangle(0, 1, 77);
  mesh.addNode(NAN, 1);
  mesh.addQuad(1, 0, 2, 3);
  const zel::Defects found = zel::findDefects(mesh, {.list = true});
  using Faces = std::vector<zel::FaceRef>;
  EXPECT_EQ(found.lists.duplicateFaces, (Faces{{4, 3}}));
  EXPECT_EQ(found.lists.degenerateFaces, (Faces{{5, 3}}));
  EXPECT_EQ(found.lists.danglingFaces, (Faces{{6, 3}}));
  EXPECT_EQ(found.lists.unusedNodes, std::vector<int>{4});
  EXPECT_EQ(found.lists.nonFiniteNodes, std::vector<int>{4});
  EXPECT_EQ(found.lists.crowdedEdges.size(), static_cast<std::size_t>(found.crowdedEdges));
  for (const auto& [from, to] : found.lists.crowdedEdges) {
    int last = 0;
    EXPECT_GT(mesh.triangles.JudgeBoundM(from, to, &last) + mesh.quads.JudgeBoundM(from, to, &last),
              2);
  }
  EXPECT_TRUE(zel::findDefects(mesh).lists.crowdedEdges.empty());
}

/// Two tetrahedra, of which the second looks inward, and an open triangle.
Mesh solidAndCavity() {
  Mesh mesh = makeTetrahedron();
  for (int node = 0; node < 4; ++node) {
    const Point p = mesh.point(node);
    mesh.addNode(1000 + p[0] / 2, p[1] / 2, p[2] / 2);
  }
  for (int face = 0; face < 4; ++face) {
    const auto [a, b, c] = mesh.corners(face);
    mesh.addTriangle(a + 4, c + 4, b + 4);
  }
  mesh.addTriangle(mesh.addNode(50, 0), mesh.addNode(51, 0), mesh.addNode(50, 1));
  return mesh;
}

TEST(Orientation, closedComponentsAreTurnedOutward) {
  Mesh mesh = solidAndCavity();
  EXPECT_EQ(zel::findDefects(mesh, {.list = true}).lists.insideOutComponents,
            (std::vector<zel::FaceRef>{{4, 3}}));
  // One face of the first solid against the others must not matter.
  const auto [a, b, c] = mesh.corners(2);
  mesh.triangles.SetItemM(triangleOf(a, c, b), 2);
  const zel::OrientReport report = zel::orient(mesh, {.outward = true});
  EXPECT_EQ(report.facesReversed, 5);
  EXPECT_EQ(report.componentsTurned, 1);
  EXPECT_EQ(zel::findDefects(mesh).insideOutComponents, 0);
  EXPECT_NEAR(zel::measure(mesh).signedVolume, 8.0 / 3 * (1 + 1.0 / 8), 1e-2);
  zel::reverse(mesh);
  EXPECT_EQ(zel::findDefects(mesh).insideOutComponents, 2);
  EXPECT_EQ(zel::findDefects(mesh).mixedEdges, 0);
}

TEST(Orientation, textureCoordinatesStayAtTheirNodes) {
  Mesh mesh{nodesAt({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}), trianglesOf({{0, 1, 2}}),
            quadsOf({{0, 1, 2, 3}})};
  for (int k = 0; k < 3; ++k) {
    zel::setTextureCoord(mesh.quadTexture, k, {static_cast<float>(k), 0});
  }
  zel::setTextureCoord(mesh.triangleTexture, 1, {1, 0});
  zel::reverse(mesh);
  const auto expectAtNodes = [](const auto& corners, const Point2DArr& texture) {
    for (int k = 0; k < static_cast<int>(corners.size()); ++k) {
      zel::Float2 uv{-1, -1};
      if (zel::textureCoordOf(texture, k, uv)) {
        EXPECT_EQ(uv[0], static_cast<float>(corners[static_cast<std::size_t>(k)]));
      }
    }
  };
  expectAtNodes(zel::cornersOf(mesh.triangles.ElementAtM(0)), mesh.triangleTexture);
  expectAtNodes(zel::cornersOf(mesh.quads.ElementAtM(0)), mesh.quadTexture);
  EXPECT_EQ(mesh.quadTexture.GetAvailableNumM(), 3);
  EXPECT_EQ(mesh.triangleTexture.GetAvailableNumM(), 1);
}

TEST(Measure, solidsHaveTheirClosedForms) {
  const zel::Measures one = zel::measure(makeTetrahedron());
  const double edge = std::sqrt(8.0);
  EXPECT_NEAR(one.area, std::sqrt(3.0) * 8, 1e-12);
  EXPECT_NEAR(one.signedVolume, 8.0 / 3, 1e-12);
  EXPECT_EQ(one.edges, 6);
  for (const double length :
       {one.shortestEdge, one.meanEdge, one.longestEdge, zel::shortestEdgeOf(makeTetrahedron())}) {
    EXPECT_NEAR(length, edge, 1e-12);
  }
  EXPECT_TRUE(one.isClosed() && one.isOriented());
  EXPECT_EQ(one.bounds.low, (Point{-1, -1, -1}));
  EXPECT_EQ(one.bounds.high, (Point{1, 1, 1}));
  const zel::Measures grid = zel::measure(makeFlatGrid(4, 2));
  EXPECT_NEAR(grid.centroid[0], 2, 1e-12);
  EXPECT_NEAR(grid.centroid[1], 1, 1e-12);
  EXPECT_EQ(grid.openEdges, 12);
  EXPECT_EQ(grid.boundaryLoops, 1);
  EXPECT_EQ(grid.components, 1);
  EXPECT_EQ(zel::measure(Mesh()).meanEdge, 0);
  EXPECT_TRUE(zel::measure(Mesh()).bounds.isEmpty);
}

/// Edges of faces paired by looking at all of them.
TEST(HalfEdges, agreeWithTheWalkOverAllPairs) {
  std::mt19937 random(11);
  for (int round = 0; round < 60; ++round) {
    Mesh mesh;
    const auto nodes = 4 + random() % 12;
    for (std::size_t i = 0; i < nodes; ++i) {
      mesh.addNode(0, 0);
    }
    const auto node = [&] { return static_cast<int>(random() % (nodes + 1)); };
    for (int face = 0; face < 12; ++face) {
      mesh.addTriangle(node(), node(), node());
      mesh.addQuad(node(), node(), node(), node());
    }
    mesh.triangles.DelItemM(4);
    const zel::HalfEdges edges(mesh);
    for (int e = 0; e < edges.count(); ++e) {
      std::vector<int> along;
      for (int other = 0; other < edges.count(); ++other) {
        if (std::minmax({edges.origin(e), edges.target(e)}) ==
            std::minmax({edges.origin(other), edges.target(other)})) {
          along.push_back(other);
        }
      }
      EXPECT_EQ(edges.next(edges.previous(e)), e);
      EXPECT_EQ(edges.isFirst(e), along.front() == e);
      const int expected = along.size() == 1  ? zel::HalfEdges::kOpen
                           : along.size() > 2 ? zel::HalfEdges::kCrowded
                                              : along[0] + along[1] - e;
      EXPECT_EQ(edges.partner(e), expected);
      std::set<int> ring{e};
      for (int other = edges.nextAlong(e); other != e; other = edges.nextAlong(other)) {
        ring.insert(other);
      }
      EXPECT_EQ(ring, std::set<int>(along.begin(), along.end()));
    }
  }
}

}  // namespace
