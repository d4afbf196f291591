#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace zel::program {

/// One answer for a program: the JSON on one line. Bytes of file names that are no UTF-8 are
/// replaced, because JSON cannot carry them.
inline std::string jsonLine(const nlohmann::ordered_json& json) {
  return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace zel::program
