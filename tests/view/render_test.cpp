#include "tools/view/render.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <numbers>

#include "scene_shapes.h"
#include "support/temp_dir.h"

namespace {

using zel::test::makeCube;
using zel::test::Shape;
using zel::view::Colour;
using zel::view::DrawOptions;
using zel::view::Picture;
using zel::view::SceneMesh;

constexpr zel::view::ViewSize kSize{120, 90};
constexpr Colour kBlue{0, 0, 255, 255};

bool near(const Colour& a, const Colour& b) {
  return std::abs(a.red - b.red) <= 2 && std::abs(a.green - b.green) <= 2 &&
         std::abs(a.blue - b.blue) <= 2;
}

DrawOptions onBlue() {
  DrawOptions options;
  options.backgroundTop = options.backgroundBottom = kBlue;
  return options;
}

Picture render(const Shape& shape, const DrawOptions& options, double yaw = 30, double pitch = 20,
               const zel::view::TextureImage& texture = {}) {
  const SceneMesh scene(shape.nodes, shape.triangles, shape.quads, shape.textureCoords);
  zel::view::Camera camera;
  camera.setAngles(yaw, pitch);
  camera.frame(scene.shownPoints(), kSize);
  return renderPicture(scene, texture, camera, options, kSize);
}

template <class Predicate>
int countPixels(const Picture& picture, Predicate predicate) {
  int count = 0;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      count += predicate(picture.at(x, y)) ? 1 : 0;
    }
  }
  return count;
}

TEST(Render, cubeStandsFramedBeforeItsBackground) {
  const Picture picture = render(makeCube(), onBlue());
  EXPECT_EQ(picture.width, kSize.width);
  EXPECT_EQ(picture.height, kSize.height);
  EXPECT_TRUE(near(picture.at(1, 1), kBlue));
  EXPECT_TRUE(near(picture.at(118, 88), kBlue));
  EXPECT_FALSE(near(picture.at(60, 45), kBlue));
  const int covered = countPixels(picture, [](const Colour& c) { return !near(c, kBlue); });
  EXPECT_GT(covered, kSize.width * kSize.height * 2 / 10);
  EXPECT_LT(covered, kSize.width * kSize.height * 6 / 10);
}

TEST(Render, facesOfOneCubeAreLitDifferently) {
  const Picture picture = render(makeCube(), onBlue(), 45, 35);
  const Colour top = picture.at(60, 22);
  const Colour left = picture.at(45, 55);
  const Colour right = picture.at(75, 55);
  EXPECT_FALSE(near(top, left));
  EXPECT_FALSE(near(left, right));
  EXPECT_GT(left.red, right.red);  // the key light stands on the left
}

TEST(Render, boundaryEdgesAppearOnlyWhereThereAreAny) {
  DrawOptions options = onBlue();
  options.boundary = true;
  const auto isOrange = [](const Colour& c) { return c.red > 180 && c.green < 120 && c.blue < 90; };
  EXPECT_EQ(countPixels(render(makeCube(), options), isOrange), 0);
  EXPECT_GT(countPixels(render(makeCube(true), options), isOrange), 60);
}

TEST(Render, wireframeLeavesTheFacesOpen) {
  DrawOptions options = onBlue();
  options.faces = false;
  options.edges = true;
  const Picture picture = render(makeCube(), options, 0, 0);
  EXPECT_TRUE(near(picture.at(60, 45), kBlue));
  const int lines = countPixels(picture, [](const Colour& c) { return !near(c, kBlue); });
  EXPECT_GT(lines, 300);
  EXPECT_LT(lines, 2000);
}

TEST(Render, transparentGroundKeepsColoursClean) {
  DrawOptions options;
  options.backgroundTop = options.backgroundBottom = Colour{0, 0, 0, 0};
  const Picture picture = render(makeCube(), options);
  EXPECT_EQ(picture.at(1, 1).alpha, 0);
  EXPECT_EQ(picture.at(60, 45).alpha, 255);
  EXPECT_EQ(countPixels(picture, [](const Colour& c) { return c.alpha > 0 && c.red < 30; }), 0);
}

TEST(Render, textureLiesUprightOnItsFace) {
  Shape shape;
  const int corners[4] = {shape.addNode(0, 0, 0), shape.addNode(4, 0, 0), shape.addNode(4, 3, 0),
                          shape.addNode(0, 3, 0)};
  shape.addTriangle(corners[0], corners[1], corners[2]);
  shape.addTriangle(corners[0], corners[2], corners[3]);
  const float coords[6][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 0}, {1, 1}, {0, 1}};
  for (const auto& coord : coords) {
    shape.textureCoords.AddItemM(coord);
  }
  // Bottom row red and green, top row black and white.
  const zel::view::TextureImage texture{
      2, 2, {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 0, 255, 255, 255, 255, 255}};
  DrawOptions options = onBlue();
  options.textured = true;
  const Picture picture = render(shape, options, 0, 0, texture);
  const Colour lowerLeft = picture.at(32, 66);
  const Colour lowerRight = picture.at(88, 66);
  EXPECT_GT(lowerLeft.red, 3 * lowerLeft.green);
  EXPECT_GT(lowerRight.green, 3 * lowerRight.red);
  EXPECT_LT(picture.at(32, 24).red, 60);
  EXPECT_GT(picture.at(88, 24).blue, 150);
}

// A ridge that falls by 15 degrees on either side, its left half before the right one.
Shape makeRoof() {
  Shape roof;
  const float fall = 0.268F;
  const int ridge[2] = {roof.addNode(0, -1, 0), roof.addNode(0, 1, 0)};
  roof.addTriangle(ridge[0], ridge[1], roof.addNode(-1, 0, -fall));
  roof.addTriangle(ridge[1], ridge[0], roof.addNode(1, 0, -fall));
  const float coord[2] = {0.5F, 0.5F};
  for (int entry = 0; entry < 6; ++entry) {
    roof.textureCoords.AddItemM(coord);
  }
  return roof;
}

TEST(Render, texturedFacesAreFlatUnlessAskedToBeSmooth) {
  const zel::view::TextureImage white{1, 1, {255, 255, 255, 255}};
  DrawOptions options = onBlue();
  options.textured = true;
  const auto stepAtRidge = [&] {
    const Picture picture = render(makeRoof(), options, 0, 0, white);
    return std::abs(picture.at(58, 45).red - picture.at(61, 45).red);
  };
  EXPECT_GT(stepAtRidge(), 14);
  options.smooth = true;
  EXPECT_LT(stepAtRidge(), 7);
}

// Faces that were pushed back to keep lines free let the inside shine through at the outline.
TEST(Render, outlineOfAClosedMeshShowsNothingOfItsInside) {
  Shape ball;
  constexpr int kRings = 12;
  for (int i = 0; i <= kRings; ++i) {
    for (int k = 0; k < kRings; ++k) {
      const double theta = std::numbers::pi * i / kRings;
      const double phi = 2 * std::numbers::pi * k / kRings;
      ball.addNode(static_cast<float>(std::sin(theta) * std::cos(phi)),
                   static_cast<float>(std::cos(theta)),
                   static_cast<float>(-std::sin(theta) * std::sin(phi)));
      if (i > 0) {
        const int right = (k + 1) % kRings;
        const int row = i * kRings;
        ball.addQuad(row - kRings + k, row + k, row + right, row - kRings + right);
      }
    }
  }
  const auto isInside = [](const Colour& c) { return c.red > 20 && c.red > 1.25 * c.green; };
  for (const bool withLines : {false, true}) {
    DrawOptions options = onBlue();
    options.boundary = withLines;
    const Picture picture = render(ball, options);
    EXPECT_EQ(countPixels(picture, isInside), 0) << withLines;
    EXPECT_GT(picture.at(60, 45).red, 100);
  }
}

TEST(Render, textureComesFromABitmapFile) {
  const zel::test::TempDir dir;
  EXPECT_TRUE(zel::view::loadTexture(dir.file("none.bmp")).isEmpty());
  zel::test::writeFile(dir.file("bad.bmp"), "BMxx");
  EXPECT_TRUE(zel::view::loadTexture(dir.file("bad.bmp")).isEmpty());
  // 1 x 2 pixels of 24 bits.
  std::string bytes = "BM";
  for (const unsigned value : {62U, 0U, 54U, 40U, 1U, 2U, 0x180001U, 0U, 8U, 0U, 0U, 0U, 0U}) {
    for (int k = 0; k < 4; ++k) {
      bytes += static_cast<char>(value >> (8 * k));
    }
  }
  zel::test::writeFile(dir.file("good.bmp"),
                       bytes + std::string("\x03\x02\x01\0\x06\x05\x04\0", 8));
  const zel::view::TextureImage image = zel::view::loadTexture(dir.file("good.bmp"));
  EXPECT_EQ(image.rgba, (std::vector<std::uint8_t>{1, 2, 3, 255, 4, 5, 6, 255}));
}

TEST(Render, emptySceneAndPointsGiveAPicture) {
  EXPECT_TRUE(near(render(Shape(), onBlue()).at(60, 45), kBlue));
  Shape points;
  points.addNode(0, 0, 0);
  EXPECT_FALSE(near(render(points, onBlue()).at(60, 45), kBlue));
}

}  // namespace
