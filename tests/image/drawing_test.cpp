#include "zel/image/drawing.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <array>

#include "tools/view/offscreen_context.h"

namespace {

using Rgba = std::array<float, 4>;

Rgba material(GLenum side, GLenum name) {
  Rgba colour{};
  glGetMaterialfv(side, name, colour.data());
  return colour;
}

TEST(Drawing, lineColourIsTheFrontMaterialAndNothingElse) {
  const zel::view::OffscreenContext context(16, 16);
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

}  // namespace
