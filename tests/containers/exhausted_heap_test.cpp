// Arrays whose requests the heap refuses keep what they hold.

#include <gtest/gtest.h>

#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)
// The sanitizer's own heap ends the program instead of answering null.

#include <sys/resource.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "support/array_values.h"
#include "zel/containers/char_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/kw_string_arr.h"
#include "zel/core/memory.h"

namespace zel::test {
namespace {

constexpr int kLength = 1 << 18;

/// Leaves the program no block of more than 64 KiB.
void exhaustHeap() {
  rlim_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  const rlimit limit{pages * 4096, pages * 4096};
  setrlimit(RLIMIT_AS, &limit);
  while (slMalloc(1U << 16) != nullptr) {
  }
}

template <class Array>
Array fullArray(int first) {
  Array array(kLength);
  for (int i = 0; i < kLength; ++i) {
    array.AddItemM(static_cast<char>((first + i) % 97));
  }
  return array;
}

/// Makes each request of a full array in a process without memory to spare.
template <class Array>
void expectNoneChanges(const std::vector<std::function<void(Array&, const Array&)>>& requests) {
  const Array before = fullArray<Array>(1);
  const Array other = fullArray<Array>(2);
  for (std::size_t i = 0; i < requests.size(); ++i) {
    Array array(before);
    const auto refused = [&] {
      exhaustHeap();
      requests[i](array, other);
      const bool isSame =
          countsOf(array) == Counts{kLength, kLength, kLength} &&
          std::memcmp(array.getCurrentItemPrtConstM(), before.getCurrentItemPrtConstM(),
                      kLength * sizeof *array.getCurrentItemPrtConstM()) == 0;
      std::_Exit(isSame ? 0 : 1);
    };
    EXPECT_EXIT(refused(), testing::ExitedWithCode(0), "") << "request " << i;
  }
}

TEST(ExhaustedHeap, integersStay) {
  expectNoneChanges<IntArr>({
      [](IntArr& array, const IntArr&) { array.AddItemM(1); },
      [](IntArr& array, const IntArr&) { array.AddSizeM(kLength); },
      [](IntArr& array, const IntArr&) { array.InsertItemM(1, 0); },
      [](IntArr& array, const IntArr&) { array.ChangeArrangeM(kLength / 2, 1); },
      [](IntArr& array, const IntArr&) { array.ChangeArrangeM(kLength / 2, 0); },
      [](IntArr& array, const IntArr& other) { array.MergeM(other); },
      [](IntArr& array, const IntArr& other) { array.ImportArrM(other); },
      [](IntArr& array, const IntArr& other) { array = IntArr(other).GetBoundM() ? other : array; },
  });
}

TEST(ExhaustedHeap, textsStay) {
  expectNoneChanges<CharArr>({
      [](CharArr& array, const CharArr&) { array.AddItemM('x'); },
      [](CharArr& array, const CharArr& other) {
        array.InsertStringM(0, other.GetContentConstPtrM(), kLength);
      },
      [](CharArr& array, const CharArr&) { array.SetValueM(kLength, array.GetContentPtrM()); },
      [](CharArr& array, const CharArr& other) {
        array.AddContentvcM(other.GetContentConstPtrM(), kLength);
      },
      [](CharArr& array, const CharArr& other) { array.ImportArrM(other); },
  });
}

// An element without its text would match every other text.
TEST(ExhaustedHeap, stringTablesTakeNoEmptyTexts) {
  const std::string text(1U << 18, 'x');
  const auto count = static_cast<int>(text.size());
  KwStringArr full;
  full.AddStringM(count, text.data());
  const auto refused = [&] {
    KwStringArr table;
    table.AddByCompM("kept");
    exhaustHeap();
    table.AddStringM(count, text.data());
    table.AddByCompM(text.c_str());
    table = full;
    const bool isSame = table.GetBoundM() == 1 && table.StrCmpM(0, 0, "kept") == 1;
    std::_Exit(isSame && KwStringArr(full).GetBoundM() == 0 ? 0 : 1);
  };
  EXPECT_EXIT(refused(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace zel::test

#endif
