#pragma once

// Asks the index of an array whether it is true of every slot; for tests that link the object
// files.

#include "zel/containers/kw_string_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

namespace zel {

struct IndexCheck {
  static bool isTrue(const NodeArr& list) { return list.nodes_.validate(); }
  static bool isTrue(const TriangleArr& list) { return list.faces_.validate(); }
  static bool isTrue(const QuadArr& list) { return list.faces_.validate(); }
  static bool isTrue(const Point3DArr& array) { return array.slots_.validate(); }
  static bool isTrue(const KwStringArr& table) { return table.slots_.validate(); }
};

}  // namespace zel
