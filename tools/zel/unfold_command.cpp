#include "tools/zel/commands.h"
#include "tools/zel/json_text.h"
#include "tools/zel/mesh_transfer.h"
#include "tools/zel/mesh_unfold.h"
#include "tools/zel/number_text.h"

namespace zel::program {

namespace {

std::string jsonOf(const std::string& file, const UnfoldReport& report) {
  nlohmann::ordered_json json;
  json["file"] = file;
  json["components"] = report.components;
  json["unfoldedFaces"] = report.unfoldedFaces;
  json["unreachedFaces"] = report.unreachedFaces;
  json["flippedFaces"] = report.flippedFaces;
  json["overlappingFaces"] = report.overlappingFaces;
  json["meanLengthError"] = report.meanLengthError;
  json["worstLengthError"] = report.worstLengthError;
  return jsonLine(json);
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
  void declare(CLI::App& app) override {
    files_.declare(app);
    app.add_option("--svg", svg_, "Draw the layout to this SVG file");
    app.add_flag("--json", json_, "The report as one line of JSON");
    app.footer(
        "Unfolds the triangles into the plane, each beside the one it was reached from, and "
        "stores\n"
        "the result as texture coordinates in the unit of the mesh.\n"
        "Example: zel unfold spot.obj spot.zel --svg spot.svg");
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

std::unique_ptr<Command> makeUnfoldCommand() { return std::make_unique<UnfoldCommand>(); }

}  // namespace zel::program
