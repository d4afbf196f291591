// Whole-mesh operations beside a bare build of edge partners (compressed rows, structure of
// arrays) and a bare walk of the boundary, over the same faces. Items are faces.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "zel/zel.h"

namespace {

/// A rugged open disc of about `faces` triangles with its nodes and faces in random order.
struct Disc : zel::Mesh {
  std::vector<int> corners;  // three to a face
};

const Disc& discOf(int faces) {
  static std::vector<std::pair<int, Disc>> made;
  for (const auto& [size, disc] : made) {
    if (size == faces) {
      return disc;
    }
  }
  made.emplace_back(faces, Disc());
  Disc& disc = made.back().second;
  const int side = static_cast<int>(std::sqrt(faces / 2.0));
  std::mt19937 random(1);
  std::vector<int> places(static_cast<std::size_t>((side + 1) * (side + 1)));
  std::iota(places.begin(), places.end(), 0);
  std::shuffle(places.begin(), places.end(), random);
  std::vector<int> placeOf(places.size());
  disc.nodes.InitialSizeM(static_cast<int>(places.size()));
  for (std::size_t i = 0; i < places.size(); ++i) {
    placeOf[static_cast<std::size_t>(places[i])] = static_cast<int>(i);
    const auto x = static_cast<float>(places[i] % (side + 1));
    const auto y = static_cast<float>(places[i] / (side + 1));
    const float point[3] = {x, y, std::sin(x * 0.1F) * std::cos(y * 0.13F)};
    NodeCL node(char{31});
    node.SetPntM(point);
    disc.nodes.AddItemM(node);
  }
  std::vector<std::array<int, 3>> all;
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      const int a = row * (side + 1) + column;
      const int d = a + side + 1;
      all.push_back({a, a + 1, d + 1});
      all.push_back({a, d + 1, d});
    }
  }
  std::shuffle(all.begin(), all.end(), random);
  disc.triangles.InitialSizeM(static_cast<int>(all.size()));
  const float up[3] = {0, 0, 1};
  for (const auto& face : all) {
    int corners[3];
    for (std::size_t k = 0; k < 3; ++k) {
      corners[k] = placeOf[static_cast<std::size_t>(face[k])];
      disc.corners.push_back(corners[k]);
    }
    disc.triangles.AddTriangleM(corners, up);
  }
  return disc;
}

/// Edge partners of a triangle list; edge e of face f is 3 f + e, -1 without a partner.
std::vector<int> barePartners(const std::vector<int>& corners, int nodeCount) {
  const int edges = static_cast<int>(corners.size());
  const auto target = [&](int e) {
    return corners[static_cast<std::size_t>(e % 3 == 2 ? e - 2 : e + 1)];
  };
  std::vector<int> starts(static_cast<std::size_t>(nodeCount) + 1, 0);
  for (const int node : corners) {
    ++starts[static_cast<std::size_t>(node) + 1];
  }
  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  std::vector<int> rows(corners.size());
  std::vector<int> fill(starts.begin(), starts.end() - 1);
  for (int e = 0; e < edges; ++e) {
    rows[static_cast<std::size_t>(
        fill[static_cast<std::size_t>(corners[static_cast<std::size_t>(e)])]++)] = e;
  }
  std::vector<int> partners(corners.size(), -1);
  for (int e = 0; e < edges; ++e) {
    const auto to = static_cast<std::size_t>(target(e));
    for (int k = starts[to]; k < starts[to + 1]; ++k) {
      const int other = rows[static_cast<std::size_t>(k)];
      if (target(other) == corners[static_cast<std::size_t>(e)]) {
        partners[static_cast<std::size_t>(e)] = other;
        break;
      }
    }
  }
  return partners;
}

std::size_t bareBoundaryWalk(const std::vector<int>& partners) {
  const auto next = [](int e) { return e % 3 == 2 ? e - 2 : e + 1; };
  std::vector<bool> used(partners.size(), false);
  std::size_t length = 0;
  for (int first = 0; first < static_cast<int>(partners.size()); ++first) {
    if (partners[static_cast<std::size_t>(first)] >= 0) {
      continue;
    }
    for (int e = first; !used[static_cast<std::size_t>(e)];) {
      used[static_cast<std::size_t>(e)] = true;
      ++length;
      e = next(e);
      while (partners[static_cast<std::size_t>(e)] >= 0) {
        e = next(partners[static_cast<std::size_t>(e)]);
      }
    }
  }
  return length;
}

void BM_BareBuild(benchmark::State& state) {
  const Disc& disc = discOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(barePartners(disc.corners, disc.nodes.GetBoundM()));
  }
  state.SetItemsProcessed(state.iterations() * disc.triangles.GetBoundM());
}

void BM_BareBuildAndBoundaryWalk(benchmark::State& state) {
  const Disc& disc = discOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(bareBoundaryWalk(barePartners(disc.corners, disc.nodes.GetBoundM())));
  }
  state.SetItemsProcessed(state.iterations() * disc.triangles.GetBoundM());
}

void BM_BoundaryChains(benchmark::State& state) {
  const Disc& disc = discOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(zel::boundaryChains(disc));
  }
  state.SetItemsProcessed(state.iterations() * disc.triangles.GetBoundM());
}

void BM_Unfold(benchmark::State& state) {
  const Disc& disc = discOf(static_cast<int>(state.range(0)));
  XYCoordSysD none{};
  none.origin[0] = -1.0e18F;
  for (auto _ : state) {
    state.PauseTiming();
    TriangleArr triangles(disc.triangles);
    Point2DArr uv;
    state.ResumeTiming();
    benchmark::DoNotOptimize(triangles.GetTexCoordM(none, &uv, disc.nodes));
  }
  state.SetItemsProcessed(state.iterations() * disc.triangles.GetBoundM());
}

void BM_FindDefects(benchmark::State& state) {
  const Disc& disc = discOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(zel::findDefects(disc));
  }
  state.SetItemsProcessed(state.iterations() * disc.triangles.GetBoundM());
}

void BM_WeldMesh(benchmark::State& state) {
  const Disc& disc = discOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    zel::Mesh mesh = disc;
    state.ResumeTiming();
    benchmark::DoNotOptimize(zel::weld(mesh, {.tolerance = zel::Absolute(0.01)}));
  }
  state.SetItemsProcessed(state.iterations() * disc.triangles.GetBoundM());
}

void BM_CompactAfterDeletion(benchmark::State& state) {
  const Disc& disc = discOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    zel::Mesh mesh = disc;
    for (int slot = 0; slot < mesh.nodes.GetBoundM(); slot += 10) {
      mesh.nodes.DelItemM(slot);
    }
    state.ResumeTiming();
    benchmark::DoNotOptimize(zel::compact(mesh));
  }
  state.SetItemsProcessed(state.iterations() * disc.triangles.GetBoundM());
}

void meshSizes(benchmark::internal::Benchmark* bench) {
  bench->Unit(benchmark::kMillisecond);
  for (const int faces : {10000, 100000, 1000000, 2000000, 4000000, 8000000}) {
    bench->Arg(faces);
  }
}

BENCHMARK(BM_BareBuild)->Apply(meshSizes);
BENCHMARK(BM_BareBuildAndBoundaryWalk)->Apply(meshSizes);
BENCHMARK(BM_BoundaryChains)->Apply(meshSizes);
BENCHMARK(BM_Unfold)->Apply(meshSizes);
BENCHMARK(BM_FindDefects)->Apply(meshSizes);
BENCHMARK(BM_WeldMesh)->Apply(meshSizes);
BENCHMARK(BM_CompactAfterDeletion)->Apply(meshSizes);

}  // namespace
