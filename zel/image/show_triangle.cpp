#include <GL/gl.h>

#include "zel/containers/point3d_arr.h"
#include "zel/mesh/triangle.h"

void TriangleCL::ShowM(const Point3DArr& points) const {
  int corners[3];
  GetTriangleM(corners);
  float normal[3];
  GetNormM(normal);
  // A point outside the list leaves its z unwritten.
  float vertices[3][3] = {};
  for (int k = 0; k < 3; ++k) {
    points.GetItemM(vertices[k], corners[k]);
  }
  glBegin(GL_TRIANGLES);
  glNormal3fv(normal);
  for (const float* vertex : vertices) {
    glVertex3fv(vertex);
  }
  glEnd();
}
