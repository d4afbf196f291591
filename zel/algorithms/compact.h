#pragma once

/// @file
/// Squeezing deleted slots out of a mesh, with maps both ways.

#include <vector>

#include "zel/core/api.h"
#include "zel/core/progress.h"

namespace zel {

struct Mesh;

/// How compact() works.
struct CompactOptions {
  bool dropUnusedNodes = false;  ///< whether nodes that no kept face uses are dropped too
  Progress progress{};           ///< told of the work done
  int threads = 0;               ///< at most so many; 0: one per core. Results do not depend on it
};

/// Where the slots of a list went.
struct SlotMaps {
  /// Per old slot its new slot; -2147483647 for a slot that was dropped.
  std::vector<int> newOf;
  /// Per new slot its old slot.
  std::vector<int> oldOf;
};

/// What compact() did.
struct CompactReport {
  SlotMaps nodes;         ///< of the node list
  SlotMaps triangles;     ///< of the triangle list
  SlotMaps quads;         ///< of the quad list
  int danglingFaces = 0;  ///< live faces that were dropped because a corner was no live node
};

/// Drops the slots that are not live from all three lists, and keeps the order of the rest.
/// Corners are renumbered, texture coordinates follow their faces; live faces with a corner that
/// is no live node are dropped. Takes time linear in nodes plus faces.
/// @throws Error code kExhausted or kCancelled, and the mesh is as before.
ZEL_API CompactReport compact(Mesh& mesh, const CompactOptions& options = {});

}  // namespace zel
