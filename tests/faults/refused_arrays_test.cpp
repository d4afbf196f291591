// Arrays and their searches while the heap refuses.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

#include "faults/refusing_allocator.h"
#include "zel/zel.h"

namespace zel::test {
namespace {

template <class Array>
Array filled(int count) {
  Array array;
  for (int i = 0; i < count; ++i) {
    if constexpr (std::is_same_v<Array, Point3DArr>) {
      const float point[3] = {static_cast<float>(i), 0, 0};
      array.AddItemM(point);
    } else {
      array.AddItemM(static_cast<char>(i % 90 + 1));
    }
  }
  return array;
}

/// Appends 60 items to 50 with every request refused in its turn: all of them, or none and a
/// report.
template <class Array>
void expectAllOrNone(const char* name, const std::function<int(Array&, const Array&)>& append,
                     int answer) {
  const Array other = filled<Array>(60);
  const int refusals = refuseEachRequest(name, [&](RefusingHeap& heap) {
    Array array = filled<Array>(50);
    const Array before(array);
    int answered = 0;
    const Told told = heap.during([&] { answered = append(array, other); });
    const int bound = heap.hasRefused() ? 50 : 110;
    return whatIsWrong(answered == answer, "wrong answer") +
           whatIsWrong(told.hasReport == heap.hasRefused(), "not reported") +
           whatIsWrong(array.GetBoundM() == bound && array.GetAvailableNumM() == bound,
                       "appended in part") +
           whatIsWrong(
               std::memcmp(array.getCurrentItemPrtConstM(), before.getCurrentItemPrtConstM(),
                           50 * sizeof *before.getCurrentItemPrtConstM()) == 0,
               "changed");
  });
  EXPECT_GE(refusals, 2);
}

TEST(RefusedArrays, takeAllOfAnotherOrNothing) {
  using Ints = IntArr;
  expectAllOrNone<Ints>(
      "merge", [](Ints& a, const Ints& b) { return a.MergeM(b); }, 50);
  expectAllOrNone<Ints>(
      "import", [](Ints& a, const Ints& b) { return a.ImportArrM(b); }, 60);
  expectAllOrNone<RealArr>(
      "reals", [](RealArr& a, const RealArr& b) { return a.ImportArrM(b); }, 60);
  expectAllOrNone<CharArr>(
      "chars", [](CharArr& a, const CharArr& b) { return a.ImportArrM(b); }, 60);
  expectAllOrNone<Point3DArr>(
      "points", [](Point3DArr& a, const Point3DArr& b) { return a.AppendPntsM(b); }, 1);
}

// The purge leaves a stale count, so that the room it asks for is too little for the live values.
TEST(RefusedArrays, takeAllOfAnotherWithAStaleCountOrNothing) {
  refuseEachRequest("stale", [](RefusingHeap& heap) {
    IntArr other = filled<IntArr>(60);
    for (int i = 0; i < 50; ++i) {
      other.DelItemM(i);
    }
    other.PurgeDeletedItemM();
    for (int i = 0; i < 60; ++i) {
      other.SetItemM(i, i);
    }
    IntArr array;
    const Told told = heap.during([&] { array.MergeM(other); });
    const int bound = heap.hasRefused() ? 0 : 60;
    return whatIsWrong(array.GetBoundM() == bound && told.hasReport == heap.hasRefused(), "part");
  });
}

// An index is a cache: without memory for it searches walk, and nobody is told.
TEST(RefusedArrays, searchesAnswerTheSameWithoutMemory) {
  const auto ask = [](Point3DArr& points, KwStringArr& texts) {
    long answers = 0;
    for (int i = 0; i < 900; ++i) {
      const float point[3] = {static_cast<float>(i * 7 % 300), 0,
                              static_cast<float>(i % 2) * 1e-5F};
      points.SetItemZValueM(i % 300, 0.0F);
      answers = (answers * 31 + points.AddPointM(point)) % 1000003;
      answers = (answers * 31 + texts.FindStrM(std::to_string(i * 7 % 330).c_str())) % 1000003;
    }
    return answers;
  };
  const Point3DArr points = filled<Point3DArr>(300);
  KwStringArr texts;
  for (int i = 0; i < 300; ++i) {
    texts.AddByCompM(std::to_string(i).c_str());
  }
  Point3DArr pointsAsked(points);
  const long expected = ask(pointsAsked, texts);
  const int refusals = refuseEachRequest("searches", [&](RefusingHeap& heap) {
    Point3DArr somePoints(points);
    KwStringArr someTexts(texts);
    long answers = 0;
    const Told told = heap.during([&] { answers = ask(somePoints, someTexts); });
    return whatIsWrong(answers == expected, "other answers") +
           whatIsWrong(!told.anything(), "an error told");
  });
  EXPECT_GT(refusals, 10);
}

}  // namespace
}  // namespace zel::test
