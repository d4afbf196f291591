#include "tools/zel/mesh_facts.h"

#include <algorithm>
#include <utility>

namespace zel::program {

namespace {

void measureNodes(const NodeArr& nodes, MeshFacts& facts) {
  for (const int slot : NodeNumbering(nodes).slots) {
    const Point point = pointOf(nodes, slot);
    facts.hasNodeNormals = facts.hasNodeNormals || normalOf(nodes, slot) != Point{};
    if (!isFinite(point)) {
      continue;
    }
    for (std::size_t k = 0; k < point.size(); ++k) {
      facts.lowest[k] = facts.hasBounds ? std::min(facts.lowest[k], point[k]) : point[k];
      facts.highest[k] = facts.hasBounds ? std::max(facts.highest[k], point[k]) : point[k];
    }
    facts.hasBounds = true;
  }
}

double areaOf(const MeshDocument& mesh) {
  double doubled = 0;
  forEachFace(mesh, [&](int, const auto& corners) {
    const Point first = pointOf(mesh.nodes, corners[0]);
    for (std::size_t k = 2; k < corners.size(); ++k) {
      doubled += length(cross(vectorBetween(first, pointOf(mesh.nodes, corners[k - 1])),
                              vectorBetween(first, pointOf(mesh.nodes, corners[k]))));
    }
  });
  return doubled / 2;
}

/// Every edge of the live faces once, as its two node slots.
std::vector<std::pair<int, int>> edgesOf(const MeshDocument& mesh) {
  std::vector<std::pair<int, int>> edges;
  forEachFace(mesh, [&](int, const auto& corners) {
    for (std::size_t k = 0; k < corners.size(); ++k) {
      const int a = corners[k];
      const int b = corners[(k + 1) % corners.size()];
      if (a != b) {
        edges.emplace_back(std::min(a, b), std::max(a, b));
      }
    }
  });
  std::ranges::sort(edges);
  const auto repeated = std::ranges::unique(edges);
  edges.erase(repeated.begin(), repeated.end());
  return edges;
}

void measureEdges(const MeshDocument& mesh, MeshFacts& facts) {
  double total = 0;
  for (const auto& [a, b] : edgesOf(mesh)) {
    const double edge = distance(pointOf(mesh.nodes, a), pointOf(mesh.nodes, b));
    total += edge;
    facts.shortestEdge = facts.edges == 0 ? edge : std::min(facts.shortestEdge, edge);
    facts.longestEdge = std::max(facts.longestEdge, edge);
    ++facts.edges;
  }
  facts.meanEdge = facts.edges > 0 ? total / facts.edges : 0;
}

}  // namespace

MeshFacts gatherFacts(const MeshDocument& mesh) {
  MeshFacts facts;
  facts.hasTextureCoords = mesh.textureCoords.GetAvailableNumM() > 0;
  facts.area = areaOf(mesh);
  facts.defects = findDefects(mesh.nodes, mesh.triangles, mesh.quads);
  measureNodes(mesh.nodes, facts);
  measureEdges(mesh, facts);
  for (const BoundaryChain& chain :
       boundaryChains(mesh.triangles, mesh.quads, mesh.nodes.GetBoundM())) {
    ++(chain.isClosed ? facts.boundaryLoops : facts.boundaryChains);
  }
  return facts;
}

}  // namespace zel::program
