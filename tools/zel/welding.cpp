#include "tools/zel/welding.h"

#include <array>
#include <bit>
#include <cstdint>
#include <unordered_set>
#include <vector>

#include "tools/zel/number_text.h"
#include "tools/zel/progress.h"

namespace zel::program {

namespace {

struct PlaceHash {
  std::size_t operator()(const Float3& place) const {
    std::uint64_t hash = 0;
    for (const float coordinate : place) {
      hash = (hash ^ std::bit_cast<std::uint32_t>(coordinate)) * 0x9E3779B97F4A7C15U;
      hash ^= hash >> 32;
    }
    return static_cast<std::size_t>(hash);
  }
};

/// Whether no node belongs to two faces although corners of faces lie in one place: exporters of
/// triangle soups write every face with nodes of its own.
class SoupSearch {
 public:
  explicit SoupSearch(const Mesh& mesh)
      : mesh_(mesh), isUsed_(static_cast<std::size_t>(mesh.nodes.GetBoundM())) {
    take(mesh.triangles);
    take(mesh.quads);
  }

  [[nodiscard]] bool found() const { return !isShared_ && meet_; }

 private:
  template <class Faces>
  void take(const Faces& faces) {
    forEachFace(faces, [&](int /*slot*/, const auto& corners) {
      for (const int corner : corners) {
        takeCorner(corner);
      }
    });
  }

  void takeCorner(int corner) {
    if (isShared_ || corner < 0 || corner >= mesh_.nodes.GetBoundM()) {
      return;
    }
    isShared_ = isUsed_[static_cast<std::size_t>(corner)];
    isUsed_[static_cast<std::size_t>(corner)] = true;
    if (!meet_) {
      const float* at = mesh_.nodes.getCurrentItemPrtConstM()[corner].point();
      // The sum makes one zero of both.
      meet_ = !places_.insert({at[0] + 0.0F, at[1] + 0.0F, at[2] + 0.0F}).second;
    }
  }

  const Mesh& mesh_;
  std::vector<bool> isUsed_;
  std::unordered_set<Float3, PlaceHash> places_;
  bool isShared_ = false;
  bool meet_ = false;
};

/// What went wrong where the tolerance was too large for the mesh, or nothing.
std::string complaintOn(const WeldReport& weld, double shortestEdge) {
  std::string text;
  if (shortestEdge > 0 && weld.toleranceUsed > shortestEdge / 2) {
    text = "the tolerance " + shortText(weld.toleranceUsed) + " passes half the shortest edge, " +
           shortText(shortestEdge);
  }
  if (weld.facesCollapsed > 0) {
    text += (text.empty() ? "" : ": ") + groupedText(weld.facesCollapsed) +
            (weld.facesCollapsed == 1 ? " face" : " faces") + " collapsed and left out";
  }
  return text;
}

}  // namespace

void Welding::declare(Options& options, When when) {
  when_ = when;
  const bool always = when == When::kAlways;
  if (!always) {
    options.flag("--weld", weld_, "First merge the nodes that lie in one place");
  }
  const Option& absolute = options
                               .value("--tolerance", "DISTANCE", tolerance_,
                                      always ? "Merge nodes up to this far apart"
                                             : "Weld, merging nodes up to this far apart")
                               .notNegative();
  options
      .value("--relative", "PART", relative_,
             always ? "The tolerance as a part of the bounds' diagonal (1e-6)"
                    : "Weld with a tolerance of this part of the bounds' diagonal (1e-6)")
      .notNegative()
      .excludes(absolute);
}

bool Welding::isAsked() const { return when_ == When::kAlways || weld_ || tolerance_ || relative_; }

Tolerance Welding::tolerance() const {
  if (tolerance_) {
    return Absolute(*tolerance_);
  }
  return relative_ ? Relative(*relative_) : kDefaultTolerance;
}

std::optional<WeldReport> Welding::apply(Mesh& mesh, const std::string& file,
                                         const Console& console, Appearance* looks) const {
  if (!isAsked()) {
    if (SoupSearch(mesh).found()) {
      console.note(file +
                   ": the faces share no nodes, so that every edge counts as open; --weld merges "
                   "the nodes that lie in one place");
    }
    return std::nullopt;
  }
  const double shortestEdge = shortestEdgeOf(mesh);
  WeldOptions options{.tolerance = tolerance()};
  options.faceMaps = looks != nullptr;
  WeldReport report;
  {
    JobProgress progress(console, "welding " + file);
    options.progress = progress.told();
    report = weld(mesh, options);
  }
  if (looks != nullptr) {
    looks->followNodes(report.newIndexOf);
    looks->followFaces(report.triangleOrigins, report.quadOrigins);
  }
  if (const std::string complaint = complaintOn(report, shortestEdge); !complaint.empty()) {
    console.note(file + ": " + complaint);
  }
  console.remark("welded " + file + ": " + std::to_string(report.nodesMerged) + " nodes merged");
  return report;
}

Report reportOn(const WeldReport& weld) {
  Report report;
  report.measure("tolerance", "tolerance", weld.toleranceUsed);
  report.count("nodes merged", "nodesMerged", weld.nodesMerged);
  report.measure("largest move", "largestMove", weld.largestMove);
  report.count("faces collapsed", "facesCollapsed", weld.facesCollapsed);
  report.count("faces repeated", "facesRepeated", weld.facesRepeated);
  report.count("quads narrowed", "quadsNarrowed", weld.quadsNarrowed);
  return report;
}

}  // namespace zel::program
