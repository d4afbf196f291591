#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace zel::program {

/// Bytes as letters, digits, '+' and '/', padded with '='.
[[nodiscard]] inline std::string base64(std::span<const std::byte> bytes) {
  constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t start = 0; start < bytes.size(); start += 3) {
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t at = start + k;
      group = (group << 8U) | (at < bytes.size() ? static_cast<std::uint32_t>(bytes[at]) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      const bool isPadding = start + k > bytes.size();
      text += isPadding ? '=' : kDigits[(group >> (18U - 6U * k)) & 63U];
    }
  }
  return text;
}

}  // namespace zel::program
