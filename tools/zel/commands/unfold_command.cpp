#include "tools/zel/commands/commands.h"
#include "tools/zel/json.h"
#include "tools/zel/mesh_transfer.h"
#include "tools/zel/mesh_unfold.h"
#include "tools/zel/number_text.h"

namespace zel::program {

namespace {

std::string jsonOf(const std::string& file, const UnfoldReport& report) {
  Json::Members json;
  json.emplace_back("file", file);
  json.emplace_back("components", report.components);
  json.emplace_back("unfoldedFaces", report.unfoldedFaces);
  json.emplace_back("unreachedFaces", report.unreachedFaces);
  json.emplace_back("flippedFaces", report.flippedFaces);
  json.emplace_back("overlappingFaces", report.overlappingFaces);
  json.emplace_back("meanLengthError", report.meanLengthError);
  json.emplace_back("worstLengthError", report.worstLengthError);
  return Json(std::move(json)).line();
}

std::string textOf(const std::string& file, const UnfoldReport& report) {
  std::string text = file + "\n";
  text += reportRow("unfolded", groupedText(report.unfoldedFaces) + " triangles in " +
                                    groupedText(report.components) + " components");
  text += reportRow("unreached", groupedText(report.unreachedFaces) + " faces");
  text += reportRow("flipped", groupedText(report.flippedFaces) + " triangles");
  text += reportRow("overlapping", groupedText(report.overlappingFaces) + " triangles");
  text +=
      reportRow("length error", "mean " + shortText(100.0 * report.meanLengthError) + " %, worst " +
                                    shortText(100.0 * report.worstLengthError) + " %");
  return text;
}

class UnfoldCommand : public Command {
 public:
  void declare(Options& options) override {
    files_.declare(options);
    options.value("--svg", "FILE", svg_, "Draw the layout to this SVG file");
    options.flag("--json", json_, "The report as one line of JSON");
    options.note(
        "Unfolds the triangles into the plane, each beside the one it was reached from, and stores "
        "the result as texture coordinates in the unit of the mesh.");
    options.example("zel unfold spot.obj spot.zel --svg spot.svg");
  }

  ExitCode run(const Console& console) override {
    files_.expectOtherFile(svg_);
    MeshDocument mesh = files_.read(console);
    const UnfoldReport report = unfoldMesh(mesh);
    files_.write(
        mesh, svg_, [&] { return unfoldedPicture(mesh); }, console);
    // The report must not run into a mesh that goes to standard output.
    if (!console.quiet && !files_.writesStandardOutput() && svg_ != "-") {
      console.result(json_ ? jsonOf(files_.input(), report) : textOf(files_.input(), report));
    }
    return ExitCode::kDone;
  }

 private:
  MeshTransfer files_;
  std::string svg_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeUnfoldCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<UnfoldCommand>();
}

}  // namespace zel::program
