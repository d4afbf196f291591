#include "tools/view/pictures/picture.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include "support/png_reading.h"
#include "tools/view/pictures/offscreen_context.h"
#include "tools/view/pictures/picture_mean.h"

namespace {

using zel::view::Picture;

Picture gradient(int width, int height) {
  Picture picture{width, height, {}};
  for (int i = 0; i < width * height * 4; ++i) {
    picture.rgba.push_back(static_cast<std::uint8_t>(i * 7));
  }
  return picture;
}

TEST(Picture, pngReadsBackPixelForPixel) {
  const Picture picture = gradient(13, 5);
  const zel::test::ReadPng read = zel::test::readPng(zel::view::pngBytes(picture));
  EXPECT_EQ(read.width, 13U);
  EXPECT_EQ(read.height, 5U);
  EXPECT_EQ(read.rgba, picture.rgba);
}

TEST(Picture, emptyPictureIsRefused) {
  EXPECT_THROW((void)zel::view::pngBytes(Picture{}), std::runtime_error);
}

TEST(Picture, shrinkingAveragesBlocksWeightedByAlpha) {
  Picture picture{4, 2, {}};
  const std::uint8_t grey[] = {0, 100, 10, 20, 0, 100, 30, 43};
  const std::uint8_t alpha[] = {255, 255, 255, 0, 255, 255, 255, 0};
  for (std::size_t i = 0; i < 8; ++i) {
    picture.rgba.insert(picture.rgba.end(), {grey[i], grey[i], grey[i], alpha[i]});
  }
  const Picture small = zel::view::shrunk(picture, 2);
  EXPECT_EQ(small.width, 2);
  EXPECT_EQ(small.height, 1);
  EXPECT_EQ(small.at(0, 0).red, 50);
  EXPECT_EQ(small.at(0, 0).alpha, 255);
  EXPECT_EQ(small.at(1, 0).blue, 20);  // the transparent 20 and 43 do not count
  EXPECT_EQ(small.at(1, 0).alpha, 128);
}

TEST(PictureMean, edgesBecomeAsFineAsTheirCoverage) {
  constexpr zel::view::ViewSize kSize{64, 48};
  const zel::view::OffscreenContext context(kSize.width, kSize.height);
  zel::view::PictureMean mean(kSize);
  for (const auto& [x, y] : zel::view::kSamplePlaces) {
    glClear(GL_COLOR_BUFFER_BIT);
    glLoadIdentity();
    glOrtho(x, kSize.width + x, y, kSize.height + y, -1, 1);
    glBegin(GL_TRIANGLES);
    glVertex2f(5, 3);
    glVertex2f(61, 11);
    glVertex2f(20, 44);
    glEnd();
    mean.add();
  }
  mean.paint();
  const Picture picture = zel::view::readPixels(kSize.width, kSize.height);
  double covered = 0;
  int partly = 0;
  for (std::size_t i = 0; i < picture.rgba.size(); i += 4) {
    covered += picture.rgba[i] / 255.0;
    partly += picture.rgba[i] > 0 && picture.rgba[i] < 255 ? 1 : 0;
  }
  EXPECT_NEAR(covered, (56 * 41 - 15 * 8) / 2.0, 3);  // the triangle's area
  EXPECT_GT(partly, 100);
  EXPECT_EQ(picture.at(28, 28).red, 255);
  EXPECT_EQ(picture.at(2, 2).red, 0);
}

}  // namespace
