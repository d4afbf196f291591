// What a user's project does with both storeys of the installed package.

#include <zel/zel.h>

#include <cstdio>
#include <span>
#include <string_view>

namespace {

bool classicInterfaceWorks() {
  const float point[3] = {1, 2, 3};
  NodeCL node(zel::kTagAvailable);
  node.SetPntM(point);
  NodeArr nodes;
  int index = zel::kNoIndex;
  nodes.MergeNodeLstM(node, &index);
  return index == 0 && nodes.GetBoundM() == 1;
}

/// Reads, welds, checks, unfolds and converts a square cut in two.
bool secondStoreyWorks() {
  constexpr std::string_view kSoup =
      "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3\nf 4 5 6\n";
  zel::Mesh mesh = zel::readMesh(std::as_bytes(std::span(kSoup)), {.format = "obj"});
  const zel::WeldReport welded = zel::weld(mesh);
  const zel::Defects defects = zel::findDefects(mesh);
  const zel::UnfoldReport layout = zel::unfold(mesh);
  const std::string document = zel::meshBytes(mesh, {.format = "zel"});
  const zel::Mesh again = zel::readMesh(std::as_bytes(std::span(document)), {.format = "zel"});
  std::printf("%d merged, %d open, %d unfolded\n", welded.nodesMerged, defects.openEdges,
              layout.unfoldedFaces);
  return welded.nodesMerged == 2 && defects.openEdges == 4 && layout.unfoldedFaces == 2 &&
         !zel::compare(mesh, again).any();
}

}  // namespace

int main() { return classicInterfaceWorks() && secondStoreyWorks() ? 0 : 1; }
