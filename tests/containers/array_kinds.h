#pragma once

/// What the contract says of each array, written down independently of the library's policies.

#include <array>
#include <cstring>
#include <random>

#include "zel/containers/char_arr.h"
#include "zel/containers/int2d_arr.h"
#include "zel/containers/int3d_arr.h"
#include "zel/containers/int4d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/pixel_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/containers/real_arr.h"

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
  static constexpr bool kWalkSkipsHoles = true;
  static constexpr bool kLastIsIndex = false;  ///< there is a GetLastM() that gives the index
};

template <int kComponents>
struct IntKind : KindBase<int, kComponents> {
  static constexpr int kMark = kIntMark;
  static constexpr bool kLastIsIndex = true;
  static bool countsOver(int old) { return old == kMark; }
  static bool isLive(int first) { return first > kMark; }
  static int randomComponent(std::mt19937& random) {
    static constexpr int kValues[] = {kMark, -2147483647 - 1, -1, 0, 1, 2, 3, 7, 2147483647};
    return kValues[random() % std::size(kValues)];
  }
};

template <int kComponents>
struct FloatKind : KindBase<float, kComponents> {
  static constexpr float kMark = -1.0e18F;
  static bool countsOver(float old) { return !(old > -9.999e17F); }
  static bool isLive(float first) { return first > -9.999e17F; }
  // The values sit on, between and beside the thresholds.
  static float randomComponent(std::mt19937& random) {
    static constexpr float kValues[] = {kMark,     -9.9995e17F, -9.999e17F, -7e17F,   -5e17F,
                                        -4.99e17F, -3e18F,      0.0F,       -123.25F, 1e30F};
    return kValues[random() % std::size(kValues)];
  }
};

template <class Array>
struct Kind;

template <>
struct Kind<CharArr> : KindBase<char, 1> {
  static constexpr bool kWalkSkipsHoles = false;
  static constexpr bool kLastIsIndex = true;
  static constexpr char kMark = 0;
  static bool countsOver(char /*old*/) { return true; }
  static bool isLive(char first) { return first >= 1; }
  static char randomComponent(std::mt19937& random) {
    return static_cast<char>(random() % 3 == 0 ? 0 : random() % 256);
  }
};

template <>
struct Kind<IntArr> : IntKind<1> {};

template <>
struct Kind<Int2DArr> : IntKind<2> {
  static constexpr bool kLastIsIndex = false;
};

template <>
struct Kind<Int3DArr> : IntKind<3> {};

template <>
struct Kind<Int4DArr> : IntKind<4> {};

template <>
struct Kind<RealArr> : FloatKind<1> {
  static constexpr bool kLastIsIndex = true;
  static bool isLive(float first) { return first > kMark; }
};

template <>
struct Kind<PixelArr> : FloatKind<4> {};

template <>
struct Kind<Point2DArr> : FloatKind<2> {};

template <>
struct Kind<Point3DArr> : FloatKind<3> {
  static constexpr int kMissWidth = 2;
  static constexpr bool kInsertIsWrite = true;
  static bool countsOver(float old) { return !(old >= -5e17F); }
  static bool isLive(float first) { return first > -5e17F; }
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
