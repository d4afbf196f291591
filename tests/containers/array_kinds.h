#pragma once

/// What the contract says of each array, written down independently of the library's policies.

#include <array>
#include <cstring>
#include <random>
#include <string>

#include "zel/containers/int_arr.h"

namespace zel::test {

inline constexpr int kIntMark = -2147483647;

/// What most kinds share; each Kind<Array> adds its component type, mark and tests.
template <class ComponentType, int kComponents>
struct KindBase {
  using Component = ComponentType;
  using Item = std::array<Component, kComponents>;
  static constexpr int kWidth = kComponents;
  static constexpr int kMissWidth = kComponents;  ///< components marked by a read out of range
  static constexpr bool kInsertIsWrite = false;
};

template <class Component>
struct IntKind : KindBase<int, sizeof(Component) / sizeof(int)> {
  static constexpr int kMark = kIntMark;
  static bool countsOver(int old) { return old == kMark; }
  static bool walked(int first) { return first > kMark; }
  static bool walkedBack(int first) { return walked(first); }
  static bool deletable(int first) { return first > kMark; }
  static int randomComponent(std::mt19937& random) {
    static constexpr int kValues[] = {kMark, -2147483647 - 1, -1, 0, 1, 2, 3, 7, 2147483647};
    return kValues[random() % std::size(kValues)];
  }
};

template <class Array>
struct Kind;

template <>
struct Kind<IntArr> : IntKind<int> {
  static constexpr const char* kName = "IntArr";
};

/// An item as the array's methods take it: a scalar, or a pointer to components.
template <class Array>
auto in(const typename Kind<Array>::Item& item) {
  if constexpr (Kind<Array>::kWidth == 1) {
    return item[0];
  } else {
    return item.data();
  }
}

template <class Array>
typename Kind<Array>::Item filledItem(typename Kind<Array>::Component value) {
  typename Kind<Array>::Item item;
  item.fill(value);
  return item;
}

template <class Array>
typename Kind<Array>::Item randomItem(std::mt19937& random) {
  typename Kind<Array>::Item item;
  for (auto& component : item) {
    component = Kind<Array>::randomComponent(random);
  }
  return item;
}

/// Slot `index` of the store, whether below the bound or not.
template <class Array>
typename Kind<Array>::Item rawSlot(const Array& array, int index) {
  typename Kind<Array>::Item item;
  std::memcpy(item.data(), array.getCurrentItemPrtConstM() + index, sizeof item);
  return item;
}

template <class Array>
bool sameBits(const typename Kind<Array>::Item& a, const typename Kind<Array>::Item& b) {
  return std::memcmp(a.data(), b.data(), sizeof a) == 0;
}

}  // namespace zel::test
