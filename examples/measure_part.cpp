// A ball from flat arrays, as a kernel or a simulation would hand it over, and its measures.

#include <zel/zel.h>

#include <cmath>
#include <cstdio>
#include <numbers>

namespace {

/// A ball of radius 1 round (1, 2, 3), of quads and of triangles at the poles.
zel::MeshArrays ball(int rings, int sectors) {
  zel::MeshArrays arrays;
  const auto add = [&](double x, double y, double z) {
    arrays.points.insert(arrays.points.end(), {float(1 + x), float(2 + y), float(3 + z)});
  };
  const auto node = [&](int ring, int sector) { return 1 + ring * sectors + sector % sectors; };
  add(0, 0, -1);
  for (int ring = 0; ring < rings; ++ring) {
    const double height = std::numbers::pi * (ring + 1) / (rings + 1);
    for (int sector = 0; sector < sectors; ++sector) {
      const double turn = 2 * std::numbers::pi * sector / sectors;
      add(std::sin(height) * std::cos(turn), std::sin(height) * std::sin(turn), -std::cos(height));
    }
  }
  add(0, 0, 1);
  const int top = 1 + rings * sectors;
  for (int sector = 0; sector < sectors; ++sector) {
    const int next = sector + 1;
    arrays.triangles.insert(arrays.triangles.end(), {0, node(0, next), node(0, sector)});
    arrays.triangles.insert(arrays.triangles.end(),
                            {top, node(rings - 1, sector), node(rings - 1, next)});
    for (int ring = 0; ring + 1 < rings; ++ring) {
      arrays.quads.insert(arrays.quads.end(), {node(ring, sector), node(ring, next),
                                               node(ring + 1, next), node(ring + 1, sector)});
    }
  }
  return arrays;
}

}  // namespace

int main() try {
  const zel::Mesh mesh(ball(199, 400).spans());
  const zel::Measures found = zel::measure(mesh);
  const zel::Bounds& box = found.bounds;
  std::printf("volume %.5g, centre of the surface (%.3g, %.3g, %.3g), fits a box of %g x %g x %g\n",
              found.signedVolume, found.centroid[0], found.centroid[1], found.centroid[2],
              double{box.high[0]} - box.low[0], double{box.high[1]} - box.low[1],
              double{box.high[2]} - box.low[2]);
  return found.isClosed() && found.isOriented() ? 0 : 1;
} catch (const zel::Error& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return static_cast<int>(error.code());
}
