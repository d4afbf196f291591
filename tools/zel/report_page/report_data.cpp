#include "tools/zel/report_page/report_data.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>
#include <span>

#include "tools/zel/defect_classes.h"
#include "tools/zel/number_text.h"
#include "tools/zel/progress.h"
#include "tools/zel/report_page/base64.h"
#include "tools/zel/report_page/thinning.h"

namespace zel::program {

namespace {

constexpr std::size_t kMostPlaces = 20'000;  // of one class; more is counted, not listed
constexpr std::size_t kBars = 36;

/// The numbers of an array as the bytes that a typed array is made of.
template <class Number>
Json packed(const std::vector<Number>& numbers) {
  return base64(std::as_bytes(std::span(numbers)));
}

bool isNode(const Mesh& mesh, int node) {
  return node >= 0 && node < mesh.nodes.GetBoundM() &&
         isLive(mesh.nodes.getCurrentItemPrtConstM()[node]);
}

/// Brings places into the frame. What has none becomes NaN.
class Placer {
 public:
  Placer(const Mesh& mesh, const ReportFrame& frame) : mesh_(mesh), frame_(frame) {}

  void add(int node, std::vector<float>& places) const {
    if (isNode(mesh_, node)) {
      addPoint(mesh_.points()[static_cast<std::size_t>(node)], places);
    } else {
      places.insert(places.end(), 3, std::numeric_limits<float>::quiet_NaN());
    }
  }
  void addPoint(std::span<const float, 3> point, std::vector<float>& places) const {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double moved = (double{point[axis]} - frame_.centre[axis]) / frame_.scale;
      places.push_back(static_cast<float>(moved));
    }
  }

 private:
  const Mesh& mesh_;
  const ReportFrame& frame_;
};

std::vector<int> cornersOf(const Mesh& mesh, const FaceRef& face) {
  const auto slot = static_cast<std::size_t>(face.slot);
  if (face.corners == 3) {
    const auto corners = mesh.triangleCorners()[slot];
    return {corners.begin(), corners.end()};
  }
  const auto corners = mesh.quadCorners()[slot];
  return {corners.begin(), corners.end()};
}

/// Where the defects of one class lie. Marks their nodes as those that thinning keeps.
class Places {
 public:
  Places(const Mesh& mesh, const ReportFrame& frame, std::vector<bool>& kept)
      : mesh_(mesh), placer_(mesh, frame), kept_(kept) {}

  void take(const std::vector<DefectLists::Edge>& edges) {
    kind_ = "edge";
    for (const auto& edge : first(edges)) {
      labels_.insert(labels_.end(), edge.begin(), edge.end());
      addNodes(edge);
    }
  }
  void take(const std::vector<int>& nodes) {
    kind_ = "node";
    for (const int node : first(nodes)) {
      labels_.push_back(node);
      addNodes(std::array{node});
    }
  }
  void take(const std::vector<FaceRef>& faces) {
    kind_ = "face";
    for (const FaceRef& face : first(faces)) {
      labels_.push_back(face.slot);
      labels_.push_back(face.corners);
      std::vector<int> corners = cornersOf(mesh_, face);
      if (corners.size() == 3) {
        corners.push_back(corners[2]);  // every face takes four places
      }
      addNodes(corners);
    }
  }

  [[nodiscard]] Json json(const DefectClass& defect, int count) const {
    return Json::Members{
        {"name", defect.name}, {"description", defect.description}, {"count", count},
        {"kind", kind_},       {"labels", packed(labels_)},         {"places", packed(places_)}};
  }

 private:
  template <class Item>
  static std::span<const Item> first(const std::vector<Item>& items) {
    return std::span(items).first(std::min(items.size(), kMostPlaces));
  }
  template <class Nodes>
  void addNodes(const Nodes& nodes) {
    for (const int node : nodes) {
      placer_.add(node, places_);
      if (isNode(mesh_, node)) {
        kept_[static_cast<std::size_t>(node)] = true;
      }
    }
  }

  const Mesh& mesh_;
  Placer placer_;
  std::vector<bool>& kept_;
  std::string kind_;
  std::vector<int> labels_;
  std::vector<float> places_;
};

/// Marks the other corners of the faces about bow ties, so that those faces do not collapse.
void keepFacesAbout(const std::vector<int>& nodes, const Mesh& mesh, std::vector<bool>& kept) {
  std::vector<bool> isAsked(kept.size());
  for (const int node : std::span(nodes).first(std::min(nodes.size(), kMostPlaces))) {
    isAsked[static_cast<std::size_t>(node)] = true;
  }
  forEachFace(mesh, [&](int /*slot*/, const auto& corners) {
    if (std::ranges::any_of(corners, [&](int corner) {
          return isNode(mesh, corner) && isAsked[static_cast<std::size_t>(corner)];
        })) {
      for (const int corner : corners) {
        if (isNode(mesh, corner)) {
          kept[static_cast<std::size_t>(corner)] = true;
        }
      }
    }
  });
}

Json defectsOf(const Mesh& mesh, const Defects& defects, const ReportFrame& frame,
               std::vector<bool>& kept) {
  Json::Elements classes;
  for (const DefectClass& defect : kDefectClasses) {
    Places places(mesh, frame, kept);
    std::visit([&](auto list) { places.take(defects.lists.*list); }, defect.list);
    classes.push_back(places.json(defect, defects.*defect.count));
  }
  keepFacesAbout(defects.lists.bowTieNodes, mesh, kept);
  return classes;
}

Json factsOf(const Mesh& mesh, const Measures& measures, const Defects& defects) {
  Json::Elements rows;
  const auto row = [&rows](const char* label, std::string text) {
    rows.emplace_back(Json::Elements{label, std::move(text)});
  };
  row("Nodes", groupedText(mesh.nodes.GetAvailableNumM()));
  row("Triangles", groupedText(mesh.triangles.GetAvailableNumM()));
  row("Quads", groupedText(mesh.quads.GetAvailableNumM()));
  row("Edges", groupedText(measures.edges));
  row("Components", groupedText(measures.components));
  row("Closed", measures.isClosed() ? "yes" : "no");
  row("Consistently wound", measures.isOriented() ? "yes" : "no");
  row("Boundary loops", groupedText(measures.boundaryLoops));
  row("Lowest corner", measures.bounds.isEmpty ? "none" : pointText(measures.bounds.low));
  row("Highest corner", measures.bounds.isEmpty ? "none" : pointText(measures.bounds.high));
  row("Area", shortText(measures.area));
  row("Volume", measures.isClosed() ? shortText(measures.signedVolume) : "not closed");
  row("Centroid", pointText(measures.centroid));
  row("Shortest edge", shortText(measures.shortestEdge));
  row("Mean edge", shortText(measures.meanEdge));
  row("Longest edge", shortText(measures.longestEdge));
  row("Sound", defects.any() ? "no" : "yes");
  return rows;
}

/// Counts over equal parts of [low, high].
class Histogram {
 public:
  Histogram(double low, double high) : low_(low), high_(high) {}
  void count(double value) {
    if (std::isfinite(value)) {
      const double part = high_ > low_ ? (value - low_) / (high_ - low_) : 0;
      ++bars_[static_cast<std::size_t>(std::clamp(part * kBars, 0.0, kBars - 1.0))];
    }
  }
  [[nodiscard]] Json json() const {
    return Json::Members{{"low", low_}, {"high", high_}, {"counts", bars_}};
  }

 private:
  double low_;
  double high_;
  std::array<long long, kBars> bars_{};
};

double distance(std::span<const float, 3> a, std::span<const float, 3> b) {
  return std::hypot(double{a[0]} - b[0], double{a[1]} - b[1], double{a[2]} - b[2]);
}

double angleAt(std::span<const float, 3> at, std::span<const float, 3> a,
               std::span<const float, 3> b) {
  double dot = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    dot += (double{a[axis]} - at[axis]) * (double{b[axis]} - at[axis]);
  }
  const double lengths = distance(at, a) * distance(at, b);
  return std::acos(std::clamp(dot / lengths, -1.0, 1.0)) * 180.0 / std::numbers::pi;
}

/// @return the histograms, of every edge once and of every corner of a face.
Json::Members histogramsOf(const Mesh& mesh, const Measures& measures) {
  const HalfEdges edges(mesh);
  const auto points = mesh.points();
  const auto point = [&points](int node) { return points[static_cast<std::size_t>(node)]; };
  Histogram lengths(0, measures.longestEdge);
  Histogram angles(0, 180);
  for (int edge = 0; edge < edges.count(); ++edge) {
    const auto from = point(edges.origin(edge));
    const auto to = point(edges.target(edge));
    if (edges.isFirst(edge)) {
      lengths.count(distance(from, to));
    }
    angles.count(angleAt(from, to, point(edges.origin(edges.previous(edge)))));
  }
  return {{"lengths", lengths.json()}, {"angles", angles.json()}};
}

/// What is drawn: points, triangles (quads as two) and the edges of the faces.
Json::Members drawnOf(const ThinnedMesh& shown, const Mesh& mesh, const ReportFrame& frame) {
  std::vector<float> places;
  const Placer placer(mesh, frame);
  for (std::size_t row = 0; row + 3 <= shown.mesh.points.size(); row += 3) {
    placer.addPoint(std::span<const float, 3>(&shown.mesh.points[row], 3), places);
  }
  std::vector<int> triangles = shown.mesh.triangles;
  const std::vector<int>& quads = shown.mesh.quads;
  for (std::size_t row = 0; row + 4 <= quads.size(); row += 4) {
    for (const std::size_t corner : {0, 1, 2, 0, 2, 3}) {
      triangles.push_back(quads[row + corner]);
    }
  }
  std::vector<int> lines;
  const HalfEdges edges(mesh);
  for (int edge = 0; edge < edges.count(); ++edge) {
    if (edges.isFirst(edge)) {
      lines.push_back(edges.origin(edge));
      lines.push_back(edges.target(edge));
    }
  }
  return {{"points", packed(places)},
          {"triangles", packed(triangles)},
          {"lines", packed(lines)},
          {"shownFaces", (shown.mesh.triangles.size() / 3) + (quads.size() / 4)},
          {"isThinned", shown.isThinned}};
}

}  // namespace

ReportFrame frameOf(const Mesh& mesh) {
  const Bounds bounds = boundsOf(mesh);
  ReportFrame frame;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    frame.centre[axis] = (double{bounds.low[axis]} + bounds.high[axis]) / 2;
  }
  const double diagonal = bounds.diagonal();
  frame.scale = diagonal > 0 ? diagonal / 2 : 1;
  return frame;
}

Json reportData(const Mesh& mesh, const std::string& name, const ReportFrame& frame,
                std::size_t mostFaces, const Console& console) {
  JobProgress progress(console, "looking into " + name);
  const Measures measures = measure(mesh, {.progress = progress.told()});
  const Defects defects = findDefects(mesh, {.list = true});
  std::vector<bool> kept(static_cast<std::size_t>(mesh.nodes.GetBoundM()));
  Json::Members data = {
      {"name", name},
      {"faces", mesh.triangles.GetAvailableNumM() + mesh.quads.GetAvailableNumM()},
      {"facts", factsOf(mesh, measures, defects)},
      {"defects", defectsOf(mesh, defects, frame, kept)}};
  const auto append = [&data](Json::Members more) {
    std::ranges::move(more, std::back_inserter(data));
  };
  append(histogramsOf(mesh, measures));
  const ThinnedMesh shown = thinned(mesh, kept, mostFaces);
  Mesh drawn(shown.mesh.spans());
  append(drawnOf(shown, drawn, frame));
  const UnfoldReport unfolded = unfold(drawn);
  append({{"unfoldedFaces", unfolded.unfoldedFaces},
          {"unfolding", unfolded.unfoldedFaces > 0 ? unfoldedPicture(drawn) : std::string()}});
  return data;
}

}  // namespace zel::program
