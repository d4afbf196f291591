#include "tools/zel/commands.h"
#include "tools/zel/mesh_normals.h"
#include "tools/zel/mesh_transfer.h"

namespace zel::program {

namespace {

class NormalsCommand : public Command {
 public:
  void declare(CLI::App& app) override {
    files_.declare(app);
    app.add_flag("--flat", flat_, "Give each face's corners its own normal, the last face wins")
        ->excludes(
            app.add_flag("--smooth", smooth_,
                         "Give each node the area-weighted mean of its faces (the default)"));
    app.add_flag("--orient", orient_, "First give neighbouring faces the same winding");
    app.add_flag("--flip", flip_, "Turn all normals round; the order of the corners stays");
    app.footer(
        "Gives faces and nodes normals of unit length, seen from the side from which the corners\n"
        "run counter-clockwise.\n"
        "Example: zel normals bunny.obj bunny.zel --smooth");
  }

  ExitCode run(const Console& console) override {
    MeshDocument mesh = files_.read(console);
    if (orient_) {
      orient(mesh, console);
    }
    giveFaceNormals(mesh);
    flat_ ? giveFlatNodeNormals(mesh) : giveSmoothNodeNormals(mesh);
    if (flip_) {
      mesh.nodes.NegativeNormalVectM();
      mesh.triangles.NegativeNormalVectM();
      mesh.quads.NegativeNormalVectM();
    }
    files_.write(mesh, console);
    return ExitCode::kDone;
  }

 private:
  static void orient(MeshDocument& mesh, const Console& console) {
    const OrientationReport report =
        orientConsistently(mesh.triangles, mesh.quads, mesh.nodes.GetBoundM());
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

std::unique_ptr<Command> makeNormalsCommand() { return std::make_unique<NormalsCommand>(); }

}  // namespace zel::program
