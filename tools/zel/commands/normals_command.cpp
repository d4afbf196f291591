#include "tools/zel/commands/commands.h"
#include "tools/zel/mesh_transfer.h"

namespace zel::program {

namespace {

class NormalsCommand : public Command {
 public:
  void declare(Options& options) override {
    files_.declare(options);
    const Option& smooth = options.flag(
        "--smooth", smooth_, "Give each node the area-weighted mean of its faces (the default)");
    options.flag("--flat", flat_, "Give each face's corners its own normal, the last face wins")
        .excludes(smooth);
    options.flag("--orient", orient_, "First give neighbouring faces the same winding");
    options.flag("--flip", flip_, "Turn all normals round; the order of the corners stays");
    options.note(
        "Gives faces and nodes normals of unit length, seen from the side from which the corners "
        "run counter-clockwise.");
    options.example("zel normals bunny.obj bunny.zel --smooth");
  }

  ExitCode run(const Console& console) override {
    Mesh mesh = files_.read(console);
    if (orient_) {
      orientFaces(mesh, console);
    }
    giveNormals(mesh, {.weight = flat_ ? NormalWeight::kFlat : NormalWeight::kArea});
    if (flip_) {
      mesh.nodes.NegativeNormalVectM();
      mesh.triangles.NegativeNormalVectM();
      mesh.quads.NegativeNormalVectM();
    }
    files_.write(mesh, console);
    return ExitCode::kDone;
  }

 private:
  static void orientFaces(Mesh& mesh, const Console& console) {
    const OrientReport report = orient(mesh);
    console.remark(std::to_string(report.facesReversed) + " faces turned round in " +
                   std::to_string(report.components) + " components, " +
                   std::to_string(report.twistedSeams) + " seams stay twisted");
  }

  MeshTransfer files_;
  bool flat_ = false;
  bool smooth_ = false;
  bool orient_ = false;
  bool flip_ = false;
};

}  // namespace

std::unique_ptr<Command> makeNormalsCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<NormalsCommand>();
}

}  // namespace zel::program
