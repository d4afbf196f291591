#include "zel/algorithms/unfold.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "zel/algorithms/detail/disjoint_sets.h"
#include "zel/algorithms/detail/face_normals.h"
#include "zel/algorithms/detail/plane_triangle.h"
#include "zel/algorithms/detail/texture_places.h"
#include "zel/algorithms/measure.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/geometry/records.h"
#include "zel/mesh/detail/checked_lists.h"
#include "zel/mesh/edges.h"
#include "zel/mesh/mesh.h"

namespace zel {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// A live triangle.
struct Face {
  int slot;
  std::array<int, 3> corners;
};

/// The triangles that can be unfolded, component by component: faces joined across edges along
/// which they run in opposite directions, the joins by which the unfolding goes; each in slot
/// order.
std::vector<std::vector<Face>> componentsOf(const Mesh& mesh) {
  const HalfEdges edges(mesh.triangles, QuadArr(), mesh.nodes.GetBoundM());
  const NodeCL* nodes = mesh.nodes.getCurrentItemPrtConstM();
  std::vector<bool> isUsable(at(edges.faceCount()), true);
  for (int edge = 0; edge < edges.count(); ++edge) {
    if (!isFinitePoint(nodes[edges.origin(edge)].point())) {
      isUsable[at(edges.faceOf(edge))] = false;
    }
  }
  DisjointSets sets(edges.faceCount());
  for (int edge = 0; edge < edges.count(); ++edge) {
    // Edges joined to the first that runs the other way come together, however many there are.
    for (int other = edges.nextAlong(edge); other != edge; other = edges.nextAlong(other)) {
      if (edges.origin(other) != edges.origin(edge) && isUsable[at(edges.faceOf(edge))] &&
          isUsable[at(edges.faceOf(other))]) {
        sets.join(edges.faceOf(edge), edges.faceOf(other));
        break;
      }
    }
  }
  std::vector<std::vector<Face>> components;
  std::vector<int> numbers(at(edges.faceCount()), kNoIndex);
  for (int face = 0; face < edges.faceCount(); ++face) {
    if (!isUsable[at(face)]) {
      continue;
    }
    int& number = numbers[at(sets.find(face))];
    if (number == kNoIndex) {
      number = static_cast<int>(components.size());
      components.emplace_back();
    }
    const int first = edges.firstEdge(face);
    components[at(number)].push_back(
        {edges.face(face).slot,
         {edges.origin(first), edges.origin(first + 1), edges.origin(first + 2)}});
  }
  return components;
}

/// Unfolds components one after the other, each as lists of its own, so that unfolding one costs
/// what it is large. They are scaled by a power of two, so that no tolerance of the calls matters.
class Unfolder {
 public:
  explicit Unfolder(const Mesh& mesh)
      : nodes_(mesh.nodes.getCurrentItemPrtConstM()),
        numbers_(at(std::max(mesh.nodes.GetBoundM(), 0)), kNoIndex) {
    constexpr int kSize = 14;  // of the whole mesh, as an exponent
    const double diagonal = boundsOf(mesh).diagonal();
    exponent_ = diagonal > 0.0 ? kSize - std::ilogb(diagonal) : 0;
  }

  /// @return where each face lies.
  std::vector<PlaneTriangle> places(const std::vector<Face>& faces, ProgressSteps& steps) {
    NodeArr nodes;
    auto triangles = listWithRoomFor<TriangleArr>(static_cast<int>(faces.size()));
    std::vector<int> used;
    for (const Face& face : faces) {
      TriangleCL triangle(kTagAvailable);
      std::array<int, 3> corners{};
      for (std::size_t k = 0; k < 3; ++k) {
        int& number = numbers_[at(face.corners[k])];
        if (number == kNoIndex) {
          used.push_back(face.corners[k]);
          number = append(nodes, scaled(nodes_[face.corners[k]]));
        }
        corners[k] = number;
      }
      triangle.SetTriangleM(corners.data());
      triangle.SetNormM(rounded(unitVector(areaNormal(nodes_, face.corners))).data());
      append(triangles, triangle);
      steps.advance();
    }
    for (const int node : used) {
      numbers_[at(node)] = kNoIndex;
    }
    return unfolded(triangles, nodes);
  }

 private:
  [[nodiscard]] NodeCL scaled(NodeCL node) const {
    for (int axis = 0; axis < 3; ++axis) {
      node.point()[axis] = std::ldexp(node.point()[axis], exponent_);
    }
    return node;
  }

  [[nodiscard]] std::vector<PlaneTriangle> unfolded(TriangleArr& triangles,
                                                    const NodeArr& nodes) const {
    XYCoordSysD anywhere{};
    anywhere.origin[0] = kFloatMark;
    Point2DArr coords;
    // Every face can be reached, so nothing but refused memory makes this fail.
    if (triangles.GetTexCoordM(anywhere, &coords, nodes) != 1) {
      throw Error::outOfMemory();
    }
    std::vector<PlaneTriangle> places(at(triangles.GetBoundM()));
    for (std::size_t entry = 0; entry < 3 * places.size(); ++entry) {
      Float2 coord{};
      coords.GetItemM(coord.data(), static_cast<int>(entry));
      if (coord[0] == kFloatMark) {
        throw Error::outOfMemory();
      }
      places[entry / 3][entry % 3] = {std::ldexp(double{coord[0]}, -exponent_),
                                      std::ldexp(double{coord[1]}, -exponent_)};
    }
    return places;
  }

  const NodeCL* nodes_;
  std::vector<int> numbers_;  // of the nodes in the component at hand
  int exponent_;
};

/// Measures the placed faces against the mesh.
class Judgement {
 public:
  explicit Judgement(const NodeCL* nodes) : nodes_(nodes) {}

  void add(const std::vector<Face>& faces, const std::vector<PlaneTriangle>& places,
           ProgressSteps& steps) {
    for (std::size_t i = 0; i < faces.size(); ++i) {
      addFace(faces[i], places[i]);
      steps.advance();
    }
    report_.overlappingFaces += countOverlapping(places);
    ++report_.components;
  }

  [[nodiscard]] UnfoldReport finished(int faceCount) {
    report_.unreachedFaces = faceCount - report_.unfoldedFaces;
    report_.meanLengthError = edges_ > 0 ? errorSum_ / edges_ : 0.0;
    return report_;
  }

 private:
  void addFace(const Face& face, const PlaneTriangle& place) {
    ++report_.unfoldedFaces;
    report_.flippedFaces += signedArea(place) < 0.0 ? 1 : 0;
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t l = (k + 1) % 3;
      const double inSpace =
          distanceBetween(nodes_[face.corners[k]].point(), nodes_[face.corners[l]].point());
      if (inSpace > 0.0) {
        const double inPlane = std::hypot(place[l][0] - place[k][0], place[l][1] - place[k][1]);
        const double error = std::fabs(inPlane - inSpace) / inSpace;
        errorSum_ += error;
        edges_ += 1.0;
        report_.worstLengthError = std::max(report_.worstLengthError, error);
      }
    }
  }

  const NodeCL* nodes_;
  UnfoldReport report_;
  double errorSum_ = 0.0;
  double edges_ = 0.0;
};

/// Sets rectangles side by side in rows of about equal total width and height.
class Shelves {
 public:
  explicit Shelves(double totalArea) : rowWidth_(1.3 * std::sqrt(totalArea)) {}

  /// @return the shift that brings a layout to its place.
  PlanePoint place(const PlaneBox& box) {
    constexpr double kGap = 0.02;
    const double width = box.high[0] - box.low[0];
    const double height = box.high[1] - box.low[1];
    if (x_ > 0.0 && x_ + width > rowWidth_) {
      y_ += rowHeight_ * (1.0 + kGap);
      x_ = 0.0;
      rowHeight_ = 0.0;
    }
    const PlanePoint shift{x_ - box.low[0], y_ - box.low[1]};
    x_ += width + kGap * rowWidth_;
    rowHeight_ = std::max(rowHeight_, height);
    return shift;
  }

 private:
  double rowWidth_;
  double x_ = 0.0;
  double y_ = 0.0;
  double rowHeight_ = 0.0;
};

struct Layout {
  std::vector<Face> faces;
  std::vector<PlaneTriangle> places;
  PlaneBox box;
};

/// Sets the layouts side by side. @return the texture coordinates.
Point2DArr arranged(std::vector<Layout>& layouts, int slots) {
  double area = 0.0;
  for (const Layout& layout : layouts) {
    area += (layout.box.high[0] - layout.box.low[0]) * (layout.box.high[1] - layout.box.low[1]);
  }
  std::stable_sort(layouts.begin(), layouts.end(), [](const Layout& a, const Layout& b) {
    return a.box.high[1] - a.box.low[1] > b.box.high[1] - b.box.low[1];
  });
  Shelves shelves(area);
  auto coords = listWithRoomFor<Point2DArr>(layouts.empty() ? 0 : 3 * slots);
  for (const Layout& layout : layouts) {
    const PlanePoint shift = shelves.place(layout.box);
    for (std::size_t i = 0; i < layout.faces.size(); ++i) {
      for (std::size_t k = 0; k < 3; ++k) {
        const PlanePoint& corner = layout.places[i][k];
        setTextureCoord(
            coords, 3 * layout.faces[i].slot + static_cast<int>(k),
            {static_cast<float>(corner[0] + shift[0]), static_cast<float>(corner[1] + shift[1])});
      }
    }
  }
  return coords;
}

int liveCountOf(const TriangleArr& triangles) {
  int count = 0;
  forEachFace(triangles, [&](int /*slot*/, const auto& /*corners*/) { ++count; });
  return count;
}

/// A number with as many digits as a picture needs.
std::string shortText(double value) {
  constexpr int kDigits = 6;
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                 std::chars_format::general, kDigits)
                       .ptr;
  return {text.data(), end};
}

}  // namespace

UnfoldReport unfold(Mesh& mesh, const UnfoldOptions& options) {
  return tellingRefusedMemory([&] {
    std::vector<std::vector<Face>> components = componentsOf(mesh);
    const int faceCount = liveCountOf(mesh.triangles);
    ProgressSteps steps(options.progress, 2 * at(faceCount));
    Unfolder unfolder(mesh);
    std::vector<Layout> layouts;
    Judgement judgement(mesh.nodes.getCurrentItemPrtConstM());
    for (std::vector<Face>& component : components) {
      Layout layout{std::move(component), {}, {}};
      layout.places = unfolder.places(layout.faces, steps);
      layout.box = boxOf(layout.places);
      judgement.add(layout.faces, layout.places, steps);
      layouts.push_back(std::move(layout));
    }
    Point2DArr coords = arranged(layouts, mesh.triangles.GetBoundM());
    mesh.triangleTexture = std::move(coords);
    giveFaceNormals(mesh);
    return judgement.finished(faceCount);
  });
}

std::string unfoldedPicture(const Mesh& mesh) {
  return tellingRefusedMemory([&] {
    const std::vector<PlaneTriangle> places = texturePlacesOf(mesh);
    constexpr double kWidth = 1000.0;
    constexpr double kMargin = 10.0;
    const PlaneBox box = boxOf(places);
    const double width = std::max(box.high[0] - box.low[0], 1e-30);
    const double height = box.high[1] - box.low[1];
    const double scale = (kWidth - 2.0 * kMargin) / std::max(width, height);
    const auto x = [&](const PlanePoint& p) {
      return shortText(kMargin + (p[0] - box.low[0]) * scale);
    };
    const auto y = [&](const PlanePoint& p) {
      return shortText(kMargin + (box.high[1] - p[1]) * scale);
    };
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " +
                      shortText(width * scale + 2.0 * kMargin) + " " +
                      shortText(height * scale + 2.0 * kMargin) +
                      "\">\n<g fill=\"#9ec5e8\" fill-opacity=\"0.7\" stroke=\"#1d3f5e\" "
                      "stroke-width=\"0.3\" stroke-linejoin=\"round\">\n";
    for (const PlaneTriangle& place : places) {
      svg += "<path d=\"M" + x(place[0]) + " " + y(place[0]) + "L" + x(place[1]) + " " +
             y(place[1]) + "L" + x(place[2]) + " " + y(place[2]) + "Z\"/>\n";
    }
    return svg + "</g>\n</svg>\n";
  });
}

}  // namespace zel
