// What the loaders give when the heap refuses or the file ends while it is read: nothing at all.

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>

#include "faults/refusing_allocator.h"
#include "image/bmp_bytes.h"
#include "image/loaded_bmp.h"
#include "support/temp_dir.h"

namespace {
long readsBeforeTheEnd = -1;  // below 0: the file does not end
}

extern "C" {
std::size_t __real_fread(void* target, std::size_t size, std::size_t count, std::FILE* file);

/// The linker leads every read of the library here.
std::size_t __wrap_fread(void* target, std::size_t size, std::size_t count, std::FILE* file) {
  const bool isCut = readsBeforeTheEnd-- == 0;
  return __real_fread(target, size, isCut ? count - 1 : count, file);
}
}

namespace zel::test {
namespace {

constexpr int kWays = 5;

/// Loads the file in one of the ways there are.
/// @return whether it came as a whole: 1 and everything handed out, or 0 and nothing.
std::optional<bool> loads(int way, const std::string& path) {
  const auto whole = [](int result, bool hasAll, bool hasAny) {
    return (result == 1 ? hasAll : result == 0 && !hasAny) ? std::optional(result == 1)
                                                           : std::nullopt;
  };
  if (way < 2) {
    const LoadedBmp bmp(path, static_cast<char>(way));
    return whole(bmp.result, bmp.pixels && bmp.info, bmp.pixels || bmp.info);
  }
  if (way == 2) {
    const LoadedPicture<3> picture(slLoadBmpPicture3D, path);
    return whole(picture.result, picture.pixels, picture.pixels);
  }
  const LoadedPicture<4> picture(way == 3 ? slLoadBmpPicture : slLoadBmpTexture, path);
  return whole(picture.result, picture.pixels, picture.pixels);
}

TEST(BmpFaults, refusedMemoryAndFilesThatEndEarlyGiveNothing) {
  const TempDir dir;
  const std::string path = dir.file("picture.bmp");
  for (const BmpParts& parts : sampleBmps()) {
    writeFile(path, parts.bytes());
    for (int way = 0; way < kWays; ++way) {
      const int refusals = refuseEachRequest("way " + std::to_string(way), [&](RefusingHeap& heap) {
        std::optional<bool> loaded;
        heap.during([&] { loaded = loads(way, path); });
        return whatIsWrong(loaded == !heap.hasRefused(), "half a picture");
      });
      EXPECT_GE(refusals, 2 * 3) << "the stream, the header, the pixels";
      long cut = 0;
      do {
        readsBeforeTheEnd = cut++;
        const std::optional<bool> loaded = loads(way, path);
        EXPECT_EQ(loaded, readsBeforeTheEnd >= 0) << "way " << way << ", read " << cut;
      } while (readsBeforeTheEnd < 0);
      readsBeforeTheEnd = -1;
      EXPECT_GE(cut, parts.compression != 0 && way > 0 ? 3 : 4) << "two headers, the pixels";
    }
  }
}

}  // namespace
}  // namespace zel::test
