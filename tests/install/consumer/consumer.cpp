#include <zel/zel.h>

#include <cstdio>

int main() {
  const float point[3] = {1, 2, 3};
  NodeCL node(zel::kTagAvailable);
  node.SetPntM(point);
  NodeArr nodes;
  int index = zel::kNoIndex;
  nodes.MergeNodeLstM(node, &index);
  std::printf("node %d of %d\n", index, nodes.GetBoundM());
  return index == 0 && nodes.GetBoundM() == 1 ? 0 : 1;
}
