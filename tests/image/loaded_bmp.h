#pragma once

#include <cstdlib>
#include <string>

#include "zel/core/memory.h"
#include "zel/image/bmp.h"

namespace zel::test {

/// What slLoadBMP() answers.
struct LoadedBmp {
  LoadedBmp(const std::string& path, char toRgb)
      : result(slLoadBMP(path.c_str(), &pixels, &info, toRgb)) {}
  ~LoadedBmp() {
    std::free(pixels);
    std::free(info);
  }
  LoadedBmp(const LoadedBmp&) = delete;
  LoadedBmp& operator=(const LoadedBmp&) = delete;

  unsigned char* pixels = nullptr;
  BITMAPINFO* info = nullptr;
  int result;
};

/// What a loader of pictures answers.
template <std::size_t kChannels>
struct LoadedPicture {
  using Loader = int (*)(const char*, int*, int*, unsigned char (**)[kChannels]);

  LoadedPicture(Loader loader, const std::string& path)
      : result(loader(path.c_str(), &width, &height, &pixels)) {}
  ~LoadedPicture() { slFree(pixels); }
  LoadedPicture(const LoadedPicture&) = delete;
  LoadedPicture& operator=(const LoadedPicture&) = delete;

  int width = -7;
  int height = -7;
  unsigned char (*pixels)[kChannels] = nullptr;
  int result;
};

}  // namespace zel::test
