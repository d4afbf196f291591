#pragma once

/// @file
/// Squeezing deleted slots out of a mesh, with maps both ways.

#include <vector>

#include "zel/core/api.h"

class NodeArr;
class QuadArr;
class TriangleArr;

namespace zel {

/// Where the slots of a list went.
struct SlotMaps {
  /// Per old slot its new slot; -2147483647 for a slot that was dropped.
  std::vector<int> newOf;
  /// Per new slot its old slot.
  std::vector<int> oldOf;
};

/// Drops the nodes that are not available, keeps the order of the rest, and renumbers the corners
/// of every face. A face that has a dropped node, or one that does not exist, as a corner is
/// marked deleted if it was available; its corners then hold -2147483647 there.
[[nodiscard]] ZEL_API SlotMaps compactNodes(NodeArr& nodes, TriangleArr& triangles, QuadArr& quads);

/// Marks the available nodes that no available face uses deleted. @return how many.
ZEL_API int deleteUnusedNodes(NodeArr& nodes, const TriangleArr& triangles, const QuadArr& quads);

/// Drops the faces that are not available and keeps the order of the rest.
[[nodiscard]] ZEL_API SlotMaps compactFaces(TriangleArr& triangles);
[[nodiscard]] ZEL_API SlotMaps compactFaces(QuadArr& quads);

}  // namespace zel
