// Finds the holes of a scan and says where they are: zel::boundaryChains().

#include <zel/zel.h>

#include <cmath>
#include <cstdio>
#include <span>

namespace {

using Point = std::span<const float, 3>;

double distance(Point a, Point b) {
  return std::hypot(double{a[0]} - b[0], double{a[1]} - b[1], double{a[2]} - b[2]);
}

}  // namespace

int main(int argc, char** argv) try {
  // Welding while reading joins the loose triangles of an STL file.
  const zel::Mesh mesh =
      zel::readMesh(argc > 1 ? argv[1] : "scan.stl", {.weld = zel::Relative(1e-6)});
  const auto points = mesh.points();
  const auto pointOf = [&](int node) { return points[static_cast<std::size_t>(node)]; };
  const std::vector<zel::BoundaryChain> holes = zel::boundaryChains(mesh);
  std::printf("%zu hole%s:", holes.size(), holes.size() == 1 ? "" : "s");
  for (const zel::BoundaryChain& hole : holes) {
    double length = 0;
    zel::Double3 centre{};
    for (std::size_t k = 0; k < hole.nodes.size(); ++k) {
      const Point here = pointOf(hole.nodes[k]);
      length += distance(here, pointOf(hole.nodes[(k + 1) % hole.nodes.size()]));
      for (std::size_t axis = 0; axis < 3; ++axis) {
        centre[axis] += here[axis] / static_cast<double>(hole.nodes.size());
      }
    }
    std::printf(" %zu edges, %g long, round (%g, %g, %g)\n", hole.nodes.size(), length, centre[0],
                centre[1], centre[2]);
  }
} catch (const zel::Error& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return static_cast<int>(error.code());
}
