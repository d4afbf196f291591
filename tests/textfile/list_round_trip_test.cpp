// Tagged lists of random arrays: what comes back, whole or damaged.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>

#include "list_files.h"
#include "random_arrays.h"
#include "support/array_values.h"
#include "support/memory_file.h"

namespace zel::test {
namespace {

template <class Array>
class ValueRoundTrip : public ListTest {};
using ValueArrays =
    testing::Types<CharArr, IntArr, Int2DArr, Int4DArr, RealArr, Point2DArr, Point3DArr>;
TYPED_TEST_SUITE(ValueRoundTrip, ValueArrays);

/// The binary form: number of slots, live count, the slots.
template <class Array>
std::string binaryForm(const Array& array) {
  const int counts[] = {array.GetBoundM(), array.GetAvailableNumM()};
  const auto values = valuesOf(array);
  return std::string(reinterpret_cast<const char*>(counts), sizeof counts)
      .append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof values[0]);
}

/// Puts the mark into all components of deleted items, as it comes back from a file.
template <class Array>
void markWholly(Array* array) {
  for (int i = 0; i < array->GetBoundM(); ++i) {
    auto& slot = array->getCurrentItemPrtM()[i];
    if constexpr (std::is_array_v<std::remove_reference_t<decltype(slot)>>) {
      if (!Kind<Array>::isLive(slot[0])) {
        std::fill(std::begin(slot), std::end(slot), slot[0]);
      }
    }
  }
}

// Holes at the end do not come back from an indexed text list, so the last slot stays live.
TYPED_TEST(ValueRoundTrip, keepsEveryBitAndHole) {
  Random random(33);
  for (int round = 0; round < 40; ++round) {
    TypeParam array;
    fill(random, &array, 1 + static_cast<int>(random() % 60U));
    markWholly(&array);
    for (const char* mode : {"w", "wb"}) {
      const bool isBinary = mode[1] == 'b' || std::is_same_v<TypeParam, Int2DArr>;
      const std::string bytes = this->listOf(array, mode);
      EXPECT_TRUE(!isBinary || bytes == binaryForm(array));
      TypeParam copy;
      ASSERT_EQ(this->read(&copy, bytes, isBinary ? "rb" : "r"), 0);
      // Holes of a Point2DArr are counted when they come back from a text.
      const std::size_t counts = std::is_same_v<TypeParam, Point2DArr> && !isBinary ? 8 : 0;
      EXPECT_TRUE(binaryForm(copy).substr(counts) == binaryForm(array).substr(counts));
    }
  }
}

template <class Array>
class DamagedList : public ListTest {};
using TaggedArrays = testing::Types<CharArr, IntArr, Int2DArr, Int4DArr, RealArr, Point2DArr,
                                    Point3DArr, KwStringArr, NodeArr, TriangleArr, QuadArr>;
TYPED_TEST_SUITE(DamagedList, TaggedArrays);

// Whatever is cut off or altered, reading ends with the read failure or with a valid array.
TYPED_TEST(DamagedList, doesNoHarm) {
  Random random(34);
  const MemoryFile memory;
  TypeParam array;
  fill(random, &array, 12);
  for (const bool isBinary : {false, true}) {
    const std::string bytes = this->listOf(array, isBinary ? "wb" : "w");
    for (int round = 0; round < 800; ++round) {
      ASSERT_TRUE(memory.store(damaged(random, bytes)));
      this->io_.OpenM(memory.name(), isBinary ? "rb" : "r");
      TypeParam read;
      const int code = thrownBy([&] { read.FmInputZelLstM(&this->io_); });
      EXPECT_TRUE(code == 0 || code == 107);
      EXPECT_LE(read.GetBoundM(), read.GetLengthM());
      EXPECT_LE(static_cast<std::size_t>(read.GetLengthM()), 4 * bytes.size());
    }
  }
}

}  // namespace
}  // namespace zel::test
