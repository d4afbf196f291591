#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/bytes.h"

namespace zel::test {

/// The parts of a BMP file, to be put together rightly or wrongly.
struct BmpParts {
  std::int32_t width = 1;
  std::int32_t height = 1;
  std::uint16_t bitCount = 24;
  std::string pixels{};
  std::vector<std::uint32_t> table{};  ///< 0x00RRGGBB, stored as blue, green, red, 0
  std::uint32_t sizeImage = 0;
  std::uint32_t compression = 0;
  std::uint32_t infoSize = 40;
  std::string extraHeader{};  ///< between the colour table and the pixels

  [[nodiscard]] std::string bytes() const {
    std::string file = "BM";
    const std::uint32_t offset =
        static_cast<std::uint32_t>(54 + 4 * table.size() + extraHeader.size());
    appendNumbers(file, offset + static_cast<std::uint32_t>(pixels.size()), std::uint32_t{0},
                  offset, infoSize, width, height, std::uint16_t{1}, bitCount, compression,
                  sizeImage);
    file.append(16, '\0');
    for (const std::uint32_t colour : table) {
      appendNumbers(file, colour);
    }
    return file + extraHeader + pixels;
  }
};

/// Small valid pictures, one of every decoded depth, and a compressed one.
inline std::vector<BmpParts> sampleBmps() {
  const auto filled = [](BmpParts parts, std::size_t bytes, std::uint32_t colours) {
    for (std::size_t i = 0; i < bytes; ++i) {
      parts.pixels += static_cast<char>(37 * i + 11);
    }
    for (std::uint32_t i = 0; i < colours; ++i) {
      parts.table.push_back(0x010203U * i + 0x100U * (255U - i));
    }
    return parts;
  };
  return {
      filled({.width = 5, .height = 3, .bitCount = 24}, 48, 0),
      filled({.width = 7, .height = 4, .bitCount = 8}, 28, 256),
      filled({.width = 9, .height = 2, .bitCount = 4, .sizeImage = 16}, 16, 16),
      filled({.width = 19, .height = 3, .bitCount = 1, .sizeImage = 12}, 12, 2),
      filled({.width = 6, .height = 6, .bitCount = 8, .sizeImage = 20, .compression = 1}, 20, 256)};
}

}  // namespace zel::test
