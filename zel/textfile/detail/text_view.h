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
  if (out == nullptr) {
    return;
  }
  if (!text.empty()) {
    std::memmove(out, text.data(), text.size());
  }
  out[text.size()] = '\0';
}

/// Writes `text` as a part of a printf format: every '%' is doubled. @return the length written.
inline std::size_t copyEscaped(char* out, std::string_view text) {
  std::size_t length = 0;
  for (const char c : text) {
    out[length++] = c;
    if (c == '%') {
      out[length++] = c;
    }
  }
  out[length] = '\0';
  return length;
}

/// Writes as much of `text` as fits into `out`, always terminated.
template <std::size_t N>
void copyTruncated(char (&out)[N], std::string_view text) {
  copyText(out, text.substr(0, N - 1));
}

}  // namespace zel
