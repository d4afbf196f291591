// Files that are broken in every way. Each is loaded by all four loaders under the sanitizers, and
// the answer is compared with a plain model that works on the bytes in memory.

#include <gtest/gtest.h>

#if defined(__linux__)
#include <sys/resource.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <random>

#include "image/bmp_bytes.h"
#include "image/loaded_bmp.h"
#include "support/temp_dir.h"

namespace {

using namespace zel::test;

struct Header {
  std::int64_t offset, width, height, bitCount, compression, sizeImage;
};

std::optional<Header> acceptedHeader(const std::string& file) {
  if (file.size() < 54 || file.compare(0, 2, "BM") != 0) {
    return std::nullopt;
  }
  const Header h{readAt<std::uint32_t>(file, 10), readAt<std::int32_t>(file, 18),
                 readAt<std::int32_t>(file, 22),  readAt<std::uint16_t>(file, 28),
                 readAt<std::uint32_t>(file, 30), readAt<std::uint32_t>(file, 34)};
  const std::int64_t size = static_cast<std::int64_t>(file.size());
  const std::int64_t rows = std::abs(h.height);
  if (h.offset < 54 || h.offset > size || h.width < 1 || h.width > 65535 || rows > 65535) {
    return std::nullopt;
  }
  const std::int64_t perPixel = (h.bitCount + 7) / 8;
  const std::int64_t row = perPixel == 3 ? (3 * h.width + 3) & ~3 : perPixel * h.width;
  const std::int64_t bytes = h.sizeImage != 0 ? h.sizeImage : rows * row;
  return bytes > size - h.offset ? std::nullopt : std::optional(h);
}

/// Index into `pixels` of the byte that holds pixel (column, row), counted in unpadded rows.
std::int64_t byteOf(const Header& h, std::int64_t column, std::int64_t row) {
  switch (h.bitCount) {
    case 24:
      return row * ((3 * h.width + 3) & ~3) + 3 * column;
    case 8:
      return row * h.width + column;
    case 4:
      return row * ((h.width + 1) / 2) + column / 2;
    default:
      return row * ((h.width + 7) / 8) + column / 8;
  }
}

struct Colour {
  int red, green, blue;
  bool operator==(const Colour&) const = default;
};

Colour tableColour(const std::string& file, const Header& h, std::int64_t index) {
  const std::int64_t at = 54 + 4 * index;
  const auto byte = [&](std::int64_t i) {
    return i < h.offset ? static_cast<unsigned char>(file[static_cast<std::size_t>(i)]) : 0;
  };
  return {byte(at + 2), byte(at + 1), byte(at)};
}

/// A picture row by row; nothing when it must be refused.
using Colours = std::optional<std::vector<Colour>>;

Colours modelColours(const std::string& file, const Header& h) {
  const std::int64_t rows = std::max<std::int64_t>(h.height, 0);
  if (h.compression != 0 ||
      (h.bitCount != 1 && h.bitCount != 4 && h.bitCount != 8 && h.bitCount != 24)) {
    return std::vector<Colour>(static_cast<std::size_t>(rows * h.width), Colour{0, 0, 0});
  }
  const std::string stored =
      file.substr(static_cast<std::size_t>(h.offset),
                  h.sizeImage != 0 ? static_cast<std::size_t>(h.sizeImage) : std::string::npos);
  std::vector<Colour> colours;
  for (std::int64_t row = 0; row < rows; ++row) {
    for (std::int64_t column = 0; column < h.width; ++column) {
      const auto at = static_cast<std::size_t>(byteOf(h, column, row));
      if (at + (h.bitCount == 24 ? 2 : 0) >= stored.size()) {
        return std::nullopt;
      }
      const int byte = static_cast<unsigned char>(stored[at]);
      if (h.bitCount == 24) {
        colours.push_back({static_cast<unsigned char>(stored[at + 2]),
                           static_cast<unsigned char>(stored[at + 1]), byte});
      } else {
        const int nibble = column % 2 == 0 ? byte / 16 : byte % 16;
        const int bits = (byte & 0xF0) >> (7 - column % 8);
        colours.push_back(tableColour(file, h,
                                      h.bitCount == 8   ? byte
                                      : h.bitCount == 4 ? nibble
                                                        : bits));
      }
    }
  }
  return colours;
}

class BmpHostile : public testing::Test {
 protected:
  /// Loads `file` by every loader and compares with the model. @return whether it was accepted.
  bool agreesWithModel(const std::string& file) const {
    const std::string path = dir_.file("hostile.bmp");
    std::filesystem::remove(path);  // some file systems flush a file that is overwritten
    writeFile(path, file);
    const std::optional<Header> header = acceptedHeader(file);
    expectRaw(path, header.has_value());
    if (header && header->width * std::abs(header->height) > 1'000'000) {
      return true;  // accepted as black; only its size is remarkable
    }
    const auto colours = header ? modelColours(file, *header) : std::nullopt;
    expectRgb(path, header, colours);
    expectPicture<3>(slLoadBmpPicture3D, path, header, colours);
    expectPicture<4>(slLoadBmpPicture, path, header, colours);
    EXPECT_EQ(LoadedPicture<4>(slLoadBmpTexture, path).result, colours ? 1 : 0);
    return colours.has_value();
  }

 private:
  static void expectRaw(const std::string& path, bool accepted) {
    const LoadedBmp raw(path, 0);
    EXPECT_EQ(raw.result, accepted ? 1 : 0);
    EXPECT_EQ(raw.pixels != nullptr, accepted);
    EXPECT_EQ(raw.info != nullptr, accepted);
  }

  static void expectRgb(const std::string& path, const std::optional<Header>& header,
                        const Colours& colours) {
    const LoadedBmp rgb(path, 1);
    EXPECT_EQ(rgb.result, colours ? 1 : 0);
    EXPECT_EQ(rgb.info != nullptr, colours.has_value());
    const std::size_t stride = header ? static_cast<std::size_t>((3 * header->width + 3) & ~3) : 0;
    for (std::size_t i = 0; colours && i < colours->size(); ++i) {
      const std::size_t width = static_cast<std::size_t>(header->width);
      const unsigned char* pixel = rgb.pixels + i / width * stride + 3 * (i % width);
      ASSERT_EQ((Colour{pixel[0], pixel[1], pixel[2]}), (*colours)[i]) << i;
    }
  }

  template <std::size_t kChannels>
  static void expectPicture(typename LoadedPicture<kChannels>::Loader loader,
                            const std::string& path, const std::optional<Header>& header,
                            const Colours& colours) {
    const LoadedPicture<kChannels> picture(loader, path);
    ASSERT_EQ(picture.result, colours ? 1 : 0);
    EXPECT_EQ(picture.width, colours ? header->width : -7);
    EXPECT_EQ(picture.height, colours ? header->height : -7);
    for (std::size_t i = 0; colours && i < colours->size(); ++i) {
      const unsigned char* pixel = picture.pixels[i];
      ASSERT_EQ((Colour{pixel[0], pixel[1], pixel[2]}), (*colours)[i]) << i;
      ASSERT_EQ(pixel[kChannels - 1], kChannels == 4 ? 255 : (*colours)[i].blue);
    }
  }

  TempDir dir_;
};

TEST_F(BmpHostile, everyPrefixOfAValidFileGivesAPictureOrZero) {
  for (const BmpParts& parts : sampleBmps()) {
    const std::string file = parts.bytes();
    for (std::size_t length = 0; length < file.size(); ++length) {
      EXPECT_FALSE(agreesWithModel(file.substr(0, length)) &&
                   length < file.size() - parts.pixels.size())
          << length << " of " << file.size();
    }
    EXPECT_TRUE(agreesWithModel(file));
    EXPECT_TRUE(agreesWithModel(file + "trailing bytes"));
  }
}

TEST_F(BmpHostile, everyHeaderFieldAtItsExtremes) {
  for (const BmpParts& parts : sampleBmps()) {
    for (std::size_t offset = 0; offset < 54; offset += 2) {
      for (const std::uint32_t value : {0U, 1U, 13U, 14U, 53U, 54U, 65535U, 65536U, 0x7FFFFFFFU,
                                        0x80000000U, 0x80000001U, 0xFFFF0000U, 0xFFFFFFFFU}) {
        std::string file = parts.bytes();
        writeAt(file, offset, static_cast<std::uint16_t>(value));
        agreesWithModel(file);
        if (offset <= 50) {
          writeAt(file, offset, value);
          agreesWithModel(file);
        }
      }
    }
  }
}

TEST_F(BmpHostile, everyDepthWithEverySmallFile) {
  for (std::uint16_t depth = 0; depth <= 64; ++depth) {
    BmpParts parts{.width = 2, .height = 2, .bitCount = depth, .pixels = ""};
    for (std::size_t count = 0; count <= 200 - 54; count += 5) {
      parts.pixels.assign(count, '\x5A');
      agreesWithModel(parts.bytes());
    }
  }
}

/// A picture of rows whose last one ends with its last pixel.
std::string tightBmp(int bits, std::int32_t width, std::int32_t rows) {
  BmpParts parts{.width = width, .height = rows, .bitCount = static_cast<std::uint16_t>(bits)};
  const int used = (width * bits + 7) / 8;
  const int stride = bits == 24 ? (used + 3) / 4 * 4 : used;
  for (int i = 0; i < (rows - 1) * stride + used; ++i) {
    parts.pixels += static_cast<char>(41 * i + i / 256 + 7);
  }
  parts.sizeImage = static_cast<std::uint32_t>(parts.pixels.size());
  return parts.bytes();
}

TEST_F(BmpHostile, everyWidthEndsWithItsLastPixel) {
  for (const int bits : {1, 4, 8, 24}) {
    for (std::int32_t width = 1; width <= 70; ++width) {
      EXPECT_TRUE(agreesWithModel(tightBmp(bits, width, 2))) << bits << " bits, width " << width;
    }
  }
  EXPECT_TRUE(agreesWithModel(tightBmp(24, 44001, 5)));  // rows wider than a portion read
}

TEST_F(BmpHostile, thousandsOfRandomMutations) {
  constexpr unsigned kSeed = 20611;
  SCOPED_TRACE(testing::Message() << "seed " << kSeed);
  std::mt19937 random(kSeed);
  const std::vector<BmpParts> samples = sampleBmps();
  int accepted = 0;
  for (int round = 0; round < 5000; ++round) {
    std::string file = samples[random() % samples.size()].bytes();
    for (unsigned change = random() % 4; change < 4; ++change) {
      const std::size_t range = random() % 2 == 0 ? 54 : file.size();
      file[random() % range] = static_cast<char>(random() % 3 == 0 ? random() % 10 : random());
    }
    if (random() % 4 == 0) {
      file.resize(random() % (file.size() + 40));
    }
    accepted += agreesWithModel(file) ? 1 : 0;
    ASSERT_FALSE(HasFailure()) << "round " << round;
  }
  EXPECT_GT(accepted, 500);
  EXPECT_LT(accepted, 4500);
}

/// A file of a few bytes that declares a black picture.
std::string savedBlackPicture(const TempDir& dir, std::int32_t width, std::int32_t height) {
  const BmpParts parts{.width = width,
                       .height = height,
                       .bitCount = 8,
                       .pixels = "a",
                       .sizeImage = 1,
                       .compression = 1};
  const std::string path = dir.file("large.bmp");
  writeFile(path, parts.bytes());
  return path;
}

TEST(BmpLimits, blocksOfHalfAGigabyteAreGivenAndNotAByteMore) {
  constexpr std::uint32_t kLimit = 512U << 20U;
  const TempDir dir;
  EXPECT_EQ(LoadedBmp(savedBlackPicture(dir, 10922, 16384), 1).result, 1);  // rows of 32768 bytes
  EXPECT_EQ(LoadedPicture<4>(slLoadBmpPicture, savedBlackPicture(dir, 8192, 16384)).result, 1);
  for (const std::uint32_t stored : {kLimit, kLimit + 1}) {
    const std::string path = dir.file("stored.bmp");
    const std::string file = BmpParts{.sizeImage = stored}.bytes();
    writeFile(path, file);
    std::filesystem::resize_file(path, file.size() + stored);
    EXPECT_EQ(LoadedBmp(path, 0).result, stored == kLimit ? 1 : 0);
  }
}

TEST(BmpLimits, largePicturesAreRefusedInSilenceBeforeMemoryIsTaken) {
  const TempDir dir;
  testing::internal::CaptureStdout();
  for (const std::int32_t side : {13400, 40000, 65535}) {  // 13400 x 13400 x 3 is over 512 MiB
    const std::string path = savedBlackPicture(dir, side, side);
    const LoadedBmp bmp(path, 1);
    EXPECT_EQ(bmp.result, 0) << side;
    EXPECT_EQ(bmp.info, nullptr);
    const LoadedPicture<4> picture(slLoadBmpPicture, path);
    EXPECT_EQ(picture.result, 0) << side;
    EXPECT_EQ(picture.pixels, nullptr);
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)
// The sanitizer's own heap ends the program instead of answering null.
TEST(BmpLimits, exhaustedHeapIsToldOnStandardOutput) {
  const TempDir dir;
  const std::string path = savedBlackPicture(dir, 13000, 13000);
  const auto loadWithLittleMemory = [&path] {
    const rlimit limit{400U << 20U, 400U << 20U};
    setrlimit(RLIMIT_AS, &limit);
    testing::internal::CaptureStdout();
    const LoadedBmp bmp(path, 1);
    const bool told =
        testing::internal::GetCapturedStdout() == "Could not convert bitmap to RGB!\n";
    std::_Exit(bmp.result == 0 && bmp.info == nullptr && told ? 0 : 1);
  };
  EXPECT_EXIT(loadWithLittleMemory(), testing::ExitedWithCode(0), "");
}
#endif

TEST(BmpPath, missingFilesDirectoriesAndNullAreRefused) {
  TempDir dir;
  const std::string missing = dir.file("missing.bmp");
  const std::string directory = dir.path().string();
  for (const char* path : {static_cast<const char*>(nullptr), missing.c_str(), directory.c_str()}) {
    unsigned char junk = 0;
    unsigned char* pixels = &junk;
    BITMAPINFO* info = reinterpret_cast<BITMAPINFO*>(&junk);
    EXPECT_EQ(slLoadBMP(path, &pixels, &info, 1), 0);
    EXPECT_EQ(pixels, nullptr);
    EXPECT_EQ(info, nullptr);
  }
}

}  // namespace
