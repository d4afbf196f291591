#include "zel/image/bmp.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

#include "zel/core/memory.h"
#include "zel/image/detail/bmp_reader.h"

namespace {

using zel::BmpReader;

template <std::size_t kChannels>
using Pixel = unsigned char[kChannels];

struct SlRelease {
  void operator()(void* block) const { slFree(block); }
};
using SlBlock = std::unique_ptr<unsigned char, SlRelease>;

/// @return a block of slMalloc(); null beyond the loader's limit or the heap's.
SlBlock slBytes(std::int64_t count) {
  const bool fits = count <= zel::kMaxPictureBytes;
  return SlBlock(
      static_cast<unsigned char*>(fits ? slMalloc(static_cast<std::uint32_t>(count)) : nullptr));
}

/// Reads RGB rows, each padded to four bytes with zeros.
bool readRgbRows(BmpReader& reader, unsigned char* rgb) {
  const std::int64_t rowBytes = std::int64_t{3} * reader.width();
  const std::int64_t stride = zel::rgbStride(reader.width());
  for (int row = 0; row < reader.height(); ++row, rgb += stride) {
    if (!reader.nextRow(rgb)) {
      return false;
    }
    std::fill(rgb + rowBytes, rgb + stride, static_cast<unsigned char>(0));
  }
  return true;
}

zel::HeapBlock<unsigned char> readRgb(BmpReader& reader) {
  zel::HeapBlock<unsigned char> rgb;
  if (!reader.prepareRows() || reader.rgbBytes() > zel::kMaxPictureBytes) {
    return rgb;
  }
  rgb = zel::heapBytes(reader.rgbBytes());
  if (rgb == nullptr) {
    std::puts("Could not convert bitmap to RGB!");
  } else if (!readRgbRows(reader, rgb.get())) {
    rgb.reset();
  }
  return rgb;
}

/// Copies the first `width` pixels of an RGB row, opaque when there is a fourth channel.
/// @param rgb one byte longer than its pixels.
template <std::size_t kChannels>
void storeRow(const unsigned char* rgb, int width, unsigned char* row) {
  if constexpr (kChannels == 3) {
    std::memcpy(row, rgb, kChannels * static_cast<std::size_t>(width));
  } else {
    for (int column = 0; column < width; ++column) {
      std::uint32_t pixel;
      std::memcpy(&pixel, rgb + std::ptrdiff_t{3} * column, sizeof pixel);
      pixel |= 0xFF000000U;
      std::memcpy(row + sizeof pixel * static_cast<std::size_t>(column), &pixel, sizeof pixel);
    }
  }
}

/// Reads the lower left `width` x `height` pixels of a picture into a block of slMalloc().
/// @return null when they cannot be had.
template <std::size_t kChannels>
Pixel<kChannels>* readPixels(BmpReader& reader, int width, int height) {
  const std::int64_t rowBytes = std::int64_t{width} * std::int64_t{kChannels};
  const auto scratchBytes = static_cast<std::uint32_t>(3 * reader.width() + 1);
  SlBlock pixels = slBytes(height > 0 ? rowBytes * height : 0);
  const SlBlock scratch = slBytes(scratchBytes);
  if (pixels == nullptr || scratch == nullptr) {
    return nullptr;
  }
  std::memset(scratch.get(), 0, scratchBytes);
  for (int row = 0; row < height; ++row) {
    if (!reader.nextRow(scratch.get())) {
      return nullptr;
    }
    storeRow<kChannels>(scratch.get(), width, pixels.get() + rowBytes * row);
  }
  return reinterpret_cast<Pixel<kChannels>*>(pixels.release());
}

template <std::size_t kChannels>
int loadPicture(const char* path, bool asTexture, int* w, int* h, Pixel<kChannels>** pixels) {
  *pixels = nullptr;
  BmpReader reader;
  if (!reader.open(path) || !reader.prepareRows()) {
    return 0;
  }
  int width = reader.width();
  int height = reader.height();
  if (asTexture) {
    slNormalizeTextureSize(reader.width(), reader.height(), &width, &height);
  }
  *w = width;
  *h = height;
  *pixels = readPixels<kChannels>(reader, width, height);
  return *pixels != nullptr ? 1 : 0;
}

int powerOfTwoNotAbove(int side) {
  return side < 1 ? 0 : static_cast<int>(std::bit_floor(static_cast<unsigned>(side)));
}

}  // namespace

int slLoadBMP(const char* path, unsigned char** pixels, BITMAPINFO** info, char toRgb) {
  *pixels = nullptr;
  *info = nullptr;
  BmpReader reader;
  if (!reader.open(path)) {
    return 0;
  }
  *pixels = (toRgb == 1 ? readRgb(reader) : reader.readStored()).release();
  if (*pixels == nullptr) {
    return 0;
  }
  *info = reader.releaseInfo();
  return 1;
}

int slLoadBmpPicture(const char* path, int* w, int* h, unsigned char (**rgba)[4]) {
  return loadPicture<4>(path, false, w, h, rgba);
}

int slLoadBmpPicture3D(const char* path, int* w, int* h, unsigned char (**rgb)[3]) {
  return loadPicture<3>(path, false, w, h, rgb);
}

int slLoadBmpTexture(const char* path, int* w, int* h, unsigned char (**rgba)[4]) {
  return loadPicture<4>(path, true, w, h, rgba);
}

void slNormalizeTextureSize(int w, int h, int* tw, int* th) {
  *tw = powerOfTwoNotAbove(w);
  *th = powerOfTwoNotAbove(h);
}
