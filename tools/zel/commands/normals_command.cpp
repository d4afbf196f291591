#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/mesh_transfer.h"

namespace zel::program {

namespace {

class NormalsCommand : public Command {
 public:
  void declare(Options& options) override {
    files_.declare(options);
    const Option& smooth = options.flag("--smooth", smooth_, "The same as --weight area");
    const Option& flat =
        options.flag("--flat", flat_, "The same as --weight flat").excludes(smooth);
    options
        .value("--weight", "WHAT", weight_,
               "What a face counts at a node: its area, its angle there, or flat, where the last "
               "face wins")
        .oneOf({"area", "angle", "flat"})
        .byDefault("area")
        .excludes(flat);
    options
        .value("--orient", "HOW", orient_,
               "First wind neighbouring faces alike; outward: closed parts look outward as well")
        .oneOf({"consistent", "outward"});
    options.flag("--reverse", reverse_, "Turn all faces round, the order of their corners too");
    options.flag("--flip", flip_, "Turn all normals round; the order of the corners stays");
    options.note(
        "Gives faces and nodes normals of unit length, seen from the side from which the corners "
        "run counter-clockwise.");
    options.example("zel normals bunny.obj bunny.zel --smooth");
  }

  ExitCode run(const Console& console) override {
    if (smooth_ && !weight_.empty()) {
      throw misuse("--smooth", "it cannot stand beside --weight");
    }
    Mesh mesh = files_.read(console);
    if (!orient_.empty()) {
      orientFaces(mesh, console);
    }
    if (reverse_) {
      reverse(mesh);
    }
    giveNormals(mesh, {.weight = weight()});
    if (flip_) {
      mesh.nodes.NegativeNormalVectM();
      mesh.triangles.NegativeNormalVectM();
      mesh.quads.NegativeNormalVectM();
    }
    files_.write(mesh, console);
    return ExitCode::kDone;
  }

 private:
  [[nodiscard]] NormalWeight weight() const {
    if (flat_ || weight_ == "flat") {
      return NormalWeight::kFlat;
    }
    return weight_ == "angle" ? NormalWeight::kAngle : NormalWeight::kArea;
  }

  void orientFaces(Mesh& mesh, const Console& console) const {
    const OrientReport report = orient(mesh, {.outward = orient_ == "outward"});
    console.remark(std::to_string(report.facesReversed) + " faces turned round in " +
                   std::to_string(report.components) + " components, " +
                   std::to_string(report.componentsTurned) + " of them turned outward, " +
                   std::to_string(report.twistedSeams) + " seams stay twisted");
  }

  MeshTransfer files_;
  bool flat_ = false;
  bool smooth_ = false;
  std::string weight_;
  std::string orient_;
  bool reverse_ = false;
  bool flip_ = false;
};

}  // namespace

std::unique_ptr<Command> makeNormalsCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<NormalsCommand>();
}

}  // namespace zel::program
