// Lists read and written while the heap refuses: all of it is there, or the caller has been told.

#include <gtest/gtest.h>

#include <cstdio>

#include "faults/refusing_allocator.h"
#include "zel/containers/int_arr.h"

namespace zel::test {
namespace {

TEST(RefusingHeap, refusesEveryRequestInItsTurn) {
  const int refusals = refuseEachRequest("growth", [](RefusingHeap& heap) {
    IntArr array;
    const Told told = heap.during([&] {
      for (int i = 0; i < 100; ++i) {
        array.AddItemM(i);
      }
    });
    return whatIsWrong(told.hasReport == heap.hasRefused(), "not reported") +
           whatIsWrong(told.hasReport || array.GetAvailableNumM() == 100, "lost");
  });
  EXPECT_EQ(refusals, 2 * 4);  // 14, 28, 56 and 112 slots
}

TEST(RefusingHeap, refusesTheCLibraryAndOperatorNewToo) {
  RefusingHeap heap(0, true);
  const Told told = heap.during([] {
    EXPECT_EQ(std::tmpfile(), nullptr);
    EXPECT_EQ(new (std::nothrow) int, nullptr);
    throw 108;
  });
  EXPECT_EQ(told.thrown, 108);
}

}  // namespace
}  // namespace zel::test
