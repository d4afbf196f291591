#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <ostream>
#include <type_traits>
#include <utility>
#include <vector>

namespace zel::test {

template <class Slot>
struct ValueOfSlot {
  using Type = Slot;
};
template <class Component, std::size_t kWidth>
struct ValueOfSlot<Component[kWidth]> {
  using Type = std::array<Component, kWidth>;
};

/// What a slot of a value array holds: a number, or a std::array of its components.
template <class Array>
using Value = typename ValueOfSlot<
    std::remove_cvref_t<decltype(*std::declval<const Array&>().getCurrentItemPrtConstM())>>::Type;

/// An array of these values, one by one added.
template <class Array>
Array arrayOf(std::initializer_list<Value<Array>> values) {
  Array array;
  for (const auto& value : values) {
    if constexpr (std::is_arithmetic_v<Value<Array>>) {
      array.AddItemM(value);
    } else {
      array.AddItemM(value.data());
    }
  }
  return array;
}

/// The slots below the bound.
template <class Array>
std::vector<Value<Array>> valuesOf(const Array& array) {
  std::vector<Value<Array>> values(static_cast<std::size_t>(std::max(array.GetBoundM(), 0)));
  if (!values.empty()) {
    std::memcpy(values.data(), array.getCurrentItemPrtConstM(), values.size() * sizeof values[0]);
  }
  return values;
}

/// The three numbers that every array tells of itself.
struct Counts {
  int bound;
  int live;
  int length;
  bool operator==(const Counts&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const Counts& counts) {
    return out << "bound " << counts.bound << ", live " << counts.live << ", length "
               << counts.length;
  }
};

template <class Array>
Counts countsOf(const Array& array) {
  return {array.GetBoundM(), array.GetAvailableNumM(), array.GetLengthM()};
}

}  // namespace zel::test
