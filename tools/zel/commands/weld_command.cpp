#include "tools/zel/commands/commands.h"
#include "tools/zel/mesh_transfer.h"

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
    files_.declare(options, Welding::When::kAlways);
    options.value("--map", "FILE", map_, "Write a line OLD NEW for each node to this file");
    options.flag("--json", json_, "One JSON object");
    options.note(
        "A node goes into the lowest-numbered node kept so far within the tolerance. Faces that "
        "collapse or repeat another are dropped, quads that lose one corner become triangles.");
    options.example("zel weld scan.stl scan.zel --relative 1e-6 --map map.txt");
  }

  ExitCode run(const Console& console) override {
    files_.expectOtherFile(map_);
    const Mesh mesh = files_.read(console);
    const WeldReport& report = *files_.welded();
    // Made beforehand: once the mesh has appeared, nothing may fail for want of memory.
    const std::string told = reportOn(report).print(json_);
    files_.write(
        mesh, map_, [&] { return mapText(report.newIndexOf); }, console);
    // The report must not run into a mesh that goes to standard output.
    if (!console.quiet && !files_.writesStandardOutput() && map_ != "-") {
      console.result(told);
    }
    return ExitCode::kDone;
  }

 private:
  MeshTransfer files_;
  std::string map_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeWeldCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<WeldCommand>();
}

}  // namespace zel::program
