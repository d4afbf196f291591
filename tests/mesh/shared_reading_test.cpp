// Several threads search one const list, point array or string table at once. Under the thread
// sanitizer any unguarded write shows; without it, an answer that differs does.

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/meshes.h"
#include "zel/zel.h"

namespace zel::test {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 300;

/// Asks every question in `kThreads` threads that start together, each in an order of its own.
/// @return whether all heard what one thread alone hears from `reference`.
bool allHearTheSame(const std::function<long(int)>& ask,
                    const std::function<long(int)>& reference) {
  std::vector<long> expected;
  for (int round = 0; round < kRounds; ++round) {
    expected.push_back(reference(round));
  }
  std::atomic<int> waiting = kThreads;
  std::atomic<bool> isSame = true;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      --waiting;
      while (waiting > 0) {
      }
      for (int k = 0; k < kRounds; ++k) {
        const int round = (k * 7 + thread * 61) % kRounds;
        if (ask(round) != expected[static_cast<std::size_t>(round)]) {
          isSame = false;
        }
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  return isSame;
}

/// The list as it is and, to compare with, a copy that has no index yet.
template <class List>
void expectShared(const List& list, const std::function<long(const List&, int)>& ask) {
  const List copy(list);
  EXPECT_TRUE(allHearTheSame([&](int round) { return ask(list, round); },
                             [&](int round) { return ask(copy, round); }));
}

long nearestOf(const NodeArr& nodes, int round) {
  const float p[3] = {static_cast<float>(round % 23) + 0.3F, static_cast<float>(round % 17), 0.1F};
  NodeCL node;
  return nodes.GetNearestNodeM(node, p);
}

template <class Faces>
long answersOf(const Faces& faces, int round) {
  int at = -1;
  long answer = faces.JudgeBoundM(round, round + 1, &at);
  answer = answer * 1009 + at;
  answer = answer * 1009 + faces.GetOneNeighbourPntM(round);
  if constexpr (std::is_same_v<Faces, TriangleArr>) {
    const int corners[3] = {round, round + 1, round + 22};
    Int2DArr pairs;
    faces.FindTriangleM(round, &pairs);
    answer = answer * 1009 + faces.FindTriangleM(corners);
    answer = answer * 1009 + pairs.GetBoundM() + faces.getFirstValidIdxM();
    int edge[2] = {round, 0};
    answer = answer * 1009 + faces.GetOneBoundWithStIdxM(-1, edge, &at) + edge[1];
  }
  return answer;
}

/// Changes that leave rows untidy, trees stale and hubs: the first searches have work to do.
void stir(Mesh& mesh) {
  for (int k = 0; k < 700; ++k) {
    mesh.nodes.DelItemM(k * 5 % mesh.nodes.GetBoundM());
    NodeCL node(char{31});
    const float p[3] = {static_cast<float>(k % 21), static_cast<float>(k % 19), 0.5F};
    node.SetPntM(p);
    mesh.nodes.AddItemM(node);
    mesh.triangles.ChangeNodeIdxM(k % 400, k * 7 % 400);
    mesh.quads.ChangeNodeIdxM(k % 400, k * 7 % 400);
  }
}

// The first searches of a fresh list build its index; those after changes put it in order.
TEST(SharedReading, meshesAreSearchedByManyThreads) {
  for (int round = 0; round < 3; ++round) {
    Mesh mesh = makeFlatGrid(20, 20);
    for (int k = 0; k < 400; ++k) {
      QuadCL quad(char{31});
      quad.SetQuadM(k, k + 1, k + 22, k + 21);
      mesh.quads.AddItemM(quad);
    }
    for (const bool isStirred : {false, true}) {
      if (isStirred) {
        stir(mesh);
      }
      expectShared<NodeArr>(mesh.nodes, nearestOf);
      expectShared<TriangleArr>(mesh.triangles, answersOf<TriangleArr>);
      expectShared<QuadArr>(mesh.quads, answersOf<QuadArr>);
    }
  }
}

TEST(SharedReading, stringTablesAreSearchedByManyThreads) {
  KwStringArr table;
  for (int k = 0; k < 500; ++k) {
    table.AddByCompM(("layer " + std::to_string(k)).c_str());
  }
  const auto find = [](const KwStringArr& texts, int round) {
    return long{texts.FindStrM(("layer " + std::to_string(round * 2)).c_str())};
  };
  expectShared<KwStringArr>(KwStringArr(table), find);
  table.SetValueM(7, 5, "layer");
  expectShared<KwStringArr>(table, find);
}

TEST(SharedReading, pointsAreReadByManyThreads) {
  Point3DArr points;
  for (int k = 0; k < 500; ++k) {
    points.AddPointM(Point{static_cast<float>(k % 21), static_cast<float>(k % 19), 0.0F}.data());
  }
  expectShared<Point3DArr>(points, [](const Point3DArr& array, int round) {
    int index = -1;
    Point point{};
    array.GetNextM(point.data(), &index, round);
    int ends[2];
    return array.GetFarthestTwoPointsM(0, -1, ends, ends + 1) > 0 ? long{index} + ends[0] : -1;
  });
}

}  // namespace
}  // namespace zel::test
