#include "tools/view/pictures/lighting.h"

#include <GL/gl.h>

#include <array>

#include "zel/image/drawing.h"

namespace zel::view {
namespace {

using Rgba = std::array<float, 4>;

struct Light {
  GLenum name;
  std::array<float, 4> direction;  // towards the light, as the eye sees it
  Rgba diffuse;
  Rgba specular;
};

// A warm key light from the upper left, a cool fill from the right, a rim from behind.
constexpr std::array<Light, 3> kLights{{
    {GL_LIGHT0, {-0.45F, 0.65F, 0.75F, 0}, {0.82F, 0.79F, 0.74F, 1}, {0.25F, 0.25F, 0.25F, 1}},
    {GL_LIGHT1, {0.85F, 0.10F, 0.45F, 0}, {0.22F, 0.25F, 0.31F, 1}, {0, 0, 0, 1}},
    {GL_LIGHT2, {0.20F, 0.55F, -0.80F, 0}, {0.28F, 0.28F, 0.30F, 1}, {0.10F, 0.10F, 0.10F, 1}},
}};

constexpr Rgba kAmbient{0.25F, 0.26F, 0.29F, 1};
constexpr Rgba kLineLight{0.45F, 0.48F, 0.55F, 1};
constexpr Rgba kClay{0.87F, 0.79F, 0.69F, 1};
constexpr Rgba kInside{0.72F, 0.42F, 0.36F, 1};
constexpr Rgba kWhite{0.95F, 0.95F, 0.95F, 1};
constexpr Rgba kGloss{0.35F, 0.35F, 0.35F, 1};
constexpr Rgba kDull{0, 0, 0, 1};
constexpr float kShininess = 28;

void setMaterial(GLenum side, const Rgba& colour, const Rgba& gloss) {
  glMaterialfv(side, GL_AMBIENT_AND_DIFFUSE, colour.data());
  glMaterialfv(side, GL_SPECULAR, gloss.data());
  glMaterialf(side, GL_SHININESS, kShininess);
}

}  // namespace

void paintBackground(const Colour& top, const Colour& bottom) {
  glClear(GL_DEPTH_BUFFER_BIT);
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_TEXTURE_2D);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glShadeModel(GL_SMOOTH);
  glBegin(GL_QUADS);
  glColor4ub(bottom.red, bottom.green, bottom.blue, bottom.alpha);
  glVertex2i(-1, -1);
  glVertex2i(1, -1);
  glColor4ub(top.red, top.green, top.blue, top.alpha);
  glVertex2i(1, 1);
  glVertex2i(-1, 1);
  glEnd();
  glEnable(GL_DEPTH_TEST);
}

void placeLights() {
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  for (const Light& light : kLights) {
    glLightfv(light.name, GL_POSITION, light.direction.data());
    glLightfv(light.name, GL_DIFFUSE, light.diffuse.data());
    glLightfv(light.name, GL_SPECULAR, light.specular.data());
    glEnable(light.name);
  }
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, kAmbient.data());
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, GL_TRUE);
  glEnable(GL_LIGHTING);
  glEnable(GL_NORMALIZE);
}

void setFaceMaterial(bool textured) {
  setMaterial(GL_FRONT, textured ? kWhite : kClay, textured ? kDull : kGloss);
  setMaterial(GL_BACK, textured ? kWhite : kInside, kDull);
}

void setLineLight() {
  for (const Light& light : kLights) {
    glDisable(light.name);
  }
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, kLineLight.data());
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, GL_FALSE);
  slSetCorlorForLines();
}

}  // namespace zel::view
