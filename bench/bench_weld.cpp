// Welding a soup of triangles within the merge tolerance, node by node and face by face: the
// library's calls, a walk over the lists in their place, and the bare limit (see bare_weld.h).
// Items are faces.

#include <benchmark/benchmark.h>

#include <array>

#include "bare_weld.h"
#include "soup.h"
#include "zel/zel.h"

namespace {

using zel::bench::BareWeld;
using zel::bench::Soup;
using zel::bench::soupOf;

struct Mesh {
  NodeArr nodes;
  TriangleArr triangles;
};

template <class MergeNode, class MergeFace>
void weld(const Soup& soup, MergeNode mergeNode, MergeFace mergeFace) {
  NodeCL node(char{31});
  TriangleCL face(char{31});
  for (std::size_t first = 0; first < soup.corners.size(); first += 3) {
    int corners[3];
    for (std::size_t k = 0; k < 3; ++k) {
      node.SetPntM(soup.corners[first + k].data());
      corners[k] = mergeNode(node);
    }
    face.SetTriangleM(corners);
    mergeFace(face);
  }
}

void weldByCalls(const Soup& soup, Mesh& mesh) {
  weld(
      soup,
      [&](const NodeCL& node) {
        int index = 0;
        mesh.nodes.MergeNodeLstM(node, &index);
        return index;
      },
      [&](const TriangleCL& face) { mesh.triangles.MergeTriangleLstM(face); });
}

// What the calls mean, taken literally.
void weldByWalking(const Soup& soup, Mesh& mesh) {
  weld(
      soup,
      [&](const NodeCL& node) {
        const NodeCL* nodes = mesh.nodes.getCurrentItemPrtConstM();
        for (int slot = 0; slot < mesh.nodes.GetBoundM(); ++slot) {
          if (nodes[slot].IsAvailableM() == 31 &&
              slIsEqualPoint3D(nodes[slot].point(), node.point()) == 1) {
            return slot;
          }
        }
        return mesh.nodes.AddItemM(node);
      },
      [&](const TriangleCL& face) {
        const auto& mine = face.record().corners;
        const TriangleCL* faces = mesh.triangles.getCurrentItemPrtConstM();
        for (int slot = 0; slot < mesh.triangles.GetBoundM(); ++slot) {
          int pairs = 0;
          for (const int corner : faces[slot].record().corners) {
            pairs += (corner == mine[0]) + (corner == mine[1]) + (corner == mine[2]);
          }
          if (pairs == 3) {
            return;
          }
        }
        mesh.triangles.AddItemM(face);
      });
}

template <class Weld>
void run(benchmark::State& state, Weld weldSoup) {
  const Soup& soup = soupOf(static_cast<int>(state.range(0)));
  double nodes = 0;
  double faces = 0;
  for (auto _ : state) {
    weldSoup(soup, nodes, faces);
  }
  state.SetItemsProcessed(state.iterations() * soup.faceCount());
  state.counters["nodes"] = nodes;
  state.counters["faces"] = faces;
}

template <void (*kWeld)(const Soup&, Mesh&)>
void runOnLists(benchmark::State& state) {
  run(state, [](const Soup& soup, double& nodes, double& faces) {
    Mesh mesh;
    kWeld(soup, mesh);
    nodes = mesh.nodes.GetBoundM();
    faces = mesh.triangles.GetBoundM();
  });
}

void BM_Bare(benchmark::State& state) {
  run(state, [](const Soup& soup, double& nodes, double& faces) {
    BareWeld weld(soup);
    weld.run();
    nodes = static_cast<double>(weld.nodeCount());
    faces = static_cast<double>(weld.faceCount());
  });
}

void BM_Walk(benchmark::State& state) { runOnLists<weldByWalking>(state); }
void BM_Calls(benchmark::State& state) { runOnLists<weldByCalls>(state); }

BENCHMARK(BM_Walk)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Walk)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bare)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000)->Arg(4000000)->Unit(
    benchmark::kMillisecond);
BENCHMARK(BM_Calls)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000)->Arg(4000000)->Unit(
    benchmark::kMillisecond);

}  // namespace
