#include "zel/io/detail/soup_builder.h"

#include <cmath>

#include "zel/io/detail/codec.h"

namespace zel {

SoupBuilder::SoupBuilder(std::optional<double> weldDistance, std::size_t expected) {
  if (weldDistance) {
    kept_.emplace(*weldDistance, expected / 2 + 1);  // a closed surface has half as many nodes
  }
}

void SoupBuilder::add(std::span<const Facet> facets) {
  if (!kept_) {
    for (const Facet& facet : facets) {
      addSoup(facet);
    }
    return;
  }
  while (!facets.empty()) {
    const std::size_t count = std::min(facets.size(), kBlock);
    addWelded(facets.first(count));
    facets = facets.subspan(count);
  }
}

void SoupBuilder::addSoup(const Facet& facet) {
  std::array<int, 3> corners{};
  for (std::size_t k = 0; k < 3; ++k) {
    NodeCL node(kTagAvailable);
    node.SetPntM(facet.points[k]);
    corners[k] = append(mesh_.nodes, node);
  }
  addTriangle(facet, corners);
}

void SoupBuilder::addWelded(std::span<const Facet> facets) {
  KeptPoints::Search* search = searches_.data();
  for (const Facet& facet : facets) {
    for (const auto& point : facet.points) {
      kept_->lookAhead(point, *search++);
    }
  }
  const std::size_t count = 3 * facets.size();
  for (std::size_t k = 0; k < count; ++k) {
    kept_->fetch(searches_[k]);
  }
  search = searches_.data();
  for (const Facet& facet : facets) {
    std::array<int, 3> corners{};
    for (std::size_t k = 0; k < 3; ++k) {
      const KeptPoints::Hit hit = kept_->findOrKeep(*search++);
      if (hit.isNew) {
        NodeCL node(kTagAvailable);
        node.SetPntM(facet.points[k]);
        append(mesh_.nodes, node);
      }
      corners[k] = hit.index;
    }
    addTriangle(facet, corners);
  }
}

void SoupBuilder::addTriangle(const Facet& facet, const std::array<int, 3>& corners) {
  TriangleCL triangle(kTagAvailable);
  triangle.SetTriangleM(corners.data());
  const float* n = facet.normal;
  const bool isGiven = n[0] != 0 || n[1] != 0 || n[2] != 0;
  if (isGiven && std::isfinite(n[0]) && std::isfinite(n[1]) && std::isfinite(n[2])) {
    triangle.SetNormM(n);
  }
  append(mesh_.triangles, triangle);
}

}  // namespace zel
