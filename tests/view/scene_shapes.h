#pragma once

#include <initializer_list>

#include "zel/containers/point2d_arr.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace zel::test {

/// Lists of one mesh.
struct Shape {
  NodeArr nodes;
  TriangleArr triangles;
  QuadArr quads;
  Point2DArr textureCoords;

  int addNode(float x, float y, float z) {
    const float point[3] = {x, y, z};
    NodeCL node(char{31});
    node.SetPntM(point);
    return nodes.AddItemM(node);
  }
  int addTriangle(int a, int b, int c) {
    TriangleCL triangle(char{31});
    triangle.SetTriangleM(a, b, c);
    return triangles.AddItemM(triangle);
  }
  int addQuad(int a, int b, int c, int d) {
    QuadCL quad(char{31});
    quad.SetQuadM(a, b, c, d);
    return quads.AddItemM(quad);
  }
};

/// A cube from -1 to 1 of six quads; `open` leaves out the top (y = 1).
inline Shape makeCube(bool open = false) {
  Shape cube;
  for (int corner = 0; corner < 8; ++corner) {
    cube.addNode((corner & 1) != 0 ? 1.0F : -1.0F, (corner & 2) != 0 ? 1.0F : -1.0F,
                 (corner & 4) != 0 ? 1.0F : -1.0F);
  }
  cube.addQuad(4, 5, 7, 6);  // front, z = 1
  cube.addQuad(0, 2, 3, 1);
  cube.addQuad(1, 3, 7, 5);  // right, x = 1
  cube.addQuad(0, 4, 6, 2);
  cube.addQuad(0, 1, 5, 4);  // bottom
  if (!open) {
    cube.addQuad(2, 6, 7, 3);
  }
  return cube;
}

}  // namespace zel::test
