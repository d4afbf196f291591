#include <zel/zel.h>

#include <cstdio>

int main() {
  const float soup[2][3][3] = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
                               {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}};
  NodeArr nodes;
  TriangleArr triangles;
  for (const auto& corners : soup) {
    int indices[3];
    for (int k = 0; k < 3; ++k) {
      NodeCL node(zel::kTagAvailable);
      node.SetPntM(corners[k]);
      nodes.MergeNodeLstM(node, &indices[k]);
    }
    TriangleCL triangle(zel::kTagAvailable);
    triangle.SetTriangleM(indices);
    triangles.MergeTriangleLstM(triangle);
  }
  int face = 0;
  const int along = triangles.JudgeBoundM(1, 2, &face);
  std::printf("%d nodes, %d triangles, %d of them along the diagonal\n", nodes.GetAvailableNumM(),
              triangles.GetAvailableNumM(), along);
}
