// Pictures drawn off-screen, from the mesh in memory to pixels. Items are faces.

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

#include "tools/view/pictures/offscreen_context.h"
#include "tools/view/pictures/render.h"
#include "tools/view/pictures/scene_painter.h"
#include "zel/zel.h"

namespace {

constexpr zel::view::ViewSize kSize{1200, 900};

// A rippled ball of about `faces` triangles.
zel::view::SceneMesh ballOf(int faces) {
  const int rings = static_cast<int>(std::sqrt(faces / 4.0));
  const int columns = 2 * rings;
  NodeArr nodes;
  TriangleArr triangles;
  for (int ring = 0; ring <= rings; ++ring) {
    for (int column = 0; column < columns; ++column) {
      const double theta = std::numbers::pi * ring / rings;
      const double phi = 2 * std::numbers::pi * column / columns;
      const double r = 1 + 0.02 * std::sin(30 * theta) * std::sin(30 * phi);
      const float point[3] = {static_cast<float>(r * std::sin(theta) * std::cos(phi)),
                              static_cast<float>(r * std::cos(theta)),
                              static_cast<float>(r * std::sin(theta) * std::sin(phi))};
      NodeCL node(zel::kTagAvailable);
      node.SetPntM(point);
      nodes.AddItemM(node);
    }
  }
  TriangleCL triangle(zel::kTagAvailable);
  for (int ring = 0; ring < rings; ++ring) {
    for (int column = 0; column < columns; ++column) {
      const int a = ring * columns + column;
      const int b = ring * columns + (column + 1) % columns;
      triangle.SetTriangleM(a, b, b + columns);
      triangles.AddItemM(triangle);
      triangle.SetTriangleM(a, b + columns, a + columns);
      triangles.AddItemM(triangle);
    }
  }
  return {nodes, triangles, QuadArr(), Point2DArr()};
}

// A whole picture: context, recording of the faces, drawing, smoothing.
void BM_Picture(benchmark::State& state) {
  const zel::view::SceneMesh scene = ballOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(renderPicture(scene, {}, zel::view::Camera(), {}, kSize));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(scene.faces.size()));
}
BENCHMARK(BM_Picture)->Arg(200'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();

// One more frame of a mesh that turns: what the viewer does while the mouse drags.
void BM_Frame(benchmark::State& state) {
  const zel::view::SceneMesh scene = ballOf(static_cast<int>(state.range(0)));
  const zel::view::OffscreenContext context(kSize.width, kSize.height);
  zel::view::ScenePainter painter(scene, {});
  zel::view::Camera camera;
  painter.draw({}, camera, kSize);  // records the faces
  for (auto _ : state) {
    camera.orbit(5, 1);
    painter.draw({}, camera, kSize);
    benchmark::DoNotOptimize(zel::view::readPixels(1, 1));  // waits for the frame
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(scene.faces.size()));
}
BENCHMARK(BM_Frame)->Arg(200'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
