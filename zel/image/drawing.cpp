#include "zel/image/drawing.h"

#include <GL/gl.h>

namespace {

constexpr float kLineColour[4] = {0.5F, 0.5F, 0.5F, 1.0F};

}  // namespace

void slSetCorlorForLines() {
  glMaterialfv(GL_FRONT, GL_DIFFUSE, kLineColour);
  glMaterialfv(GL_FRONT, GL_AMBIENT, kLineColour);
  glMaterialfv(GL_FRONT, GL_SPECULAR, kLineColour);
}
