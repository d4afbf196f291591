// Feeds any bytes to the picture loaders.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zel/core/memory.h"
#include "zel/image/bmp.h"

namespace {

/// A file in memory that is reached by a path.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size) : file_(memfd_create("picture", 0)) {
    if (file_ < 0 || write(file_, data, size) != static_cast<ssize_t>(size)) {
      std::abort();
    }
  }
  ~MemoryFile() { close(file_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(file_); }

 private:
  int file_;
};

/// Black pictures may be large out of a few bytes; filling them only costs the search time.
bool declaresLargePicture(const std::uint8_t* data, std::size_t size) {
  std::int32_t sides[2] = {};
  if (size >= 26) {
    std::memcpy(sides, data + 18, sizeof sides);
  }
  return std::int64_t{sides[0]} * sides[1] > 1 << 20;
}

void loadStored(const char* path, char toRgb) {
  unsigned char* pixels = nullptr;
  BITMAPINFO* info = nullptr;
  slLoadBMP(path, &pixels, &info, toRgb);
  std::free(pixels);
  std::free(info);
}

template <std::size_t kChannels>
void loadPicture(int (*loader)(const char*, int*, int*, unsigned char (**)[kChannels]),
                 const char* path) {
  unsigned char(*pixels)[kChannels] = nullptr;
  int w = 0;
  int h = 0;
  if (loader(path, &w, &h, &pixels) == 1 && h > 0) {
    // Every pixel of an accepted picture can be read.
    volatile unsigned char last = pixels[std::int64_t{w} * h - 1][kChannels - 1];
    static_cast<void>(last);
  }
  slFree(pixels);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (declaresLargePicture(data, size)) {
    return 0;
  }
  const MemoryFile file(data, size);
  const std::string path = file.path();
  loadStored(path.c_str(), 0);
  loadStored(path.c_str(), 1);
  loadPicture<4>(slLoadBmpPicture, path.c_str());
  loadPicture<3>(slLoadBmpPicture3D, path.c_str());
  loadPicture<4>(slLoadBmpTexture, path.c_str());
  return 0;
}
