#include "tools/zel/commands/commands.h"
#include "tools/zel/mesh_transfer.h"
#include "tools/zel/progress.h"

namespace zel::program {

namespace {

class ConvertCommand : public Command {
 public:
  void declare(Options& options) override {
    files_.declare(options);
    options.flag("--weld", weld_, "Merge coincident nodes and repeated faces");
    options.example("zel convert bunny.obj bunny.zel");
  }

  ExitCode run(const Console& console) override {
    Mesh mesh = files_.read(console);
    if (weld_) {
      JobProgress progress(console, "welding " + files_.input());
      weld(mesh, {.progress = progress.told()});
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
