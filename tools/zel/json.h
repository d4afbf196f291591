#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace zel::program {

/// A value for a program to read. Members of objects keep their order.
class Json {
 public:
  using Elements = std::vector<Json>;
  using Members = std::vector<std::pair<std::string, Json>>;
  using Value =
      std::variant<std::nullptr_t, bool, long long, double, std::string, Elements, Members>;

  Json() = default;  ///< null
  Json(bool value) : value_(value) {}
  Json(std::integral auto value) : value_(static_cast<long long>(value)) {}
  Json(std::floating_point auto value) : value_(static_cast<double>(value)) {}
  Json(std::string value) : value_(std::move(value)) {}
  Json(const char* value) : value_(std::string(value)) {}
  Json(Elements elements) : value_(std::move(elements)) {}
  Json(Members members) : value_(std::move(members)) {}
  /// An array of what a std::array or a std::vector holds.
  template <class Element, std::size_t kSize>
  Json(const std::array<Element, kSize>& list) : value_(Elements(list.begin(), list.end())) {}
  template <class Element>
  Json(const std::vector<Element>& list) : value_(Elements(list.begin(), list.end())) {}

  [[nodiscard]] const Value& value() const { return value_; }

  /// The value on one line, with its end. Bytes of texts that are no UTF-8 are replaced, because
  /// JSON cannot carry them; numbers that are not finite become null.
  [[nodiscard]] std::string line() const;

 private:
  Value value_ = nullptr;
};

}  // namespace zel::program
