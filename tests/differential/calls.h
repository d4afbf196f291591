#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <tuple>
#include <type_traits>
#include <typeindex>
#include <utility>
#include <vector>

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
  Parameter pass(void* /*place*/) { return value; }
  void* place() { return nullptr; }
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
  Parameter pass(void* place) {
    if constexpr (std::is_reference_v<Parameter>) {
      return *static_cast<std::remove_reference_t<Parameter>*>(place);
    } else {
      return static_cast<Parameter>(place);
    }
  }
  void* place() { return numbers; }
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
  const Point3DArr& pass(void* /*place*/) { return points; }
  void* place() { return nullptr; }
  bool operator==(const Argument& /*other*/) const { return true; }

  Point3DArr points;
};

/// An output that starts with the numbers of an input of the same type, or takes its place.
struct Overlay {
  std::size_t input, output;
  bool shared;
};

/// What a function answered and made of its arguments.
template <class Result, class... Parameters>
class Call {
 public:
  Call(Result (*function)(Parameters...), const Scene& scene, Ints ints, const Overlay* overlay)
      : Call(function, scene, ints, overlay, std::index_sequence_for<Parameters...>()) {}

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
  Call(Result (*function)(Parameters...), const Scene& scene, Ints ints, const Overlay* overlay,
       std::index_sequence<Rows...> /*rows*/)
      : arguments_(Argument<Parameters>(
            scene, overlay != nullptr && Rows == overlay->output ? overlay->input : Rows,
            ints)...) {
    void* const own[]{std::get<Rows>(arguments_).place()...};
    void* places[]{own[Rows]...};
    if (overlay != nullptr && overlay->shared) {
      places[overlay->output] = own[overlay->input];
    }
    if constexpr (std::is_void_v<Result>) {
      function(std::get<Rows>(arguments_).pass(places[Rows])...);
    } else {
      result_ = function(std::get<Rows>(arguments_).pass(places[Rows])...);
    }
    if (overlay != nullptr) {  // only the output counts
      const std::size_t bytes = 64 * sizeof(float);
      std::memcpy(own[overlay->shared ? overlay->output : overlay->input], places[overlay->output],
                  bytes);
    }
  }

  std::tuple<Argument<Parameters>...> arguments_;
  std::conditional_t<std::is_void_v<Result>, int, Result> result_{};
};

/// The pairs of an input and an output that may be the same numbers.
template <class... Parameters>
std::vector<Overlay> overlaysOf() {
  struct Kind {
    std::type_index type;
    bool isPlace, isConst;
  };
  const Kind kinds[]{
      {typeid(
           std::remove_all_extents_t<std::remove_pointer_t<std::remove_reference_t<Parameters>>>),
       std::is_pointer_v<Parameters> || std::is_reference_v<Parameters>,
       std::is_const_v<std::remove_all_extents_t<
           std::remove_pointer_t<std::remove_reference_t<Parameters>>>>}...};
  std::vector<Overlay> overlays;
  for (std::size_t in = 0; in < std::size(kinds); ++in) {
    for (std::size_t out = 0; out < std::size(kinds); ++out) {
      if (kinds[in].isPlace && kinds[in].isConst && kinds[out].isPlace && !kinds[out].isConst &&
          kinds[in].type == kinds[out].type) {
        overlays.push_back({in, out, false});
      }
    }
  }
  return overlays;
}

/// A function of the library, whatever its signature.
class Function {
 public:
  template <class Result, class... Parameters>
  Function(Result (*function)(Parameters...), Ints ints = Ints::kCounts)  // NOLINT: a table entry
      : address_(reinterpret_cast<const void*>(function)),
        ints_(ints),
        overlays_(overlaysOf<Parameters...>()),
        agree_([](const Side& a, const Side& b, const Scene& scene, Ints kind) {
          const auto call = [&](const Side& side) {
            using Pointer = Result (*)(Parameters...);
            return Call<Result, Parameters...>(
                reinterpret_cast<Pointer>(const_cast<void*>(side.code)), scene, kind, side.overlay);
          };
          return call(a) == call(b);
        }) {}

  [[nodiscard]] const void* address() const { return address_; }
  /// Whether a twin, a function of the same signature, does the same to the same arguments.
  [[nodiscard]] bool agreesWith(const void* twin, const Scene& scene) const {
    return agree_({address_, nullptr}, {twin, nullptr}, scene, ints_);
  }
  [[nodiscard]] const std::vector<Overlay>& overlays() const { return overlays_; }
  /// Whether it makes the same output in the place of an input as elsewhere.
  [[nodiscard]] bool allows(Overlay overlay, const Scene& scene) const {
    const Overlay shared{overlay.input, overlay.output, true};
    return agree_({address_, &overlay}, {address_, &shared}, scene, ints_);
  }

 private:
  struct Side {
    const void* code;
    const Overlay* overlay;
  };

  const void* address_;
  Ints ints_;
  std::vector<Overlay> overlays_;
  bool (*agree_)(const Side& a, const Side& b, const Scene& scene, Ints ints);
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
