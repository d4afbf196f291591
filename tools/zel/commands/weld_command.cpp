#include <optional>

#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/mesh_transfer.h"
#include "tools/zel/mesh_weld.h"
#include "tools/zel/number_text.h"
#include "tools/zel/report.h"

namespace zel::program {

namespace {

/// One line "OLD NEW" for each node slot that held a live node.
std::string mapText(const std::vector<int>& newSlots) {
  std::string text;
  for (std::size_t slot = 0; slot < newSlots.size(); ++slot) {
    if (newSlots[slot] != kNoIndex) {
      text += std::to_string(slot) + " " + std::to_string(newSlots[slot]) + "\n";
    }
  }
  return text;
}

class WeldCommand : public Command {
 public:
  void declare(Options& options) override {
    files_.declare(options);
    const Option& absolute = options
                                 .value("--tolerance", "DISTANCE", tolerance_,
                                        "Merge nodes up to this far apart (0.0001)")
                                 .notNegative();
    options
        .value("--relative", "PART", relative_, "The tolerance as a part of the bounds' diagonal")
        .notNegative()
        .excludes(absolute);
    options.value("--map", "FILE", map_, "Write a line OLD NEW for each node to this file");
    options.flag("--json", json_, "One JSON object");
    options.note(
        "A node goes into the lowest-numbered node kept so far within the tolerance. Faces that "
        "collapse are dropped, quads that lose one corner become triangles.");
    options.example("zel weld scan.stl scan.zel --relative 1e-6 --map map.txt");
  }

  ExitCode run(const Console& console) override {
    files_.expectOtherFile(map_);
    MeshDocument mesh = files_.read(console);
    const double tolerance =
        relative_ ? relativeTolerance(mesh.nodes, *relative_) : tolerance_.value_or(kTolerance);
    const WeldReport report = weldWithin(mesh, tolerance);
    if (!report.isDone) {
      throw unreadable(files_.input(), "node " + std::to_string(report.badNode) +
                                           " has a coordinate that is not finite");
    }
    files_.write(
        mesh, map_, [&] { return mapText(report.newIndexOf); }, console);
    // The report must not run into a mesh that goes to standard output.
    if (!console.quiet && !files_.writesStandardOutput() && map_ != "-") {
      console.result(reportOn(tolerance, report).print(json_));
    }
    return ExitCode::kDone;
  }

 private:
  static Report reportOn(double tolerance, const WeldReport& weld) {
    Report report;
    report.measure("tolerance", "tolerance", tolerance);
    report.count("nodes merged", "nodesMerged", weld.nodesMerged);
    report.measure("largest move", "largestMove", weld.largestMove);
    report.count("faces collapsed", "facesCollapsed", weld.facesCollapsed);
    report.count("quads narrowed", "quadsNarrowed", weld.quadsNarrowed);
    return report;
  }

  MeshTransfer files_;
  std::optional<double> tolerance_;
  std::optional<double> relative_;
  std::string map_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeWeldCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<WeldCommand>();
}

}  // namespace zel::program
