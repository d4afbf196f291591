// One suite for what all value arrays promise alike.

#include <gtest/gtest.h>

#include <concepts>
#include <type_traits>
#include <utility>

#include "containers/slot_model.h"

namespace zel::test {
namespace {

template <class Array>
class CommonContract : public ::testing::Test {};

struct ArrayNames {
  template <class Array>
  static std::string GetName(int /*index*/) {
    return Kind<Array>::kName;
  }
};

using AllArrays = ::testing::Types<CharArr, IntArr, Int2DArr, Int3DArr, Int4DArr, RealArr, PixelArr,
                                   Point2DArr, Point3DArr>;
TYPED_TEST_SUITE(CommonContract, AllArrays, ArrayNames);

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

/// One random mutation of array and model alike.
template <class Array>
void mutate(Array& array, SlotModel<Array>& model, std::mt19937& random) {
  const auto item = randomItem<Array>(random);
  const int index = static_cast<int>(random() % static_cast<unsigned>(model.bound + 6)) - 2;
  switch (random() % 16) {
    case 0:
      ASSERT_EQ(array.DelAllM(), 1);
      return model.clear();
    case 1: {
      const int count = static_cast<int>(random() % 4) - 1;
      ASSERT_EQ(array.AddSizeM(count), 1);
      return model.addSize(count);
    }
    case 2: {
      const int increment = static_cast<int>(random() % 14) - 2;
      ASSERT_EQ(array.SetIncrementM(increment), 1);
      model.increment = increment > 0 ? increment : model.increment;
      return;
    }
    case 3:
    case 4:
    case 5:
      ASSERT_EQ(array.DelItemM(index), 1);
      return model.remove(index);
    case 6:
    case 7:
      ASSERT_EQ(array.InsertItemM(in<Array>(item), index), 1);
      return model.insert(item, index);
    case 8:
    case 9:
    case 10:
      ASSERT_EQ(array.SetItemM(in<Array>(item), index), 1);
      return model.set(item, index);
    default:
      ASSERT_EQ(array.AddItemM(in<Array>(item)), model.add(item));
  }
}

TYPED_TEST(CommonContract, everyMutationMatchesThePlainModel) {
  std::mt19937 random(20240611);
  for (int round = 0; round < 60; ++round) {
    TypeParam array;
    SlotModel<TypeParam> model;
    for (int step = 0; step < 60; ++step) {
      ASSERT_NO_FATAL_FAILURE(mutate(array, model, random));
      ASSERT_NO_FATAL_FAILURE(expectSameSlots(array, model)) << "round " << round << " " << step;
    }
    ASSERT_NO_FATAL_FAILURE(expectSameWalk(array, model));
  }
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
  for (int i = 0; i < 4; ++i) {
    array.AddItemM(in<TypeParam>(liveItem<TypeParam>(i)));
    EXPECT_TRUE(inside());
  }
  array.AddItemM(in<TypeParam>(liveItem<TypeParam>(4)));
  EXPECT_FALSE(inside());
  EXPECT_EQ(array.GetLengthM(), 15);
  array.DelAllM();
  EXPECT_TRUE(inside());
}

TYPED_TEST(CommonContract, writingFarOutGrowsByDoublingOrToIndexPlusIncrement) {
  TypeParam array;
  array.SetItemM(in<TypeParam>(liveItem<TypeParam>(7)), 4);
  EXPECT_EQ(array.GetLengthM(), 15);
  EXPECT_EQ(array.GetBoundM(), 5);
  EXPECT_EQ(array.GetAvailableNumM(), 1);
  array.SetItemM(in<TypeParam>(liveItem<TypeParam>(7)), 15);
  EXPECT_EQ(array.GetLengthM(), 30);
  array.SetItemM(in<TypeParam>(liveItem<TypeParam>(7)), 99);
  EXPECT_EQ(array.GetLengthM(), 110);
}

TYPED_TEST(CommonContract, copiesAreDeepAndIndependent) {
  for (const int extra : {0, 20}) {
    TypeParam source = threeItems<TypeParam>();
    source.AddSizeM(extra);
    source.SetIncrementM(3);
    TypeParam copy(source);
    TypeParam assigned = threeItems<TypeParam>();
    assigned.AddSizeM(9);
    assigned = source;
    for (TypeParam* other : {&copy, &assigned}) {
      EXPECT_EQ(other->GetLengthM(), source.GetLengthM());
      EXPECT_NE(other->getCurrentItemPrtConstM(), source.getCurrentItemPrtConstM());
      other->DelItemM(0);
      other->SetItemM(in<TypeParam>(liveItem<TypeParam>(1)), 50);
      EXPECT_EQ(other->GetLengthM(), std::max(2 * source.GetLengthM(), 54));
    }
    EXPECT_TRUE(sameBits<TypeParam>(rawSlot(source, 0), liveItem<TypeParam>(5)));
    EXPECT_EQ(source.GetAvailableNumM(), 3);
  }
}

TYPED_TEST(CommonContract, selfAssignmentKeepsTheContent) {
  TypeParam array = threeItems<TypeParam>();
  array.AddSizeM(10);
  TypeParam& same = array;
  array = same;
  array = std::move(same);
  EXPECT_EQ(array.GetBoundM(), 3);
  EXPECT_EQ(array.GetLengthM(), 14);
  EXPECT_TRUE(sameBits<TypeParam>(rawSlot(array, 2), liveItem<TypeParam>(7)));
}

TYPED_TEST(CommonContract, movingTakesTheStoreAndLeavesANewArray) {
  for (const int extra : {0, 20}) {
    TypeParam source = threeItems<TypeParam>();
    source.AddSizeM(extra);
    const void* store = source.getCurrentItemPrtConstM();
    TypeParam moved(std::move(source));
    EXPECT_EQ(moved.getCurrentItemPrtConstM() == store, extra > 0);
    EXPECT_EQ(moved.GetAvailableNumM(), 3);
    expectSameSlots(source, SlotModel<TypeParam>());  // NOLINT: moved-from is specified
    source = std::move(moved);
    EXPECT_TRUE(sameBits<TypeParam>(rawSlot(source, 1), liveItem<TypeParam>(6)));
    expectSameSlots(moved, SlotModel<TypeParam>());  // NOLINT: moved-from is specified
  }
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
  EXPECT_EQ(array.GetLengthM(), 4);
  EXPECT_EQ(array.GetBoundM(), 3);
  EXPECT_EQ(array.GetAvailableNumM(), 3);
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
