#include "zel/mesh/mesh.h"

#include <algorithm>
#include <new>

#include "zel/core/error.h"
#include "zel/mesh/detail/checked_lists.h"

namespace zel {

namespace {

constexpr const char* kBuilding = "cannot build a mesh";

Error badArgument(const char* what, const std::string& why) {
  return {ErrorCode::kArgument, what, why};
}

std::size_t toSize(int i) { return static_cast<std::size_t>(i); }

/// The number of rows in a flat array, which must divide evenly and be countable by int.
int rowsOf(std::size_t numbers, std::size_t columns, const char* name) {
  if (numbers % columns != 0) {
    throw badArgument(kBuilding, std::string("the number of ") + name + " is no multiple of " +
                                     std::to_string(columns));
  }
  if (numbers / columns >= static_cast<std::size_t>(-kNoIndex)) {
    throw Error(ErrorCode::kExhausted, kBuilding, std::string("too many ") + name);
  }
  return static_cast<int>(numbers / columns);
}

void expectLength(std::size_t numbers, std::size_t wanted, const char* name) {
  if (numbers != 0 && numbers != wanted) {
    throw badArgument(kBuilding, std::string("there are ") + std::to_string(numbers) + " " + name +
                                     ", not " + std::to_string(wanted));
  }
}

void expectCorners(std::span<const int> corners, int nodes, const char* name) {
  const auto bad =
      std::ranges::find_if(corners, [&](int node) { return node < 0 || node >= nodes; });
  if (bad != corners.end()) {
    throw badArgument(kBuilding, std::string("a corner of a ") + name + " names node " +
                                     std::to_string(*bad) + " of " + std::to_string(nodes));
  }
}

Point2DArr textureList(std::span<const float> coords) {
  Point2DArr list;
  const auto entries = static_cast<int>(coords.size() / 2);
  reserve(list, entries);
  for (std::size_t k = 0; k < coords.size(); k += 2) {
    append(list, coords.data() + k);
  }
  return list;
}

TriangleCL makeTriangle(const int* corners) {
  TriangleCL triangle(kTagAvailable);
  triangle.SetTriangleM(corners);
  return triangle;
}

QuadCL makeQuad(const int* corners) {
  QuadCL quad(kTagAvailable);
  quad.SetQuadM(corners);
  return quad;
}

NodeCL makeNode(const float* point, const float* normal) {
  NodeCL node(kTagAvailable);
  node.SetNodeM(point, normal);
  return node;
}

/// Per slot of a node list its number among the live ones, or kNoIndex.
std::vector<int> liveNumbers(const NodeArr& nodes) {
  const NodeCL* store = nodes.getCurrentItemPrtConstM();
  std::vector<int> numbers(toSize(std::max(nodes.GetBoundM(), 0)), kNoIndex);
  int live = 0;
  for (std::size_t slot = 0; slot < numbers.size(); ++slot) {
    if (isLive(store[slot])) {
      numbers[slot] = live++;
    }
  }
  return numbers;
}

/// Copies the corners of the live faces, renumbered, and their texture coordinates.
template <class Faces>
void copyFaces(const Faces& faces, const Point2DArr& coords, const std::vector<int>& numbers,
               std::vector<int>& corners, std::vector<float>& texture) {
  bool hasTexture = false;
  forEachFace(faces, [&](int slot, const auto& nodes) {
    int corner = slot * static_cast<int>(nodes.size());
    for (const int node : nodes) {
      const bool isKnown = node >= 0 && toSize(node) < numbers.size();
      if (!isKnown || numbers[toSize(node)] == kNoIndex) {
        throw badArgument("cannot copy a mesh",
                          "face slot " + std::to_string(slot) + " names no live node");
      }
      corners.push_back(numbers[toSize(node)]);
      Float2 coord{};
      hasTexture = textureCoordOf(coords, corner++, coord) || hasTexture;
      if (coords.GetBoundM() > 0) {
        texture.insert(texture.end(), coord.begin(), coord.end());
      }
    }
  });
  if (!hasTexture) {
    texture.clear();
  }
}

template <class List>
std::string faultOfCounts(const List& list, const char* name) {
  const auto* store = list.getCurrentItemPrtConstM();
  const int bound = list.GetBoundM();
  if (bound < 0 || bound > list.GetLengthM()) {
    return std::string(name) + ": the bound lies outside the store";
  }
  const auto live = std::count_if(store, store + bound, [](const auto& e) { return isLive(e); });
  if (live != list.GetAvailableNumM()) {
    return std::string(name) + ": " + std::to_string(live) + " are live, " +
           std::to_string(list.GetAvailableNumM()) + " are counted";
  }
  return {};
}

template <class Faces>
std::string faultOfFaces(const Faces& faces, const NodeArr& nodes, const Point2DArr& texture,
                         const char* name) {
  std::string fault = faultOfCounts(faces, name);
  const NodeCL* store = nodes.getCurrentItemPrtConstM();
  std::size_t perFace = 0;
  forEachFace(faces, [&](int slot, const auto& corners) {
    const bool isSound = std::ranges::all_of(corners, [&](int node) {
      return node >= 0 && node < nodes.GetBoundM() && isLive(store[node]);
    });
    if (!isSound && fault.empty()) {
      fault = std::string(name) + ": slot " + std::to_string(slot) + " names no live node";
    }
    perFace = corners.size();
  });
  const auto corners = static_cast<long long>(perFace) * faces.GetBoundM();
  if (fault.empty() && perFace != 0 && texture.GetBoundM() > corners) {
    fault = std::string(name) + ": more texture coordinates than corners";
  }
  return fault;
}

template <class Value, std::size_t kColumns, class List, class Field>
StridedRows<Value, kColumns> rowsOfList(const List& list, Field field) {
  const auto* store = list.getCurrentItemPrtConstM();
  return {field(store[0]), toSize(std::max(list.GetBoundM(), 0)), sizeof(*store)};
}

template <class List>
bool hasNoHoles(const List& list) {
  const auto* store = list.getCurrentItemPrtConstM();
  return std::all_of(store, store + std::max(list.GetBoundM(), 0),
                     [](const auto& element) { return isLive(element); });
}

}  // namespace

MeshSpans MeshArrays::spans() const {
  return {points, triangles, quads, nodeNormals, triangleTexture, quadTexture};
}

Mesh::Mesh(const MeshSpans& arrays) try {
  const int nodeCount = rowsOf(arrays.points.size(), 3, "coordinates");
  const int triangleCount = rowsOf(arrays.triangles.size(), 3, "corners of triangles");
  const int quadCount = rowsOf(arrays.quads.size(), 4, "corners of quads");
  expectLength(arrays.nodeNormals.size(), arrays.points.size(), "numbers in the node normals");
  expectLength(arrays.triangleTexture.size(), arrays.triangles.size() * 2,
               "numbers in the texture coordinates of triangles");
  expectLength(arrays.quadTexture.size(), arrays.quads.size() * 2,
               "numbers in the texture coordinates of quads");
  expectCorners(arrays.triangles, nodeCount, "triangle");
  expectCorners(arrays.quads, nodeCount, "quad");

  constexpr float kNoNormal[3] = {};
  reserve(nodes, nodeCount);
  for (std::size_t k = 0; k < arrays.points.size(); k += 3) {
    append(nodes, makeNode(arrays.points.data() + k,
                           arrays.nodeNormals.empty() ? kNoNormal : arrays.nodeNormals.data() + k));
  }
  reserve(triangles, triangleCount);
  for (std::size_t k = 0; k < arrays.triangles.size(); k += 3) {
    append(triangles, makeTriangle(arrays.triangles.data() + k));
  }
  reserve(quads, quadCount);
  for (std::size_t k = 0; k < arrays.quads.size(); k += 4) {
    append(quads, makeQuad(arrays.quads.data() + k));
  }
  triangleTexture = textureList(arrays.triangleTexture);
  quadTexture = textureList(arrays.quadTexture);
} catch (const std::bad_alloc&) {
  throw Error::outOfMemory();
}

MeshArrays Mesh::arrays() const try {
  MeshArrays out;
  const std::vector<int> numbers = liveNumbers(nodes);
  const NodeCL* store = nodes.getCurrentItemPrtConstM();
  bool hasNormals = false;
  for (std::size_t slot = 0; slot < numbers.size(); ++slot) {
    if (numbers[slot] != kNoIndex) {
      const float* normal = store[slot].normal();
      out.points.insert(out.points.end(), store[slot].point(), store[slot].point() + 3);
      out.nodeNormals.insert(out.nodeNormals.end(), normal, normal + 3);
      hasNormals = hasNormals || normal[0] != 0 || normal[1] != 0 || normal[2] != 0;
    }
  }
  if (!hasNormals) {
    out.nodeNormals.clear();
  }
  copyFaces(triangles, triangleTexture, numbers, out.triangles, out.triangleTexture);
  copyFaces(quads, quadTexture, numbers, out.quads, out.quadTexture);
  return out;
} catch (const std::bad_alloc&) {
  throw Error::outOfMemory();
}

StridedRows<float, 3> Mesh::points() const {
  return rowsOfList<float, 3>(nodes, [](const NodeCL& node) { return node.point(); });
}

StridedRows<float, 3> Mesh::nodeNormals() const {
  return rowsOfList<float, 3>(nodes, [](const NodeCL& node) { return node.normal(); });
}

StridedRows<int, 3> Mesh::triangleCorners() const {
  return rowsOfList<int, 3>(triangles,
                            [](const TriangleCL& face) { return face.record().corners; });
}

StridedRows<float, 3> Mesh::triangleNormals() const {
  return rowsOfList<float, 3>(triangles,
                              [](const TriangleCL& face) { return face.record().normal; });
}

StridedRows<int, 4> Mesh::quadCorners() const {
  return rowsOfList<int, 4>(quads, [](const QuadCL& face) { return face.record().corners; });
}

StridedRows<float, 3> Mesh::quadNormals() const {
  return rowsOfList<float, 3>(quads, [](const QuadCL& face) { return face.record().normal; });
}

bool Mesh::isCompact() const {
  return hasNoHoles(nodes) && hasNoHoles(triangles) && hasNoHoles(quads);
}

std::string Mesh::validate() const {
  std::string fault = faultOfCounts(nodes, "nodes");
  if (fault.empty()) {
    fault = faultOfFaces(triangles, nodes, triangleTexture, "triangles");
  }
  return fault.empty() ? faultOfFaces(quads, nodes, quadTexture, "quads") : fault;
}

int Mesh::addNode(const Float3& point, const Float3& normal) {
  return append(nodes, makeNode(point.data(), normal.data()));
}

int Mesh::addTriangle(const std::array<int, 3>& corners) {
  return append(triangles, makeTriangle(corners.data()));
}

int Mesh::addQuad(const std::array<int, 4>& corners) {
  return append(quads, makeQuad(corners.data()));
}

bool textureCoordOf(const Point2DArr& coords, int corner, Float2& coord) {
  if (corner < 0 || corner >= coords.GetBoundM()) {
    return false;
  }
  const float* stored = coords.getCurrentItemPrtConstM()[corner];
  if (!(stored[0] > kLiveNearMark)) {
    return false;
  }
  coord = {stored[0], stored[1]};
  return true;
}

void setTextureCoord(Point2DArr& coords, int corner, const Float2& coord) {
  coords.SetItemM(coord.data(), corner);
  if (corner >= coords.GetBoundM()) {
    throw Error::outOfMemory();
  }
}

}  // namespace zel
