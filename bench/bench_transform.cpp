// Moving all nodes of a mesh: records of 40 bytes with a point and a normal at the offsets that a
// node has them, through one matrix. Beside `NodeArr::TransByMatrixM`: the single calls in a loop,
// the loop written by hand (double precision), Eigen in double and in single precision (the latter
// rounds at every step and so gives other results), and a plain copy of the same memory. Then the
// same for `Point3DArr::ProjectPntsToPlaneM`.

#include <benchmark/benchmark.h>

#include <Eigen/Dense>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "zel/containers/point3d_arr.h"
#include "zel/core/constants.h"
#include "zel/geometry/matrices.h"
#include "zel/mesh/node.h"

namespace {

struct Node {
  void* type;
  char tag;
  float point[3];
  float normal[3];
};

constexpr float kMatrix[16]{0.36F, 0.48F, -0.8F, 0, -0.8F, 0.6F,  0,     0,
                            0.48F, 0.64F, 0.6F,  0, 0.01F, 0.02F, 0.03F, 1};

std::vector<Node> makeNodes(std::int64_t count) {
  std::vector<Node> nodes(static_cast<std::size_t>(count));
  float value = 0.0F;
  for (Node& node : nodes) {
    for (int i = 0; i < 3; ++i) {
      node.point[i] = value;
      node.normal[i] = 1.0F - value;
      value = value < 9.0F ? value + 0.01F : 0.0F;
    }
  }
  return nodes;
}

/// Times `move()`, which moves as many nodes as the benchmark's argument says.
template <class Move>
void time(benchmark::State& state, Move move) {
  for (auto _ : state) {
    move();
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["per_node"] = benchmark::Counter(
      static_cast<double>(state.range(0)),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// Times `move(nodes)` on plain records.
template <class Move>
void perNode(benchmark::State& state, Move move) {
  std::vector<Node> nodes = makeNodes(state.range(0));
  time(state, [&] { move(nodes); });
}

void nodesZelBulk(benchmark::State& state) {
  NodeArr list(static_cast<int>(state.range(0)));
  NodeCL node(zel::kTagAvailable);
  for (const Node& source : makeNodes(state.range(0))) {
    node.SetNodeM(source.point, source.normal);
    list.AddItemM(node);
  }
  time(state, [&] { list.TransByMatrixM(kMatrix); });
}

void nodesZelCalls(benchmark::State& state) {
  perNode(state, [](std::vector<Node>& nodes) {
    for (Node& node : nodes) {
      slMatrix16MultiPoint3(kMatrix, node.point);
      slMatrix16MultiVector3(kMatrix, node.normal);
    }
  });
}

void nodesByHand(benchmark::State& state) {
  const auto turn = [](float* v, double move) {
    const float* m = kMatrix;
    const double x = v[0], y = v[1], z = v[2];
    v[0] = static_cast<float>(m[0] * x + m[4] * y + m[8] * z + move * m[12]);
    v[1] = static_cast<float>(m[1] * x + m[5] * y + m[9] * z + move * m[13]);
    v[2] = static_cast<float>(m[2] * x + m[6] * y + m[10] * z + move * m[14]);
  };
  perNode(state, [turn](std::vector<Node>& nodes) {
    for (Node& node : nodes) {
      turn(node.point, 1.0);
      turn(node.normal, 0.0);
    }
  });
}

template <class Real>
void nodesEigen(benchmark::State& state) {
  using Vector = Eigen::Matrix<Real, 3, 1>;
  const Eigen::Map<const Eigen::Matrix4f> matrix(kMatrix);
  const Eigen::Matrix<Real, 3, 3> block = matrix.topLeftCorner<3, 3>().cast<Real>();
  const Vector move = matrix.topRightCorner<3, 1>().cast<Real>();
  perNode(state, [&](std::vector<Node>& nodes) {
    for (Node& node : nodes) {
      Eigen::Map<Eigen::Vector3f> point(node.point), normal(node.normal);
      const Vector p = point.cast<Real>(), n = normal.cast<Real>();
      point = Vector(block * p + move).template cast<float>();
      normal = Vector(block * n).template cast<float>();
    }
  });
}

void nodesPlainCopy(benchmark::State& state) {
  std::vector<Node> target(static_cast<std::size_t>(state.range(0)));
  perNode(state, [&](std::vector<Node>& nodes) {
    std::memcpy(static_cast<void*>(target.data()), nodes.data(), nodes.size() * sizeof(Node));
    benchmark::DoNotOptimize(target.data());
  });
}

using Points = std::vector<std::array<float, 3>>;

Points makePoints(std::int64_t count) {
  Points points;
  for (const Node& node : makeNodes(count)) {
    points.push_back({node.point[0], node.point[1], node.point[2]});
  }
  return points;
}

constexpr float kPlanePoint[3]{1, 2, 3};
constexpr float kPlaneNormal[3]{0.36F, 0.48F, -0.8F};

void projectZelBulk(benchmark::State& state) {
  Point3DArr list;
  for (const auto& point : makePoints(state.range(0))) {
    list.AddItemM(point.data());
  }
  time(state, [&] { list.ProjectPntsToPlaneM(kPlanePoint, kPlaneNormal); });
}

void projectByHand(benchmark::State& state) {
  Points points = makePoints(state.range(0));
  const double a = kPlaneNormal[0], b = kPlaneNormal[1], c = kPlaneNormal[2];
  const double d = -(a * kPlanePoint[0] + b * kPlanePoint[1] + c * kPlanePoint[2]);
  time(state, [&] {
    for (auto& p : points) {
      const double s = a * p[0] + b * p[1] + c * p[2] + d;
      p = {static_cast<float>(p[0] - s * a), static_cast<float>(p[1] - s * b),
           static_cast<float>(p[2] - s * c)};
    }
  });
}

void projectEigen(benchmark::State& state) {
  Points points = makePoints(state.range(0));
  const Eigen::Vector3d normal = Eigen::Map<const Eigen::Vector3f>(kPlaneNormal).cast<double>();
  const double d = -normal.dot(Eigen::Map<const Eigen::Vector3f>(kPlanePoint).cast<double>());
  time(state, [&] {
    for (auto& p : points) {
      Eigen::Map<Eigen::Vector3f> point(p.data());
      const Eigen::Vector3d v = point.cast<double>();
      point = Eigen::Vector3d(v - (normal.dot(v) + d) * normal).cast<float>();
    }
  });
}

void projectPlainCopy(benchmark::State& state) {
  const Points points = makePoints(state.range(0));
  Points target = points;
  time(state, [&] { std::memcpy(target.data(), points.data(), points.size() * sizeof points[0]); });
}

#define ZEL_NODE_COUNTS Arg(1000)->Arg(100000)->Arg(1000000)->Arg(4000000)
BENCHMARK(nodesZelBulk)->ZEL_NODE_COUNTS;
BENCHMARK(nodesZelCalls)->ZEL_NODE_COUNTS;
BENCHMARK(nodesByHand)->ZEL_NODE_COUNTS;
BENCHMARK(nodesEigen<double>)->ZEL_NODE_COUNTS;
BENCHMARK(nodesEigen<float>)->ZEL_NODE_COUNTS;
BENCHMARK(nodesPlainCopy)->ZEL_NODE_COUNTS;
BENCHMARK(projectZelBulk)->ZEL_NODE_COUNTS;
BENCHMARK(projectByHand)->ZEL_NODE_COUNTS;
BENCHMARK(projectEigen)->ZEL_NODE_COUNTS;
BENCHMARK(projectPlainCopy)->ZEL_NODE_COUNTS;

}  // namespace
