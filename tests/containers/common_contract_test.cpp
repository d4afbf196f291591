// One suite for what all value arrays promise alike.

#include <gtest/gtest.h>

#include <concepts>
#include <functional>
#include <type_traits>
#include <utility>

#include "containers/slot_model.h"
#include "support/threads.h"

namespace zel::test {
namespace {

template <class Array>
class CommonContract : public ::testing::Test {};

using AllArrays = ::testing::Types<CharArr, IntArr, Int2DArr, Int3DArr, Int4DArr, RealArr, PixelArr,
                                   Point2DArr, Point3DArr>;
TYPED_TEST_SUITE(CommonContract, AllArrays);

/// The method set that every array has, in the forms that callers write.
template <class Array>
concept HasCommonSet = std::is_default_constructible_v<Array> &&
    std::is_constructible_v<Array, int> && std::is_copy_constructible_v<Array> &&
    std::is_copy_assignable_v<Array> && std::is_nothrow_move_constructible_v<Array> &&
    std::is_nothrow_move_assignable_v<Array> && std::has_virtual_destructor_v<Array> &&
    requires(Array array, const Array constant, typename Kind<Array>::Component* item, int index) {
  requires Kind<Array>::kWidth == 1 || requires { array.AddItemM(item); };
  { array.AddItemM(in<Array>({})) } -> std::same_as<int>;
  { array.SetItemM(in<Array>({}), index) } -> std::same_as<int>;
  { array.InsertItemM(in<Array>({}), index) } -> std::same_as<int>;
  { array.AddSizeM(index) } -> std::same_as<int>;
  { array.SetIncrementM(index) } -> std::same_as<int>;
  { array.DelItemM(index) } -> std::same_as<int>;
  { array.DelAllM() } -> std::same_as<int>;
  { constant.GetItemM(item, index) } -> std::same_as<int>;
  { constant.GetFirstM(item, &index) } -> std::same_as<int>;
  { constant.GetNextM(item, &index, index) } -> std::same_as<int>;
  { constant.GetAvailableNumM() } -> std::same_as<int>;
  { constant.GetAvailableNumM(index) } -> std::same_as<int>;
  { constant.GetBoundM() } -> std::same_as<int>;
  { constant.GetLengthM() } -> std::same_as<int>;
  {*array.getCurrentItemPrtM()};
  {*constant.getCurrentItemPrtConstM()};
};

TYPED_TEST(CommonContract, methodSetIsTheSameInAll) {
  static_assert(HasCommonSet<TypeParam>);
  constexpr bool isPixels = std::is_same_v<TypeParam, PixelArr>;
  static_assert(isPixels != requires(TypeParam array) { array.InitialSizeM(9); });
  static_assert(isPixels != requires(TypeParam array) { array.GetItemPM(0); });
}

/// An item that is live by every test of its class.
template <class Array>
typename Kind<Array>::Item liveItem(int value) {
  return filledItem<Array>(static_cast<typename Kind<Array>::Component>(value));
}

template <class Array>
Array threeItems() {
  Array array;
  for (int value = 5; value <= 7; ++value) {
    array.AddItemM(in<Array>(liveItem<Array>(value)));
  }
  return array;
}

/// Copies there and back, and to itself; a store that two copies shared would be lost.
template <class Array>
void copyAround(Array& array) {
  const Array copy(array);
  Array assigned = threeItems<Array>();
  assigned.AddSizeM(9);
  assigned = copy;
  array.DelAllM();
  array.SetIncrementM(99);  // to be replaced
  const Array& same = array = assigned;
  array = same;
}

/// Moves there and back; what was moved from is as new.
template <class Array>
void moveAround(Array& array) {
  const void* const store = array.getCurrentItemPrtConstM();
  const bool isInHeap = array.GetLengthM() > 4;
  Array moved(std::move(array));
  EXPECT_EQ(moved.getCurrentItemPrtConstM() == store, isInHeap);
  expectSameSlots(array, SlotModel<Array>());  // NOLINT: moved-from is specified
  array.SetItemM(in<Array>(liveItem<Array>(1)), 4);
  EXPECT_EQ(array.GetLengthM(), 4 + 1 + 10);
  array.SetIncrementM(99);  // to be replaced
  Array& same = array = std::move(moved);
  expectSameSlots(moved, SlotModel<Array>());  // NOLINT: moved-from is specified
  array = std::move(same);
}

/// One random mutation of array and model alike, and the same answer from both.
template <class Array>
void mutate(Array& array, SlotModel<Array>& model, std::mt19937& random) {
  const auto item = randomItem<Array>(random);
  const int index = static_cast<int>(random() % static_cast<unsigned>(model.bound + 6)) - 2;
  const int place = random() % 20 == 0 ? 3 * model.length() : index;
  const int count = static_cast<int>(random() % 4) - 1;
  const int increment = static_cast<int>(random() % 14) - 2;
  const std::function<void()> mutations[] = {
      [&] { EXPECT_EQ(array.AddItemM(in<Array>(item)), model.add(item)); },
      [&] { EXPECT_EQ(array.SetItemM(in<Array>(item), place), model.set(item, place)); },
      [&] { EXPECT_EQ(array.InsertItemM(in<Array>(item), index), model.insert(item, index)); },
      [&] { EXPECT_EQ(array.DelItemM(index), model.remove(index)); },
      [&] { EXPECT_EQ(array.DelAllM(), model.clear()); },
      [&] { EXPECT_EQ(array.AddSizeM(count), model.addSize(count)); },
      [&] { EXPECT_EQ(array.SetIncrementM(increment), model.setIncrement(increment)); },
      [&] { copyAround(array); },
      [&] { moveAround(array); },
  };
  static constexpr int kShares[] = {0, 0, 0, 0, 0, 0, 1, 1, 1, 2, 2, 3, 3, 3, 4, 5, 6, 7, 8};
  mutations[kShares[random() % std::size(kShares)]]();
}

TYPED_TEST(CommonContract, everyMutationMatchesThePlainModel) {
  std::mt19937 random(20240611);
  for (int round = 0; round < 60; ++round) {
    TypeParam array;
    SlotModel<TypeParam> model;
    for (int step = 0; step < 60; ++step) {
      mutate(array, model, random);
      ASSERT_NO_FATAL_FAILURE(expectSameSlots(array, model));
      ASSERT_FALSE(TestFixture::HasFailure()) << "round " << round << " " << step;
    }
    ASSERT_NO_FATAL_FAILURE(expectSameWalk(array, model));
  }
}

TYPED_TEST(CommonContract, ThreadsReadOneConstArrayAtOnce) {
  TypeParam array;
  SlotModel<TypeParam> model;
  for (int i = 0; i < 50; ++i) {
    array.AddItemM(in<TypeParam>(liveItem<TypeParam>(i)));
    model.add(liveItem<TypeParam>(i));
  }
  onThreads(4, [&](int) {
    expectSameSlots(std::as_const(array), model);
    expectSameWalk(std::as_const(array), model);
    expectSameSlots(TypeParam(array), model);
  });
}

TYPED_TEST(CommonContract, newArrayIsEmptyAndSmall) {
  expectSameSlots(TypeParam(), SlotModel<TypeParam>());
  for (const int length : {-3, 0, 4}) {
    expectSameSlots(TypeParam(length), SlotModel<TypeParam>());
  }
  SlotModel<TypeParam> seven;
  seven.addSize(3);
  expectSameSlots(TypeParam(7), seven);
}

TYPED_TEST(CommonContract, upToFourItemsLieInsideTheObject) {
  TypeParam array;
  const auto inside = [&array] {
    const char* store = reinterpret_cast<const char*>(array.getCurrentItemPrtConstM());
    const char* object = reinterpret_cast<const char*>(&array);
    return store >= object && store < object + sizeof array;
  };
  for (int i = 0; i < 5; ++i) {
    array.AddItemM(in<TypeParam>(liveItem<TypeParam>(i)));
    EXPECT_EQ(inside(), i < 4);
  }
  EXPECT_EQ(array.GetLengthM(), 15);
  array.DelAllM();
  EXPECT_TRUE(inside());
}

TYPED_TEST(CommonContract, readingOutsideTheBoundGivesTheMarkAndOne) {
  const TypeParam array = threeItems<TypeParam>();
  for (const int index : {-2147483647, -1, 3, 2147483647}) {
    auto item = liveItem<TypeParam>(9);
    EXPECT_EQ(array.GetItemM(item.data(), index), 1);
    auto expected = liveItem<TypeParam>(9);
    std::fill_n(expected.begin(), Kind<TypeParam>::kMissWidth, Kind<TypeParam>::kMark);
    EXPECT_TRUE(sameBits<TypeParam>(item, expected)) << index;
  }
}

TYPED_TEST(CommonContract, requestBeyondTwoGigabytesIsIgnored) {
  TypeParam array = threeItems<TypeParam>();
  EXPECT_EQ(array.AddSizeM(2147483647), 1);
  EXPECT_EQ(array.SetItemM(in<TypeParam>(liveItem<TypeParam>(1)), 2147483647), 1);
  EXPECT_EQ(countsOf(array), (Counts{.bound = 3, .live = 3, .length = 4}));
}

TYPED_TEST(CommonContract, itemFromTheOwnStoreSurvivesGrowth) {
  TypeParam array = threeItems<TypeParam>();
  for (int i = 0; i < 40; ++i) {
    const auto* slot = array.getCurrentItemPrtConstM() + 1;
    array.AddItemM(*slot);
  }
  EXPECT_TRUE(sameBits<TypeParam>(rawSlot(array, 42), liveItem<TypeParam>(6)));
}

}  // namespace
}  // namespace zel::test
