#include <chrono>
#include <cmath>
#include <filesystem>
#include <utility>

#include "tools/view/pictures/graphics_error.h"
#include "tools/zel/commands/commands.h"
#include "tools/zel/commands/demo_shape.h"
#include "tools/zel/failure.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/picture_file.h"
#include "tools/zel/progress.h"

namespace zel::program {

namespace {

constexpr const char* kPictureName = "demo.png";
constexpr const char* kHeadline = "An open, fluted trefoil tube as a soup of loose triangles\n";

/// Edges of one face only, as the library counts the faces of an edge.
int countBoundaryEdges(const Mesh& mesh) {
  int count = 0;
  forEachFace(mesh.triangles, [&](int, const std::array<int, 3>& corners) {
    for (std::size_t k = 0; k < corners.size(); ++k) {
      int face = kNoIndex;
      const int faces = mesh.triangles.JudgeBoundM(corners[k], corners[(k + 1) % 3], &face);
      count += faces == 1 ? 1 : 0;
    }
  });
  return count;
}

class DemoCommand : public Command {
 public:
  void declare(Options& options) override {
    options.value("--triangles", "COUNT", triangles_, "About how many triangles to make")
        .within(1000, 10'000'000);
    options.value("--output", "FILE", output_, "The document to save");
    options.note(
        "Makes a shape, scatters it as loose triangles, welds it, saves it, reads it back and "
        "compares. Exit code 1 tells that something did not come out as it must.");
    options.example("zel demo --triangles 1000000");
  }

  ExitCode run(const Console& console) override {
    DemoSoup soup;
    Mesh& welded = soup.mesh;
    WeldReport report;
    int boundaryEdges = 0;
    Mesh readBack;
    time("make the soup", [&] { soup = makeDemoSoup(triangles_); });
    const std::string soupPart = soupText(soup);
    time("weld", [&] {
      JobProgress progress(console, "welding the soup");
      report = weld(welded, {.tolerance = Absolute(kTolerance), .progress = progress.told()});
    });
    time("give normals", [&] { giveNormals(welded); });
    time("find boundary", [&] { boundaryEdges = countBoundaryEdges(welded); });
    time("save", [&] { save(welded, console); });
    time("read back", [&] { readBack = readMesh(output_, "zel", console); });
    MeshDifference difference;
    time("compare", [&] { difference = compare(welded, readBack); });
    time("draw", [&] { draw(readBack); });

    const bool asMade =
        welded.nodes.GetBoundM() == soup.nodes && welded.triangles.GetBoundM() == soup.triangles &&
        report.facesRepeated == soup.repeated && report.facesCollapsed == soup.collapsed &&
        boundaryEdges == soup.boundaryEdges;
    console.result(kHeadline + soupPart + weldedText(welded, report, boundaryEdges) +
                   fileText(difference) + pictureText_ + timeText() + verdict(asMade, difference));
    return asMade && !difference.any() ? ExitCode::kDone : ExitCode::kFound;
  }

 private:
  using Clock = std::chrono::steady_clock;

  template <class Work>
  void time(const char* what, Work work) {
    const Clock::time_point start = Clock::now();
    work();
    times_.emplace_back(what, std::chrono::duration<double, std::milli>(Clock::now() - start));
  }

  // A machine without OpenGL does everything else of the demo.
  void draw(const Mesh& mesh) {
    const std::string file = (std::filesystem::path(output_).parent_path() / kPictureName).string();
    try {
      writePicture(demoPicture(mesh), file);
      pictureText_ = "Drawn\n" + reportRow("picture", file);
    } catch (const view::GraphicsError& error) {
      pictureText_ = "Not drawn\n" + reportRow("reason", error.what());
    }
  }

  void save(const Mesh& mesh, const Console& console) const {
    const std::filesystem::path directory = std::filesystem::path(output_).parent_path();
    std::error_code error;
    if (!directory.empty() && !std::filesystem::create_directories(directory, error) && error) {
      throw unwritable(directory.string(), systemText(error.value()));
    }
    writeMesh(mesh, output_, {.format = "zel"}, console);
  }

  static std::string soupText(const DemoSoup& soup) {
    return reportRow("triangles", groupedText(soup.mesh.triangles.GetBoundM()) + ", " +
                                      groupedText(soup.repeated) + " of them repeated and " +
                                      groupedText(soup.collapsed) + " collapsed") +
           reportRow("points", groupedText(soup.mesh.nodes.GetBoundM()) +
                                   ", each moved by up to 0.000025 along every axis");
  }

  static std::string weldedText(const Mesh& welded, const WeldReport& report, int boundaryEdges) {
    const Measures facts = measure(welded);
    std::string text = "Welded\n";
    text += reportRow("triangles", groupedText(welded.triangles.GetAvailableNumM()) + " (refused " +
                                       groupedText(report.facesRepeated) + " repeated, " +
                                       groupedText(report.facesCollapsed) + " collapsed)");
    text += reportRow("nodes", groupedText(welded.nodes.GetAvailableNumM()));
    text +=
        reportRow("bounds", pointText(facts.bounds.low) + " to " + pointText(facts.bounds.high));
    text += reportRow("boundary", groupedText(boundaryEdges) + " edges in " +
                                      groupedText(facts.boundaryLoops) + " loops");
    return text;
  }

  [[nodiscard]] std::string fileText(const MeshDifference& difference) const {
    std::error_code error;
    const auto size = std::filesystem::file_size(output_, error);
    std::string text = "Saved and read back\n";
    text += reportRow("file", output_);
    text += reportRow("size", groupedText(static_cast<long long>(error ? 0 : size)) + " bytes");
    text += reportRow("difference",
                      !difference.any() ? "none, to the last bit" : difference.texts().front());
    return text;
  }

  [[nodiscard]] std::string timeText() const {
    std::string text = "Time in milliseconds\n";
    for (const auto& [what, duration] : times_) {
      constexpr std::size_t kNumberWidth = 8;
      const std::string number = std::to_string(std::llround(duration.count()));
      text += reportRow(
          what, std::string(kNumberWidth - std::min(kNumberWidth, number.size()), ' ') + number);
    }
    return text;
  }

  [[nodiscard]] std::string verdict(bool asMade, const MeshDifference& difference) const {
    if (!asMade) {
      return "FAILED: the welded mesh is not the one that was taken apart\n";
    }
    if (difference.any()) {
      return "FAILED: the document did not bring back what was saved\n";
    }
    return "All as it must be. Look into it: zel info " + output_ + "\n";
  }

  int triangles_ = 150'000;
  std::string output_ = "out/trefoil.zel";
  std::string pictureText_;
  std::vector<std::pair<const char*, std::chrono::duration<double, std::milli>>> times_;
};

}  // namespace

std::unique_ptr<Command> makeDemoCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<DemoCommand>();
}

}  // namespace zel::program
