#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

namespace zel::test {

/// Whether the tests run once more under other habits than the system's own.
inline bool isAbroad() { return std::getenv("ZEL_TEST_ABROAD") != nullptr; }

/// `text` as a file holds it: abroad, every line that ends in LF ends in CR LF.
inline std::string withLineEnds(std::string_view text) {
  std::string made(text);
  for (std::size_t at = made.find('\n'); isAbroad() && at != std::string::npos;
       at = made.find('\n', at + 1)) {
    if (at == 0 || made[at - 1] != '\r') {
      made.insert(at++, "\r");
    }
  }
  return made;
}

}  // namespace zel::test
