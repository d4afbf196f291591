#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <tuple>
#include <type_traits>
#include <utility>

#include "differential/scene.h"
#include "zel/containers/point3d_arr.h"
#include "zel/curves/touch_cur.h"

namespace zel::test {

template <class Number>
bool isSame(Number a, Number b) {
  if constexpr (std::is_floating_point_v<Number>) {
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
  } else {
    return a == b;
  }
}

/// A parameter by value.
template <class Parameter>
struct Argument {
  Argument(const Scene& scene, std::size_t row, Ints ints) {
    if constexpr (std::is_floating_point_v<Parameter>) {
      value = scene.numbers[row];
    } else {
      value = static_cast<Parameter>(scene.ints(ints)[row]);
    }
  }
  Parameter pass() { return value; }
  bool operator==(const Argument& other) const { return isSame(value, other.value); }

  Parameter value;
};

/// A parameter by pointer or reference: a block of numbers, or one of the records that consist of
/// numbers, with more behind it.
template <class Parameter>
requires(std::is_pointer_v<Parameter> ||
         std::is_reference_v<Parameter>) struct Argument<Parameter> {
  using Pointee = std::remove_cv_t<
      std::remove_all_extents_t<std::remove_pointer_t<std::remove_reference_t<Parameter>>>>;
  using Number = std::conditional_t<std::is_arithmetic_v<Pointee>, Pointee, float>;

  Argument(const Scene& scene, std::size_t row, Ints ints) {
    if constexpr (std::is_same_v<Number, float>) {
      std::memcpy(numbers, scene.blocks[row].data(), sizeof numbers);
    } else if constexpr (std::is_same_v<Number, double>) {  // doubles that no float holds
      std::transform(scene.blocks[row].begin(), scene.blocks[row].end(), numbers,
                     [](float number) { return 1.0000000001 * number; });
    } else {
      std::fill(std::begin(numbers), std::end(numbers), scene.ints(ints)[row]);
    }
    if constexpr (std::is_same_v<Pointee, TouchCurD>) {
      numbers[0] = std::bit_cast<float>(scene.codes[row]);
      numbers[1] = std::bit_cast<float>(scene.codes[Scene::kRows - 1 - row]);
    }
  }
  Parameter pass() {
    using Plain = std::remove_reference_t<Parameter>;
    if constexpr (std::is_reference_v<Parameter>) {
      return *reinterpret_cast<Plain*>(numbers);
    } else {
      return reinterpret_cast<Plain>(numbers);
    }
  }
  bool operator==(const Argument& other) const {
    return std::memcmp(numbers, other.numbers, sizeof numbers) == 0 ||
           std::equal(std::begin(numbers), std::end(numbers), other.numbers, isSame<Number>);
  }

  alignas(16) Number numbers[64]{};
};

template <>
struct Argument<const Point3DArr&> {
  Argument(const Scene& scene, std::size_t row, Ints /*ints*/) {
    for (std::size_t i = 0; i + 3 <= scene.blocks[row].size(); i += 3) {
      points.AddItemM(&scene.blocks[row][i]);
    }
  }
  const Point3DArr& pass() { return points; }
  bool operator==(const Argument& /*other*/) const { return true; }

  Point3DArr points;
};

/// What a function answered and made of its arguments.
template <class Result, class... Parameters>
class Call {
 public:
  Call(Result (*function)(Parameters...), const Scene& scene, Ints ints)
      : Call(function, scene, ints, std::index_sequence_for<Parameters...>()) {}

  bool operator==(const Call& other) const {
    if constexpr (!std::is_void_v<Result>) {
      if (!isSame(result_, other.result_)) {
        return false;
      }
    }
    return arguments_ == other.arguments_;
  }

 private:
  template <std::size_t... Rows>
  Call(Result (*function)(Parameters...), const Scene& scene, Ints ints,
       std::index_sequence<Rows...> /*rows*/)
      : arguments_(Argument<Parameters>(scene, Rows, ints)...) {
    if constexpr (std::is_void_v<Result>) {
      function(std::get<Rows>(arguments_).pass()...);
    } else {
      result_ = function(std::get<Rows>(arguments_).pass()...);
    }
  }

  std::tuple<Argument<Parameters>...> arguments_;
  std::conditional_t<std::is_void_v<Result>, int, Result> result_{};
};

/// A function of the library, whatever its signature.
class Function {
 public:
  template <class Result, class... Parameters>
  Function(Result (*function)(Parameters...), Ints ints = Ints::kCounts)  // NOLINT: a table entry
      : address_(reinterpret_cast<const void*>(function)),
        ints_(ints),
        agree_([](const void* a, const void* b, const Scene& scene, Ints kind) {
          using Pointer = Result (*)(Parameters...);
          using Made = Call<Result, Parameters...>;
          const auto call = [&](const void* code) {
            return Made(reinterpret_cast<Pointer>(const_cast<void*>(code)), scene, kind);
          };
          return call(a) == call(b);
        }) {}

  [[nodiscard]] const void* address() const { return address_; }
  /// Whether a twin, a function of the same signature, does the same to the same arguments.
  [[nodiscard]] bool agreesWith(const void* twin, const Scene& scene) const {
    return agree_(address_, twin, scene, ints_);
  }

 private:
  const void* address_;
  Ints ints_;
  bool (*agree_)(const void* a, const void* b, const Scene& scene, Ints ints);
};

template <class Signature>
Function withCodes(Signature* function) {
  return Function(function, Ints::kCodes);
}

template <class... Functions>
std::array<Function, sizeof...(Functions)> tableOf(Functions... functions) {
  return {Function(functions)...};
}

/// Picks an overload.
template <class Signature>
constexpr Signature* of(Signature* function) {
  return function;
}

}  // namespace zel::test
