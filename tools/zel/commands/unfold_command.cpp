#include <algorithm>

#include "tools/zel/commands/commands.h"
#include "tools/zel/mesh_transfer.h"
#include "tools/zel/number_text.h"
#include "tools/zel/progress.h"
#include "tools/zel/report.h"

namespace zel::program {

namespace {

Report reportOn(const std::string& file, const UnfoldReport& unfolded) {
  Report report(file);
  report.row("unfolded",
             groupedText(unfolded.unfoldedFaces) + " triangles in " +
                 groupedText(unfolded.components) + " components",
             {{"components", unfolded.components}, {"unfoldedFaces", unfolded.unfoldedFaces}});
  const auto faces = [&report](const char* label, const char* key, int count, const char* what) {
    report.row(label, groupedText(count) + what, {{key, count}});
  };
  faces("unreached", "unreachedFaces", unfolded.unreachedFaces, " faces");
  faces("flipped", "flippedFaces", unfolded.flippedFaces, " triangles");
  const double part =
      unfolded.overlappingFaces / std::max(1.0, static_cast<double>(unfolded.unfoldedFaces));
  report.row("overlapping",
             groupedText(unfolded.overlappingFaces) + " triangles, " + shortText(100.0 * part) +
                 " % of those unfolded",
             {{"overlappingFaces", unfolded.overlappingFaces}});
  report.row("length error",
             "mean " + shortText(100.0 * unfolded.meanLengthError) + " %, worst " +
                 shortText(100.0 * unfolded.worstLengthError) + " %",
             {{"meanLengthError", unfolded.meanLengthError},
              {"worstLengthError", unfolded.worstLengthError}});
  return report;
}

class UnfoldCommand : public Command {
 public:
  void declare(Options& options) override {
    files_.declare(options);
    options.value("--svg", "FILE", svg_, "Draw the layout to this SVG file");
    options.flag("--json", json_, "The report as one line of JSON");
    options.note(
        "Unfolds the triangles into the plane, each beside the one it was reached from, and stores "
        "the result as texture coordinates in the unit of the mesh. Strips of a curved mesh may "
        "overlap one another: the report tells how many triangles do, and what part that is.");
    options.example("zel unfold spot.obj spot.zel --svg spot.svg");
  }

  ExitCode run(const Console& console) override {
    files_.expectOtherFile(svg_);
    Mesh mesh = files_.read(console);
    JobProgress progress(console, "unfolding " + files_.input());
    const UnfoldReport report = unfold(mesh, {.progress = progress.told()});
    // Made beforehand: once the mesh has appeared, nothing may fail for want of memory.
    const std::string told = reportOn(files_.input(), report).print(json_);
    files_.write(
        mesh, svg_, [&] { return unfoldedPicture(mesh); }, console);
    // The report must not run into a mesh that goes to standard output.
    if (!console.quiet && !files_.writesStandardOutput() && svg_ != "-") {
      console.result(told);
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
