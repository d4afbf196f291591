#include "zel/image/detail/bmp_rows.h"

#include <bit>
#include <cstring>

namespace zel {
namespace {

static_assert(std::endian::native == std::endian::little,
              "pixels are moved as little-endian words");

constexpr std::size_t kRgbBytes = 3;

void storeColour(std::uint32_t colour, unsigned char* rgb) { std::memcpy(rgb, &colour, kRgbBytes); }

void reversePixels(const unsigned char* stored, std::size_t bytes, unsigned char* rgb) {
  for (std::size_t at = 0; at < bytes; at += kRgbBytes) {
    rgb[at] = stored[at + 2];
    rgb[at + 1] = stored[at + 1];
    rgb[at + 2] = stored[at];
  }
}

/// A block of whole pixels that is also a whole number of vector registers.
constexpr std::size_t kBlockBytes = 48;
using BlockMask = std::array<unsigned char, kBlockBytes>;

/// @return a mask that selects one of the three bytes of every pixel.
constexpr BlockMask channelMask(std::size_t channel) {
  BlockMask mask{};
  for (std::size_t at = channel; at < kBlockBytes; at += kRgbBytes) {
    mask[at] = 0xFF;
  }
  return mask;
}

/// Reverses a block without branches or shuffles, in a form that compilers turn into vector code:
/// a first byte comes from two places on, a last byte from two places back.
/// @param stored may be read two bytes before and two bytes behind the block.
void reverseBlock(const unsigned char* __restrict stored, unsigned char* __restrict rgb) {
  static constexpr BlockMask kFirst = channelMask(0);
  static constexpr BlockMask kMiddle = channelMask(1);
  static constexpr BlockMask kLast = channelMask(2);
  for (std::size_t at = 0; at < kBlockBytes; ++at) {
    rgb[at] =
        static_cast<unsigned char>((stored[at + 2] & kFirst[at]) | (stored[at] & kMiddle[at]) |
                                   ((stored + at)[-2] & kLast[at]));
  }
}

/// Turns stored blue, green, red into red, green, blue.
void reverseRow(const unsigned char* stored, std::size_t width, unsigned char* rgb) {
  const std::size_t bytes = kRgbBytes * width;
  reversePixels(stored, kRgbBytes, rgb);
  std::size_t at = kRgbBytes;
  for (; at + kBlockBytes + 2 <= bytes; at += kBlockBytes) {
    reverseBlock(stored + at, rgb + at);
  }
  reversePixels(stored + at, bytes - at, rgb + at);
}

/// Two pixels are stored as one word whose last two bytes the next pair overwrites.
void lookUpRow(const BmpPalette& palette, const unsigned char* indices, std::size_t width,
               unsigned char* rgb) {
  std::size_t pixel = 0;
  for (; pixel + 3 <= width; pixel += 2, rgb += 2 * kRgbBytes) {
    const std::uint64_t pair =
        palette[indices[pixel]] | static_cast<std::uint64_t>(palette[indices[pixel + 1]]) << 24U;
    std::memcpy(rgb, &pair, sizeof pair);
  }
  for (; pixel < width; ++pixel, rgb += kRgbBytes) {
    storeColour(palette[indices[pixel]], rgb);
  }
}

void lookUpNibbles(const BmpPalette& palette, const unsigned char* stored, std::size_t width,
                   unsigned char* rgb) {
  for (std::size_t pixel = 0; pixel < width; ++pixel) {
    const unsigned pair = stored[pixel / 2];
    storeColour(palette[pixel % 2 == 0 ? pair >> 4U : pair & 0x0FU], rgb + kRgbBytes * pixel);
  }
}

/// The mask spans four bits, not one: see the contract in bmp.h.
void lookUpBits(const BmpPalette& palette, const unsigned char* stored, std::size_t width,
                unsigned char* rgb) {
  constexpr unsigned kMask = 0xF0;
  for (std::size_t pixel = 0; pixel < width; ++pixel) {
    const unsigned index = (stored[pixel / 8] & kMask) >> (7U - pixel % 8);
    storeColour(palette[index], rgb + kRgbBytes * pixel);
  }
}

}  // namespace

BmpPalette packPalette(const RGBQUAD* table) {
  BmpPalette palette;
  for (std::size_t index = 0; index < palette.size(); ++index) {
    const RGBQUAD& entry = table[index];
    palette[index] = entry.rgbRed | static_cast<std::uint32_t>(entry.rgbGreen) << 8U |
                     static_cast<std::uint32_t>(entry.rgbBlue) << 16U;
  }
  return palette;
}

void decodeBmpRow(int bitCount, const BmpPalette& palette, const unsigned char* stored,
                  std::size_t width, unsigned char* rgb) {
  switch (bitCount) {
    case 24:
      return reverseRow(stored, width, rgb);
    case 8:
      return lookUpRow(palette, stored, width, rgb);
    case 4:
      return lookUpNibbles(palette, stored, width, rgb);
    case 1:
      return lookUpBits(palette, stored, width, rgb);
    default:
      std::memset(rgb, 0, kRgbBytes * width);
  }
}

}  // namespace zel
