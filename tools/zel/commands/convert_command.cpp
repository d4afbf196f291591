#include "tools/zel/commands/commands.h"
#include "tools/zel/mesh_transfer.h"
#include "tools/zel/mesh_weld.h"

namespace zel::program {

namespace {

class ConvertCommand : public Command {
 public:
  void declare(Options& options) override {
    files_.declare(options);
    options.flag("--weld", weld_, "Merge coincident nodes (within 0.0001) and repeated faces");
    options.example("zel convert bunny.obj bunny.zel");
  }

  ExitCode run(const Console& console) override {
    MeshDocument mesh = files_.read(console);
    if (weld_) {
      mesh = weldByMerging(mesh, files_.input(), console).mesh;
    }
    files_.write(mesh, console);
    return ExitCode::kDone;
  }

 private:
  MeshTransfer files_;
  bool weld_ = false;
};

}  // namespace

std::unique_ptr<Command> makeConvertCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<ConvertCommand>();
}

}  // namespace zel::program
