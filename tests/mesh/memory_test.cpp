// What the mesh does when the heap refuses, and how much of it the searches may take.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <new>

#include "support/meshes.h"
#include "zel/containers/point2d_arr.h"

namespace {

constexpr long kNoLimit = std::numeric_limits<long>::max();
long requestsLeft = kNoLimit;   // of the heap, before it refuses one
bool isRefusingForGood = true;  // and then all others, too
std::size_t bytesAllotted = 0;  // by requests since a test last set it

}  // namespace

// Not inlined: gcc would take the free() for the wrong end of a new it also sees.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  bytesAllotted += size;
  const bool isGranted = requestsLeft > 0 || (requestsLeft < 0 && !isRefusingForGood);
  --requestsLeft;
  return isGranted ? std::malloc(size) : nullptr;
}
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* const block = operator new(size, std::nothrow);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}

namespace {

using namespace zel::test;

/// Calls `ask` with a heap that refuses its first, second ... request until it refuses none.
/// @return how often something was refused; each time `isRefusal(ask())` must hold.
template <class Ask, class IsRefusal>
int refuseEachRequest(Ask ask, IsRefusal isRefusal) {
  for (int granted = 0;; ++granted) {
    requestsLeft = granted;
    const auto answer = ask();
    const bool wasRefused = requestsLeft < 0;
    requestsLeft = kNoLimit;
    if (!wasRefused) {
      return granted;
    }
    EXPECT_TRUE(isRefusal(answer)) << "request " << granted;
  }
}

TEST(Memory, unfoldingAnswersZeroWhenItIsRefused) {
  const Mesh mesh = makeFlatGrid(6, 6);
  const int refusals = refuseEachRequest(
      [&] {
        TriangleArr faces(mesh.triangles);
        Point2DArr uv;
        return faces.GetTexCoordM(noSystem(), &uv, mesh.nodes);
      },
      [](int result) { return result == 0; });
  EXPECT_GT(refusals, 2);
}

TEST(Memory, farthestPairIsNoneWhenItIsRefused) {
  Point3DArr points;
  for (int i = 0; i < 300; ++i) {
    const auto x = static_cast<float>(i);
    points.AddItemM(Point{std::fmod(x, 17.0F), std::fmod(x, 13.0F), x * 0.1F}.data());
  }
  int a = 0;
  int b = 0;
  const int refusals =
      refuseEachRequest([&] { return points.GetFarthestTwoPointsM(0, -1, &a, &b); },
                        [&](float value) { return value == 0 && a == b && a < 0; });
  EXPECT_GT(refusals, 2);
  EXPECT_GT(b, a);
}

TEST(Memory, searchesAnswerTheSameWhenItIsRefused) {
  const Mesh mesh = makeFlatGrid(12, 12);
  const auto ask = [&] {
    NodeArr nodes(mesh.nodes);
    TriangleArr faces(mesh.triangles);
    long answers = 0;
    const auto note = [&](int answer) { answers = (answers * 31 + answer) % 1000003; };
    for (int round = 0; round < 50; ++round) {
      const Point p{static_cast<float>(round % 15), static_cast<float>(round % 7), 0.0F};
      NodeCL node = nodeAt(p);
      int at = 0;
      note(nodes.GetNearestNodeM(node, p.data()));
      nodes.MergeNodeLstM(node, &at);
      note(at);
      const int corners[3] = {round, round + 1, round + 14};
      note(faces.FindTriangleM(corners));
      note(faces.JudgeBoundM(round, round + 1, &at));
      note(faces.getFirstValidIdxM());
      faces.ChangeNodeIdxM(round, round + 20);
      faces.DelItemM(2 * round);
    }
    return answers;
  };
  const long expected = ask();
  for (const bool forGood : {true, false}) {
    isRefusingForGood = forGood;
    const int refusals = refuseEachRequest(ask, [&](long answers) { return answers == expected; });
    isRefusingForGood = true;
    EXPECT_GT(refusals, 10);
  }
}

TEST(Memory, changesThatNobodySearchesForTakeNoMore) {
  Mesh mesh = makeFlatGrid(20, 20);
  int at = 0;
  for (int search = 0; search < 10; ++search) {
    mesh.triangles.JudgeBoundM(search, search + 1, &at);
  }
  bytesAllotted = 0;
  for (int change = 0; change < 100000; ++change) {
    mesh.addTriangle(change % 400, 5, 7);
    mesh.triangles.DelItemM(mesh.triangles.GetBoundM() - 1);
  }
  EXPECT_LT(bytesAllotted, 1000000U);
}

}  // namespace
