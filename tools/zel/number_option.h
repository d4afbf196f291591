#pragma once

#include <CLI/Validators.hpp>
#include <charconv>
#include <cmath>
#include <string>

namespace zel::program {

/// Admits numbers that are finite and 0 or more: distances, parts, node numbers.
inline CLI::Validator notNegative() {
  const auto check = [](const std::string& text) {
    double value = -1.0;
    const char* const end = text.data() + text.size();
    const bool isNumber = std::from_chars(text.data(), end, value).ptr == end;
    const bool isAdmitted = isNumber && std::isfinite(value) && value >= 0.0;
    return isAdmitted ? std::string() : "\"" + text + "\" is no number of 0 or more";
  };
  return {check, "NONNEGATIVE"};
}

}  // namespace zel::program
