// Pictures that must load: every pixel is compared with what the file format says it is, and the
// ways in which this loader reads differently from others are pinned by name.

#include <gtest/gtest.h>

#include <algorithm>

#include "image/bmp_bytes.h"
#include "image/loaded_bmp.h"
#include "support/temp_dir.h"

namespace {

using namespace zel::test;
using Bytes = std::vector<int>;

class BmpLoad : public testing::Test {
 protected:
  std::string saved(const BmpParts& parts) const {
    const std::string path = dir_.file("picture.bmp");
    writeFile(path, parts.bytes());
    return path;
  }

  /// The block of slLoadBMP(), `count` bytes of it.
  Bytes load(const BmpParts& parts, char toRgb, std::size_t count) const {
    const LoadedBmp bmp(saved(parts), toRgb);
    if (bmp.result != 1) {
      return {};
    }
    EXPECT_EQ(bmp.info->bmiHeader.biWidth, parts.width);
    return {bmp.pixels, bmp.pixels + count};
  }

  template <std::size_t kChannels>
  Bytes picture(const BmpParts& parts, typename LoadedPicture<kChannels>::Loader loader, int width,
                int height) const {
    const LoadedPicture<kChannels> loaded(loader, saved(parts));
    EXPECT_EQ(loaded.result, 1);
    EXPECT_EQ(loaded.width, width);
    EXPECT_EQ(loaded.height, height);
    const auto* first = reinterpret_cast<const unsigned char*>(loaded.pixels);
    const auto pixels = static_cast<std::size_t>(loaded.width * std::max(loaded.height, 0));
    return {first, first + kChannels * pixels};
  }

 private:
  TempDir dir_;
};

// 3 x 2 pixels, blue-green-red, rows padded from 9 to 12 bytes.
BmpParts sixColours() {
  return {.width = 3,
          .height = 2,
          .pixels = std::string("\x03\x02\x01\x06\x05\x04\x09\x08\x07xyz"
                                "\x0C\x0B\x0A\x0F\x0E\x0D\x12\x11\x10xyz",
                                24)};
}

TEST_F(BmpLoad, trueColourKeepsFileOrderAndZeroesItsPadding) {
  EXPECT_EQ(load(sixColours(), 1, 24), (Bytes{1,  2,  3,  4,  5,  6,  7,  8,  9,  0, 0, 0,
                                              10, 11, 12, 13, 14, 15, 16, 17, 18, 0, 0, 0}));
  EXPECT_EQ(picture<3>(sixColours(), slLoadBmpPicture3D, 3, 2),
            (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
  EXPECT_EQ(picture<4>(sixColours(), slLoadBmpPicture, 3, 2),
            (Bytes{1,  2,  3,  255, 4,  5,  6,  255, 7,  8,  9,  255,
                   10, 11, 12, 255, 13, 14, 15, 255, 16, 17, 18, 255}));
}

TEST_F(BmpLoad, backslashesPartDirectories) {
  const std::string path = saved(sixColours());
  const std::string windowsPath = std::string(path).replace(path.find_last_of("/\\"), 1, "\\");
  EXPECT_EQ(LoadedBmp(windowsPath, 1).result, 1);
  EXPECT_EQ(LoadedPicture<3>(slLoadBmpPicture3D, windowsPath).result, 1);
  EXPECT_EQ(LoadedPicture<4>(slLoadBmpPicture, windowsPath).result, 1);
  EXPECT_EQ(LoadedPicture<4>(slLoadBmpTexture, windowsPath).result, 1);
}

TEST_F(BmpLoad, anyOtherFlagThanOneLeavesTheBytesAlone) {
  const std::string stored = sixColours().pixels;
  for (const char flag : {'\0', '\2', '\xFF'}) {
    EXPECT_EQ(load(sixColours(), flag, 24), Bytes(stored.begin(), stored.end()));
  }
}

TEST_F(BmpLoad, statedSizeMayBeLargerThanThePictureNeeds) {
  BmpParts parts = sixColours();
  parts.pixels += "tail";
  parts.sizeImage = 28;
  EXPECT_EQ(load(parts, 0, 28).back(), 'l');
  EXPECT_EQ(load(parts, 1, 24)[12], 10);
  parts.sizeImage = 21;  // ends with the last pixel
  EXPECT_EQ(load(parts, 1, 24)[20], 18);
}

TEST_F(BmpLoad, eightBitRowsAreReadWithoutPadding) {
  const BmpParts parts{.width = 3,
                       .height = 2,
                       .bitCount = 8,
                       .pixels = std::string("\x00\x01\x02\x02\x01\x00", 6),
                       .table = {0x010203, 0x040506, 0x070809}};
  EXPECT_EQ(picture<3>(parts, slLoadBmpPicture3D, 3, 2),
            (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 7, 8, 9, 4, 5, 6, 1, 2, 3}));
}

TEST_F(BmpLoad, fourBitPixelsComeHighNibbleFirst) {
  BmpParts parts{.width = 3,
                 .height = 2,
                 .bitCount = 4,
                 .pixels = std::string("\x12\x30\x21\x00", 4),
                 .table = {0, 0x010101, 0x020202, 0x030303},
                 .sizeImage = 4};
  EXPECT_EQ(picture<3>(parts, slLoadBmpPicture3D, 3, 2),
            (Bytes{1, 1, 1, 2, 2, 2, 3, 3, 3, 2, 2, 2, 1, 1, 1, 0, 0, 0}));
  parts.sizeImage = 0;  // implies a byte for each pixel
  EXPECT_TRUE(load(parts, 1, 1).empty());
}

TEST_F(BmpLoad, oneBitPixelsLookUpFourMaskedBits) {
  BmpParts parts{.width = 10, .height = 1, .bitCount = 1, .pixels = "\xC0\xF0", .sizeImage = 2};
  for (std::uint32_t i = 0; i < 256; ++i) {
    parts.table.push_back(i);  // blue tells the index
  }
  const Bytes rgb = load(parts, 1, 30);
  const Bytes indices{1, 3, 6, 12, 24, 48, 96, 192, 1, 3};
  for (std::size_t i = 0; i < indices.size(); ++i) {
    EXPECT_EQ(rgb[3 * i + 2], indices[i]) << i;
  }
}

TEST_F(BmpLoad, compressedPicturesAreBlackWithoutAWord) {
  BmpParts parts = sixColours();
  parts.compression = 1;
  testing::internal::CaptureStdout();
  EXPECT_EQ(load(parts, 1, 24), Bytes(24, 0));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(picture<4>(parts, slLoadBmpPicture, 3, 2)[7], 255);
}

TEST_F(BmpLoad, heightBelowOneGivesAPictureWithoutRows) {
  BmpParts parts = sixColours();
  parts.height = -2;
  EXPECT_TRUE(picture<4>(parts, slLoadBmpPicture, 3, -2).empty());
  EXPECT_TRUE(picture<4>(parts, slLoadBmpTexture, 2, 0).empty());
  EXPECT_EQ(load(parts, 0, 24).size(), 24U);
  parts.height = 0;
  EXPECT_TRUE(picture<3>(parts, slLoadBmpPicture3D, 3, 0).empty());
}

TEST_F(BmpLoad, textureIsTheLowerLeftPartOfThePicture) {
  BmpParts parts{.width = 5, .height = 3, .bitCount = 8, .pixels = "", .table = {}};
  for (int i = 0; i < 15; ++i) {
    parts.pixels += static_cast<char>(i);
    parts.table.push_back(static_cast<std::uint32_t>(i));
  }
  const Bytes texels = picture<4>(parts, slLoadBmpTexture, 4, 2);
  for (std::size_t row = 0; row < 2; ++row) {
    for (std::size_t column = 0; column < 4; ++column) {
      EXPECT_EQ(texels[4 * (4 * row + column) + 2], static_cast<int>(5 * row + column));
    }
  }
}

TEST(TextureSize, isTheLargestPowerOfTwoNotAbove) {
  const int cases[][2] = {{-5, 0}, {0, 0}, {1, 1}, {3, 2}, {64, 64}, {300, 256}, {511, 256}};
  for (const auto& [side, expected] : cases) {
    int w = -1;
    int h = -1;
    slNormalizeTextureSize(side, 64, &w, &h);
    EXPECT_EQ(w, expected) << side;
    EXPECT_EQ(h, 64);
  }
  for (int exponent = 0; exponent <= 30; ++exponent) {
    int w = 0;
    int h = 0;
    slNormalizeTextureSize(1 << exponent, (1 << exponent) + ((1 << exponent) - 1), &w, &h);
    EXPECT_EQ(w, 1 << exponent);
    EXPECT_EQ(h, 1 << exponent);
  }
}

}  // namespace
