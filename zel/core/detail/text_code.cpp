#include "zel/core/detail/text_code.h"

#include <cstdint>

namespace zel {
namespace {

// Bytes that follow a lead byte, and the smallest code point that needs so many; -1: no lead byte.
struct Lead {
  int followers;
  std::uint32_t smallest;
  std::uint32_t bits;
};

Lead leadOf(unsigned char byte) {
  if (byte < 0x80) {
    return {0, 0, byte};
  }
  if ((byte & 0xE0) == 0xC0) {
    return {1, 0x80, byte & 0x1FU};
  }
  if ((byte & 0xF0) == 0xE0) {
    return {2, 0x800, byte & 0x0FU};
  }
  if ((byte & 0xF8) == 0xF0) {
    return {3, 0x10000, byte & 0x07U};
  }
  return {-1, 0, 0};
}

}  // namespace

// The Unicode Standard, 3.9, table 3-7.
bool isUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const Lead lead = leadOf(static_cast<unsigned char>(text[i++]));
    if (lead.followers < 0 || text.size() - i < static_cast<std::size_t>(lead.followers)) {
      return false;
    }
    std::uint32_t code = lead.bits;
    for (int k = 0; k < lead.followers; ++k) {
      const auto byte = static_cast<unsigned char>(text[i++]);
      if ((byte & 0xC0) != 0x80) {
        return false;
      }
      code = code << 6 | (byte & 0x3FU);
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < lead.smallest || code > 0x10FFFF || isSurrogate) {
      return false;
    }
  }
  return true;
}

}  // namespace zel
