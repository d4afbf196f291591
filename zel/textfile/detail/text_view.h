#pragma once

/// @file
/// Zero-terminated texts of callers, seen and written safely.

#include <cstring>
#include <string_view>

namespace zel {

/// @return the text without its terminator; empty for null.
inline std::string_view viewOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view("");
}

/// Writes `text` and a terminator to `out`, which may overlap it. A null `out` is ignored.
inline void copyText(char* out, std::string_view text) {
  if (out != nullptr) {
    std::memmove(out, text.data(), text.size());
    out[text.size()] = '\0';
  }
}

/// Writes as much of `text` as fits into `out`, always terminated.
template <std::size_t N>
void copyTruncated(char (&out)[N], std::string_view text) {
  copyText(out, text.substr(0, N - 1));
}

}  // namespace zel
