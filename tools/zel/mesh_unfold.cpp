#include "tools/zel/mesh_unfold.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>

#include "tools/zel/mesh_normals.h"
#include "tools/zel/number_text.h"
#include "tools/zel/plane_overlap.h"

namespace zel::program {

namespace {

/// Things that are joined pairwise to groups.
class Groups {
 public:
  explicit Groups(std::size_t count) : parents_(count) {
    std::iota(parents_.begin(), parents_.end(), 0);
  }
  void join(int a, int b) { parents_[static_cast<std::size_t>(leader(a))] = leader(b); }
  /// @return the member that stands for the group of `a`.
  int leader(int a) {
    while (parents_[static_cast<std::size_t>(a)] != a) {
      int& parent = parents_[static_cast<std::size_t>(a)];
      parent = parents_[static_cast<std::size_t>(parent)];
      a = parent;
    }
    return a;
  }

 private:
  std::vector<int> parents_;
};

/// A live triangle.
struct Face {
  int slot;
  std::array<int, 3> corners;
};

/// Faces joined across edges along which they run in opposite directions, the joins by which the
/// unfolding goes; each component in slot order.
std::vector<std::vector<Face>> componentsOf(const std::vector<Face>& faces) {
  struct Side {
    int from;
    int to;
    int face;
    auto operator<=>(const Side&) const = default;
  };
  std::vector<Side> sides;
  sides.reserve(3 * faces.size());
  for (std::size_t face = 0; face < faces.size(); ++face) {
    const auto& [a, b, c] = faces[face].corners;
    const int number = static_cast<int>(face);
    sides.insert(sides.end(), {{a, b, number}, {b, c, number}, {c, a, number}});
  }
  std::sort(sides.begin(), sides.end());
  Groups groups(faces.size());
  // All sides of an edge come together when each joins the first that runs the other way.
  for (const Side& side : sides) {
    const auto other = std::lower_bound(sides.begin(), sides.end(), Side{side.to, side.from, 0});
    if (other != sides.end() && other->from == side.to && other->to == side.from) {
      groups.join(side.face, other->face);
    }
  }
  std::vector<std::vector<Face>> components;
  std::vector<int> numbers(faces.size(), kNoIndex);
  for (std::size_t face = 0; face < faces.size(); ++face) {
    int& number = numbers[static_cast<std::size_t>(groups.leader(static_cast<int>(face)))];
    if (number == kNoIndex) {
      number = static_cast<int>(components.size());
      components.emplace_back();
    }
    components[static_cast<std::size_t>(number)].push_back(faces[face]);
  }
  return components;
}

bool canUnfold(const Mesh& mesh, const Face& face) {
  const auto& [a, b, c] = face.corners;
  if (a == b || b == c || c == a) {
    return false;
  }
  return std::all_of(face.corners.begin(), face.corners.end(), [&](int node) {
    const NodeCL* const found = mesh.nodes.GetItemPM(node);
    return found != nullptr && isFinite(pointOf(mesh.nodes, node));
  });
}

/// One component as lists of its own, so that unfolding costs what the component is large.
class Piece {
 public:
  Piece(const Mesh& mesh, const std::vector<Face>& faces, std::vector<int>& numbers) {
    for (const Face& face : faces) {
      std::array<int, 3> corners{};
      for (std::size_t k = 0; k < 3; ++k) {
        int& number = numbers[static_cast<std::size_t>(face.corners[k])];
        if (number == kNoIndex) {
          number = nodes_.GetBoundM();
          nodes_.AddItemM(*mesh.nodes.GetItemPM(face.corners[k]));
          used_.push_back(face.corners[k]);
        }
        corners[k] = number;
      }
      Point normal{};
      mesh.triangles.GetItemPM(face.slot)->GetNormM(normal.data());
      triangles_.AddTriangleM(corners.data(), normal.data());
    }
    for (const int slot : used_) {
      numbers[static_cast<std::size_t>(slot)] = kNoIndex;
    }
  }

  /// @return whether every face got its place.
  bool unfold() {
    XYCoordSysD none{};
    none.origin[0] = kFloatMark;
    return triangles_.GetTexCoordM(none, &coords_, nodes_) == 1;
  }

  [[nodiscard]] PlaneTriangle placeOf(int face) const {
    PlaneTriangle place{};
    for (int k = 0; k < 3; ++k) {
      TextureCoord coord{};
      coords_.GetItemM(coord.data(), 3 * face + k);
      place[static_cast<std::size_t>(k)] = {coord[0], coord[1]};
    }
    return place;
  }

 private:
  NodeArr nodes_;
  TriangleArr triangles_;
  Point2DArr coords_;
  std::vector<int> used_;
};

/// Measures the placed faces against the mesh.
class Judgement {
 public:
  explicit Judgement(const Mesh& mesh) : mesh_(mesh) {}

  void add(const std::vector<Face>& faces, const std::vector<PlaneTriangle>& places) {
    for (std::size_t i = 0; i < faces.size(); ++i) {
      addFace(faces[i], places[i]);
    }
    report_.overlappingFaces += countOverlapping(places);
    ++report_.components;
  }

  [[nodiscard]] UnfoldReport finished(int unreached) {
    report_.unreachedFaces = unreached;
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
          distance(pointOf(mesh_.nodes, face.corners[k]), pointOf(mesh_.nodes, face.corners[l]));
      if (inSpace > 0.0) {
        const double inPlane = std::hypot(place[l][0] - place[k][0], place[l][1] - place[k][1]);
        const double error = std::fabs(inPlane - inSpace) / inSpace;
        errorSum_ += error;
        edges_ += 1.0;
        report_.worstLengthError = std::max(report_.worstLengthError, error);
      }
    }
  }

  const Mesh& mesh_;
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

void store(Mesh& mesh, std::vector<Layout>& layouts) {
  double area = 0.0;
  for (const Layout& layout : layouts) {
    area += (layout.box.high[0] - layout.box.low[0]) * (layout.box.high[1] - layout.box.low[1]);
  }
  std::stable_sort(layouts.begin(), layouts.end(), [](const Layout& a, const Layout& b) {
    return a.box.high[1] - a.box.low[1] > b.box.high[1] - b.box.low[1];
  });
  Shelves shelves(area);
  for (const Layout& layout : layouts) {
    const PlanePoint shift = shelves.place(layout.box);
    for (std::size_t i = 0; i < layout.faces.size(); ++i) {
      for (std::size_t k = 0; k < 3; ++k) {
        const PlanePoint& corner = layout.places[i][k];
        setTextureCoord(
            mesh.triangleTexture, 3 * layout.faces[i].slot + static_cast<int>(k),
            {static_cast<float>(corner[0] + shift[0]), static_cast<float>(corner[1] + shift[1])});
      }
    }
  }
}

}  // namespace

UnfoldReport unfoldMesh(Mesh& mesh) {
  giveFaceNormals(mesh);
  mesh.triangleTexture = Point2DArr();
  std::vector<Face> faces;
  forEachFace(mesh.triangles, [&](int slot, const std::array<int, 3>& corners) {
    faces.push_back({slot, corners});
  });
  const std::size_t all = faces.size();
  std::erase_if(faces, [&](const Face& face) { return !canUnfold(mesh, face); });
  auto unreached = static_cast<int>(all - faces.size());

  std::vector<int> numbers(static_cast<std::size_t>(std::max(mesh.nodes.GetBoundM(), 0)), kNoIndex);
  std::vector<Layout> layouts;
  Judgement judgement(mesh);
  for (std::vector<Face>& component : componentsOf(faces)) {
    Piece piece(mesh, component, numbers);
    if (!piece.unfold()) {
      unreached += static_cast<int>(component.size());
      continue;
    }
    Layout layout{std::move(component), {}, {}};
    for (std::size_t face = 0; face < layout.faces.size(); ++face) {
      layout.places.push_back(piece.placeOf(static_cast<int>(face)));
    }
    layout.box = boxOf(layout.places);
    judgement.add(layout.faces, layout.places);
    layouts.push_back(std::move(layout));
  }
  store(mesh, layouts);
  return judgement.finished(unreached);
}

std::string unfoldedPicture(const Mesh& mesh) {
  std::vector<PlaneTriangle> places;
  forEachFace(mesh.triangles, [&](int slot, const std::array<int, 3>& /*corners*/) {
    PlaneTriangle place{};
    bool isPlaced = true;
    for (int k = 0; k < 3; ++k) {
      TextureCoord coord{};
      isPlaced = textureCoordOf(mesh.triangleTexture, 3 * slot + k, coord) && isPlaced;
      place[static_cast<std::size_t>(k)] = {coord[0], coord[1]};
    }
    if (isPlaced) {
      places.push_back(place);
    }
  });
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
    svg += "<path d=\"M" + x(place[0]) + " " + y(place[0]) + "L" + x(place[1]) + " " + y(place[1]) +
           "L" + x(place[2]) + " " + y(place[2]) + "Z\"/>\n";
  }
  return svg + "</g>\n</svg>\n";
}

}  // namespace zel::program
