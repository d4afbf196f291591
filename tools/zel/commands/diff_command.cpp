#include <optional>

#include "tools/zel/commands/commands.h"
#include "tools/zel/format_options.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/report.h"

namespace zel::program {

namespace {

class DiffCommand : public Command {
 public:
  void declare(Options& options) override {
    options.argument("FIRST", first_, "Mesh file, or - for standard input").required();
    options.argument("SECOND", second_, "Mesh file").required();
    options
        .value("--tolerance", "DISTANCE", tolerance_,
               "Points may lie this far apart; normals and texture coordinates are left out")
        .notNegative();
    options.flag("--json", json_, "One JSON object");
    declareFrom(options, from_, "Read both as this format, whatever the names say");
    options.note(
        "Without --tolerance every bit counts: points, faces and their normals, and node normals "
        "and texture coordinates when both meshes have some. Exit code 1 tells of a difference.");
    options.example("zel diff before.zel after.stl --tolerance 0.0001");
  }

  ExitCode run(const Console& console) override {
    const Mesh first = readMesh(first_, from_, console);
    const Mesh second = readMesh(second_, from_, console);
    const MeshDifference difference = compare(first, second, {.tolerance = tolerance_});
    if (!console.quiet) {
      console.result(reportOn(difference).print(json_));
    }
    return difference.any() ? ExitCode::kFound : ExitCode::kDone;
  }

 private:
  static Report reportOn(const MeshDifference& difference) {
    const bool isSame = !difference.any();
    const std::vector<std::string> findings = difference.texts();
    Report report;
    for (const std::string& finding : findings) {
      report.line(finding, {});
    }
    const std::string apart = difference.largestMove > 0
                                  ? ", points up to " + shortText(difference.largestMove) + " apart"
                                  : "";
    report.line(
        (isSame ? "same" : "different") + apart,
        {{"same", isSame}, {"findings", findings}, {"largestMove", difference.largestMove}});
    return report;
  }

  std::string first_;
  std::string second_;
  std::string from_;
  std::optional<double> tolerance_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeDiffCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<DiffCommand>();
}

}  // namespace zel::program
