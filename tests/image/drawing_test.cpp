#include "zel/image/drawing.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <array>

#include "support/meshes.h"
#include "tools/view/pictures/offscreen_context.h"

namespace {

using Rgba = std::array<float, 4>;

constexpr int kSide = 64;

Rgba material(GLenum side, GLenum name) {
  Rgba colour{};
  glGetMaterialfv(side, name, colour.data());
  return colour;
}

class Drawing : public testing::Test {
 protected:
  const zel::view::OffscreenContext context{kSide, kSide};
  const Point3DArr points = zel::test::pointsOf({{-1, -1, 0}, {1, -1, 0}, {-1, 1, 0}});
};

TEST_F(Drawing, lineColourIsTheFrontMaterialAndNothingElse) {
  constexpr Rgba kGrey{0.5F, 0.5F, 0.5F, 1.0F};
  const Rgba backDiffuse = material(GL_BACK, GL_DIFFUSE);
  const Rgba emission = material(GL_FRONT, GL_EMISSION);
  for (int call = 0; call < 2; ++call) {
    slSetCorlorForLines();
    EXPECT_EQ(material(GL_FRONT, GL_DIFFUSE), kGrey);
    EXPECT_EQ(material(GL_FRONT, GL_AMBIENT), kGrey);
    EXPECT_EQ(material(GL_FRONT, GL_SPECULAR), kGrey);
    EXPECT_EQ(material(GL_BACK, GL_DIFFUSE), backDiffuse);
    EXPECT_EQ(material(GL_FRONT, GL_EMISSION), emission);
    EXPECT_EQ(material(GL_FRONT, GL_SHININESS)[0], 0.0F);
  }
  EXPECT_NE(backDiffuse, kGrey);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(Drawing, faceCoversItsPixelsInTheLightOfItsNormal) {
  TriangleCL face;  // neither tag nor normal type matters
  face.SetTriangleM(0, 1, 2);
  glEnable(GL_LIGHTING);
  glEnable(GL_LIGHT0);  // shines along the z axis
  const float towards[3] = {0, 0, 1};
  const float aside[3] = {1, 0, 0};
  std::array<int, 2> brightness{};
  for (const bool lit : {false, true}) {
    face.SetNormM(lit ? towards : aside);
    glClear(GL_COLOR_BUFFER_BIT);
    face.ShowM(points);
    const zel::view::Picture picture = zel::view::readPixels(kSide, kSide);
    EXPECT_EQ(picture.at(kSide - 8, 8).red, 0);  // the upper right half is free
    EXPECT_EQ(picture.at(8, 24).red, picture.at(kSide - 16, kSide - 8).red);
    brightness[lit ? 1 : 0] = picture.at(8, kSide - 8).red;
  }
  EXPECT_GT(brightness[0], 0);
  EXPECT_GT(brightness[1], brightness[0] + 150);
}

TEST_F(Drawing, cornersGoOutInTheirOrder) {
  glEnable(GL_CULL_FACE);  // only faces that run round counter-clockwise are left
  TriangleCL face;
  for (const bool counterClockwise : {true, false}) {
    face.SetTriangleM(2, counterClockwise ? 0 : 1, counterClockwise ? 1 : 0);
    glClear(GL_COLOR_BUFFER_BIT);
    face.ShowM(points);
    EXPECT_EQ(zel::view::readPixels(kSide, kSide).at(8, 24).red, counterClockwise ? 255 : 0);
  }
}

TEST_F(Drawing, cornersOutsideTheListDoNoHarm) {
  TriangleCL face;
  face.SetTriangleM(0, 1, 99);
  face.ShowM(points);
  TriangleCL().ShowM(points);
  face.ShowM(Point3DArr());
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
