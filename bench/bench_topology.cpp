// Following, renumbering and purging the faces of a welded torus: the library's calls, and a walk
// over all faces in their place. Items are calls, or faces where a whole list is worked on.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "zel/zel.h"

namespace {

/// A torus of about `count` triangles in random order.
TriangleArr makeTorus(int count) {
  const int rows = std::max(3, static_cast<int>(std::sqrt(count / 6.0)));
  const int columns = 3 * rows;
  std::vector<std::array<int, 3>> faces;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const int below = (row + 1) % rows;
      const int right = (column + 1) % columns;
      faces.push_back({row * columns + column, below * columns + column, below * columns + right});
      faces.push_back({row * columns + column, below * columns + right, row * columns + right});
    }
  }
  std::shuffle(faces.begin(), faces.end(), std::mt19937(3));
  TriangleArr triangles;
  const float up[3] = {0, 0, 1};
  for (const auto& face : faces) {
    triangles.AddTriangleM(face.data(), up);
  }
  return triangles;
}

const TriangleArr& torusOf(int count) {
  static std::vector<std::pair<int, TriangleArr>> made;
  for (const auto& [size, triangles] : made) {
    if (size == count) {
      return triangles;
    }
  }
  return made.emplace_back(count, makeTorus(count)).second;
}

// The edges asked about, in random order.
class Edges {
 public:
  explicit Edges(const TriangleArr& triangles) : triangles_(triangles) {}
  const int* next() {
    const int slot = std::uniform_int_distribution<int>(0, triangles_.GetBoundM() - 1)(random_);
    triangles_[slot].GetTriangleM(corners_);
    return corners_;
  }

 private:
  const TriangleArr& triangles_;
  std::mt19937 random_{5};
  int corners_[3] = {};
};

template <class Call>
void askAboutEdges(benchmark::State& state, Call call) {
  TriangleArr triangles(torusOf(static_cast<int>(state.range(0))));
  Edges edges(triangles);
  // The first calls walk until an index pays, and the next one builds it.
  for (int k = 0; k < 8; ++k) {
    benchmark::DoNotOptimize(call(triangles, edges.next()));
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(call(triangles, edges.next()));
  }
  state.SetItemsProcessed(state.iterations());
}

int walkForEdge(const TriangleArr& triangles, const int* edge) {
  const TriangleCL* faces = triangles.getCurrentItemPrtConstM();
  int count = 0;
  for (int slot = 0; slot < triangles.GetBoundM(); ++slot) {
    count += faces[slot].FindEdgeM(edge[0], edge[1]);
  }
  return count;
}

void BM_WalkForEdge(benchmark::State& state) { askAboutEdges(state, walkForEdge); }

void BM_JudgeBound(benchmark::State& state) {
  askAboutEdges(state, [](const TriangleArr& triangles, const int* edge) {
    int at = 0;
    return triangles.JudgeBoundM(edge[0], edge[1], &at);
  });
}

void BM_OneBound(benchmark::State& state) {
  askAboutEdges(state, [](const TriangleArr& triangles, const int* corners) {
    int edge[2] = {corners[0], 0};
    int at = 0;
    return triangles.GetOneBoundWithStIdxM(corners[1], edge, &at);
  });
}

void BM_NextRelated(benchmark::State& state) {
  askAboutEdges(state, [](const TriangleArr& triangles, const int* edge) {
    int next = 0;
    return triangles.getNextRelTriangleIdxM(-1, edge, &next, 1);
  });
}

void BM_FindTriangle(benchmark::State& state) {
  askAboutEdges(state, [](const TriangleArr& triangles, const int* corners) {
    return triangles.FindTriangleM(corners);
  });
}

void BM_FindAround(benchmark::State& state) {
  askAboutEdges(state, [](const TriangleArr& triangles, const int* corners) {
    Int2DArr pairs;
    triangles.FindTriangleM(corners[0], &pairs);
    return pairs.GetBoundM();
  });
}

// Index building included: a new list, and its first question answered by the index.
void BM_BuildIncidence(benchmark::State& state) {
  const TriangleArr& triangles = torusOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    TriangleArr fresh(triangles);
    for (int k = 0; k < 4; ++k) {
      benchmark::DoNotOptimize(fresh.GetOneNeighbourPntM(-1));
    }
    state.ResumeTiming();
    benchmark::DoNotOptimize(fresh.GetOneNeighbourPntM(-1));
  }
  state.SetItemsProcessed(state.iterations() * triangles.GetBoundM());
}

// Every node renamed, one call each.
void BM_RenameEveryNode(benchmark::State& state) {
  const TriangleArr& triangles = torusOf(static_cast<int>(state.range(0)));
  const int nodes = triangles.GetBoundM() / 2;
  for (auto _ : state) {
    TriangleArr renamed(triangles);
    for (int node = 0; node < nodes; ++node) {
      renamed.ChangeNodeIdxM(node, nodes + node);
    }
    benchmark::DoNotOptimize(renamed.GetOneNeighbourPntM(nodes));
  }
  state.SetItemsProcessed(state.iterations() * nodes);
}

// A tenth of the nodes loses its faces, one call each; the list is purged once.
void BM_DeleteAroundAndPurge(benchmark::State& state) {
  const TriangleArr& triangles = torusOf(static_cast<int>(state.range(0)));
  const int nodes = triangles.GetBoundM() / 2;
  for (auto _ : state) {
    TriangleArr thinned(triangles);
    for (int node = 0; node < nodes; node += 10) {
      thinned.DelTriangleByVertexM(node);
    }
    thinned.PurgeDeletedTrianglesM();
    benchmark::DoNotOptimize(thinned.GetBoundM());
  }
  state.SetItemsProcessed(state.iterations() * triangles.GetBoundM());
}

void BM_Renumber(benchmark::State& state) {
  const TriangleArr& triangles = torusOf(static_cast<int>(state.range(0)));
  IntArr map;
  for (int node = 0; node < triangles.GetBoundM() / 2; ++node) {
    map.AddItemM(triangles.GetBoundM() / 2 - 1 - node);
  }
  TriangleArr renumbered(triangles);
  for (auto _ : state) {
    renumbered.ResetNodeIdxM(map);
  }
  state.SetItemsProcessed(state.iterations() * triangles.GetBoundM());
}

void BM_NearestNode(benchmark::State& state) {
  NodeArr nodes;
  std::mt19937 random(9);
  std::uniform_real_distribution<float> coordinate(0.0F, 1.0F);
  float p[3];
  const auto randomPoint = [&] {
    std::generate(p, p + 3, [&] { return coordinate(random); });
    return p;
  };
  for (int k = 0; k < state.range(0); ++k) {
    NodeCL node(char{31});
    node.SetPntM(randomPoint());
    nodes.AddItemM(node);
  }
  NodeCL out;
  for (int k = 0; k < 40; ++k) {
    nodes.GetNearestNodeM(out, randomPoint());
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(nodes.GetNearestNodeM(out, randomPoint()));
  }
  state.SetItemsProcessed(state.iterations());
}

void smallSizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(1000)->Arg(10000)->Arg(100000);
}
void allSizes(benchmark::internal::Benchmark* bench) {
  smallSizes(bench);
  bench->Arg(1000000)->Arg(2000000)->Arg(4000000)->Arg(8000000);
}

BENCHMARK(BM_WalkForEdge)->Apply(smallSizes);
BENCHMARK(BM_JudgeBound)->Apply(allSizes);
BENCHMARK(BM_OneBound)->Apply(allSizes);
BENCHMARK(BM_NextRelated)->Apply(allSizes);
BENCHMARK(BM_FindTriangle)->Apply(allSizes);
BENCHMARK(BM_FindAround)->Apply(allSizes);
BENCHMARK(BM_NearestNode)->Apply(allSizes);
BENCHMARK(BM_BuildIncidence)->Apply(allSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RenameEveryNode)->Apply(allSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeleteAroundAndPurge)->Apply(allSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Renumber)->Apply(allSizes)->Unit(benchmark::kMillisecond);

}  // namespace
