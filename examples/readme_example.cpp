#include <zel/zel.h>

#include <cstdio>

int main(int argc, char** argv) try {
  zel::Mesh mesh = zel::readMesh(argc > 1 ? argv[1] : "scan.stl");
  const zel::WeldReport welded = zel::weld(mesh, {.tolerance = zel::Relative(1e-6)});
  const zel::Defects defects = zel::findDefects(mesh);
  std::printf("%d nodes merged, %d edges open, area %g\n", welded.nodesMerged, defects.openEdges,
              zel::measure(mesh).area);
  zel::writeMesh(mesh, "welded.ply");
} catch (const zel::Error& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return static_cast<int>(error.code());
}
