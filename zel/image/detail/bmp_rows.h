#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "zel/core/desktop_types.h"

namespace zel {

/// The colours of a bitmap, ready to be stored: red in the lowest byte, then green and blue.
using BmpPalette = std::array<std::uint32_t, 256>;

/// Packs the colour table of a bitmap.
/// @param table 256 entries.
BmpPalette packPalette(const RGBQUAD* table);

/// @return whether pictures of this depth are decoded at all.
constexpr bool isDecodedDepth(int bitCount) {
  return bitCount == 1 || bitCount == 4 || bitCount == 8 || bitCount == 24;
}

/// Bytes of one output row: `width` RGB pixels, padded to a multiple of four.
constexpr std::int64_t rgbStride(std::int64_t width) { return (3 * width + 3) / 4 * 4; }

/// Bytes from one stored row to the next as the decoder reads them; only 24 bits know padding.
constexpr std::int64_t storedStride(int bitCount, std::int64_t width) {
  return bitCount == 24 ? rgbStride(width) : (width * bitCount + 7) / 8;
}

/// Decodes one stored row into `width` RGB pixels.
/// @param stored at least (width * bitCount + 7) / 8 bytes.
/// @param rgb    3 * width bytes; nothing beyond is written.
void decodeBmpRow(int bitCount, const BmpPalette& palette, const unsigned char* stored,
                  std::size_t width, unsigned char* rgb);

}  // namespace zel
