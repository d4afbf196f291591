#include "tools/view/pictures/image_file.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
// libjpeg's header needs what <cstdio> declares.
#include <jpeglib.h>
#include <webp/demux.h>

#include "image/bmp_bytes.h"
#include "support/temp_dir.h"
#include "tools/view/pictures/animation.h"

namespace {

using zel::view::decodeImage;
using zel::view::ImageError;
using zel::view::Picture;
using zel::view::TextureImage;

// Smooth, so that JPEG keeps it nearly.
Picture gradient(int width, int height) {
  Picture picture{width, height, {}};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      picture.rgba.insert(picture.rgba.end(),
                          {static_cast<std::uint8_t>(255 * x / width),
                           static_cast<std::uint8_t>(255 * y / height), 90, 255});
    }
  }
  return picture;
}

std::string jpegBytes(const Picture& picture, bool progressive = false) {
  jpeg_error_mgr errors{};
  jpeg_compress_struct coder{};
  coder.err = jpeg_std_error(&errors);
  jpeg_create_compress(&coder);
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&coder, &bytes, &size);
  coder.image_width = static_cast<JDIMENSION>(picture.width);
  coder.image_height = static_cast<JDIMENSION>(picture.height);
  coder.input_components = 4;
  coder.in_color_space = JCS_EXT_RGBA;
  jpeg_set_defaults(&coder);
  jpeg_set_quality(&coder, 98, TRUE);
  if (progressive) {
    jpeg_simple_progression(&coder);
  }
  jpeg_start_compress(&coder, TRUE);
  while (coder.next_scanline < coder.image_height) {
    auto* row = const_cast<JSAMPROW>(
        &picture.rgba[std::size_t{coder.next_scanline} * coder.image_width * 4]);
    jpeg_write_scanlines(&coder, &row, 1);
  }
  jpeg_finish_compress(&coder);
  jpeg_destroy_compress(&coder);
  std::string text(reinterpret_cast<const char*>(bytes), size);
  std::free(bytes);
  return text;
}

// The greatest difference, the decoded picture having its bottom row first.
int difference(const Picture& picture, const TextureImage& image) {
  EXPECT_EQ(image.width, picture.width);
  EXPECT_EQ(image.height, picture.height);
  int most = 0;
  const std::size_t rowBytes = static_cast<std::size_t>(picture.width) * 4;
  for (std::size_t i = 0; i < picture.rgba.size(); ++i) {
    const std::size_t row = static_cast<std::size_t>(picture.height) - 1 - i / rowBytes;
    most = std::max(most, std::abs(picture.rgba[i] - image.rgba.at(row * rowBytes + i % rowBytes)));
  }
  return most;
}

TEST(ImageFile, readsPngJpegAndBmpUpright) {
  const Picture picture = gradient(37, 21);
  EXPECT_EQ(difference(picture, decodeImage(pngBytes(picture))), 0);
  EXPECT_LE(difference(picture, decodeImage(jpegBytes(picture))), 12);
  EXPECT_LE(difference(picture, decodeImage(jpegBytes(picture, true))), 12);
  const zel::test::TempDir dir;
  const zel::test::BmpParts bmp{
      .width = 1, .height = 2, .pixels = std::string("\x03\x02\x01\0\x06\x05\x04\0", 8)};
  zel::test::writeFile(dir.file("a.bmp"), bmp.bytes());
  EXPECT_EQ(zel::view::readImage(dir.file("a.bmp")).rgba,
            (std::vector<std::uint8_t>{1, 2, 3, 255, 4, 5, 6, 255}));
}

std::string problemOf(const std::string& bytes) {
  try {
    (void)decodeImage(bytes);
  } catch (const ImageError& error) {
    return error.what();
  }
  return "";
}

// Every shorter file is refused, none as a picture that looks whole, and none stops this process.
TEST(ImageFile, refusesEveryPartOfAFile) {
  for (const std::string& whole : {pngBytes(gradient(9, 5)), jpegBytes(gradient(9, 5))}) {
    // A JPEG's last two bytes only say that it ends.
    for (std::size_t size = 0; size + 20 < whole.size(); size += 7) {
      EXPECT_NE(problemOf(whole.substr(0, size)), "") << size;
    }
  }
  EXPECT_EQ(problemOf("no picture"), "not a PNG or JPEG picture");
}

TEST(ImageFile, refusesTooManyPixelsBeforeItDecodesThem) {
  std::string jpeg = jpegBytes(gradient(9, 5));
  const std::size_t frame = jpeg.find("\xFF\xC0");
  ASSERT_NE(frame, std::string::npos);
  jpeg.replace(frame + 5, 4, "\xFF\x00\xFF\x00", 4);
  EXPECT_EQ(problemOf(jpeg), "the picture of 65280 x 65280 pixels is too large");
  const zel::test::TempDir dir;
  zel::test::writeFile(dir.file("bad.bmp"), "BMxx");
  EXPECT_THROW((void)zel::view::readImage(dir.file("bad.bmp")), ImageError);
  EXPECT_THROW((void)zel::view::readImage(dir.file("none.png")), ImageError);
}

TEST(Animation, framesComeBackInTheirOrderAndTime) {
  const auto frame = [](int number) {
    Picture picture = gradient(32, 24);
    std::fill(picture.rgba.begin(), picture.rgba.begin() + 32 * 12 * 4,
              static_cast<std::uint8_t>(60 + 60 * number));
    return picture;
  };
  const std::string bytes = zel::view::animationBytes(frame, 3, 40);
  const WebPData data{reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
  WebPAnimDecoder* const decoder = WebPAnimDecoderNew(&data, nullptr);
  ASSERT_NE(decoder, nullptr);
  int number = 0;
  for (; WebPAnimDecoderHasMoreFrames(decoder) != 0; ++number) {
    std::uint8_t* pixels = nullptr;
    int end = 0;
    ASSERT_EQ(WebPAnimDecoderGetNext(decoder, &pixels, &end), 1);
    EXPECT_EQ(end, 40 * (number + 1));
    EXPECT_NEAR(pixels[4 * (32 * 4 + 8)], 60 + 60 * number, 8);
  }
  EXPECT_EQ(number, 3);
  WebPAnimDecoderDelete(decoder);
}

TEST(Animation, stillPicturesLoseNothing) {
  const Picture picture = gradient(19, 11);
  const std::string bytes = zel::view::webpBytes(picture);
  int width = 0;
  int height = 0;
  std::uint8_t* const pixels = WebPDecodeRGBA(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                              bytes.size(), &width, &height);
  ASSERT_EQ(width, 19);
  EXPECT_TRUE(std::equal(picture.rgba.begin(), picture.rgba.end(), pixels));
  WebPFree(pixels);
}

}  // namespace
