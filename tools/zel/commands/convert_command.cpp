#include <array>
#include <charconv>

#include "tools/zel/commands/commands.h"
#include "tools/zel/mesh_transfer.h"
#include "tools/zel/progress.h"

namespace zel::program {

namespace {

class ConvertCommand : public Command {
 public:
  void declare(Options& options) override {
    files_.declare(options);
    options.flag("--triangulate", triangulate_, "Cut every quad along its better diagonal");
    options.flag("--centre", centre_, "Move the middle of the bounds to the origin");
    options.example("zel convert bunny.obj bunny.zel");
  }

  ExitCode run(const Console& console) override {
    Mesh mesh = files_.read(console);
    if (triangulate_) {
      JobProgress progress(console, "triangulating " + files_.input());
      const TriangulateReport report =
          triangulate(mesh, {.faceMap = true, .progress = progress.told()});
      files_.looks().followCutQuads(report.firstTriangle, report.quadOf);
      console.remark(files_.input() + ": " + std::to_string(report.quadsCut) + " quads cut");
    }
    if (centre_) {
      centre(mesh, console);
    }
    // Made beforehand: once the mesh has appeared, nothing may fail for want of memory.
    const std::string told = files_.welded() ? reportOn(*files_.welded()).print(false) : "";
    files_.write(mesh, console);
    // The report must not run into a mesh that goes to standard output.
    if (files_.welded() && !console.quiet && !files_.writesStandardOutput()) {
      console.result(told);
    }
    return ExitCode::kDone;
  }

 private:
  // Axis by axis, so that a coordinate that is not finite spoils no other.
  void centre(Mesh& mesh, const Console& console) const {
    const Bounds bounds = boundsOf(mesh);
    std::string told;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      // A move of 0 has no sign.
      const float move =
          0.0F - static_cast<float>((double{bounds.low[axis]} + bounds.high[axis]) / 2);
      for (int slot = 0; slot < mesh.nodes.GetBoundM(); ++slot) {
        mesh.nodes[slot].point()[axis] += move;
      }
      std::array<char, 32> digits{};
      const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), move);
      told += " " + std::string(digits.data(), end.ptr);
    }
    console.note(files_.input() + ": moved by" + told);
  }

  MeshTransfer files_;
  bool triangulate_ = false;
  bool centre_ = false;
};

}  // namespace

std::unique_ptr<Command> makeConvertCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<ConvertCommand>();
}

}  // namespace zel::program
